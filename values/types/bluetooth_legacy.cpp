#include "bluetooth_legacy.h"

#include "../bluetooth/structures.h"
#include "../c_interface.h"
#include "../printable.h"

#include <fmt/format.h>

#include <algorithm>

namespace nfc_ndef::values {

constinit const Type Kind<BluetoothLegacy>::type = external(VENDOR_DOMAIN ":bt");

std::optional<BluetoothLegacy> Kind<BluetoothLegacy>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                           nfc_ndef_payload_report &report)
{
    nfc_ndef_bt_legacy fields;
    if (!nfc_ndef_bt_legacy_read(record.payload, &fields, &report))
        return std::nullopt;
    return BluetoothLegacy{std::to_array(fields.device_address), std::to_array(fields.class_of_device),
                           fields.pairing_type, bytes_of(fields.pairing_data), string_of(fields.local_name)};
}

nfc_ndef::Record Kind<BluetoothLegacy>::make(const BluetoothLegacy &bluetooth)
{
    if (!fit_in_a_byte(bluetooth.pairing_data.size(), bluetooth.local_name.size()))
        return nullptr;
    nfc_ndef_bt_rtd_2_0_str fields{};
    std::ranges::copy(bluetooth.device_address, fields.device_address);
    std::ranges::copy(bluetooth.class_of_device, fields.class_of_device);
    fields.pairing_type = bluetooth.pairing_type;
    fields.pairing_data_length = static_cast<uint8_t>(bluetooth.pairing_data.size());
    fields.pairing_data = field_pointer_to(bluetooth.pairing_data);
    fields.local_name_length = static_cast<uint8_t>(bluetooth.local_name.size());
    fields.local_name = field_pointer_to(bluetooth.local_name);
    return nfc_ndef::Record(rtdlib_bt_configuration_data_record_create(&fields, nullptr, 0, 0));
}

std::string Kind<BluetoothLegacy>::summary(const BluetoothLegacy &bluetooth)
{
    return bluetooth.local_name.empty() ? "" : shortened_and_quoted(bluetooth.local_name);
}

void Kind<BluetoothLegacy>::show(const BluetoothLegacy &bluetooth, View &view)
{
    const auto &device = bluetooth.class_of_device;
    view.field("device address", address(Spelling::Order::as_stored).text_of(bluetooth.device_address));
    view.field("class of device",
               class_of_device_text(static_cast<uint32_t>(device[0] << 16 | device[1] << 8 | device[2])));
    view.field("pairing type", fmt::format("0x{:02X}", bluetooth.pairing_type));
    if (!bluetooth.pairing_data.empty())
        view.field("pairing data", hex_of(bluetooth.pairing_data));
    if (!bluetooth.local_name.empty())
        view.text("local name", view_of(bluetooth.local_name));
}

} // namespace nfc_ndef::values
