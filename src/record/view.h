// Records in place, as the public interface shows them.
#pragma once

#include "nfc_ndef_view.h"
#include "record/codec.h"

namespace ndef {

// Bytes as they are handed out, with a null pointer when there are none; and as they come in.
inline nfc_ndef_bytes lent(ByteView bytes) { return {bytes.empty() ? nullptr : bytes.data(), bytes.size()}; }
inline ByteView bytes_of(nfc_ndef_bytes bytes)
{
    return {bytes.data, bytes.data && bytes.length <= UINT32_MAX ? bytes.length : 0};
}

constexpr uint8_t flag_bits = static_cast<uint8_t>(~tnf_bits);

[[gnu::always_inline]] inline void show(const RecordView &record, nfc_ndef_record_view &view)
{
    view = {.type = lent(record.type()),
            .id = lent(record.id()),
            .payload = lent(record.payload()),
            .chunks = {},
            .payload_length = record.payload_length,
            .format = record.format(),
            .flags = static_cast<uint8_t>(record.flags & flag_bits)};
}

// Views the whole record at the front of a message that is valid, and steps over it.
bool next_of_any(Reader &in, nfc_ndef_record_view &view);
[[gnu::always_inline]] inline bool next_record(Reader &in, nfc_ndef_record_view &view)
{
    RecordView record;
    Reader any = in; // so that the reader itself may stay in registers
    if (find_short_record(in, record) && !record.has(cf_bit)) [[likely]] {
        show(record, view);
        return true;
    }
    const bool found = next_of_any(any, view);
    in = any;
    return found;
}

// Of a record in chunks, all of them together.
inline uint32_t payload_length_of(const nfc_ndef_record_view &view)
{
    return view.chunks.length != 0 ? view.payload_length : static_cast<uint32_t>(bytes_of(view.payload).size());
}

// The record in one piece, but for its payload: that only tells whether there is one.
inline nfc_ndef_record described(const nfc_ndef_record_view &view)
{
    static uint8_t some;
    const auto has = [&](uint8_t bit) { return static_cast<uint8_t>((view.flags & bit) != 0); };
    const auto name = [](nfc_ndef_bytes bytes) {
        return bytes.length != 0 ? const_cast<uint8_t *>(bytes.data) : nullptr;
    };
    const uint32_t payload_length = payload_length_of(view);
    return {.mb = has(mb_bit),
            .me = has(me_bit),
            .cf = has(cf_bit),
            .sr = has(sr_bit),
            .il = has(il_bit),
            .payload_length = payload_length,
            .id_length = static_cast<uint8_t>(view.id.length),
            .id = name(view.id),
            .payload = payload_length != 0 ? &some : nullptr,
            .record_type = {.name = name(view.type),
                            .name_length = static_cast<uint8_t>(view.type.length),
                            .format = view.format},
            .parsed_length = 0};
}

// How many bytes such a record takes; 0 when there is no wire form of it.
inline uint32_t encoded_length(const nfc_ndef_record_view &view, const nfc_ndef_record &header)
{
    const bool fits = view.type.length <= UINT8_MAX && view.id.length <= UINT8_MAX;
    return fits ? nfc_ndef_record_get_byte_array_length(header) : 0;
}

// Writes the payload of a record in chunks.
void write_chunks(const nfc_ndef_record_view &view, Writer &out);

// Writes the payload of a record, in pieces or not.
inline void write_payload(const nfc_ndef_record_view &view, Writer &out)
{
    if (view.chunks.length == 0)
        out.bytes(bytes_of(view.payload));
    else
        write_chunks(view, out);
}

} // namespace ndef
