#include "record/codec.h"

using namespace ndef;

[[gnu::noinline]] Fault ndef::find_record_apart(Reader &in, RecordView &record) { return find_record(in, record); }

[[gnu::noinline]] void ndef::write_header_apart(const nfc_ndef_record &record, Writer &out, uint8_t framing)
{
    write_header(record, out, framing);
}

void ndef::write_record_apart(const nfc_ndef_record &record, Writer &out, uint8_t framing)
{
    write_header_apart(record, out, framing);
    out.bytes({record.payload, record.payload_length});
}

uint32_t nfc_ndef_record_to_byte_array(const nfc_ndef_record *record, uint8_t **byte_array)
{
    const uint32_t length = record ? nfc_ndef_record_get_byte_array_length(*record) : 0;
    if (length == 0)
        return 0;
    *byte_array = new_block<uint8_t>(length).release();
    if (!*byte_array)
        return 0;
    Writer out({*byte_array, length});
    write_record_apart(*record, out, framing_bits(*record));
    return length;
}

nfc_ndef_record *nfc_ndef_record_create_from_byte_array(const uint8_t *data, uint32_t position, uint32_t length)
{
    if (!data || length <= position)
        return nullptr;
    Reader in({data + position, length - position});
    RecordView record;
    if (find_record_apart(in, record).reason != NFC_NDEF_MSG_VALID)
        return nullptr;
    return record.make().release();
}
