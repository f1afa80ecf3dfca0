// A Service Parameter record (NFC Forum TNEP 1.0).
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct ServiceParameter {
    uint8_t version = 0x10;
    std::string service_name;
    uint8_t communication_mode = 0;
    uint8_t minimum_waiting_time = 0; // n of 2^(n / 4 - 1) milliseconds
    uint8_t maximum_waiting_time_extensions = 0;
    uint16_t maximum_message_size = 0;
    bool operator==(const ServiceParameter &) const = default;
};

inline constexpr Name communication_modes[] = {{0x00, "single-response", "single response"},
                                               {0xFE, "service-specific", "specific to the service"}};

template <> struct Kind<ServiceParameter> : Leaf {
    static constexpr Type type = well_known("Tp");
    static constexpr std::string_view json = "service_parameter", title = "Service Parameter";
    static std::optional<ServiceParameter> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const ServiceParameter &parameter);
    static void show(const ServiceParameter &parameter, View &view);
    static std::string summary(const ServiceParameter &parameter);

    template <class Fields> static void map(Fields &fields, Value<Fields, ServiceParameter> &parameter)
    {
        fields.version("version", parameter.version);
        fields.require(parameter.version >> 4 == 1, "version", "must be 1.0 to 1.15");
        fields.text_or_hex("service_name", parameter.service_name, {1, 255}, Presence::required);
        fields.enumeration("communication_mode", parameter.communication_mode, communication_modes);
        fields.number("minimum_waiting_time", parameter.minimum_waiting_time);
        fields.require(parameter.minimum_waiting_time <= 63, "minimum_waiting_time", "must be at most 63");
        fields.number("maximum_waiting_time_extensions", parameter.maximum_waiting_time_extensions);
        fields.require(parameter.maximum_waiting_time_extensions <= 15, "maximum_waiting_time_extensions",
                       "must be at most 15");
        fields.number("maximum_message_size", parameter.maximum_message_size);
    }
};

} // namespace nfc_ndef::values
