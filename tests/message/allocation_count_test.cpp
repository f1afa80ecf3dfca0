#include "ndef.h"

using namespace test;
using nfc_ndef::out;

namespace {

// Blocks asked for since it was made.
class Asked {
public:
    size_t operator()() const { return allocations() - before_; }

private:
    size_t before_ = allocations();
};

size_t blocks_of_parsing(const Bytes &data)
{
    const Asked asked;
    const Message message = parse(data);
    return asked();
}

struct Records {
    ~Records()
    {
        for (uint8_t i = 0; i < count; ++i)
            nfc_ndef_record_delete(&records[i]);
        os_block_dealloc(records);
    }
    uint8_t count = 0;
    nfc_ndef_record **records = nullptr;
};

// What a Smart Poster holds.
struct Poster {
    explicit Poster(const Record &record)
        : result(rtdlib_smart_poster_record_extract(record.get(), &titles.count, &titles.records, out(uri), &action,
                                                    &icons.count, &icons.records, out(size), out(type), &others.count,
                                                    &others.records))
    {
    }
    Records titles, icons, others;
    Record uri, size, type;
    uint32_t action = 0;
    int8_t result;
};

Bytes repeated(const char *first, const char *middle, const char *last, size_t count)
{
    Bytes all = bytes(first);
    for (size_t i = 2; i < count; ++i)
        all = all + bytes(middle);
    return all + bytes(last);
}

// A message and its list; a record and its place in the list.
constexpr size_t message_blocks = 2, record_blocks = 2;

TEST(AllocationCount, ParsingAsksForTheBlocksThatItHandsOver)
{
    constexpr size_t type = 1, id = 1, payload = 1;
    const Bytes chunks = repeated("B1 01 01 54 61", "36 00 01 62", "56 00 01 63", 50);
    const Bytes many = repeated("91 01 01 54 61", "11 01 01 55 62", "51 01 01 54 63", 100);
    EXPECT_EQ(blocks_of_parsing(bytes("D1 01 02 54 61 62")), message_blocks + record_blocks + type + payload);
    EXPECT_EQ(blocks_of_parsing(bytes("D9 01 01 01 54 69 61")), message_blocks + record_blocks + type + id + payload);
    EXPECT_EQ(blocks_of_parsing(bytes("D0 00 00")), message_blocks + record_blocks);
    EXPECT_EQ(blocks_of_parsing(chunks), message_blocks + record_blocks + type + payload);
    EXPECT_EQ(blocks_of_parsing(many), message_blocks + 100 * (record_blocks + type + payload));
}

TEST(AllocationCount, WhatIsRefusedByItsHeaderCostsNoBlock)
{
    for (const char *const refused :
         {"D1 01", "D1 01 03 54 61 62", "D9 01 01 FF 54 61", "C1 01 FFFFFFFF 54 61", "D0 01 00 54", "91 01 01 54 61",
          "D1 01 01 54 61 D1 01 01 54 61", "91 01 01 54 61 51 01 02 54 61", "B1 01 01 54 61 36 00 01 62"}) {
        EXPECT_EQ(blocks_of_parsing(bytes(refused)), 0U) << refused;
        EXPECT_FALSE(parse(bytes(refused))) << refused;
    }
    EXPECT_EQ(blocks_of_parsing(repeated("91 01 01 54 61", "11 01 01 54 61", "51 01 01 54 61", 255)), 0U);

    const Record poster = with_payload(bytes("D1 01 03 55 01"));
    const Asked asked;
    EXPECT_FALSE(decode(bytes("D1 01 03 54 61 62")));
    EXPECT_EQ(Poster(poster).result, -1);
    EXPECT_EQ(asked(), 0U);
}

TEST(AllocationCount, EncodingAsksForTheBytesAlone)
{
    const Message m = parse(repeated("91 01 01 54 61", "11 01 01 55 62", "51 01 01 54 63", 100));
    const Asked asked;
    EXPECT_EQ(encode(m).size(), 500U);
    EXPECT_EQ(asked(), 1U);
    EXPECT_EQ(encode(at(m, 0)).size(), 5U);
    EXPECT_EQ(asked(), 2U);
}

TEST(AllocationCount, LookingUpAsksForNothing)
{
    const Message m = parse(bytes("99 01 01 01 54 69 61 52 03 01 61 2F 62 63"));
    const Bytes data = bytes("D1 01 01 54 61"), id = text("i");
    const RecordType media = type(NFC_NDEF_TNF_MIME, "A/B"), absent = type(NFC_NDEF_TNF_WELL_KNOWN, "X");
    nfc_ndef_msg_report report;
    uint8_t count = 0;

    const Asked asked;
    EXPECT_EQ(nfc_ndef_msg_get_number_of_records(m.get()), 2U);
    EXPECT_EQ(nfc_ndef_msg_get_record_by_index(m.get(), 0), at(m, 0));
    EXPECT_EQ(nfc_ndef_msg_get_record_by_id(m.get(), id.data(), 1), at(m, 0));
    EXPECT_EQ(nfc_ndef_record_index_by_type_from_msg(m.get(), media.get()), 1);
    EXPECT_EQ(nfc_ndef_record_index_by_type_from_msg(m.get(), absent.get()), -1);
    EXPECT_EQ(nfc_ndef_msg_get_records_by_type(m.get(), absent.get(), &count), nullptr);
    EXPECT_EQ(nfc_ndef_msg_check(data.data(), 0, 5, &report), 1U);
    EXPECT_EQ(asked(), 0U);

    const nfc_ndef::Block<const nfc_ndef_record *> found(
        nfc_ndef_msg_get_records_by_type(m.get(), media.get(), &count));
    EXPECT_EQ(count, 1);
    EXPECT_EQ(asked(), 1U); // the array that is handed over
}

TEST(AllocationCount, ExtractingAsksForWhatItHandsOverAndForNoNestedMessage)
{
    constexpr size_t record = 3, array = 1; // a record with a type and a payload
    const Record poster = with_payload(bytes("91 01 01 55 01  11 01 01 54 61  11 01 01 54 62  11 03 01 616374 00"
                                             "52 09 01 696D6167652F706E67 FF"));
    const Asked for_poster;
    EXPECT_EQ(Poster(poster).result, 1);
    EXPECT_EQ(for_poster(), 4 * record + 2 * array);

    const Record request =
        with_payload(bytes("12 91 02 02 6372 4D2A 11 02 04 6163 01 01 62 00 51 02 04 6163 01 01 77 00"));
    Record collision;
    Records carriers;
    uint8_t version = 0;
    const Asked for_request;
    ASSERT_EQ(rtdlib_handover_request_record_extract(request.get(), out(collision), &carriers.count, &carriers.records,
                                                     &version),
              1);
    EXPECT_EQ(for_request(), 3 * record + array);

    uint16_t number = 0;
    uint32_t state = 0;
    uint8_t length = 0, count = 0, *lengths = nullptr, **others = nullptr;
    nfc_ndef::Block<> reference;
    const Asked for_carrier;
    EXPECT_EQ(rtdlib_collision_resolution_record_extract(collision.get(), &number), 1);
    EXPECT_EQ(rtdlib_alternative_carrier_record_extract(carriers.records[0], &state, &length, out(reference), &count,
                                                        &lengths, &others),
              1);
    EXPECT_EQ(for_carrier(), 1U); // the reference

    const Record bluetooth = with_payload(bytes("11 00 060504030201 03 09 4142 04 0D 140424"));
    nfc_ndef::BluetoothOob fields;
    const Asked for_bluetooth;
    EXPECT_EQ(rtdlib_bt_2_1_configuration_data_record_extract(bluetooth.get(), out(fields)), 1);
    EXPECT_EQ(for_bluetooth(), 2U); // the structure and the name
}

} // namespace
