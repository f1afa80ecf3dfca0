#include "record/codec.h"

namespace ndef {

namespace {

constexpr uint32_t longest_short_payload = 255;
constexpr uint64_t longest_record = INT32_MAX;

bool is_consistent(const nfc_ndef_record &record)
{
    const nfc_ndef_record_type &type = record.record_type;
    if (type.format == NFC_NDEF_TNF_EMPTY && (type.name_length | record.id_length | record.payload_length) != 0)
        return false;
    return (type.name != nullptr) == (type.name_length != 0) && (record.id != nullptr) == (record.id_length != 0) &&
           (record.payload != nullptr) == (record.payload_length != 0);
}

} // namespace

nfc_ndef_record RecordView::borrowed() const
{
    return {.mb = has(mb_bit),
            .me = has(me_bit),
            .cf = has(cf_bit),
            .sr = has(sr_bit),
            .il = has(il_bit),
            .payload_length = payload_length,
            .id_length = id_length,
            .id = borrow(id()),
            .payload = borrow(payload()),
            .record_type = borrowed_type(),
            .parsed_length = length()};
}

Fault find_record(ByteView bytes, RecordView &record)
{
    Reader in(bytes);
    const uint8_t flags = in.u8();
    const uint8_t type_length = in.u8();
    const uint32_t payload_length = flags & sr_bit ? in.u8() : in.be<uint32_t>();
    const uint8_t id_length = flags & il_bit ? in.u8() : uint8_t{0};
    if (!in.ok())
        return {NFC_NDEF_MSG_HEADER_CUT_SHORT, 0};

    const uint8_t format = flags & tnf_bits;
    if (format == NFC_NDEF_TNF_EMPTY && (type_length | id_length | payload_length) != 0)
        return {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 0};
    if ((format == NFC_NDEF_TNF_UNKNOWN || format == NFC_NDEF_TNF_RESERVED) && type_length != 0)
        return {NFC_NDEF_MSG_TYPE_NOT_ALLOWED, 0};

    const size_t header_length = bytes.size() - in.left();
    if (uint64_t{type_length} + id_length + payload_length > in.left()) {
        if (type_length > in.left())
            return {NFC_NDEF_MSG_TYPE_PAST_END, header_length};
        if (size_t{type_length} + id_length > in.left())
            return {NFC_NDEF_MSG_ID_PAST_END, header_length + type_length};
        return {NFC_NDEF_MSG_PAYLOAD_PAST_END, header_length + type_length + id_length};
    }
    record = {.header = bytes.data(),
              .payload_length = payload_length,
              .flags = flags,
              .header_length = static_cast<uint8_t>(header_length),
              .type_length = type_length,
              .id_length = id_length};
    return {NFC_NDEF_MSG_VALID, 0};
}

uint32_t nfc_ndef_record_get_byte_array_length(const nfc_ndef_record &record)
{
    if (!is_consistent(record))
        return 0;
    const uint64_t length = 2 + (record.payload_length <= longest_short_payload ? 1u : 4u) +
                            uint64_t{record.payload_length} + (record.id ? 1u + record.id_length : 0u) +
                            record.record_type.name_length;
    return length <= longest_record ? static_cast<uint32_t>(length) : 0;
}

void nfc_ndef_record_write_to_byte_array(const nfc_ndef_record &record, Writer &out, uint8_t position)
{
    const nfc_ndef_record_type &type = record.record_type;
    const bool is_short = record.payload_length <= longest_short_payload;
    out.u8(
        static_cast<uint8_t>(position | (is_short ? sr_bit : 0) | (record.id ? il_bit : 0) | (type.format & tnf_bits)));
    out.u8(type.name_length);
    if (is_short)
        out.u8(static_cast<uint8_t>(record.payload_length));
    else
        out.be(record.payload_length);
    if (record.id)
        out.u8(record.id_length);
    out.bytes({type.name, type.name_length})
        .bytes({record.id, record.id_length})
        .bytes({record.payload, record.payload_length});
}

} // namespace ndef

using namespace ndef;

uint32_t nfc_ndef_record_to_byte_array(const nfc_ndef_record *record, uint8_t **byte_array)
{
    const uint32_t length = record ? nfc_ndef_record_get_byte_array_length(*record) : 0;
    if (length == 0)
        return 0;
    *byte_array = new_block<uint8_t>(length).release();
    if (!*byte_array)
        return 0;
    Writer out({*byte_array, length});
    nfc_ndef_record_write_to_byte_array(*record, out, position_bits(*record));
    return length;
}

nfc_ndef_record *nfc_ndef_record_create_from_byte_array(const uint8_t *data, uint32_t position, uint32_t length)
{
    RecordView record;
    if (!data || length <= position ||
        find_record({data + position, length - position}, record).reason != NFC_NDEF_MSG_VALID)
        return nullptr;
    return copy_record(record.borrowed()).release();
}
