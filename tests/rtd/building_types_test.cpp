// What the vectors cannot show of building: what is refused, and what is written one by one.
#include "nfc_ndef_types.h"
#include "tables.h"

using namespace test;

TEST(DeviceInformation, IsMadeOfElements)
{
    const Bytes name = text("N");
    const auto element = [&](uint16_t id, size_t length) {
        uint8_t buffer[2 + 256] = {};
        const Bytes data(length, 'x');
        const nfc_ndef_element one{{data.data(), length}, id};
        const uint32_t needed = nfc_ndef_device_information_element_write(&one, buffer, 4);
        return std::to_string(needed) + ":" + hex(copy(buffer, needed <= 4 ? needed : 0));
    };
    EXPECT_EQ(element(5, 0) + " " + element(255, 2) + " " + element(5, 3), "2:0500 4:FF027878 5:");
    EXPECT_EQ(element(4, 1) + " " + element(256, 1) + " " + element(5, 256), "0: 0: 0:");

    const Bytes long_name(256, 'x'), other = bytes("0400 0501AA 0061");
    nfc_ndef_device_information information{.vendor_name = {name.data(), 1}, .model_name = {name.data(), 1}};
    const auto made = [&] { return Record(nfc_ndef_device_information_record_create(&information, {})); };
    information.unique_name = {name.data(), 0};
    information.elements = {other.data(), 5}; // fields that the structure has are not taken from here
    EXPECT_EQ(hex(payload_of(made().get())), "00014E01014E02000501AA");
    information.version_string = {long_name.data(), long_name.size()};
    EXPECT_EQ(made(), nullptr);
    information.version_string = {};
    information.model_name = {};
    EXPECT_EQ(made(), nullptr);
    information.model_name = {name.data(), 1};
    EXPECT_EQ(Record(nfc_ndef_device_information_record_create(&information, {long_name.data(), 256})), nullptr);
}

TEST(BluetoothLe, IsMadeOfStructures)
{
    const Bytes six = bytes("010203040506"), others = bytes("020A04 04FF000102 021C09 04160F1864 0103 020101 03010203");
    nfc_ndef_bt_le le{.device_address = {six.data(), 6}, .structures = {others.data(), others.size()}};
    const auto made = [&] {
        const Record record(nfc_ndef_bt_le_record_create(&le, {}));
        return record ? hex(payload_of(record.get())) : "null";
    };
    EXPECT_EQ(made(), "071B010203040506"
                      "04160F1864"
                      "04FF000102"
                      "020A04"
                      "0103"
                      "03010203");
    le.device_address.length = 5;
    EXPECT_EQ(made(), "null");
    le.device_address = {};
    le.local_name = {six.data(), 1};
    EXPECT_EQ(made(), "null"); // a name has a type
    le.local_name_type = 8;
    le.uuid16_list = {six.data(), 2};
    le.uuid16_list_type = 4; // of another width
    EXPECT_EQ(made(), "null");
    le.uuid16_list_type = 2;
    EXPECT_EQ(made(), "020801"
                      "03020102"
                      "04160F1864"
                      "04FF000102"
                      "020A04"
                      "0103"
                      "03010203");
    const Bytes long_name(255, 'x');
    le.local_name = {long_name.data(), 255};
    EXPECT_EQ(made(), "null");
    const nfc_ndef_eir longest{{long_name.data(), 254}, 9}, too_long{{long_name.data(), 255}, 9};
    EXPECT_EQ(nfc_ndef_eir_write(&longest, nullptr, 0), 256U);
    EXPECT_EQ(nfc_ndef_eir_write(&too_long, nullptr, 0), 0U);
}

TEST(Signature, IsMadeOfCertificates)
{
    const Bytes certificates = bytes("000131 0000");
    nfc_ndef_signature signature{.certificates = {certificates.data(), 5}, .version = 0x20, .certificate_count = 2};
    const auto made = [&] { return Record(nfc_ndef_signature_record_create(&signature, {})) != nullptr; };
    EXPECT_TRUE(made());
    signature.certificate_count = 3;
    EXPECT_FALSE(made());
    signature.certificate_count = 16;
    EXPECT_FALSE(made());
    signature.certificate_count = 0;
    signature.signature_type = 128;
    EXPECT_FALSE(made());
    signature.signature_type = 0;
    signature.certificate_format = 8;
    EXPECT_FALSE(made());
    signature.certificate_format = 7;
    signature.is_uri = 1; // an empty one
    EXPECT_FALSE(made());
    const Bytes certificate(65536, 'x');
    uint8_t buffer[3] = {};
    EXPECT_EQ(nfc_ndef_signature_certificate_write({certificate.data(), 1}, buffer, 3), 3U);
    EXPECT_EQ(hex(copy(buffer, 3)), "000178");
    EXPECT_EQ(nfc_ndef_signature_certificate_write({certificate.data(), 65536}, buffer, 3), 0U);
}

