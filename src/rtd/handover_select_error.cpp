// Handover Select Error record: NFC Forum Connection Handover 1.2. Its payload is exactly two bytes.
#include "record/build.h"
#include "record/payload_report.h"
#include "rtd/result.h"

using namespace ndef;

nfc_ndef_record *rtdlib_handover_select_error_record_create(uint32_t error_reason, uint32_t error_data)
{
    const auto layout = [&](auto &out) {
        out.u8(static_cast<uint8_t>(error_reason)).u8(static_cast<uint8_t>(error_data));
    };
    return record_of(known::handover_select_error, laid_out(layout)).release();
}

uint8_t nfc_ndef_handover_error_read(nfc_ndef_bytes payload, nfc_ndef_handover_error *error,
                                     nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    Reader in(bytes);
    *error = {.reason = in.u8(), .data = in.u8()};
    if (!in.ok())
        return verdict.refused(bytes.empty() ? NFC_NDEF_PAYLOAD_EMPTY : NFC_NDEF_PAYLOAD_FIELD_PAST_END);
    if (in.left() != 0)
        return verdict.refused(NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 2);
    return verdict.valid();
}

int8_t rtdlib_handover_select_error_record_extract(const nfc_ndef_record *record, uint8_t *error_reason,
                                                   uint8_t *error_data)
{
    if (!record || !error_reason || !error_data)
        return failure;
    nfc_ndef_handover_error view;
    if (!nfc_ndef_handover_error_read(lent(payload_of(record)), &view, nullptr))
        return bad_payload;
    *error_reason = view.reason;
    *error_data = view.data;
    return success;
}
