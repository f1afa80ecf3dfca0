#include "ndef.h"

using namespace test;

namespace {

// Each record as mb me cf sr il, format, type, id, payload and parsed length.
std::string summary(const Message &message)
{
    if (!message)
        return "refused";
    std::string result;
    for (uint8_t i = 0; i < nfc_ndef_msg_get_number_of_records(message.get()); ++i) {
        const nfc_ndef_record *const r = at(message, i);
        for (const uint8_t flag : {r->mb, r->me, r->cf, r->sr, r->il})
            result += static_cast<char>('0' + flag);
        result += ":" + std::to_string(r->record_type.format) + type_of(r) + "/" + hex(id_of(r)) + "/" +
                  hex(payload_of(r)) + "/" + std::to_string(r->parsed_length) + " ";
    }
    return result;
}

TEST(Parse, JoinsChunksAndKeepsWholeRecordsAsTheyAre)
{
    for (const auto &[wire, expected] : std::initializer_list<std::pair<const char *, const char *>>{
             {"D1010354616263", "11010:1T//616263/7 "},
             {"D0 00 00", "11010:0///3 "},
             {"D1 01 00 54", "11010:1T///4 "},
             {"D9 01 00 01 54 69", "11011:1T/69//6 "},
             {"C1 01 00000001 54 61", "11000:1T//61/8 "},
             {"D6 01 01 54 61", "11010:6T//61/5 "}, // without chunks, the chunk rules do not matter
             {"9101015461 16000162 5101015563", "10010:1T//61/5 00010:6//62/4 01010:1U//63/5 "},
             {"B101025461 62 3600026364 5600026566", "11010:1T//616263646566/10 "},
             {"B9010101546961 56000162", "11011:1T/69/6162/8 "},
             {"A101000000015461 4600000000 0162", "11010:1T//6162/6 "}, // a short payload is a short record
             {"B901010054 61 56000162", "11011:1T//6162/7 "},           // IL with an id length of 0 stays IL
             {"B1010054 560000", "11010:1T///4 "},                      // no payload at all
             {"B1010054 360000 36000161 560000", "11010:1T//61/5 "},
             {"B500003600010156000102", "11010:5//0102/5 "},
             {"9101015461 3201015562 16000163 5101015464", "10010:1T//61/5 00010:2U//6263/6 01010:1T//64/5 "},
             {"B101015461 16000162 3101015563 56000164", "10010:1T//6162/6 01010:1U//6364/6 "},
             {"B101015461 16000162 5101015563", "10010:1T//6162/6 01010:1U//63/5 "},
             {"D102014763 61 D1010154 62 D1010155 63", "11010:1Gc//61/6 11010:1T//62/5 11010:1U//63/5 "},
             {"D2020047 63 D1010154 62", "11010:2Gc///5 11010:1T//62/5 "}, // whatever the format
         }) {
        EXPECT_EQ(summary(parse(bytes(wire))), expected) << wire;
    }
    const Bytes run = bytes("B1 01 C8 54") + filled(200, 1) + bytes("56 00 64") + filled(100, 2);
    EXPECT_EQ(summary(parse(run)), "11000:1T//" + hex(filled(200, 1) + filled(100, 2)) + "/307 ");
    for (const size_t second : {55U, 56U}) { // 255 and 256 bytes in all
        const Message m = parse(bytes("B1 01 C8 54") + filled(200, 1) + Bytes{0x56, 0, static_cast<uint8_t>(second)} +
                                filled(second, 2));
        ASSERT_TRUE(m);
        EXPECT_EQ(at(m, 0)->sr, second == 55);
        EXPECT_EQ(at(m, 0)->parsed_length, second == 55 ? 2 + 1 + 1 + 255U : 2 + 1 + 4 + 256U);
    }
}

TEST(Parse, TakesExactlyLengthBytesFromTheOffset)
{
    const Exact data(bytes("FF FF D1 01 03 54 61 62 63"));
    const auto parsed = [&](uint32_t offset, uint32_t length) {
        return Message(nfc_ndef_msg_create_by_msg_offset(data.data(), offset, length)) != nullptr;
    };
    EXPECT_TRUE(parsed(2, 7));
    for (const auto &[offset, length] : {std::pair{2U, 6U}, {0U, 9U}, {2U, 0U}, {2U, 2U}, {7U, 2U}, {2U, 1U}})
        EXPECT_FALSE(parsed(offset, length)) << offset << " " << length;
    EXPECT_EQ(nfc_ndef_msg_create_by_msg_offset(nullptr, 0, 7), nullptr);
    const Exact late(filled(7, 0) + bytes("D1 01 03 54 61 62 63")); // an offset that is not below the length
    EXPECT_EQ(nfc_ndef_msg_create_by_msg_offset(late.data(), 7, 7), nullptr);
    EXPECT_EQ(nfc_ndef_msg_create_by_msg_offset(late.data(), UINT32_MAX, 7), nullptr);
}

// A message of `count` records of one type byte each, or of as many one-record messages behind a "Gc".
Bytes many(size_t count, bool generic_control)
{
    Bytes wire = generic_control ? bytes("D1 02 00 47 63") : bytes("91 01 00 54");
    for (size_t i = 1; i < count; ++i)
        wire = wire + (generic_control ? bytes("D1 01 00 54")
                       : i + 1 < count ? bytes("11 01 00 54")
                                       : bytes("51 01 00 54"));
    return wire;
}

TEST(Parse, TakesAtMost254RecordsChunksCountedSingly)
{
    for (const bool generic_control : {false, true}) {
        const Message most = parse(many(254, generic_control));
        ASSERT_TRUE(most);
        EXPECT_EQ(nfc_ndef_msg_get_number_of_records(most.get()), 254);
        EXPECT_FALSE(parse(many(255, generic_control)));
    }
    // 127 runs of two chunks, then two runs of 127.
    Bytes pairs = bytes("B1 01 01 54 61 16 00 01 62"), long_runs = bytes("B1 01 01 54 61");
    for (int i = 1; i < 127; ++i) {
        pairs = pairs + bytes("31 01 01 54 61") + (i < 126 ? bytes("16 00 01 62") : bytes("56 00 01 62"));
        long_runs = long_runs + (i < 126 ? bytes("36 00 01 62") : bytes("16 00 01 62"));
    }
    Bytes last_run = long_runs;
    last_run[0] = 0x31;
    last_run[last_run.size() - 4] = 0x56;
    const Message of_pairs = parse(pairs), of_long_runs = parse(long_runs + last_run);
    ASSERT_TRUE(of_pairs && of_long_runs);
    EXPECT_EQ(nfc_ndef_msg_get_number_of_records(of_pairs.get()), 127);
    EXPECT_EQ(payload_of(at(of_pairs, 126)), text("ab"));
    EXPECT_EQ(nfc_ndef_msg_get_number_of_records(of_long_runs.get()), 2);
    EXPECT_EQ(payload_of(at(of_long_runs, 1)), text("a") + filled(126, 'b'));
    EXPECT_FALSE(parse(bytes("B1 01 01 54 61 36 00 01 62") + Bytes(pairs.begin() + 5, pairs.end()))); // 255 in one
}

TEST(Parse, WhatItReadsEncodesWholeAndReadsTheSame)
{
    for (const char *const wire : {"91010154615101015562", "9101015461 51010055", "D90100015469", "D00000",
                                   "9101015461 1A020101616269 2A 55000161"})
        EXPECT_EQ(encode(parse(bytes(wire))), bytes(wire)) << wire;
    EXPECT_EQ(hex(encode(parse(bytes("B101025461623600026364 5600026566")))), "D1010654616263646566");
}

TEST(Parse, CopiesEachPayloadOnceAndRefusesWithoutAllocating)
{
    const Exact refused(bytes("9101015461 5101035562")), taken(bytes("9101015461 5101015562"));
    const size_t before = allocations();
    EXPECT_EQ(nfc_ndef_msg_create_by_msg_offset(refused.data(), 0, refused.size()), nullptr);
    EXPECT_EQ(allocations(), before);
    const Message m(nfc_ndef_msg_create_by_msg_offset(taken.data(), 0, taken.size()));
    EXPECT_EQ(allocations(), before + live_blocks());
}

} // namespace
