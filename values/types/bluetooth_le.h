// A Bluetooth LE out-of-band record (NFC Forum Bluetooth Secure Simple Pairing Using NFC; Bluetooth Core, Supplement,
// Part A).
#pragma once

#include "../element.h"
#include "../kind.h"
#include "../spelling.h"
#include "bluetooth_oob.h"

namespace nfc_ndef::values {

struct ServiceData {
    Bytes uuid; // 2, 4 or 16 bytes
    Bytes data;
    bool operator==(const ServiceData &) const = default;
};

// Addresses and UUIDs are in payload byte order.
struct BluetoothLe {
    std::optional<std::array<uint8_t, 6>> device_address;
    std::optional<uint8_t> address_type; // 0 public, 1 random; only with an address
    std::optional<uint8_t> le_role;      // 0 to 3
    std::optional<Bytes> security_manager_tk;
    std::optional<Bytes> secure_connections_confirmation;
    std::optional<Bytes> secure_connections_random;
    std::optional<uint16_t> appearance;
    std::optional<uint8_t> flags;
    std::optional<std::string> local_name;
    uint8_t local_name_type = 0; // 8 shortened, 9 complete; 0: complete, or no name
    Bytes uuid16_list;
    uint8_t uuid16_list_type = 0; // 2 incomplete, 3 complete; 0: complete, or no list
    Bytes uuid32_list;
    uint8_t uuid32_list_type = 0; // 4 incomplete, 5 complete; 0: complete, or no list
    Bytes uuid128_list;
    uint8_t uuid128_list_type = 0; // 6 incomplete, 7 complete; 0: complete, or no list
    std::vector<ServiceData> service_data;
    std::vector<ManufacturerData> manufacturer_data;
    std::vector<Element<1>> other_structures;
    bool operator==(const BluetoothLe &) const = default;
};

template <> struct Kind<BluetoothLe> : Leaf {
    static constexpr Type type = media("application/vnd.bluetooth.le.oob");
    static constexpr std::string_view json = "bt_le_configuration_data", title = "Bluetooth LE OOB";
    static std::optional<BluetoothLe> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                           nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const BluetoothLe &bluetooth);
    static void show(const BluetoothLe &bluetooth, View &view);
    static std::string summary(const BluetoothLe &bluetooth);

    template <class Fields> static void map(Fields &fields, Value<Fields, BluetoothLe> &bluetooth)
    {
        static constexpr Name address_types[] = {{0, "public"}, {1, "random"}};
        static constexpr Name roles[] = {
            {0, "peripheral"}, {1, "central"}, {2, "peripheral-preferred"}, {3, "central-preferred"}};
        static constexpr Name flag_names[] = {{0x01, "le-limited-discoverable"},
                                              {0x02, "le-general-discoverable"},
                                              {0x04, "br-edr-not-supported"},
                                              {0x08, "simultaneous-controller"},
                                              {0x10, "simultaneous-host"}};
        static constexpr Name name_types[] = {{8, "shortened"}, {9, "complete"}};
        static constexpr Name uuid16_types[] = {{2, "incomplete"}, {3, "complete"}};
        static constexpr Name uuid32_types[] = {{4, "incomplete"}, {5, "complete"}};
        static constexpr Name uuid128_types[] = {{6, "incomplete"}, {7, "complete"}};
        const auto list = [&](std::string_view name, auto &uuids, size_t width, std::string_view type_name,
                              auto &list_type, Names types) {
            fields.spelled_list(name, uuids, uuid(width), at_most(longest_structure / width));
            fields.choice(type_name, list_type, types, Presence::optional);
            fields.needs(type_name, name);
        };
        fields.spelled("device_address", bluetooth.device_address, address(Spelling::Order::reversed));
        fields.enumeration("address_type", bluetooth.address_type, address_types);
        fields.needs("address_type", "device_address");
        fields.enumeration("le_role", bluetooth.le_role, roles);
        fields.bytes("security_manager_tk", bluetooth.security_manager_tk, exactly(16));
        fields.bytes("secure_connections_confirmation", bluetooth.secure_connections_confirmation, exactly(16));
        fields.bytes("secure_connections_random", bluetooth.secure_connections_random, exactly(16));
        fields.number("appearance", bluetooth.appearance);
        fields.bit_set("flags", bluetooth.flags, flag_names);
        fields.text_or_hex("local_name", bluetooth.local_name, at_most(longest_structure));
        fields.choice("local_name_type", bluetooth.local_name_type, name_types, Presence::optional);
        fields.require(bluetooth.local_name || bluetooth.local_name_type == 0, "local_name_type",
                       "is for a local_name only");
        list("uuid16_list", bluetooth.uuid16_list, 2, "uuid16_list_type", bluetooth.uuid16_list_type, uuid16_types);
        list("uuid32_list", bluetooth.uuid32_list, 4, "uuid32_list_type", bluetooth.uuid32_list_type, uuid32_types);
        list("uuid128_list", bluetooth.uuid128_list, 16, "uuid128_list_type", bluetooth.uuid128_list_type,
             uuid128_types);
        fields.objects("service_data", bluetooth.service_data,
                       []<class Inner>(Inner &inner, Value<Inner, ServiceData> &entry) {
                           static constexpr Spelling widths[] = {uuid(2), uuid(4), uuid(16)};
                           inner.spelled_as_one_of("uuid", entry.uuid, widths);
                           inner.bytes("data", entry.data, at_most(longest_structure - entry.uuid.size()));
                       });
        fields.objects("manufacturer_data", bluetooth.manufacturer_data,
                       []<class Inner>(Inner &inner, Value<Inner, ManufacturerData> &entry) {
                           inner.bytes("manufacturer_id", entry.manufacturer_id);
                           inner.bytes("data", entry.data, at_most(longest_structure - 2));
                       });
        fields.objects("other_structures", bluetooth.other_structures,
                       []<class Inner>(Inner &inner, Value<Inner, Element<1>> &structure) {
                           inner.bytes("type", structure.id);
                           inner.bytes("data", structure.data, at_most(longest_structure));
                           inner.require(is_other(structure), "type", "has a member of its own");
                       });
    }

private:
    static constexpr size_t longest_structure = 254;

    // Whether a structure has no member of its own.
    static bool is_other(const Element<1> &structure);
};

} // namespace nfc_ndef::values
