// Wi-Fi configuration record: Wi-Fi Simple Configuration 2.0. Its payload, and each credential in it, is a list of
// attributes.
#include "rtd/wifi_shared.h"

#include <algorithm>

using namespace ndef;

namespace {

using Attributes = nfc_ndef_wifi_attributes;

// An attribute that has a field: a byte string, or a number of one or two bytes and whether it is there.
struct Attribute {
    uint16_t id;
    uint16_t least, most; // bytes of its value
    nfc_ndef_bytes Attributes::*bytes = nullptr;
    uint8_t Attributes::*has = nullptr;
    uint8_t Attributes::*byte = nullptr;
    uint16_t Attributes::*number = nullptr;
};
constexpr Attribute string(uint16_t id, uint16_t least, uint16_t most, nfc_ndef_bytes Attributes::*field)
{
    return {id, least, most, field};
}
constexpr Attribute byte(uint16_t id, uint8_t Attributes::*has, uint8_t Attributes::*field)
{
    return {.id = id, .least = 1, .most = 1, .has = has, .byte = field};
}
constexpr Attribute number(uint16_t id, uint8_t Attributes::*has, uint16_t Attributes::*field)
{
    return {.id = id, .least = 2, .most = 2, .has = has, .number = field};
}

// In the order in which they are written.
constexpr Attribute with_field[] = {
    string(0x1047, 16, 16, &Attributes::uuid_e),
    string(0x1048, 16, 16, &Attributes::uuid_r),
    byte(0x1026, &Attributes::has_network_index, &Attributes::network_index),
    string(0x1045, 0, 32, &Attributes::ssid),
    number(0x1003, &Attributes::has_authentication_type, &Attributes::authentication_type),
    number(0x100F, &Attributes::has_encryption_type, &Attributes::encryption_type),
    string(0x1027, 0, 64, &Attributes::network_key),
    byte(0x103C, &Attributes::has_rf_bands, &Attributes::rf_bands),
    number(0x1001, &Attributes::has_ap_channel, &Attributes::ap_channel),
    string(0x1020, 6, 6, &Attributes::mac_address),
    byte(0x1061, &Attributes::has_key_provided_automatically, &Attributes::key_provided_automatically),
    string(0x1011, 0, 32, &Attributes::device_name),
    string(0x1021, 0, 64, &Attributes::manufacturer),
    string(0x1023, 0, 32, &Attributes::model_name),
    string(0x1024, 0, 32, &Attributes::model_number),
    string(0x1042, 0, 32, &Attributes::serial_number),
    string(0x1054, 8, 8, &Attributes::primary_device_type),
    string(0x1055, 8, 128, &Attributes::secondary_device_types),
    number(0x1008, &Attributes::has_config_methods, &Attributes::config_methods),
    byte(0x104A, &Attributes::has_version, &Attributes::version),
};
constexpr uint16_t secondary_device_types = 0x1055;
constexpr size_t device_type_length = 8;

constexpr uint16_t lowest_id = 0x1000, credential_id = 0x100E, password_attribute = 0x102C;
constexpr size_t attribute_header_length = 4, prefix_length = 2;

constexpr uint16_t open_network = 0x0001, no_encryption = 0x0001;

constexpr size_t hash_length = 20, least_password = 16, most_password = 32;
constexpr uint16_t handover_password = 7, first_own_password = 0x10;

const Attribute *find(uint16_t id)
{
    const auto *const found = std::find_if(std::begin(with_field), std::end(with_field),
                                           [id](const Attribute &attribute) { return attribute.id == id; });
    return found != std::end(with_field) ? found : nullptr;
}

Reason take(const Attribute &attribute, const nfc_ndef_bytes &value, Attributes &out)
{
    const bool listed = attribute.id == secondary_device_types;
    if (value.length < attribute.least || value.length > attribute.most ||
        (listed && value.length % device_type_length != 0))
        return NFC_NDEF_PAYLOAD_WRONG_LENGTH;
    if (attribute.bytes ? is_present(out.*attribute.bytes) : out.*attribute.has != 0)
        return NFC_NDEF_PAYLOAD_FIELD_REPEATED;
    if (attribute.bytes) {
        out.*attribute.bytes = value;
        return NFC_NDEF_PAYLOAD_VALID;
    }
    out.*attribute.has = 1;
    Reader in(bytes_of(value));
    if (attribute.byte)
        out.*attribute.byte = in.u8();
    else
        out.*attribute.number = in.be<uint16_t>();
    return NFC_NDEF_PAYLOAD_VALID;
}

Reason take_password(const nfc_ndef_bytes &value, nfc_ndef_wifi &wifi)
{
    if (is_present(wifi.public_key_hash))
        return NFC_NDEF_PAYLOAD_FIELD_REPEATED;
    Reader in(bytes_of(value));
    const ByteView hash = in.take(hash_length);
    wifi.password_id = in.be<uint16_t>();
    if (!in.ok())
        return NFC_NDEF_PAYLOAD_WRONG_LENGTH;
    const ByteView password = in.rest();
    wifi.public_key_hash = present(hash);
    wifi.device_password = lent(password);
    if (wifi.password_id < first_own_password && wifi.password_id != handover_password)
        return NFC_NDEF_PAYLOAD_NUMBER_NOT_ALLOWED;
    const bool right_length = wifi.password_id == handover_password
                                  ? password.empty()
                                  : password.size() >= least_password && password.size() <= most_password;
    return right_length ? NFC_NDEF_PAYLOAD_VALID : NFC_NDEF_PAYLOAD_WRONG_LENGTH;
}

bool is_complete(const Attributes &credential)
{
    const bool has_no_key =
        credential.authentication_type == open_network && credential.encryption_type == no_encryption;
    return is_present(credential.ssid) && credential.has_authentication_type && credential.has_encryption_type &&
           (has_no_key || is_present(credential.network_key));
}

// A rule that is broken, and where.
struct Broken {
    Reason reason;
    const uint8_t *at;
};

// What a record and a credential may both hold.
Reason take_shared(const nfc_ndef_element &element, Attributes &out)
{
    if (element.id < lowest_id)
        return NFC_NDEF_PAYLOAD_NUMBER_NOT_ALLOWED;
    if (element.id == vendor_extension_id)
        return broken_by_extension(bytes_of(element.data));
    const Attribute *const attribute = find(element.id);
    return attribute ? take(*attribute, element.data, out) : Reason{NFC_NDEF_PAYLOAD_VALID};
}

// Goes through a list of attributes until `take` says that a rule is broken.
template <class Take> Broken read_list(ByteView list, Attributes &out, Take take)
{
    out = {};
    out.attributes = lent(list);
    ElementReader<uint16_t> in(list);
    const auto at = [&] { return list.data() + (list.size() - in.left_before()); };
    for (nfc_ndef_element element; in.next(element);) {
        const Broken broken = take(element, at());
        if (broken.reason != NFC_NDEF_PAYLOAD_VALID)
            return broken;
    }
    return {in.ok() ? NFC_NDEF_PAYLOAD_VALID : NFC_NDEF_PAYLOAD_FIELD_PAST_END, at()};
}

Broken read_credential(ByteView list, Attributes &credential)
{
    const Broken broken = read_list(list, credential, [&](const nfc_ndef_element &element, const uint8_t *at) {
        return Broken{take_shared(element, credential), at};
    });
    credential.is_credential = 1;
    if (broken.reason == NFC_NDEF_PAYLOAD_VALID && !is_complete(credential))
        return {NFC_NDEF_PAYLOAD_FIELD_MISSING, list.data() + list.size()};
    return broken;
}

Broken read_record(ByteView list, nfc_ndef_wifi &wifi)
{
    return read_list(list, wifi.own, [&](const nfc_ndef_element &element, const uint8_t *at) {
        if (element.id == password_attribute)
            return Broken{take_password(element.data, wifi), at};
        if (element.id != credential_id)
            return Broken{take_shared(element, wifi.own), at};
        Attributes credential;
        return read_credential({element.data.data, element.data.length}, credential);
    });
}

template <class Out> void lay_out_fields(Out &out, const Attributes &attributes)
{
    for (const Attribute &attribute : with_field) {
        if (attribute.bytes)
            lay_out<uint16_t>(out, attribute.id, attributes.*attribute.bytes);
        else if (attributes.*attribute.has && attribute.byte)
            out.be(attribute.id).be(uint16_t{1}).u8(attributes.*attribute.byte);
        else if (attributes.*attribute.has)
            out.be(attribute.id).be(uint16_t{2}).be(attributes.*attribute.number);
    }
    for (const bool extensions : {false, true}) {
        Attributes left = attributes;
        for (nfc_ndef_element element; nfc_ndef_wifi_next_attribute(&left, &element);)
            if ((element.id == vendor_extension_id) == extensions)
                out.be(element.id).template sized<uint16_t>(bytes_of(element.data));
    }
}

// The bytes of the next credential; false behind the last.
bool next_credential(nfc_ndef_bytes &list, ByteView &credential)
{
    ElementReader<uint16_t> in(bytes_of(list));
    for (nfc_ndef_element element; in.next(element);)
        if (element.id == credential_id) {
            credential = {element.data.data, element.data.length};
            list = lent(in.rest());
            return true;
        }
    return false;
}

template <class Out> void lay_out_record(Out &out, const nfc_ndef_wifi &wifi)
{
    nfc_ndef_bytes left = wifi.credentials;
    for (ByteView credential; next_credential(left, credential);)
        out.be(credential_id).template sized<uint16_t>(credential);
    if (is_present(wifi.public_key_hash)) {
        const ByteView password = bytes_of(wifi.device_password);
        out.be(password_attribute)
            .be(static_cast<uint16_t>(hash_length + sizeof wifi.password_id + password.size()))
            .bytes(bytes_of(wifi.public_key_hash))
            .be(wifi.password_id)
            .bytes(password);
    }
    lay_out_fields(out, wifi.own);
}

} // namespace

