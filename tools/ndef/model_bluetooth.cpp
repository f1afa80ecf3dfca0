// Bluetooth pairing and the vendor's records.
#include "model_parts.h"

#include <algorithm>
#include <span>

namespace model {

using nfc_ndef::Block;
using nfc_ndef::out;

namespace {

// The types of the name and of the UUID lists (Bluetooth Core, Supplement, Part A), which the extractor drops. The
// payload is one that it accepted: no structure runs past the end, and none of these is there twice.
void read_list_types(const nfc_ndef_record &record, BluetoothOob &bluetooth)
{
    constexpr size_t first_structure = 8;
    const std::span<const uint8_t> payload(record.payload, record.payload_length);
    for (size_t i = first_structure; i + 1 < payload.size(); i += 1 + size_t{payload[i]}) {
        const uint8_t type = payload[i + 1];
        if (payload[i] <= 1) // padding, or a structure without data, such as an empty list
            continue;
        if (type == 2 || type == 3)
            bluetooth.uuid16_list_type = type;
        else if (type == 4 || type == 5)
            bluetooth.uuid32_list_type = type;
        else if (type == 6 || type == 7)
            bluetooth.uuid128_list_type = type;
        else if (type == 8 || type == 9)
            bluetooth.local_name_type = type;
    }
}

} // namespace

Content read_bluetooth_oob(const nfc_ndef_record &record, const Nesting &)
{
    nfc_ndef::BluetoothOob fields;
    if (rtdlib_bt_2_1_configuration_data_record_extract(&record, out(fields)) != 1)
        return malformed;
    BluetoothOob bluetooth;
    std::ranges::copy(fields->device_address, bluetooth.device_address.begin());
    std::ranges::copy(fields->class_of_device, bluetooth.class_of_device.begin());
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
    read_list_types(record, bluetooth);
    return bluetooth;
}

nfc_ndef::Record make(const BluetoothOob &bluetooth)
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
    std::ranges::copy(bluetooth.class_of_device, fields.class_of_device);
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
    return nfc_ndef::Record(rtdlib_bt_2_1_configuration_data_record_create(
        &fields, bluetooth.local_name_type, bluetooth.uuid16_list_type, bluetooth.uuid32_list_type,
        bluetooth.uuid128_list_type, nullptr, 0, 0));
}

Content read_bluetooth_legacy(const nfc_ndef_record &record, const Nesting &)
{
    nfc_ndef::BluetoothLegacy fields;
    if (rtdlib_bt_configuration_data_record_extract(&record, out(fields)) != 1)
        return malformed;
    BluetoothLegacy bluetooth;
    std::ranges::copy(fields->device_address, bluetooth.device_address.begin());
    std::ranges::copy(fields->class_of_device, bluetooth.class_of_device.begin());
    bluetooth.pairing_type = fields->pairing_type;
    bluetooth.pairing_data = copy_of(fields->pairing_data, fields->pairing_data_length);
    bluetooth.local_name = copy_of<std::string>(fields->local_name, fields->local_name_length);
    return bluetooth;
}

nfc_ndef::Record make(const BluetoothLegacy &bluetooth)
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

Content read_sharing_enquiry(const nfc_ndef_record &record, const Nesting &)
{
    SharingEnquiry enquiry;
    uint8_t length = 0;
    Block<> data;
    const int8_t result =
        rtdlib_sharing_enquiry_record_extract(&record, &enquiry.enquiry_type, &length, out(data), &enquiry.version);
    if (result != 1)
        return malformed;
    enquiry.enquiry_data = copy_of(data, length);
    return enquiry;
}

nfc_ndef::Record make(const SharingEnquiry &enquiry)
{
    if (!fit_in_a_byte(enquiry.enquiry_data.size()))
        return nullptr;
    return nfc_ndef::Record(rtdlib_sharing_enquiry_record_create(enquiry.enquiry_type,
                                                                 static_cast<uint8_t>(enquiry.enquiry_data.size()),
                                                                 pointer_to(enquiry.enquiry_data), enquiry.version));
}

} // namespace model
