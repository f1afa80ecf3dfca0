// A Service Select record (NFC Forum TNEP 1.0).
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct ServiceSelect {
    std::string service_name; // empty to leave the service
    bool operator==(const ServiceSelect &) const = default;
};

template <> struct Kind<ServiceSelect> : Leaf {
    static constexpr Type type = well_known("Ts");
    static constexpr std::string_view json = "service_select", title = "Service Select";
    static std::optional<ServiceSelect> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                             nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const ServiceSelect &select);
    static void show(const ServiceSelect &select, View &view);
    static std::string summary(const ServiceSelect &select);

    template <class Fields> static void map(Fields &fields, Value<Fields, ServiceSelect> &select)
    {
        fields.text_or_hex("service_name", select.service_name, at_most(255));
    }
};

} // namespace nfc_ndef::values
