#include "bluetooth_oob.h"

#include "../bluetooth/structures.h"
#include "../c_interface.h"
#include "../printable.h"

#include <algorithm>

namespace nfc_ndef::values {

namespace {

constexpr size_t first_structure = 8; // behind the length and the address

// The type of a list or a name: one that is not said stands for a complete one.
uint8_t type_or(uint8_t type, uint8_t complete, bool present) { return !present ? 0 : type == 0 ? complete : type; }

} // namespace

std::optional<BluetoothOob> Kind<BluetoothOob>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                     nfc_ndef_payload_report &report)
{
    nfc_ndef_bt_oob read;
    if (!nfc_ndef_bt_oob_read(record.payload, &read, &report))
        return std::nullopt;
    BluetoothOob bluetooth;
    bluetooth.device_address = std::to_array(read.device_address);
    if (read.has_class_of_device)
        bluetooth.class_of_device = std::to_array(read.class_of_device);
    bluetooth.local_name_type = type_or(read.local_name_type, 0, read.local_name.length != 0);
    bluetooth.local_name = string_of(read.local_name);
    bluetooth.hash_c = bytes_of(read.hash_c);
    bluetooth.randomizer_r = bytes_of(read.randomizer_r);
    bluetooth.uuid16_list_type = type_or(read.uuid16_list_type, 0, read.uuid16_list.length != 0);
    bluetooth.uuid16_list = bytes_of(read.uuid16_list);
    bluetooth.uuid32_list_type = type_or(read.uuid32_list_type, 0, read.uuid32_list.length != 0);
    bluetooth.uuid32_list = bytes_of(read.uuid32_list);
    bluetooth.uuid128_list_type = type_or(read.uuid128_list_type, 0, read.uuid128_list.length != 0);
    bluetooth.uuid128_list = bytes_of(read.uuid128_list);
    nfc_ndef_eir structure;
    while (nfc_ndef_bt_oob_next(&read, &structure))
        if (structure.type == 0xFF) {
            const ByteView data = view_of(structure.data);
            bluetooth.manufacturer_data.push_back({{data[0], data[1]}, Bytes(data.begin() + 2, data.end())});
        }
    return bluetooth;
}

nfc_ndef::Record Kind<BluetoothOob>::make(const BluetoothOob &bluetooth)
{
    if (!fit_in_a_byte(bluetooth.local_name.size(), bluetooth.hash_c.size(), bluetooth.randomizer_r.size(),
                       bluetooth.uuid16_list.size(), bluetooth.uuid32_list.size(), bluetooth.uuid128_list.size(),
                       bluetooth.manufacturer_data.size()))
        return nullptr;
    Bytes lengths;
    std::vector<uint8_t *> ids, data;
    for (const ManufacturerData &entry : bluetooth.manufacturer_data) {
        if (!fit_in_a_byte(entry.data.size()))
            return nullptr;
        lengths.push_back(static_cast<uint8_t>(entry.data.size()));
        ids.push_back(field_pointer_to(entry.manufacturer_id));
        data.push_back(field_pointer_to(entry.data));
    }

    nfc_ndef_bt_rtd_2_1_str fields{};
    std::ranges::copy(bluetooth.device_address, fields.device_address);
    if (bluetooth.class_of_device)
        std::ranges::copy(*bluetooth.class_of_device, fields.class_of_device);
    fields.local_name_length = static_cast<uint8_t>(bluetooth.local_name.size());
    fields.local_name = field_pointer_to(bluetooth.local_name);
    fields.hash_c_length = static_cast<uint8_t>(bluetooth.hash_c.size());
    fields.hash_c = field_pointer_to(bluetooth.hash_c);
    fields.randomizer_r_length = static_cast<uint8_t>(bluetooth.randomizer_r.size());
    fields.randomizer_r = field_pointer_to(bluetooth.randomizer_r);
    fields.uuid16_list_length = static_cast<uint8_t>(bluetooth.uuid16_list.size());
    fields.uuid16_list = field_pointer_to(bluetooth.uuid16_list);
    fields.uuid32_list_length = static_cast<uint8_t>(bluetooth.uuid32_list.size());
    fields.uuid32_list = field_pointer_to(bluetooth.uuid32_list);
    fields.uuid128_list_length = static_cast<uint8_t>(bluetooth.uuid128_list.size());
    fields.uuid128_list = field_pointer_to(bluetooth.uuid128_list);
    if (!lengths.empty()) {
        fields.manufacturer_data_count = static_cast<uint8_t>(lengths.size());
        fields.manufacturer_id_length = 2;
        fields.manufacturer_ids = ids.data();
        fields.manufacturer_data_lengths = lengths.data();
        fields.manufacturer_data = data.data();
    }
    // The builder wants a type of name even where there is none.
    return nfc_ndef::Record(rtdlib_bt_2_1_configuration_data_record_create(
        &fields, type_or(bluetooth.local_name_type, 9, true),
        type_or(bluetooth.uuid16_list_type, 3, !bluetooth.uuid16_list.empty()),
        type_or(bluetooth.uuid32_list_type, 5, !bluetooth.uuid32_list.empty()),
        type_or(bluetooth.uuid128_list_type, 7, !bluetooth.uuid128_list.empty()), nullptr, 0, 0));
}

// Walks the payload: it also holds what the structure has no place for.
std::string Kind<BluetoothOob>::summary(const BluetoothOob &bluetooth)
{
    return bluetooth.local_name.empty() ? "" : shortened_and_quoted(bluetooth.local_name);
}

void Kind<BluetoothOob>::show(const BluetoothOob &bluetooth, View &view)
{
    const ByteView payload = view.payload();
    view.field("device address", address(Spelling::Order::reversed).text_of(bluetooth.device_address));
    show_structures(payload.subspan(std::min(first_structure, payload.size())), view);
}

} // namespace nfc_ndef::values
