#include "outcome.h"

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
    EXPECT_EQ(spell(sent), spell(spelled("91021C 4872 12 9102026372BEEF 1102046163 01016200 5102066163 000177010169"
                                         "1A201301 6170706C69636174696F6E2F766E642E626C7565746F6F74682E65702E6F6F62 62"
                                         "1300 010203040506 05094E69636B 040D0A0B0C 19020601 486377 0203612F6201"
                                         "5A0A0401 746578742F706C61696E 69 696E666F")));

    const Message received = parse(sent);
    const RecordType key = type(NFC_NDEF_TNF_WELL_KNOWN, "Hr");
    ASSERT_EQ(nfc_ndef_record_index_by_type_from_msg(received.get(), key.get()), 0);
    const auto copy_of = [](const nfc_ndef_record *record) { return Record(nfc_ndef_rec_create_and_copy(record)); };
    const auto by_id = [&](const uint8_t *id) { return nfc_ndef_msg_get_record_by_id(received.get(), id, 1); };
    EXPECT_EQ(outcome(rtdlib_handover_request_record_extract, copy_of(at(received, 0)),
                      {{"number"}, {"carriers"}, {"list", 1, true}, {"version"}}),
              "1 number=cr:BEEF carriers=2 list=[ac:01016200 ac:000177010169] version=12");
    EXPECT_EQ(outcome(rtdlib_alternative_carrier_record_extract, record_of("ac:000177010169"),
                      {{"cps"}, {"length"}, {"ref", 1}, {"aux"}, {"lengths", 3}, {"list", 3, false, 4}}),
              "1 cps=0 length=1 ref=77 aux=1 lengths=01 list=[69]");
    EXPECT_EQ(outcome(rtdlib_handover_carrier_record_extract, copy_of(by_id(w)),
                      {{"ctf"}, {"length"}, {"type", 1}, {"data_length"}, {"data", 3}}),
              "1 ctf=2 length=3 type=612F62 data_length=1 data=01");
    EXPECT_EQ(payload_of(by_id(i)), text("info"));

    nfc_ndef::BluetoothOob read;
    EXPECT_EQ(rtdlib_bt_2_1_configuration_data_record_extract(by_id(b), nfc_ndef::out(read)), 1);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(copy(read->device_address, 6), copy(fields.device_address, 6));
    EXPECT_EQ(copy(read->class_of_device, 3), copy(fields.class_of_device, 3));
    EXPECT_EQ(copy(read->local_name, read->local_name_length), name);
    EXPECT_EQ(encode(received), sent);
}
