// A legacy Bluetooth configuration record of the vendor's domain.
#pragma once

#include "../kind.h"
#include "../printable.h"
#include "../spelling.h"

#include <array>

namespace nfc_ndef::values {

struct BluetoothLegacy {
    std::array<uint8_t, 6> device_address{}; // first byte first, as people write it
    std::array<uint8_t, 3> class_of_device{};
    uint8_t pairing_type = 0;
    Bytes pairing_data;
    std::string local_name;
    bool operator==(const BluetoothLegacy &) const = default;
};

// How many bytes of pairing data go with a type; none for a type that is not known.
constexpr std::optional<size_t> pairing_data_length(uint8_t pairing_type)
{
    if (pairing_type <= 0x02 || pairing_type == 0x20)
        return 16;
    if (pairing_type == 0x10)
        return 0;
    return pairing_type > 0x20 && pairing_type <= 0x2F ? std::optional<size_t>(pairing_type & 0x0F) : std::nullopt;
}

template <> struct Kind<BluetoothLegacy> : Leaf {
    static const Type type; // known when the library is built
    static constexpr std::string_view json = "bt_configuration_data", title = "legacy Bluetooth configuration";
    static std::optional<BluetoothLegacy> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                               nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const BluetoothLegacy &bluetooth);
    static void show(const BluetoothLegacy &bluetooth, View &view);
    static std::string summary(const BluetoothLegacy &bluetooth);

    template <class Fields> static void map(Fields &fields, Value<Fields, BluetoothLegacy> &bluetooth)
    {
        fields.spelled("device_address", bluetooth.device_address, address(Spelling::Order::as_stored));
        fields.spelled("class_of_device", bluetooth.class_of_device, class_of_device(Spelling::Order::as_stored));
        fields.number("pairing_type", bluetooth.pairing_type);
        fields.bytes("pairing_data", bluetooth.pairing_data, at_most(16));
        const std::optional<size_t> length = pairing_data_length(bluetooth.pairing_type);
        fields.require(length.has_value(), "pairing_type", "is not known");
        fields.require(bluetooth.pairing_data.size() == length.value_or(0), "pairing_data",
                       "must be " + count_of(length.value_or(0), "byte") + " for this pairing_type");
        fields.text_or_hex("local_name", bluetooth.local_name, at_most(248));
    }
};

} // namespace nfc_ndef::values
