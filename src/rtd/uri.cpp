// URI record: NFC Forum URI RTD 1.0. The table of prefixes is the caller's business.
#include "record/build.h"
#include "rtd/result.h"

using namespace ndef;

static bool has_control_byte(ByteView uri_field)
{
    for (const uint8_t byte : uri_field)
        if (byte < 0x20)
            return true;
    return false;
}

nfc_ndef_record *rtdlib_uri_record_create(uint8_t identifier_code, uint32_t uri_field_length, const uint8_t *uri_field)
{
    if ((uri_field != nullptr) != (uri_field_length != 0) || uri_field_length == UINT32_MAX)
        return nullptr;
    const ByteView field{uri_field, uri_field_length};
    if (has_control_byte(field))
        return nullptr;
    return record_of(known::uri, laid_out([&](auto &out) { out.u8(identifier_code).bytes(field); })).release();
}

int8_t rtdlib_uri_record_extract(const nfc_ndef_record *record, uint8_t *identifier_code, uint8_t **uri_field,
                                 uint32_t *uri_field_length)
{
    Reader payload(payload_of(record));
    const uint8_t code = payload.u8();
    if (!payload.ok())
        return failure;
    const ByteView field = payload.rest();
    *identifier_code = code;
    *uri_field = nullptr;
    *uri_field_length = 0;
    if (has_control_byte(field))
        return failure;
    *uri_field_length = static_cast<uint32_t>(field.size());
    if (!field.empty())
        *uri_field = copy_of(field).release();
    return success;
}