uint8_t nfc_ndef_wifi_read(nfc_ndef_bytes payload, nfc_ndef_wifi *wifi, nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *wifi = {};
    if (bytes.size() < attribute_header_length)
        return verdict.refused(bytes.empty() ? NFC_NDEF_PAYLOAD_EMPTY : NFC_NDEF_PAYLOAD_FIELD_PAST_END, size_t{0});
    Reader in(bytes);
    wifi->length_prefix = in.be<uint16_t>() == bytes.size() - prefix_length;
    const ByteView list = wifi->length_prefix ? in.rest() : bytes;
    wifi->credentials = lent(list);
    const Broken broken = read_record(list, *wifi);
    return broken.reason == NFC_NDEF_PAYLOAD_VALID ? verdict.valid() : verdict.refused(broken.reason, broken.at);
}

uint8_t nfc_ndef_wifi_next_credential(nfc_ndef_wifi *wifi, nfc_ndef_wifi_attributes *credential)
{
    ByteView list;
    return next_credential(wifi->credentials, list) &&
           read_credential(list, *credential).reason == NFC_NDEF_PAYLOAD_VALID;
}

uint8_t nfc_ndef_wifi_next_attribute(nfc_ndef_wifi_attributes *attributes, nfc_ndef_element *attribute)
{
    const bool of_record = attributes->is_credential == 0;
    return next_other<uint16_t>(attributes->attributes, *attribute, [of_record](uint16_t id) {
        return find(id) || (of_record && (id == credential_id || id == password_attribute));
    });
}

