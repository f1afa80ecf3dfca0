#include "record/view.h"

namespace ndef {

namespace {

// A chunk that continues a run. What is handed on is copied, so that reader and chunk may stay in registers.
[[gnu::always_inline]] inline bool find_chunk(Reader &in, RecordView &chunk)
{
    if (find_short_chunk(in, chunk)) [[likely]]
        return true;
    Reader ahead = in;
    RecordView any;
    if (find_record_apart(ahead, any).reason != NFC_NDEF_MSG_VALID)
        return false;
    in = ahead;
    chunk = any;
    return true;
}

// Makes the view of an initial chunk that of its run, which is stepped over. A run takes its names from the initial
// chunk, and its end from the terminating one.
bool show_run(Reader &rest, const RecordView &first, nfc_ndef_record_view &view)
{
    Reader in = rest;
    RecordView piece = first;
    uint32_t length = first.payload_length;
    while (piece.has(cf_bit)) {
        if (!find_chunk(in, piece))
            return false;
        length += piece.payload_length;
    }
    rest = in;
    view.payload = {};
    view.chunks = lent({first.header(), piece.end()});
    view.payload_length = length;
    view.flags = static_cast<uint8_t>((first.flags & (mb_bit | il_bit)) | (piece.flags & me_bit) |
                                      (length <= longest_short_payload ? sr_bit : 0));
    return true;
}

} // namespace

[[gnu::noinline]] bool next_of_any(Reader &in, nfc_ndef_record_view &view)
{
    RecordView record;
    if (in.left() == 0 || find_record_apart(in, record).reason != NFC_NDEF_MSG_VALID)
        return false;
    show(record, view);
    return !record.has(cf_bit) || show_run(in, record, view);
}

namespace {

// Apart, so that the usual way saves no registers.
[[gnu::noinline]] bool next_piece_of_any(ByteView chunks, uint32_t &position, nfc_ndef_bytes &piece)
{
    Reader in(chunks.subspan(position));
    RecordView chunk;
    if (find_record_apart(in, chunk).reason != NFC_NDEF_MSG_VALID)
        return false;
    position = static_cast<uint32_t>(chunks.size() - in.left());
    piece = lent(chunk.payload());
    return true;
}

} // namespace

void write_chunks(const nfc_ndef_record_view &view, Writer &out)
{
    Reader in(bytes_of(view.chunks));
    for (RecordView chunk; in.left() != 0 && find_record(in, chunk).reason == NFC_NDEF_MSG_VALID;)
        out.bytes(chunk.payload());
}

} // namespace ndef

using namespace ndef;

uint8_t nfc_ndef_record_view_read(nfc_ndef_bytes bytes, nfc_ndef_record_view *record, nfc_ndef_msg_report *report)
{
    *record = {};
    const ByteView data = bytes_of(bytes);
    Reader in(data);
    RecordView found;
    const Fault fault = data.empty() ? Fault{NFC_NDEF_MSG_BAD_ARGUMENTS, 0} : find_record_apart(in, found);
    const bool whole = fault.reason == NFC_NDEF_MSG_VALID;
    if (whole)
        show(found, *record);
    if (report)
        *report = {fault.reason, whole, static_cast<uint32_t>(whole ? data.size() - in.left() : fault.offset)};
    return whole;
}

nfc_ndef_record_view nfc_ndef_record_view_of(const nfc_ndef_record *record)
{
    if (!record)
        return {};
    const nfc_ndef_record_type &type = record->record_type;
    const ByteView payload = payload_of(record);
    // A format that a byte does not hold stays one that no record has, and keeps the bits that are written.
    const uint32_t format = type.format <= UINT8_MAX ? type.format : flag_bits | (type.format & tnf_bits);
    return {.type = lent(bytes_of(type.name, type.name_length)),
            .id = lent(bytes_of(record->id, record->id_length)),
            .payload = lent(payload),
            .chunks = {},
            .payload_length = static_cast<uint32_t>(payload.size()),
            .format = static_cast<uint8_t>(format),
            .flags =
                static_cast<uint8_t>(framing_bits(*record) | (record->sr ? sr_bit : 0) | (record->il ? il_bit : 0))};
}

uint8_t nfc_ndef_record_view_next_piece(const nfc_ndef_record_view *record, uint32_t *position, nfc_ndef_bytes *piece)
{
    const ByteView chunks = bytes_of(record->chunks);
    if (chunks.empty()) {
        if (*position != 0)
            return 0;
        *position = 1;
        *piece = record->payload;
        return 1;
    }
    if (*position >= chunks.size())
        return 0;
    Reader in(chunks.subspan(*position));
    RecordView chunk;
    if (!find_short_chunk(in, chunk)) [[unlikely]]
        return next_piece_of_any(chunks, *position, *piece);
    *position = static_cast<uint32_t>(chunks.size() - in.left());
    *piece = lent(chunk.payload());
    return 1;
}

uint32_t nfc_ndef_record_view_join(const nfc_ndef_record_view *record, uint8_t *buffer, uint32_t capacity)
{
    const uint32_t length = payload_length_of(*record);
    if (length <= capacity) {
        Writer out({buffer, length});
        write_payload(*record, out);
    }
    return length;
}

uint8_t nfc_ndef_record_view_matches(const nfc_ndef_record_view *record, uint32_t format, nfc_ndef_bytes name)
{
    if (name.length > UINT8_MAX)
        return 0;
    nfc_ndef_record_view key{};
    key.type = name;
    nfc_ndef_record_type key_type = described(key).record_type;
    key_type.format = format;
    const nfc_ndef_record_type candidate = described(*record).record_type;
    return nfc_ndef_record_type_equals(&key_type, &candidate);
}

uint32_t nfc_ndef_record_view_write(const nfc_ndef_record_view *record, uint8_t *buffer, uint32_t capacity)
{
    const nfc_ndef_record header = described(*record);
    const uint32_t length = encoded_length(*record, header);
    if (length != 0 && length <= capacity) {
        Writer out({buffer, length});
        write_header_apart(header, out, framing_bits(header));
        write_payload(*record, out);
    }
    return length;
}

uint32_t nfc_ndef_record_write(const nfc_ndef_record *record, uint8_t *buffer, uint32_t capacity)
{
    const uint32_t length = record ? nfc_ndef_record_get_byte_array_length(*record) : 0;
    if (length != 0 && length <= capacity) {
        Writer out({buffer, length});
        write_record_apart(*record, out, framing_bits(*record));
    }
    return length;
}
