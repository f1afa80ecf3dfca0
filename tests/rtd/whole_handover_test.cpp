#include "tables.h"

using namespace test;

// A device offers Bluetooth, active, and a second carrier, inactive, to which the text beside it belongs.
TEST(Handover, IsBuiltSentAndRead)
{
    const uint8_t b[] = {'b'}, w[] = {'w'}, i[] = {'i'}, one[] = {1}, *const aux[] = {i};
    const Record number(rtdlib_collision_resolution_record_create(0xBEEF));
    std::vector<Record> carriers;
    carriers.emplace_back(rtdlib_alternative_carrier_record_create(1, 1, b, 0, nullptr, nullptr));
    carriers.emplace_back(rtdlib_alternative_carrier_record_create(0, 1, w, 1, one, aux));
    const Array array(std::move(carriers));
    const Record request(rtdlib_handover_request_record_create(number.get(), 2, array.data(), 0x12));

    Bytes name = text("Nick");
    const nfc_ndef_bt_rtd_2_1_str fields = {.device_address = {1, 2, 3, 4, 5, 6},
                                            .class_of_device = {10, 11, 12},
                                            .local_name_length = 4,
                                            .local_name = name.data()};
    const Record oob(rtdlib_bt_2_1_configuration_data_record_create(&fields, 9, 0, 0, 0, b, 1, 1));
    const Bytes media = text("a/b");
    const Record carrier(rtdlib_handover_carrier_record_create(NFC_NDEF_TNF_MIME, 3, media.data(), 1, one));
    nfc_ndef_record_set_id(carrier.get(), owned({'w'}), 1);
    const Record info = record(NFC_NDEF_TNF_MIME, "text/plain", text("info"), {'i'});

    const Bytes sent = encode(message({request.get(), oob.get(), carrier.get(), info.get()}));
    EXPECT_EQ(hex(sent), hex(bytes("91021C 4872 12 9102026372BEEF 1102046163 01016200 5102066163 000177010169"
                                   "1A201301 6170706C69636174696F6E2F766E642E626C7565746F6F74682E65702E6F6F62 62"
                                   "1300 010203040506 05094E69636B 040D0A0B0C 19020601 486377 0203612F6201"
                                   "5A0A0401 746578742F706C61696E 69 696E666F")));

    const Message received = parse(sent);
    const auto copy_of = [](const nfc_ndef_record *record) { return Record(nfc_ndef_rec_create_and_copy(record)); };
    const auto by_id = [&](const uint8_t *id) { return nfc_ndef_msg_get_record_by_id(received.get(), id, 1); };
    const RecordType key = type(NFC_NDEF_TNF_WELL_KNOWN, "Hr");
    ASSERT_EQ(nfc_ndef_record_index_by_type_from_msg(received.get(), key.get()), 0);
    Record collision;
    uint8_t count = 0, version = 0;
    nfc_ndef_record **offered = nullptr;
    ASSERT_EQ(
        rtdlib_handover_request_record_extract(at(received, 0), nfc_ndef::out(collision), &count, &offered, &version),
        1);
    ASSERT_EQ(count, 2);
    EXPECT_EQ(version, 0x12);
    EXPECT_EQ(read_collision(std::move(collision)), "1 number=BEEF");
    EXPECT_EQ(read_alternative(Record(offered[0])), "1 cps=1 length=1 ref=62 aux=0");
    EXPECT_EQ(read_alternative(Record(offered[1])), "1 cps=0 length=1 ref=77 aux=1 lengths=01 list=[69]");
    os_block_dealloc(offered);
    EXPECT_EQ(read_oob(copy_of(by_id(b))), "1 class=0A0B0C name=4E69636B");
    EXPECT_EQ(read_carrier(copy_of(by_id(w))), "1 ctf=2 length=3 type=612F62 data_length=1 data=01");
    EXPECT_EQ(payload_of(by_id(i)), text("info"));
    EXPECT_EQ(encode(received), sent);
}