uint32_t nfc_ndef_wifi_attribute_write(const nfc_ndef_element *attribute, uint8_t *buffer, uint32_t capacity)
{
    if (attribute->id < lowest_id)
        return 0;
    const auto layout = [&](auto &out) { out.be(attribute->id).template sized<uint16_t>(bytes_of(attribute->data)); };
    return written(layout, buffer, capacity);
}

uint32_t nfc_ndef_wifi_credential_write(const nfc_ndef_wifi_attributes *credential, uint8_t *buffer, uint32_t capacity)
{
    if (!is_complete(*credential))
        return 0;
    nfc_ndef_wifi_attributes inner = *credential;
    inner.is_credential = 1;
    const auto fields = [&](auto &out) { lay_out_fields(out, inner); };
    const uint64_t length = length_of(fields);
    const auto layout = [&](auto &out) {
        out.be(credential_id).be(static_cast<uint16_t>(length));
        fields(out);
    };
    return length <= UINT16_MAX ? written(layout, buffer, capacity) : 0;
}

nfc_ndef_record *nfc_ndef_wifi_record_create(const nfc_ndef_wifi *wifi, nfc_ndef_bytes id)
{
    nfc_ndef_wifi record = *wifi;
    record.own.is_credential = 0;
    const auto list = [&](auto &out) { lay_out_record(out, record); };
    const uint64_t length = length_of(list);
    if (record.length_prefix && length > UINT16_MAX)
        return nullptr;
    const auto layout = [&](auto &out) {
        if (record.length_prefix)
            out.be(static_cast<uint16_t>(length));
        list(out);
    };
    return readable_record_of(known::wifi, layout, id, nfc_ndef_wifi_read);
}
