// Handover Mediation record: NFC Forum Connection Handover 1.5.
#include "message/carriers.h"

using namespace ndef;

uint8_t nfc_ndef_handover_mediation_read(nfc_ndef_bytes payload, nfc_ndef_handover *mediation,
                                         nfc_ndef_payload_report *report)
{
    return read_carriers(payload, mediation, report);
}

nfc_ndef_record *nfc_ndef_handover_mediation_record_create(const nfc_ndef_handover *mediation, nfc_ndef_bytes id)
{
    return carriers_record_of(known::handover_mediation, *mediation, id);
}
