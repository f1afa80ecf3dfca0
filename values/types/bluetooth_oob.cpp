#include "bluetooth_oob.h"

#include "../bluetooth/structures.h"
#include "../extract.h"

#include <algorithm>

namespace nfc_ndef::values {

namespace {

constexpr size_t first_structure = 8; // behind the length and the address

// What the extractor drops: the types of the name and of the UUID lists, and whether there is a class of device. The
// payload is one that it accepted: no structure runs past the end, and none of these is there twice.
void read_types(ByteView payload, BluetoothOob &bluetooth, const uint8_t (&device_class)[3])
{
    Structures structures(payload.subspan(first_structure));
    while (const auto structure = structures.next()) {
        const uint8_t type = structure->type;
        if (type == 0x0D)
            std::ranges::copy(device_class, bluetooth.class_of_device.emplace().begin());
        else if (structure->data.empty())
            continue; // an empty name or list, beside which there may be another
        else if (type == 2 || type == 3)
            bluetooth.uuid16_list_type = type;
        else if (type == 4 || type == 5)
            bluetooth.uuid32_list_type = type;
        else if (type == 6 || type == 7)
            bluetooth.uuid128_list_type = type;
        else if (type == 8 || type == 9)
            bluetooth.local_name_type = type;
    }
}

uint8_t type_or(uint8_t type, uint8_t complete, bool present) { return !present ? 0 : type == 0 ? complete : type; }

} // namespace

std::optional<BluetoothOob> Kind<BluetoothOob>::read(const nfc_ndef_record &record, const Nesting &)
{
    nfc_ndef::BluetoothOob fields;
    if (rtdlib_bt_2_1_configuration_data_record_extract(&record, out(fields)) != 1)
        return std::nullopt;
    BluetoothOob bluetooth;
    std::ranges::copy(fields->device_address, bluetooth.device_address.begin());
    bluetooth.local_name = copy_of<std::string>(fields->local_name, fields->local_name_length);
    bluetooth.hash_c = copy_of(fields->hash_c, fields->hash_c_length);
    bluetooth.randomizer_r = copy_of(fields->randomizer_r, fields->randomizer_r_length);
    bluetooth.uuid16_list = copy_of(fields->uuid16_list, fields->uuid16_list_length);
    bluetooth.uuid32_list = copy_of(fields->uuid32_list, fields->uuid32_list_length);
    bluetooth.uuid128_list = copy_of(fields->uuid128_list, fields->uuid128_list_length);
    for (uint8_t i = 0; i < fields->manufacturer_data_count; ++i) {
        ManufacturerData entry;
        std::copy_n(fields->manufacturer_ids[i], entry.manufacturer_id.size(), entry.manufacturer_id.begin());
        entry.data = copy_of(fields->manufacturer_data[i], fields->manufacturer_data_lengths[i]);
        bluetooth.manufacturer_data.push_back(std::move(entry));
    }
    read_types({record.payload, record.payload_length}, bluetooth, fields->class_of_device);
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
void Kind<BluetoothOob>::show(const BluetoothOob &bluetooth, View &view)
{
    const ByteView payload = view.payload();
    view.field("device address", address(Spelling::Order::reversed).text_of(bluetooth.device_address));
    show_structures(payload.subspan(std::min(first_structure, payload.size())), view);
}

} // namespace nfc_ndef::values
