// Handover Select Error record: NFC Forum Connection Handover 1.2. Its payload is exactly two bytes.
#include "record/build.h"
#include "rtd/result.h"

using namespace ndef;

nfc_ndef_record *rtdlib_handover_select_error_record_create(uint32_t error_reason, uint32_t error_data)
{
    const auto layout = [&](auto &out) {
        out.u8(static_cast<uint8_t>(error_reason)).u8(static_cast<uint8_t>(error_data));
    };
    return record_of(known::handover_select_error, laid_out(layout)).release();
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
