#include "bluetooth_le.h"

#include "../bluetooth/structures.h"
#include "../c_interface.h"
#include "../printable.h"

#include <algorithm>

namespace nfc_ndef::values {

namespace {

constexpr uint8_t manufacturer_type = 0xFF;
constexpr size_t address_length = 6;

// Service data by the width of its UUID; 0 for any other width.
uint8_t service_data_type(size_t width) { return width == 2 ? 0x16 : width == 4 ? 0x20 : width == 16 ? 0x21 : 0; }
size_t service_uuid_width(uint8_t type) { return type == 0x16 ? 2 : type == 0x20 ? 4 : type == 0x21 ? 16 : 0; }

template <class Number> std::optional<Number> number_if(uint8_t has, Number number)
{
    return has ? std::optional(number) : std::nullopt;
}

// The type of a list or a name: one that is not said stands for a complete one.
uint8_t type_or(uint8_t type, uint8_t complete) { return type == 0 ? complete : type; }

nfc_ndef_bytes list_view(const Bytes &uuids) { return uuids.empty() ? nfc_ndef_bytes{} : bytes_view(uuids); }

void read_structure(const nfc_ndef_eir &structure, BluetoothLe &bluetooth)
{
    const ByteView data = view_of(structure.data);
    if (const size_t width = service_uuid_width(structure.type); width != 0)
        bluetooth.service_data.push_back({Bytes(data.begin(), data.begin() + std::ptrdiff_t(width)),
                                          Bytes(data.begin() + std::ptrdiff_t(width), data.end())});
    else if (structure.type == manufacturer_type)
        bluetooth.manufacturer_data.push_back({{data[0], data[1]}, Bytes(data.begin() + 2, data.end())});
    else
        bluetooth.other_structures.push_back({{structure.type}, Bytes(data.begin(), data.end())});
}

// The structures that have no field, in wire form; none when one of them has no wire form.
std::optional<Bytes> structures_of(const BluetoothLe &bluetooth)
{
    Bytes structures, data;
    bool ok = true;
    const auto add = [&](uint8_t type, ByteView first, ByteView rest) {
        data.assign(first.begin(), first.end());
        data.insert(data.end(), rest.begin(), rest.end());
        ok = ok && append(structures, nfc_ndef_eir_write, nfc_ndef_eir{bytes_view(data), type});
    };
    for (const ServiceData &entry : bluetooth.service_data) {
        ok = ok && service_data_type(entry.uuid.size()) != 0;
        add(service_data_type(entry.uuid.size()), entry.uuid, entry.data);
    }
    for (const ManufacturerData &entry : bluetooth.manufacturer_data)
        add(manufacturer_type, entry.manufacturer_id, entry.data);
    for (const Element<1> &structure : bluetooth.other_structures)
        add(structure.id[0], structure.data, {});
    return ok ? std::optional(std::move(structures)) : std::nullopt;
}

} // namespace

std::optional<BluetoothLe> Kind<BluetoothLe>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                   nfc_ndef_payload_report &report)
{
    nfc_ndef_bt_le read;
    if (!nfc_ndef_bt_le_read(record.payload, &read, &report))
        return std::nullopt;
    BluetoothLe bluetooth;
    bluetooth.device_address = optional_array_of<address_length>(read.device_address);
    bluetooth.address_type = number_if(read.has_address_type, read.address_type);
    bluetooth.le_role = number_if(read.has_le_role, read.le_role);
    bluetooth.security_manager_tk = optional_bytes_of(read.security_manager_tk);
    bluetooth.secure_connections_confirmation = optional_bytes_of(read.confirmation);
    bluetooth.secure_connections_random = optional_bytes_of(read.random_value);
    bluetooth.appearance = number_if(read.has_appearance, read.appearance);
    bluetooth.flags = number_if(read.has_flags, read.flags);
    bluetooth.local_name = optional_string_of(read.local_name);
    bluetooth.local_name_type = read.local_name_type;
    bluetooth.uuid16_list = bytes_of(read.uuid16_list);
    bluetooth.uuid16_list_type = read.uuid16_list_type;
    bluetooth.uuid32_list = bytes_of(read.uuid32_list);
    bluetooth.uuid32_list_type = read.uuid32_list_type;
    bluetooth.uuid128_list = bytes_of(read.uuid128_list);
    bluetooth.uuid128_list_type = read.uuid128_list_type;
    for (nfc_ndef_eir structure; nfc_ndef_bt_le_next(&read, &structure);)
        read_structure(structure, bluetooth);
    return bluetooth;
}

nfc_ndef::Record Kind<BluetoothLe>::make(const BluetoothLe &bluetooth)
{
    const std::optional<Bytes> structures = structures_of(bluetooth);
    if (!structures || !std::ranges::all_of(bluetooth.other_structures, is_other))
        return nullptr;
    nfc_ndef_bt_le lent{};
    if (bluetooth.device_address)
        lent.device_address = bytes_view(*bluetooth.device_address);
    lent.has_address_type = bluetooth.address_type.has_value();
    lent.address_type = bluetooth.address_type.value_or(0);
    lent.has_le_role = bluetooth.le_role.has_value();
    lent.le_role = bluetooth.le_role.value_or(0);
    lent.security_manager_tk = optional_bytes_view(bluetooth.security_manager_tk);
    lent.confirmation = optional_bytes_view(bluetooth.secure_connections_confirmation);
    lent.random_value = optional_bytes_view(bluetooth.secure_connections_random);
    lent.has_appearance = bluetooth.appearance.has_value();
    lent.appearance = bluetooth.appearance.value_or(0);
    lent.has_flags = bluetooth.flags.has_value();
    lent.flags = bluetooth.flags.value_or(0);
    lent.local_name = optional_bytes_view(bluetooth.local_name);
    lent.local_name_type = type_or(bluetooth.local_name_type, 9);
    lent.uuid16_list = list_view(bluetooth.uuid16_list);
    lent.uuid16_list_type = type_or(bluetooth.uuid16_list_type, 3);
    lent.uuid32_list = list_view(bluetooth.uuid32_list);
    lent.uuid32_list_type = type_or(bluetooth.uuid32_list_type, 5);
    lent.uuid128_list = list_view(bluetooth.uuid128_list);
    lent.uuid128_list_type = type_or(bluetooth.uuid128_list_type, 7);
    lent.structures = bytes_view(*structures);
    return nfc_ndef::Record(nfc_ndef_bt_le_record_create(&lent, {}));
}

std::string Kind<BluetoothLe>::summary(const BluetoothLe &bluetooth)
{
    return bluetooth.local_name ? shortened_and_quoted(*bluetooth.local_name) : "";
}

void Kind<BluetoothLe>::show(const BluetoothLe &, View &view) { show_structures(view.payload(), view); }

bool Kind<BluetoothLe>::is_other(const Element<1> &structure)
{
    Bytes bytes;
    if (!append(bytes, nfc_ndef_eir_write, nfc_ndef_eir{bytes_view(structure.data), structure.id[0]}))
        return false;
    nfc_ndef_bt_le alone{};
    alone.structures = bytes_view(bytes);
    nfc_ndef_eir found;
    return nfc_ndef_bt_le_next(&alone, &found) && service_uuid_width(found.type) == 0 &&
           found.type != manufacturer_type;
}

} // namespace nfc_ndef::values
