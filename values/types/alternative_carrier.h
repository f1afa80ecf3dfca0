// An Alternative Carrier record (NFC Forum Connection Handover 1.2).
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct AlternativeCarrier {
    uint8_t cps = 0; // carrier power state, 0 to 3
    std::string carrier_data_ref;
    std::vector<std::string> aux_data_refs;
    bool operator==(const AlternativeCarrier &) const = default;
};

inline constexpr Name power_states[] = {{0, "inactive"}, {1, "active"}, {2, "activating"}, {3, "unknown"}};

template <> struct Kind<AlternativeCarrier> : Leaf {
    static constexpr Type type = well_known("ac");
    static constexpr std::string_view json = "alternative_carrier", title = "Alternative Carrier";
    static std::optional<AlternativeCarrier> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                  nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const AlternativeCarrier &carrier);
    static void show(const AlternativeCarrier &carrier, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, AlternativeCarrier> &carrier)
    {
        fields.choice("cps", carrier.cps, power_states);
        fields.text_or_hex("carrier_data_ref", carrier.carrier_data_ref, at_most(255), Presence::required);
        fields.require(is_reference(carrier.carrier_data_ref), "carrier_data_ref",
                       "must be of letters, digits and : - . _ ~, and not begin with ~");
        fields.texts("aux_data_refs", carrier.aux_data_refs, at_most(255));
    }

private:
    static bool is_reference(std::string_view text);
};

} // namespace nfc_ndef::values
