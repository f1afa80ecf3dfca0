// Handover Initiate record: NFC Forum Connection Handover 1.5.
#include "message/carriers.h"

using namespace ndef;

uint8_t nfc_ndef_handover_initiate_read(nfc_ndef_bytes payload, nfc_ndef_handover *initiate,
                                        nfc_ndef_payload_report *report)
{
    return read_carriers(payload, initiate, report);
}

nfc_ndef_record *nfc_ndef_handover_initiate_record_create(const nfc_ndef_handover *initiate, nfc_ndef_bytes id)
{
    return carriers_record_of(known::handover_initiate, *initiate, id);
}
