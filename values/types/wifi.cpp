#include "wifi.h"

#include "../c_interface.h"
#include "../printable.h"

#include <fmt/format.h>

#include <algorithm>

namespace nfc_ndef::values {

namespace {

constexpr uint16_t vendor_extension_id = 0x1049;
constexpr std::array<uint8_t, 3> wifi_alliance{0x00, 0x37, 0x2A};
constexpr size_t device_type_length = 8;
constexpr std::array<uint8_t, 6> any_device{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

template <class Number> std::optional<Number> number_if(uint8_t has, Number number)
{
    return has ? std::optional(number) : std::nullopt;
}
template <class Number> void lend(const std::optional<Number> &value, uint8_t &has, Number &number)
{
    has = value.has_value();
    number = value.value_or(Number{});
}

WifiExtension extension_of(const nfc_ndef_bytes &value)
{
    const ByteView bytes = view_of(value);
    WifiExtension extension;
    std::copy_n(bytes.begin(), extension.vendor_id.size(), extension.vendor_id.begin());
    nfc_ndef_wifi_extension read;
    if (!nfc_ndef_wifi_extension_read(value, &read)) {
        extension.data.assign(bytes.begin() + std::ssize(extension.vendor_id), bytes.end());
        return extension;
    }
    extension.version2 = number_if(read.has_version2, read.version2);
    extension.authorized_macs = optional_bytes_of(read.authorized_macs);
    extension.network_key_shareable = number_if(read.has_network_key_shareable, read.network_key_shareable);
    extension.request_to_enroll = number_if(read.has_request_to_enroll, read.request_to_enroll);
    extension.settings_delay_time = number_if(read.has_settings_delay_time, read.settings_delay_time);
    extension.registrar_configuration_methods =
        number_if(read.has_registrar_configuration_methods, read.registrar_configuration_methods);
    for (nfc_ndef_element element; nfc_ndef_wifi_extension_next(&read, &element);)
        extension.other_elements.push_back({{static_cast<uint8_t>(element.id)}, bytes_of(element.data)});
    return extension;
}

WifiAttributes attributes_of(nfc_ndef_wifi_attributes read)
{
    WifiAttributes attributes;
    attributes.uuid_e = optional_array_of<16>(read.uuid_e);
    attributes.uuid_r = optional_array_of<16>(read.uuid_r);
    attributes.network_index = number_if(read.has_network_index, read.network_index);
    attributes.ssid = optional_string_of(read.ssid);
    attributes.authentication_type = number_if(read.has_authentication_type, read.authentication_type);
    attributes.encryption_type = number_if(read.has_encryption_type, read.encryption_type);
    attributes.network_key = optional_string_of(read.network_key);
    attributes.rf_bands = number_if(read.has_rf_bands, read.rf_bands);
    attributes.ap_channel = number_if(read.has_ap_channel, read.ap_channel);
    attributes.mac_address = optional_array_of<6>(read.mac_address);
    attributes.key_provided_automatically =
        number_if(read.has_key_provided_automatically, read.key_provided_automatically);
    attributes.device_name = optional_string_of(read.device_name);
    attributes.manufacturer = optional_string_of(read.manufacturer);
    attributes.model_name = optional_string_of(read.model_name);
    attributes.model_number = optional_string_of(read.model_number);
    attributes.serial_number = optional_string_of(read.serial_number);
    attributes.primary_device_type = optional_bytes_of(read.primary_device_type);
    for (ByteView left = view_of(read.secondary_device_types); !left.empty(); left = left.subspan(device_type_length))
        attributes.secondary_device_types.emplace_back(left.begin(), left.begin() + device_type_length);
    attributes.config_methods = number_if(read.has_config_methods, read.config_methods);
    attributes.version = number_if(read.has_version, read.version);
    for (nfc_ndef_element element; nfc_ndef_wifi_next_attribute(&read, &element);)
        if (element.id == vendor_extension_id)
            attributes.vendor_extensions.push_back(extension_of(element.data));
        else
            attributes.other_attributes.push_back(
                {{static_cast<uint8_t>(element.id >> 8), static_cast<uint8_t>(element.id)}, bytes_of(element.data)});
    return attributes;
}

nfc_ndef_element lent(const Element<2> &attribute)
{
    return {bytes_view(attribute.data), static_cast<uint16_t>(attribute.id[0] << 8 | attribute.id[1])};
}

// Appends an extension as an attribute; false when it has no wire form.
bool append_extension(Bytes &list, const WifiExtension &extension)
{
    if (extension.vendor_id != wifi_alliance || !extension.data.empty()) {
        Bytes value(extension.vendor_id.begin(), extension.vendor_id.end());
        value.insert(value.end(), extension.data.begin(), extension.data.end());
        return append(list, nfc_ndef_wifi_attribute_write, nfc_ndef_element{bytes_view(value), vendor_extension_id});
    }
    Bytes elements;
    for (const Element<1> &element : extension.other_elements)
        if (!append(elements, nfc_ndef_wifi_extension_element_write,
                    nfc_ndef_element{bytes_view(element.data), element.id[0]}))
            return false;
    nfc_ndef_wifi_extension lent{};
    lent.authorized_macs = optional_bytes_view(extension.authorized_macs);
    lent.elements = bytes_view(elements);
    lend(extension.version2, lent.has_version2, lent.version2);
    lend(extension.network_key_shareable, lent.has_network_key_shareable, lent.network_key_shareable);
    lend(extension.request_to_enroll, lent.has_request_to_enroll, lent.request_to_enroll);
    lend(extension.settings_delay_time, lent.has_settings_delay_time, lent.settings_delay_time);
    lend(extension.registrar_configuration_methods, lent.has_registrar_configuration_methods,
         lent.registrar_configuration_methods);
    return append(list, nfc_ndef_wifi_extension_write, lent);
}

// Attributes as the library takes them, with what lies in wire form.
struct LentAttributes {
    explicit LentAttributes(const WifiAttributes &from)
    {
        for (const Element<2> &attribute : from.other_attributes)
            ok = ok && append(list, nfc_ndef_wifi_attribute_write, lent(attribute));
        for (const WifiExtension &extension : from.vendor_extensions)
            ok = ok && append_extension(list, extension);
        for (const Bytes &type : from.secondary_device_types) {
            ok = ok && type.size() == device_type_length;
            secondary_device_types.insert(secondary_device_types.end(), type.begin(), type.end());
        }
        to.uuid_e = optional_bytes_view(from.uuid_e);
        to.uuid_r = optional_bytes_view(from.uuid_r);
        to.ssid = optional_bytes_view(from.ssid);
        to.network_key = optional_bytes_view(from.network_key);
        to.mac_address = optional_bytes_view(from.mac_address);
        to.device_name = optional_bytes_view(from.device_name);
        to.manufacturer = optional_bytes_view(from.manufacturer);
        to.model_name = optional_bytes_view(from.model_name);
        to.model_number = optional_bytes_view(from.model_number);
        to.serial_number = optional_bytes_view(from.serial_number);
        to.primary_device_type = optional_bytes_view(from.primary_device_type);
        if (!secondary_device_types.empty())
            to.secondary_device_types = bytes_view(secondary_device_types);
        to.attributes = bytes_view(list);
        lend(from.authentication_type, to.has_authentication_type, to.authentication_type);
        lend(from.encryption_type, to.has_encryption_type, to.encryption_type);
        lend(from.ap_channel, to.has_ap_channel, to.ap_channel);
        lend(from.config_methods, to.has_config_methods, to.config_methods);
        lend(from.network_index, to.has_network_index, to.network_index);
        lend(from.rf_bands, to.has_rf_bands, to.rf_bands);
        lend(from.key_provided_automatically, to.has_key_provided_automatically, to.key_provided_automatically);
        lend(from.version, to.has_version, to.version);
    }
    LentAttributes(const LentAttributes &) = delete;
    LentAttributes &operator=(const LentAttributes &) = delete;

    nfc_ndef_wifi_attributes to{};
    bool ok = true;

private:
    Bytes list, secondary_device_types;
};

std::string titles_of(uint32_t bits, Names names)
{
    std::string text;
    const auto add = [&](std::string_view title) { text.append(text.empty() ? "" : ", ").append(title); };
    for (const Name &name : names)
        if ((bits & name.value) != 0) {
            add(names.title_of(name.value));
            bits &= ~name.value;
        }
    if (bits != 0 || text.empty())
        add(fmt::format("0x{:04X}", bits));
    return text;
}

std::string security_of(const WifiAttributes &network)
{
    const std::string authentication =
        network.authentication_type ? titles_of(*network.authentication_type, wifi_authentications) : "not said";
    return network.encryption_type
               ? fmt::format("{}; {}", authentication, titles_of(*network.encryption_type, wifi_encryptions))
               : authentication;
}

void show_network(const WifiAttributes &network, View &view)
{
    if (network.ssid)
        view.text("network", view_of(*network.ssid));
    if (network.authentication_type || network.encryption_type)
        view.field("security", security_of(network));
    if (network.network_key && !network.network_key->empty())
        view.text("key", view_of(*network.network_key));
    if (network.mac_address)
        view.field("MAC address", *network.mac_address == any_device
                                      ? "any"
                                      : address(Spelling::Order::as_stored).text_of(*network.mac_address));
    if (network.rf_bands)
        view.field("bands", titles_of(*network.rf_bands, wifi_bands));
    if (network.ap_channel)
        view.field("channel", fmt::format("{}", *network.ap_channel));
}

constexpr Name other_names[] = {
    {0x1002, "association state"},     {0x1004, "authentication type flags"},
    {0x1010, "encryption type flags"}, {0x1012, "device password id"},
    {0x1028, "network key index"},     {0x102D, "OS version"},
    {0x103A, "request type"},          {0x1044, "setup state"},
    {0x104D, "EAP identity"},          {0x1059, "EAP type"},
    {0x1062, "802.1X enabled"},        {0x1064, "WEP transmit key"},
};

constexpr Name config_methods[] = {
    {0x0001, "USB"},
    {0x0002, "Ethernet"},
    {0x0004, "label"},
    {0x0008, "display"},
    {0x0010, "external NFC token"},
    {0x0020, "integrated NFC token"},
    {0x0040, "NFC interface"},
    {0x0080, "push button"},
    {0x0100, "keypad"},
    {0x0200, "virtual push button"},
    {0x0400, "physical push button"},
    {0x1000, "P2P services"},
    {0x2000, "virtual display"},
    {0x4000, "physical display"},
};

constexpr Name device_categories[] = {{1, "computer"}, {2, "input device"}, {3, "printer"}, {4, "camera"},
                                      {5, "storage"},  {6, "network"},      {7, "display"}, {8, "multimedia"},
                                      {9, "gaming"},   {10, "telephone"},   {11, "audio"},  {12, "dock"}};

std::string device_type_text(ByteView type)
{
    const uint32_t category = static_cast<uint32_t>(type[0] << 8 | type[1]);
    return fmt::format("{} ({})", Names(device_categories).title_of(category), hex_of(type));
}

void show_device(const WifiAttributes &device, View &view)
{
    const auto text = [&](std::string_view name, const std::optional<std::string> &value) {
        if (value)
            view.text(name, view_of(*value));
    };
    const auto uuid_field = [&](std::string_view name, const auto &value) {
        if (value)
            view.field(name, uuid(16, Spelling::Order::as_stored).text_of(*value));
    };
    text("device", device.device_name);
    text("manufacturer", device.manufacturer);
    text("model", device.model_name);
    text("model number", device.model_number);
    text("serial number", device.serial_number);
    if (device.primary_device_type)
        view.field("device type", device_type_text(*device.primary_device_type));
    for (const Bytes &type : device.secondary_device_types)
        view.field("also", device_type_text(type));
    if (device.config_methods)
        view.field("configured by", titles_of(*device.config_methods, config_methods));
    uuid_field("enrollee", device.uuid_e);
    uuid_field("registrar", device.uuid_r);
    if (device.key_provided_automatically)
        view.field("key provided automatically", *device.key_provided_automatically == 1 ? "yes" : "no");
    if (device.version)
        view.field("version", version_text(*device.version));
}

void show_extension(const WifiExtension &extension, View &view)
{
    if (extension.vendor_id != wifi_alliance || !extension.data.empty())
        return view.field(fmt::format("extension of {}", hex_of(extension.vendor_id, "-")),
                          extension.data.empty() ? "empty" : count_of(extension.data.size(), "byte"));
    if (extension.version2)
        view.field("version 2", version_text(*extension.version2));
    for (ByteView left = extension.authorized_macs ? ByteView(*extension.authorized_macs) : ByteView(); !left.empty();
         left = left.subspan(6))
        view.field("may enroll", address(Spelling::Order::as_stored).text_of(left.first(6)));
    if (extension.network_key_shareable)
        view.field("key may be handed on", *extension.network_key_shareable == 1 ? "yes" : "no");
    if (extension.request_to_enroll)
        view.field("wants to enroll", *extension.request_to_enroll == 1 ? "yes" : "no");
    if (extension.settings_delay_time)
        view.field("settings take", count_of(*extension.settings_delay_time, "second"));
    if (extension.registrar_configuration_methods)
        view.field("registrar configured by", titles_of(*extension.registrar_configuration_methods, config_methods));
    for (const Element<1> &element : extension.other_elements)
        view.bytes(fmt::format("element 0x{:02X}", element.id[0]), element.data);
}

void show_attributes(const WifiAttributes &attributes, View &view)
{
    show_network(attributes, view);
    show_device(attributes, view);
    for (const Element<2> &attribute : attributes.other_attributes) {
        const uint32_t id = lent(attribute).id;
        const auto name = Names(other_names).name_of(id);
        view.bytes(name ? std::string(*name) : fmt::format("attribute 0x{:04X}", id), attribute.data);
    }
    for (const WifiExtension &extension : attributes.vendor_extensions)
        show_extension(extension, view);
}

} // namespace

std::optional<Wifi> Kind<Wifi>::read(const nfc_ndef_record_view &record, const Nesting &,
                                     nfc_ndef_payload_report &report)
{
    nfc_ndef_wifi read;
    if (!nfc_ndef_wifi_read(record.payload, &read, &report))
        return std::nullopt;
    Wifi wifi;
    wifi.length_prefix = read.length_prefix != 0;
    nfc_ndef_wifi left = read;
    for (nfc_ndef_wifi_attributes credential; nfc_ndef_wifi_next_credential(&left, &credential);)
        wifi.credentials.push_back(attributes_of(credential));
    if (const auto hash = optional_array_of<20>(read.public_key_hash))
        wifi.oob_device_password = {*hash, read.password_id, bytes_of(read.device_password)};
    wifi.own = attributes_of(read.own);
    return wifi;
}

nfc_ndef::Record Kind<Wifi>::make(const Wifi &wifi)
{
    Bytes credentials;
    for (const WifiAttributes &credential : wifi.credentials) {
        const LentAttributes attributes(credential);
        if (!attributes.ok || !append(credentials, nfc_ndef_wifi_credential_write, attributes.to))
            return nullptr;
    }
    const LentAttributes own(wifi.own);
    if (!own.ok)
        return nullptr;
    nfc_ndef_wifi lent{};
    lent.credentials = bytes_view(credentials);
    lent.own = own.to;
    lent.length_prefix = wifi.length_prefix;
    if (const auto &password = wifi.oob_device_password) {
        lent.public_key_hash = bytes_view(password->public_key_hash);
        lent.password_id = password->password_id;
        lent.device_password = bytes_view(password->device_password);
    }
    return nfc_ndef::Record(nfc_ndef_wifi_record_create(&lent, {}));
}

std::string Kind<Wifi>::summary(const Wifi &wifi)
{
    const WifiAttributes &network = wifi.credentials.empty() ? wifi.own : wifi.credentials.front();
    return network.ssid ? shortened_and_quoted(*network.ssid) : "";
}

void Kind<Wifi>::show(const Wifi &wifi, View &view)
{
    for (const WifiAttributes &credential : wifi.credentials)
        show_attributes(credential, view);
    if (const auto &password = wifi.oob_device_password) {
        view.field("device password",
                   password->device_password.empty()
                       ? fmt::format("none (id {})", password->password_id)
                       : fmt::format("{} (id {})", hex_of(password->device_password), password->password_id));
        view.bytes("public key hash", password->public_key_hash);
    }
    show_attributes(wifi.own, view);
}

bool Kind<Wifi>::is_open(const WifiAttributes &credential)
{
    return credential.authentication_type == 0x0001 && credential.encryption_type == 0x0001;
}

bool Kind<Wifi>::is_other(const Element<2> &attribute, bool of_credential)
{
    Bytes bytes;
    if (!append(bytes, nfc_ndef_wifi_attribute_write, lent(attribute)))
        return false;
    nfc_ndef_wifi_attributes alone{};
    alone.attributes = bytes_view(bytes);
    alone.is_credential = of_credential;
    nfc_ndef_element found;
    return nfc_ndef_wifi_next_attribute(&alone, &found) && found.id != vendor_extension_id;
}

bool Kind<Wifi>::holds_one_form(const WifiExtension &extension)
{
    const bool has_elements = extension.version2 || extension.authorized_macs || extension.network_key_shareable ||
                              extension.request_to_enroll || extension.settings_delay_time ||
                              extension.registrar_configuration_methods || !extension.other_elements.empty();
    return !has_elements || (extension.vendor_id == wifi_alliance && extension.data.empty());
}

} // namespace nfc_ndef::values
