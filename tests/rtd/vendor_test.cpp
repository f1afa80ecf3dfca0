#include "tables.h"

using namespace test;

namespace {

using Structure = nfc_ndef_bt_rtd_2_0_str;

Record build(uint8_t type, Bytes pairing, Bytes name = {}, void (*spoil)(Structure &) = nullptr,
             const uint8_t *id = nullptr, uint8_t id_length = 0, uint8_t id_present = 0)
{
    Structure fields = {{1, 2, 3, 4, 5, 6},
                        {10, 11, 12},
                        type,
                        static_cast<uint8_t>(pairing.size()),
                        pairing.empty() ? nullptr : pairing.data(),
                        static_cast<uint8_t>(name.size()),
                        name.empty() ? nullptr : name.data()};
    if (spoil)
        spoil(fields);
    return Record(rtdlib_bt_configuration_data_record_create(&fields, id, id_length, id_present));
}

Record enquiry(uint8_t version, uint8_t type, const Bytes &data)
{
    return Record(rtdlib_sharing_enquiry_record_create(type, static_cast<uint8_t>(data.size()), ptr(data), version));
}

const std::string fixed = " 060504030201 0C0B0A ";

} // namespace

TEST(BluetoothLegacy, Builds)
{
    const uint8_t id[] = {'0'};
    const std::string kind = "4S " VENDOR_DOMAIN ":bt", with_id = "4SI " VENDOR_DOMAIN ":bt#30";
    const auto spoilt = [](void (*spoil)(Structure &)) { return build(0x21, bytes("A1"), text("n"), spoil); };
    const auto identified = [&](const uint8_t *given, uint8_t length, uint8_t present) {
        return build(0x10, {}, {}, nullptr, given, length, present);
    };
    const Built rows[] = {
        {build(0x10, {}), kind, "10" + fixed + "00", "smallest; both fields last byte first"},
        {build(0x24, bytes("A1A2A3A4"), text("AB")), kind, "24" + fixed + "A1A2A3A4024142", "all fields"},
        {build(0, filled(16, 1), filled(248, 2)), "4 " VENDOR_DOMAIN ":bt", "00" + fixed + "01*16 F8 02*248", "275"},
        {build(0x10, {}, filled(249, 'n')), "name of 249 bytes"},
        {spoilt([](Structure &s) { s.pairing_data = nullptr; }), "pairing data missing"},
        {spoilt([](Structure &s) { s.pairing_data_length = 0; }), "pairing data without length"},
        {spoilt([](Structure &s) { s.pairing_type = 0x10, s.pairing_data_length = 0; }), "needless pointer"},
        {spoilt([](Structure &s) { s.local_name = nullptr; }), "name missing"},
        {spoilt([](Structure &s) { s.local_name_length = 0; }), "name without length"},
        {identified(id, 1, 1), with_id, "10" + fixed + "00", "id"},
        {identified(id, 1, 2), with_id, "10" + fixed + "00", "flag 2 tested"},
        {identified(nullptr, 0, 2), kind, "10" + fixed + "00", "flag 2 tested, no id"},
        {identified(id, 0, 1), "id of length 0"},
        {identified(nullptr, 1, 1), "id missing"},
        {identified(nullptr, 0, 1), "announced id missing"},
        {identified(id, 1, 0), "id not announced"},
        {identified(nullptr, 1, 2), "flag 2, length without pointer"},
        {rtdlib_bt_configuration_data_record_create(nullptr, nullptr, 0, 0), "no structure"},
    };
    expect_built(rows);
}

// Each type at an edge of its range, with the bytes of pairing data that it calls for; -1 for one that is refused.
TEST(BluetoothLegacy, KnowsThePairingTypes)
{
    for (const auto &[type, length] : std::initializer_list<std::pair<uint8_t, int>>{{0x00, 16},
                                                                                     {0x02, 16},
                                                                                     {0x03, -1},
                                                                                     {0x0F, -1},
                                                                                     {0x10, 0},
                                                                                     {0x11, -1},
                                                                                     {0x1F, -1},
                                                                                     {0x20, 16},
                                                                                     {0x21, 1},
                                                                                     {0x2F, 15},
                                                                                     {0x30, -1},
                                                                                     {0xA1, -1}}) {
        const Bytes data = filled(length < 0 ? 16 : static_cast<size_t>(length), 1);
        EXPECT_EQ(build(type, data) != nullptr, length >= 0) << +type;
        EXPECT_EQ(build(type, data + Bytes{1}), nullptr) << +type;
        EXPECT_EQ(read_legacy(with_payload(Bytes{type} + bytes(fixed) + data + bytes("014E"))),
                  length < 0 ? "2 " + hex({type})
                             : "1 " + hex({type}) + " @" + field("pairing", ptr(data), data.size()) + " name=4E");
    }
}

