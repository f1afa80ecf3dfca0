// What Handover Mediation and Handover Initiate records share: NFC Forum Connection Handover 1.5. A version, and
// nothing or a message that offers carriers.
#pragma once

#include "nfc_ndef_types.h"
#include "record/build.h"

namespace ndef {

uint8_t read_carriers(nfc_ndef_bytes payload, nfc_ndef_handover *handover, nfc_ndef_payload_report *report);

inline nfc_ndef_record *carriers_record_of(const KnownType &type, const nfc_ndef_handover &handover, nfc_ndef_bytes id)
{
    const auto layout = [&](auto &out) { out.u8(handover.version).bytes(bytes_of(handover.message.rest)); };
    return readable_record_of(type, layout, id, read_carriers);
}

} // namespace ndef
