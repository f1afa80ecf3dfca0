#include "nfc_ndef_types.h"
#include "tables.h"

using namespace test;

TEST(AndroidApplication, SaysWhyItIsRefused)
{
    expect_reports(report_of<nfc_ndef_android_application_read, nfc_ndef_android_application>,
                   {{"", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
                    {"612E5A5F39", {NFC_NDEF_PAYLOAD_VALID, 5}},
                    {"612D62", {NFC_NDEF_PAYLOAD_CHARACTER_NOT_ALLOWED, 1}}});
}

TEST(DeviceInformation, SaysWhyItIsRefused)
{
    expect_reports(report_of<nfc_ndef_device_information_read, nfc_ndef_device_information>,
                   {{"", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
                    {"000156 01014D", {NFC_NDEF_PAYLOAD_VALID, 6}},
                    {"000156 0102", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 3}},
                    {"000156 01", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 3}},
                    {"000156 0100", {NFC_NDEF_PAYLOAD_FIELD_EMPTY, 3}},
                    {"000156 0300", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 3}},
                    {"000156 0200 0200", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 5}},
                    {"000156 FF00", {NFC_NDEF_PAYLOAD_FIELD_MISSING, 5}},
                    {"01014D FF00", {NFC_NDEF_PAYLOAD_FIELD_MISSING, 5}}});
}

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
