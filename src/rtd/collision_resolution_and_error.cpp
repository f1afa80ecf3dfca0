// Collision Resolution and Handover Select Error records: NFC Forum Connection Handover 1.2. Both payloads are exactly
// two bytes.
#include "record/build.h"
#include "rtd/result.h"

using namespace ndef;

nfc_ndef_record *rtdlib_collision_resolution_record_create(uint16_t random_number)
{
    Payload payload(2);
    payload.be16(random_number);
    return record_of(well_known("cr"), payload).release();
}

int8_t rtdlib_collision_resolution_record_extract(const nfc_ndef_record *record, uint16_t *random_number)
{
    const ByteView payload = payload_of(record);
    if (!random_number || payload.size() != 2)
        return failure;
    *random_number = Reader(payload).be<uint16_t>();
    return success;
}

nfc_ndef_record *rtdlib_handover_select_error_record_create(uint32_t error_reason, uint32_t error_data)
{
    Payload payload(2);
    payload.u8(static_cast<uint8_t>(error_reason)).u8(static_cast<uint8_t>(error_data));
    return record_of(well_known("err"), payload).release();
}

int8_t rtdlib_handover_select_error_record_extract(const nfc_ndef_record *record, uint8_t *error_reason,
                                                   uint8_t *error_data)
{
    if (!record || !error_reason || !error_data)
        return failure;
    const ByteView payload = payload_of(record);
    if (payload.size() != 2)
        return bad_payload;
    *error_reason = payload[0];
    *error_data = payload[1];
    return success;
}