TEST(Wifi, IsMadeOfCredentials)
{
    const Bytes name = text("Cafe"), extra = bytes("1049 0004 01020304 10FA 0000 1045 0000 102C 0001 00 0FFF 0000");
    nfc_ndef_wifi_attributes credential{.ssid = {name.data(), 4},
                                        .attributes = {extra.data(), 21},
                                        .authentication_type = 1,
                                        .encryption_type = 1,
                                        .has_authentication_type = 1,
                                        .has_encryption_type = 1};
    uint8_t buffer[64];
    const auto written = [&](uint32_t capacity) {
        const uint32_t length = nfc_ndef_wifi_credential_write(&credential, buffer, capacity);
        return std::to_string(length) + ":" + hex(copy(buffer, length <= capacity ? length : 0));
    };
    EXPECT_EQ(written(63), "41:100E0025"
                           "1045000443616665"
                           "100300020001"
                           "100F00020001"
                           "10FA0000"
                           "102C000100"
                           "1049000401020304");
    EXPECT_EQ(written(40), "41:");
    credential.encryption_type = 8; // which needs a key
    EXPECT_EQ(written(63), "0:");
    credential.network_key = {name.data(), 0};
    EXPECT_EQ(written(63).substr(0, 3), "45:");

    nfc_ndef_wifi wifi{.credentials = {buffer, 45}, .length_prefix = 1};
    wifi.own.attributes = {extra.data(), 12}; // behind the extension
    EXPECT_EQ(hex(payload_of(Record(nfc_ndef_wifi_record_create(&wifi, {})).get())), "0039" + hex(copy(buffer, 45)) +
                                                                                         "10FA0000"
                                                                                         "1049000401020304");
    nfc_ndef_wifi_attributes first{}, second{};
    EXPECT_TRUE(nfc_ndef_wifi_next_credential(&wifi, &first));
    EXPECT_FALSE(nfc_ndef_wifi_next_credential(&wifi, &second));
    EXPECT_EQ(hex(copy(first.ssid.data, first.ssid.length)), "43616665");
    const Bytes data(65536, 'x');
    wifi.own.ssid = {data.data(), 33};
    EXPECT_EQ(Record(nfc_ndef_wifi_record_create(&wifi, {})), nullptr);

    const auto attribute = [&](uint16_t id, size_t length) {
        const nfc_ndef_element element{{data.data(), length}, id};
        return nfc_ndef_wifi_attribute_write(&element, nullptr, 0);
    };
    EXPECT_EQ(attribute(0x1000, 65535), 65539U);
    EXPECT_EQ(attribute(0x1000, 65536), 0U);
    EXPECT_EQ(attribute(0x0FFF, 0), 0U);
    Bytes longest = bytes("10FA0000");
    wifi = {.own = {.ssid = {name.data(), 4}}, .length_prefix = 1};
    for (const size_t length : {65523u, 65524u}) { // the longest that a prefix can say, and one byte more
        longest[2] = static_cast<uint8_t>(length >> 8), longest[3] = static_cast<uint8_t>(length);
        longest.resize(4 + length);
        wifi.own.attributes = {longest.data(), longest.size()};
        EXPECT_EQ(Record(nfc_ndef_wifi_record_create(&wifi, {})) != nullptr, length == 65523);
    }
    credential.attributes = wifi.own.attributes;
    EXPECT_EQ(written(63), "0:");
}

TEST(WifiExtension, IsMadeOfElements)
{
    const auto read = [](const char *value) {
        const Bytes data = bytes(value);
        nfc_ndef_wifi_extension extension;
        uint8_t buffer[64];
        if (!nfc_ndef_wifi_extension_read({data.data(), data.size()}, &extension))
            return std::string("not read");
        return hex(copy(buffer, nfc_ndef_wifi_extension_write(&extension, buffer, sizeof buffer)));
    };
    EXPECT_EQ(read("00372A 000120 0106010203040506 020100 030101 0401FF 05020284 0600 FF0141"), "1049002000372A"
                                                                                                "000120"
                                                                                                "0106010203040506"
                                                                                                "020100"
                                                                                                "030101"
                                                                                                "0401FF"
                                                                                                "05020284"
                                                                                                "0600"
                                                                                                "FF0141");
    EXPECT_EQ(read("00372A"), "1049000300372A");
    for (const char *value : {"00372B 000120", "00372A 020100 000120", "00372A 0600 0600", "00372A 0002", "0037"})
        EXPECT_EQ(read(value), "not read") << value;
    const Bytes data(256, 0), elements(1022, 0xFF);
    nfc_ndef_element element{{data.data(), 255}, 6};
    EXPECT_EQ(nfc_ndef_wifi_extension_element_write(&element, nullptr, 0), 257U);
    element.id = 5;
    EXPECT_EQ(nfc_ndef_wifi_extension_element_write(&element, nullptr, 0), 0U);
    element = {{data.data(), 256}, 6};
    EXPECT_EQ(nfc_ndef_wifi_extension_element_write(&element, nullptr, 0), 0U);
    nfc_ndef_wifi_extension extension{.elements = {elements.data(), 1021}}; // of 253 to the most that there may be
    EXPECT_EQ(nfc_ndef_wifi_extension_write(&extension, nullptr, 0), 4 + 3 + 771U);
}
