// A Handover Carrier record (NFC Forum Connection Handover 1.2).
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct HandoverCarrier {
    uint8_t ctf = 0; // an NFC_NDEF_TNF_ value
    std::string carrier_type;
    Bytes carrier_data;
    bool operator==(const HandoverCarrier &) const = default;
};

template <> struct Kind<HandoverCarrier> : Leaf {
    static constexpr Type type = well_known("Hc");
    static constexpr std::string_view json = "handover_carrier", title = "Handover Carrier";
    static std::optional<HandoverCarrier> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                               nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const HandoverCarrier &carrier);
    static void show(const HandoverCarrier &carrier, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, HandoverCarrier> &carrier)
    {
        fields.choice("ctf", carrier.ctf, type_name_formats);
        fields.text_or_hex("carrier_type", carrier.carrier_type, at_most(255));
        fields.bytes("carrier_data", carrier.carrier_data, at_most(255));
    }
};

} // namespace nfc_ndef::values
