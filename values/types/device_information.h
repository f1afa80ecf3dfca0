// A Device Information record (NFC Forum Device Information RTD 1.0).
#pragma once

#include "../element.h"
#include "../kind.h"
#include "../spelling.h"

namespace nfc_ndef::values {

struct DeviceInformation {
    std::string vendor_name;
    std::string model_name;
    std::optional<std::string> unique_name;
    std::optional<std::array<uint8_t, 16>> uuid;
    std::optional<std::string> version_string;
    std::vector<Element<1>> other_elements; // with ids from 5
    bool operator==(const DeviceInformation &) const = default;
};

template <> struct Kind<DeviceInformation> : Leaf {
    static constexpr Type type = well_known("Di");
    static constexpr std::string_view json = "device_information", title = "Device information";
    static std::optional<DeviceInformation> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                 nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const DeviceInformation &information);
    static void show(const DeviceInformation &information, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, DeviceInformation> &information)
    {
        fields.text_or_hex("vendor_name", information.vendor_name, {1, 255}, Presence::required);
        fields.text_or_hex("model_name", information.model_name, {1, 255}, Presence::required);
        fields.text_or_hex("unique_name", information.unique_name, at_most(255));
        fields.spelled("uuid", information.uuid, uuid(16, Spelling::Order::as_stored));
        fields.text_or_hex("version_string", information.version_string, at_most(255));
        fields.objects("other_elements", information.other_elements,
                       []<class Inner>(Inner &inner, Value<Inner, Element<1>> &element) {
                           inner.bytes("type", element.id);
                           inner.require(element.id[0] > 4, "type", "has a member of its own");
                           inner.bytes("data", element.data, at_most(255));
                       });
    }
};

} // namespace nfc_ndef::values
