#include "handover_initiate.h"

#include "../c_interface.h"

namespace nfc_ndef::values {

std::optional<HandoverInitiate> Kind<HandoverInitiate>::read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                             nfc_ndef_payload_report &report)
{
    nfc_ndef_handover read;
    if (!nfc_ndef_handover_initiate_read(record.payload, &read, &report))
        return std::nullopt;
    return HandoverInitiate{HandoverCarriers::of(read, nesting)};
}

nfc_ndef::Record Kind<HandoverInitiate>::make(const HandoverInitiate &initiate)
{
    return initiate.made(nfc_ndef_handover_initiate_record_create);
}

} // namespace nfc_ndef::values
