// A Wi-Fi configuration record (Wi-Fi Simple Configuration 2.0).
#pragma once

#include "../element.h"
#include "../kind.h"
#include "../spelling.h"

namespace nfc_ndef::values {

// Of the Wi-Fi Alliance, 00-37-2A, with its elements; else with data.
struct WifiExtension {
    std::array<uint8_t, 3> vendor_id{};
    Bytes data;
    std::optional<uint8_t> version2;
    std::optional<Bytes> authorized_macs;
    std::optional<uint8_t> network_key_shareable;
    std::optional<uint8_t> request_to_enroll;
    std::optional<uint8_t> settings_delay_time; // in seconds
    std::optional<uint16_t> registrar_configuration_methods;
    std::vector<Element<1>> other_elements; // with ids from 6
    bool operator==(const WifiExtension &) const = default;
};

// Of a record or of a credential. Bytes are in the order of the payload.
struct WifiAttributes {
    std::optional<std::array<uint8_t, 16>> uuid_e, uuid_r;
    std::optional<uint8_t> network_index;
    std::optional<std::string> ssid;
    std::optional<uint16_t> authentication_type, encryption_type; // bits
    std::optional<std::string> network_key;
    std::optional<uint8_t> rf_bands; // bits
    std::optional<uint16_t> ap_channel;
    std::optional<std::array<uint8_t, 6>> mac_address;
    std::optional<uint8_t> key_provided_automatically;
    std::optional<std::string> device_name, manufacturer, model_name, model_number, serial_number;
    std::optional<Bytes> primary_device_type;  // 8 bytes
    std::vector<Bytes> secondary_device_types; // of 8 bytes each
    std::optional<uint16_t> config_methods;    // bits
    std::optional<uint8_t> version;
    std::vector<Element<2>> other_attributes;
    std::vector<WifiExtension> vendor_extensions;
    bool operator==(const WifiAttributes &) const = default;
};

struct OobDevicePassword {
    std::array<uint8_t, 20> public_key_hash{};
    uint16_t password_id = 0;
    Bytes device_password; // empty with password id 7
    bool operator==(const OobDevicePassword &) const = default;
};

struct Wifi {
    bool length_prefix = false;
    std::vector<WifiAttributes> credentials;
    std::optional<OobDevicePassword> oob_device_password;
    WifiAttributes own; // attributes of the record itself
    bool operator==(const Wifi &) const = default;
};

inline constexpr Name wifi_authentications[] = {{0x0001, "open"},
                                                {0x0002, "wpa-personal", "WPA-Personal"},
                                                {0x0004, "shared", "shared key"},
                                                {0x0008, "wpa-enterprise", "WPA-Enterprise"},
                                                {0x0010, "wpa2-enterprise", "WPA2-Enterprise"},
                                                {0x0020, "wpa2-personal", "WPA2-Personal"}};
inline constexpr Name wifi_encryptions[] = {
    {0x0001, "none", "no encryption"}, {0x0002, "wep", "WEP"}, {0x0004, "tkip", "TKIP"}, {0x0008, "aes", "AES"}};
inline constexpr Name wifi_bands[] = {{0x01, "2.4GHz", "2.4 GHz"}, {0x02, "5GHz", "5 GHz"}, {0x04, "60GHz", "60 GHz"}};

template <> struct Kind<Wifi> : Leaf {
    static constexpr Type type = media("application/vnd.wfa.wsc");
    static constexpr std::string_view json = "wifi_configuration", title = "Wi-Fi network";
    static std::optional<Wifi> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                    nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const Wifi &wifi);
    static void show(const Wifi &wifi, View &view);
    static std::string summary(const Wifi &wifi);

