#include "ndef.h"

using namespace test;

namespace {

std::string summary(const Message &message)
{
    std::string result = message ? "" : "refused";
    for (uint8_t i = 0; i < nfc_ndef_msg_get_number_of_records(message.get()); ++i)
        result += (i == 0 ? "" : " ") + described(at(message, i));
    return result;
}

TEST(Parse, JoinsChunksAndKeepsWholeRecordsAsTheyAre)
{
    for (const auto &[wire, expected] : std::initializer_list<std::pair<const char *, const char *>>{
             {"D1010354616263", "11010:1T//616263/7"},
             {"D9 01 00 01 54 69", "11011:1T/69//6"},
             {"C1 01 00000001 54 61", "11000:1T//61/8"},
             {"D6 01 01 54 61", "11010:6T//61/5"}, // without chunks, the chunk rules do not matter
             {"9101015461 16000162 5101015563", "10010:1T//61/5 00010:6//62/4 01010:1U//63/5"},
             {"B101025461 62 3600026364 5600026566", "11010:1T//616263646566/10"},
             {"B9010101546961 56000162", "11011:1T/69/6162/8"},
             {"A101000000015461 4600000000 0162", "11010:1T//6162/6"}, // a short payload is a short record
             {"B901010054 61 56000162", "11011:1T//6162/7"},           // IL with an id length of 0 stays IL
             {"B1010054 560000", "11010:1T///4"},                      // no payload at all
             {"B1010054 360000 36000161 560000", "11010:1T//61/5"},
             {"B500003600010156000102", "11010:5//0102/5"},
             {"9101015461 3201015562 16000163 5101015464", "10010:1T//61/5 00010:2U//6263/6 01010:1T//64/5"},
             {"B101015461 16000162 3101015563 56000164", "10010:1T//6162/6 01010:1U//6364/6"},
             {"B101015461 16000162 5101015563", "10010:1T//6162/6 01010:1U//63/5"},
             {"D102014763 61 D1010154 62 D1010155 63", "11010:1Gc//61/6 11010:1T//62/5 11010:1U//63/5"},
             {"D2020047 63 D1010154 62", "11010:2Gc///5 11010:1T//62/5"}, // whatever the format
         })
        EXPECT_EQ(summary(parse(bytes(wire))), expected) << wire;
    EXPECT_EQ(summary(parse(bytes("B101C854 01*200 560037 01*55"))), expanded("11010:1T//01*255/259"));
    EXPECT_EQ(summary(parse(bytes("B101C854 01*200 560038 01*56"))), expanded("11000:1T//01*256/263"));
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

TEST(Parse, TakesAtMost254RecordsChunksCountedSingly)
{
    for (const size_t count : {254U, 255U}) {
        const Message one = parse(sequence(count, "91010054", "11010054", "51010054")),
                      of_controls = parse(sequence(count, "D102004763", "D1010054", "D1010054")),
                      run = parse(sequence(count, "B101015461", "36000162", "56000162"));
        EXPECT_EQ(nfc_ndef_msg_get_number_of_records(one.get()), count == 254 ? 254 : 0);
        EXPECT_EQ(nfc_ndef_msg_get_number_of_records(of_controls.get()), count == 254 ? 254 : 0);
        EXPECT_EQ(contents(run), count == 254 ? "a" + std::string(253, 'b') : "");
    }
    const Message pairs = parse(sequence(127, "B101015461 16000162", "3101015461 16000162", "3101015461 56000162"));
    EXPECT_EQ(nfc_ndef_msg_get_number_of_records(pairs.get()), 127);
}

} // namespace
