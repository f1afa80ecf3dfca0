// Vendor extensions of Wi-Fi configuration records: Wi-Fi Simple Configuration 2.0.
#include "rtd/wifi_shared.h"

#include <algorithm>

using namespace ndef;

namespace {

using Extension = nfc_ndef_wifi_extension;

enum ElementId : uint8_t {
    version2,
    authorized_macs,
    network_key_shareable,
    request_to_enroll,
    settings_delay_time,
    registrar_configuration_methods,
    first_other
};

constexpr uint8_t vendor_id[] = {0x00, 0x37, 0x2A}; // of the Wi-Fi Alliance
constexpr size_t longest_extension = 1024, mac_length = 6, most_macs_length = 30;

bool has_field(uint16_t id) { return id < first_other; }

bool has_right_length(const nfc_ndef_element &element)
{
    if (element.id == authorized_macs)
        return element.data.length <= most_macs_length && element.data.length % mac_length == 0;
    return !has_field(element.id) || element.data.length == (element.id == registrar_configuration_methods ? 2 : 1);
}

void take(const nfc_ndef_element &element, Extension &extension)
{
    Reader in(bytes_of(element.data));
    switch (element.id) {
    case version2:
        extension.has_version2 = 1;
        extension.version2 = in.u8();
        break;
    case authorized_macs:
        extension.authorized_macs = element.data;
        break;
    case network_key_shareable:
        extension.has_network_key_shareable = 1;
        extension.network_key_shareable = in.u8();
        break;
    case request_to_enroll:
        extension.has_request_to_enroll = 1;
        extension.request_to_enroll = in.u8();
        break;
    case settings_delay_time:
        extension.has_settings_delay_time = 1;
        extension.settings_delay_time = in.u8();
        break;
    case registrar_configuration_methods:
        extension.has_registrar_configuration_methods = 1;
        extension.registrar_configuration_methods = in.be<uint16_t>();
        break;
    default:
        break;
    }
}

bool is_of_alliance(ByteView value)
{
    return value.size() >= sizeof vendor_id && std::equal(std::begin(vendor_id), std::end(vendor_id), value.begin());
}

template <class Out> void lay_out_byte(Out &out, uint8_t id, uint8_t has, uint8_t byte)
{
    if (has)
        out.u8(id).u8(1).u8(byte);
}

template <class Out> void lay_out_extension(Out &out, const Extension &extension)
{
    out.bytes(vendor_id);
    lay_out_byte(out, version2, extension.has_version2, extension.version2);
    lay_out<uint8_t>(out, authorized_macs, extension.authorized_macs);
    lay_out_byte(out, network_key_shareable, extension.has_network_key_shareable, extension.network_key_shareable);
    lay_out_byte(out, request_to_enroll, extension.has_request_to_enroll, extension.request_to_enroll);
    lay_out_byte(out, settings_delay_time, extension.has_settings_delay_time, extension.settings_delay_time);
    if (extension.has_registrar_configuration_methods)
        out.u8(registrar_configuration_methods).u8(2).be(extension.registrar_configuration_methods);
    Extension left = extension;
    for (nfc_ndef_element element; nfc_ndef_wifi_extension_next(&left, &element);)
        out.u8(static_cast<uint8_t>(element.id)).template sized<uint8_t>(bytes_of(element.data));
}

} // namespace

Reason ndef::broken_by_extension(ByteView value)
{
    if (value.size() < sizeof vendor_id || value.size() > longest_extension)
        return NFC_NDEF_PAYLOAD_WRONG_LENGTH;
    if (!is_of_alliance(value))
        return NFC_NDEF_PAYLOAD_VALID;
    ElementReader<uint8_t> in(value.subspan(sizeof vendor_id));
    for (nfc_ndef_element element; in.next(element);)
        if (!has_right_length(element))
            return NFC_NDEF_PAYLOAD_WRONG_LENGTH;
    return in.ok() ? NFC_NDEF_PAYLOAD_VALID : NFC_NDEF_PAYLOAD_FIELD_PAST_END;
}

uint8_t nfc_ndef_wifi_extension_read(nfc_ndef_bytes value, nfc_ndef_wifi_extension *extension)
{
    *extension = {};
    const ByteView bytes = bytes_of(value);
    if (!is_of_alliance(bytes) || broken_by_extension(bytes) != NFC_NDEF_PAYLOAD_VALID)
        return 0;
    const ByteView elements = bytes.subspan(sizeof vendor_id);
    extension->elements = lent(elements);
    ElementReader<uint8_t> in(elements);
    int last = -1;
    for (nfc_ndef_element element; in.next(element); last = element.id) {
        if (element.id <= last) {
            *extension = {};
            return 0;
        }
        take(element, *extension);
    }
    return 1;
}

uint8_t nfc_ndef_wifi_extension_next(nfc_ndef_wifi_extension *extension, nfc_ndef_element *element)
{
    return next_other<uint8_t>(extension->elements, *element, [](uint16_t id) { return has_field(id); });
}

uint32_t nfc_ndef_wifi_extension_element_write(const nfc_ndef_element *element, uint8_t *buffer, uint32_t capacity)
{
    if (has_field(element->id) || element->id > UINT8_MAX)
        return 0;
    const auto layout = [&](auto &out) {
        out.u8(static_cast<uint8_t>(element->id)).template sized<uint8_t>(bytes_of(element->data));
    };
    return written(layout, buffer, capacity);
}

uint32_t nfc_ndef_wifi_extension_write(const nfc_ndef_wifi_extension *extension, uint8_t *buffer, uint32_t capacity)
{
    const auto value = [&](auto &out) { lay_out_extension(out, *extension); };
    const uint64_t length = length_of(value);
    const auto layout = [&](auto &out) {
        out.be(vendor_extension_id).be(static_cast<uint16_t>(length));
        value(out);
    };
    return length <= longest_extension ? written(layout, buffer, capacity) : 0;
}
