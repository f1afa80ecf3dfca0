#include "handover_mediation.h"

#include "../c_interface.h"

namespace nfc_ndef::values {

std::optional<HandoverMediation> Kind<HandoverMediation>::read(const nfc_ndef_record_view &record,
                                                               const Nesting &nesting, nfc_ndef_payload_report &report)
{
    nfc_ndef_handover read;
    if (!nfc_ndef_handover_mediation_read(record.payload, &read, &report))
        return std::nullopt;
    return HandoverMediation{HandoverCarriers::of(read, nesting)};
}

nfc_ndef::Record Kind<HandoverMediation>::make(const HandoverMediation &mediation)
{
    return mediation.made(nfc_ndef_handover_mediation_record_create);
}

} // namespace nfc_ndef::values
