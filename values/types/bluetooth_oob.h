// A Bluetooth out-of-band record (NFC Forum Bluetooth Secure Simple Pairing Using NFC; Bluetooth Core, Supplement,
// Part A).
#pragma once

#include "../kind.h"
#include "../spelling.h"

#include <array>

namespace nfc_ndef::values {

struct ManufacturerData {
    std::array<uint8_t, 2> manufacturer_id{};
    Bytes data;
    bool operator==(const ManufacturerData &) const = default;
};

// Addresses, classes and UUIDs are in payload byte order.
struct BluetoothOob {
    std::array<uint8_t, 6> device_address{};
    std::optional<std::array<uint8_t, 3>> class_of_device; // what is built always has one, of zeros when there is none
    uint8_t local_name_type = 0;                           // 8 shortened, 9 complete; 0: complete, or no name
    std::string local_name;
    Bytes hash_c;
    Bytes randomizer_r;
    uint8_t uuid16_list_type = 0; // 2 incomplete, 3 complete; 0: complete, or no list
    Bytes uuid16_list;
    uint8_t uuid32_list_type = 0; // 4 incomplete, 5 complete; 0: complete, or no list
    Bytes uuid32_list;
    uint8_t uuid128_list_type = 0; // 6 incomplete, 7 complete; 0: complete, or no list
    Bytes uuid128_list;
    std::vector<ManufacturerData> manufacturer_data;
    bool operator==(const BluetoothOob &) const = default;
};

template <> struct Kind<BluetoothOob> : Leaf {
    static constexpr Type type = media("application/vnd.bluetooth.ep.oob");
    static constexpr std::string_view json = "bt_2_1_configuration_data", title = "Bluetooth OOB";
    static std::optional<BluetoothOob> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                            nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const BluetoothOob &bluetooth);
    static void show(const BluetoothOob &bluetooth, View &view);
    static std::string summary(const BluetoothOob &bluetooth);

    template <class Fields> static void map(Fields &fields, Value<Fields, BluetoothOob> &bluetooth)
    {
        static constexpr Name name_types[] = {{8, "shortened"}, {9, "complete"}};
        static constexpr Name uuid16_types[] = {{2, "incomplete"}, {3, "complete"}};
        static constexpr Name uuid32_types[] = {{4, "incomplete"}, {5, "complete"}};
        static constexpr Name uuid128_types[] = {{6, "incomplete"}, {7, "complete"}};
        const auto list = [&](std::string_view name, auto &uuids, size_t width, std::string_view type_name,
                              auto &list_type, Names types) {
            fields.spelled_list(name, uuids, uuid(width), at_most(254 / width));
            fields.choice(type_name, list_type, types, Presence::optional);
            fields.needs(name, type_name);
        };
        fields.spelled("device_address", bluetooth.device_address, address(Spelling::Order::reversed));
        fields.spelled("class_of_device", bluetooth.class_of_device, class_of_device(Spelling::Order::reversed),
                       Presence::required);
        fields.text_or_hex("local_name", bluetooth.local_name, at_most(254));
        fields.choice("local_name_type", bluetooth.local_name_type, name_types, Presence::optional);
        fields.needs("local_name", "local_name_type");
        fields.bytes("hash_c", bluetooth.hash_c, exactly(16));
        fields.bytes("randomizer_r", bluetooth.randomizer_r, exactly(16));
        fields.needs("randomizer_r", "hash_c");
        list("uuid16_list", bluetooth.uuid16_list, 2, "uuid16_list_type", bluetooth.uuid16_list_type, uuid16_types);
        list("uuid32_list", bluetooth.uuid32_list, 4, "uuid32_list_type", bluetooth.uuid32_list_type, uuid32_types);
        list("uuid128_list", bluetooth.uuid128_list, 16, "uuid128_list_type", bluetooth.uuid128_list_type,
             uuid128_types);
        fields.objects("manufacturer_data", bluetooth.manufacturer_data,
                       []<class Inner>(Inner &inner, Value<Inner, ManufacturerData> &entry) {
                           inner.bytes("manufacturer_id", entry.manufacturer_id);
                           inner.bytes("data", entry.data, at_most(252));
                       });
    }
};

} // namespace nfc_ndef::values
