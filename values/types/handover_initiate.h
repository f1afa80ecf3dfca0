// A Handover Initiate record (NFC Forum Connection Handover 1.5).
#pragma once

#include "../handover_carriers.h"

namespace nfc_ndef::values {

struct HandoverInitiate : HandoverCarriers {
    bool operator==(const HandoverInitiate &) const = default;
};

template <> struct Kind<HandoverInitiate> : Nests<1> {
    static constexpr Type type = well_known("Hi");
    static constexpr std::string_view json = "handover_initiate", title = "Handover Initiate";
    static std::optional<HandoverInitiate> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const HandoverInitiate &initiate);
    static void show(const HandoverInitiate &initiate, View &view) { initiate.HandoverCarriers::show(view); }

    template <class Fields> static void map(Fields &fields, Value<Fields, HandoverInitiate> &initiate)
    {
        HandoverCarriers::map(fields, initiate);
    }
};

} // namespace nfc_ndef::values
