// Service Select record: NFC Forum TNEP 1.0. The name of a service of the tag, or none to leave it.
#include "record/build.h"
#include "record/payload_report.h"
#include "rtd/tnep.h"

using namespace ndef;

uint8_t nfc_ndef_service_select_read(nfc_ndef_bytes payload, nfc_ndef_service_select *select,
                                     nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *select = {};
    Reader in(bytes);
    if (bytes.empty())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    const ByteView name = in.take(in.u8());
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, 1);
    if (in.left() != 0)
        return verdict.refused(NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 1 + name.size());
    const size_t visible = visible_length(name);
    if (visible != name.size())
        return verdict.refused(NFC_NDEF_PAYLOAD_CHARACTER_NOT_ALLOWED, 1 + visible);
    select->service_name = lent(name);
    return verdict.valid();
}

nfc_ndef_record *nfc_ndef_service_select_record_create(const nfc_ndef_service_select *select, nfc_ndef_bytes id)
{
    const auto layout = [&](auto &out) { out.template sized<uint8_t>(bytes_of(select->service_name)); };
    return readable_record_of(known::service_select, layout, id, nfc_ndef_service_select_read);
}
