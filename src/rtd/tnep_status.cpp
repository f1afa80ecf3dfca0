// TNEP Status record: NFC Forum TNEP 1.0. What came of a request; one byte.
#include "nfc_ndef_types.h"
#include "record/build.h"
#include "record/payload_report.h"

using namespace ndef;

uint8_t nfc_ndef_tnep_status_read(nfc_ndef_bytes payload, nfc_ndef_tnep_status *status, nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *status = {.status = Reader(bytes).u8()};
    if (bytes.empty())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    return bytes.size() == 1 ? verdict.valid() : verdict.refused(NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 1);
}

nfc_ndef_record *nfc_ndef_tnep_status_record_create(const nfc_ndef_tnep_status *status, nfc_ndef_bytes id)
{
    const auto layout = [&](auto &out) { out.u8(status->status); };
    return readable_record_of(known::tnep_status, layout, id, nfc_ndef_tnep_status_read);
}