    template <class Fields> static void map(Fields &fields, Value<Fields, Wifi> &wifi)
    {
        fields.flag("length_prefix", wifi.length_prefix, Presence::optional);
        fields.objects("credentials", wifi.credentials,
                       []<class Inner>(Inner &inner, Value<Inner, WifiAttributes> &credential) {
                           map_attributes(inner, credential, true);
                           const auto needs = [&](std::string_view name, bool is_there) {
                               inner.require(is_there, name, "is missing");
                           };
                           needs("ssid", credential.ssid.has_value());
                           needs("authentication_type", credential.authentication_type.has_value());
                           needs("encryption_type", credential.encryption_type.has_value());
                           needs("network_key", credential.network_key || is_open(credential));
                       });
        fields.object(
            "oob_device_password", wifi.oob_device_password,
            []<class Inner>(Inner &inner, Value<Inner, OobDevicePassword> &password) {
                inner.bytes("public_key_hash", password.public_key_hash);
                inner.number("password_id", password.password_id);
                const bool in_handover = password.password_id == 7;
                inner.require(in_handover || password.password_id >= 16, "password_id", "must be 7 or at least 16");
                inner.bytes("device_password", password.device_password, at_most(32));
                inner.require(in_handover ? password.device_password.empty() : password.device_password.size() >= 16,
                              "device_password", "must be 16 to 32 bytes, or none with password_id 7");
            });
        map_attributes(fields, wifi.own, false);
    }

private:
    template <class Fields>
    static void map_attributes(Fields &fields, Value<Fields, WifiAttributes> &attributes, bool of_credential)
    {
        constexpr auto as_stored = Spelling::Order::as_stored;
        fields.spelled("uuid_e", attributes.uuid_e, uuid(16, as_stored));
        fields.spelled("uuid_r", attributes.uuid_r, uuid(16, as_stored));
        fields.number("network_index", attributes.network_index);
        fields.text_or_hex("ssid", attributes.ssid, at_most(32));
        fields.bit_set("authentication_type", attributes.authentication_type, wifi_authentications);
        fields.bit_set("encryption_type", attributes.encryption_type, wifi_encryptions);
        fields.text_or_hex("network_key", attributes.network_key, at_most(64));
        fields.bit_set("rf_bands", attributes.rf_bands, wifi_bands);
        fields.number("ap_channel", attributes.ap_channel);
        fields.spelled("mac_address", attributes.mac_address, address(as_stored));
        fields.boolean("key_provided_automatically", attributes.key_provided_automatically);
        fields.text_or_hex("device_name", attributes.device_name, at_most(32));
        fields.text_or_hex("manufacturer", attributes.manufacturer, at_most(64));
        fields.text_or_hex("model_name", attributes.model_name, at_most(32));
        fields.text_or_hex("model_number", attributes.model_number, at_most(32));
        fields.text_or_hex("serial_number", attributes.serial_number, at_most(32));
        fields.bytes("primary_device_type", attributes.primary_device_type, exactly(8));
        fields.byte_strings("secondary_device_types", attributes.secondary_device_types, exactly(8), at_most(16));
        fields.number("config_methods", attributes.config_methods);
        fields.version("version", attributes.version);
        fields.objects("other_attributes", attributes.other_attributes,
                       [of_credential]<class Inner>(Inner &inner, Value<Inner, Element<2>> &attribute) {
                           inner.bytes("id", attribute.id);
                           inner.bytes("data", attribute.data, at_most(65535));
                           inner.require(is_other(attribute, of_credential), "id",
                                         "has a member of its own, or is below 1000");
                       });
        fields.objects(
            "vendor_extensions", attributes.vendor_extensions,
            []<class Inner>(Inner &inner, Value<Inner, WifiExtension> &extension) { map_extension(inner, extension); });
    }

    template <class Fields> static void map_extension(Fields &fields, Value<Fields, WifiExtension> &extension)
    {
        fields.bytes("vendor_id", extension.vendor_id);
        fields.bytes("data", extension.data, at_most(1021));
        fields.version("version2", extension.version2);
        fields.spelled_list("authorized_macs", extension.authorized_macs, address(Spelling::Order::as_stored),
                            at_most(5));
        fields.boolean("network_key_shareable", extension.network_key_shareable);
        fields.boolean("request_to_enroll", extension.request_to_enroll);
        fields.number("settings_delay_time", extension.settings_delay_time);
        fields.number("registrar_configuration_methods", extension.registrar_configuration_methods);
        fields.objects("other_elements", extension.other_elements,
                       []<class Inner>(Inner &inner, Value<Inner, Element<1>> &element) {
                           inner.bytes("id", element.id);
                           inner.require(element.id[0] > 5, "id", "has a member of its own");
                           inner.bytes("data", element.data, at_most(255));
                       });
        fields.require(holds_one_form(extension), "", "has elements only with vendor_id 00372A and without data");
    }

    static bool is_open(const WifiAttributes &credential);
    static bool is_other(const Element<2> &attribute, bool of_credential);
    static bool holds_one_form(const WifiExtension &extension);
};

} // namespace nfc_ndef::values
