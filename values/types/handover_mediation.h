// A Handover Mediation record (NFC Forum Connection Handover 1.5).
#pragma once

#include "../handover_carriers.h"

namespace nfc_ndef::values {

struct HandoverMediation : HandoverCarriers {
    bool operator==(const HandoverMediation &) const = default;
};

template <> struct Kind<HandoverMediation> : Nests<1> {
    static constexpr Type type = well_known("Hm");
    static constexpr std::string_view json = "handover_mediation", title = "Handover Mediation";
    static std::optional<HandoverMediation> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                 nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const HandoverMediation &mediation);
    static void show(const HandoverMediation &mediation, View &view) { mediation.HandoverCarriers::show(view); }

    template <class Fields> static void map(Fields &fields, Value<Fields, HandoverMediation> &mediation)
    {
        HandoverCarriers::map(fields, mediation);
    }
};

} // namespace nfc_ndef::values
