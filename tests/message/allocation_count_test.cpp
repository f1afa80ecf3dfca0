#include "readers.h"

using namespace test;

namespace {

// A message and its list; a record and its place in the list; what else a record owns.
constexpr size_t message_blocks = 2, record_blocks = 2, type_block = 1, id_block = 1, payload_block = 1;

Bytes many(size_t count) { return sequence(count, "91 01 01 54 61", "11 01 01 55 62", "51 01 01 54 63"); }

TEST(AllocationCount, ParsingAsksForTheBlocksThatItHandsOver)
{
    const struct {
        Bytes wire;
        size_t blocks;
    } cases[] = {
        {bytes("D1 01 02 54 61 62"), message_blocks + record_blocks + type_block + payload_block},
        {bytes("D9 01 01 01 54 69 61"), message_blocks + record_blocks + type_block + id_block + payload_block},
        {bytes("D0 00 00"), message_blocks + record_blocks},
        {bytes("B1 01 01 54 61 36 00 01 62 36 00 01 62 56 00 01 63"),
         message_blocks + record_blocks + type_block + payload_block},
        {many(100), message_blocks + 100 * (record_blocks + type_block + payload_block)},
    };
    for (const auto &[wire, blocks] : cases) {
        EXPECT_TRUE(parse(wire)) << hex(wire);
        EXPECT_EQ(allocations_of_last_call(), blocks) << hex(wire);
    }
}

TEST(AllocationCount, WhatIsRefusedCostsNoBlock)
{
    for (const char *const refused : {"D1 01", "D0 01 00 54", "91 01 01 54 61", "91 01 01 54 61 51 01 02 54 61"}) {
        EXPECT_FALSE(parse(bytes(refused))) << refused;
        EXPECT_EQ(allocations_of_last_call(), 0U) << refused;
    }
    EXPECT_FALSE(parse(many(255)));
    EXPECT_EQ(allocations_of_last_call(), 0U);
    EXPECT_EQ(read_poster(with_payload(bytes("D1 01 03 55 01"))), "-1");
    EXPECT_EQ(allocations_of_last_call(), 0U);
}

TEST(AllocationCount, EncodingAsksForTheBytesAlone)
{
    const Message m = parse(many(100));
    EXPECT_EQ(encode(m).size(), 500U);
    EXPECT_EQ(allocations_of_last_call(), 1U);
    EXPECT_EQ(encode(at(m, 0)).size(), 5U);
    EXPECT_EQ(allocations_of_last_call(), 1U);
}

TEST(AllocationCount, ExtractingAsksForWhatItHandsOverAndForNoNestedMessage)
{
    constexpr size_t record = 3, array = 1; // a record with a type and a payload
    const struct {
        Read read;
        const char *payload;
        size_t blocks;
    } cases[] = {
        {read_poster, "9101015501 1101015461 1101015462 110301616374 00 52090169 6D6167652F706E67 FF",
         4 * record + 2 * array},
        {read_request, "12 910202 6372 4D2A 110204 6163 01016200 510204 6163 01017700", 3 * record + array},
        {read_control, "00 910101 74 01 510102 61 0102", record},
        {read_alternative, "01016200", 1},
        {read_oob, "1100 060504030201 03094142 040D140424", 2}, // the structure and the name
    };
    for (const auto &[read, payload, blocks] : cases) {
        EXPECT_EQ(read(with_payload(bytes(payload)))[0], '1') << payload;
        EXPECT_EQ(allocations_of_last_call(), blocks) << payload;
    }
}

} // namespace