TEST(BluetoothLegacy, Reads)
{
    const Payload rows[] = {
        {"10" + fixed + "00FF", "1 10 @", "a byte behind no name"},
        {"10" + fixed + "014142", "1 10 @ name=41", "a byte behind the name"},
        {"10" + fixed + "F8 02*248", "1 10 @ name=02*248", "longest name"},
        {"10" + fixed + "F9 02*249", "0 10 @ name=missing 249", "name of 249 bytes"},
        {"10" + fixed, "0 10 @", "name length missing"},
        {"11", "2 11", "lengths looked at before the type"},
    };
    expect_read(read_legacy, rows);
    EXPECT_EQ(read_legacy(nullptr), "-1");
    expect_checked(rtdlib_bt_configuration_data_record_extract, build(0x10, {}), structure_outputs);
    nfc_ndef_bt_rtd_2_0_str_delete(nullptr);
    Structure *none = nullptr;
    nfc_ndef_bt_rtd_2_0_str_delete(&none);
    expect_cut(read_legacy, bytes("24" + fixed + "A1A2A3A4024142"), [](size_t length) {
        return length == 0    ? "-1 00"
               : length < 14  ? "0 24 pairing=missing 4"
               : length == 14 ? "0 24 @ pairing=A1A2A3A4"
                              : "0 24 @ pairing=A1A2A3A4 name=missing 2";
    });
}

TEST(SharingEnquiry, Builds)
{
    const Bytes data = bytes("4142");
    const Built rows[] = {
        {enquiry(0x10, 1, data), "4S " VENDOR_DOMAIN ":she", "1001024142", "all fields"},
        {enquiry(0x20, 0xFF, {}), "4S " VENDOR_DOMAIN ":she", "20FF00", "no data"},
        {enquiry(0x1F, 1, filled(255, 2)), "4 " VENDOR_DOMAIN ":she", "1F01FF 02*255", "258 bytes"},
        {enquiry(0x0F, 1, {}), "major version 0 with a minor one"},
        {enquiry(0x21, 1, {}), "version 2.1"},
        {enquiry(0xA1, 1, {}), "version 10.1"},
        {rtdlib_sharing_enquiry_record_create(1, 3, nullptr, 0x10), "data missing"},
        {rtdlib_sharing_enquiry_record_create(1, 0, data.data(), 0x10), "data without length"},
    };
    expect_built(rows);
}

TEST(SharingEnquiry, Reads)
{
    const Payload rows[] = {
        {"1001024142", "1 type=1 length=2 data=4142 version=10", "all fields"},
        {"1001FF 02*255", "1 type=1 length=FF data=02*255 version=10", "most data"},
        {"100100FF", "1 type=1 length=0 version=10", "bytes behind no data"},
        {"1001014142", "2 type=1 length=1 version=10", "a byte behind the data"},
        {"000100", "1 type=1 length=0 version=0", "version 0.0 refused"},
        {"1F0100", "1 type=1 length=0 version=1F", "version 1.15 refused"},
        {"210105", "-1 version=21", "lengths compared before the version"},
        {"2101", "2", "version of two bytes looked at"},
    };
    expect_read(read_enquiry, rows);
    EXPECT_EQ(read_enquiry(nullptr), "-1");
    expect_checked(rtdlib_sharing_enquiry_record_extract, enquiry(0x10, 1, text("a")), enquiry_outputs, 3);
    expect_cut(read_enquiry, bytes("1001024142"), [](size_t length) {
        return length == 0 ? "-1" : length < 3 ? "2" : "2 type=1 length=2 version=10";
    });
}
