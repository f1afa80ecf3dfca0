#include "ndef.h"

using namespace test;

namespace {

const struct {
    const char *wire;
    std::string expected;
    const char *encoded = ""; // when not as it was
} wire_forms[] = {
    {"D1 01 05 54 02656E4869", "11010:1T//02656E4869/9"},
    {"D0 00 00", "11010:0///3"},
    {"18 00 00 00", "00011:0///4", "100000"},
    {"C0 00 00000000", "11000:0///6", "D00000"},
    {"19 01 02 03 54 696A6B 6162", "00011:1T/696A6B/6162/10"},
    {"1A 01 01 00 54 61", "00011:2T//61/6", "1201015461"},
    {"D1 01 00 54", "11010:1T///4"},             // ends with its type
    {"1C 01 00 02 54 6162", "00011:4T/6162//7"}, // ends with its id
    {"1D 00 00 01 69", "00011:5/69//5"},         // an id alone
    {"13 00 00", "00010:3///3"},                 // no field at all
    {"57 00 01 61", "01010:7//61/4"},            // reserved
    {"36 01 01 54 61", "00110:6T//61/5"},        // unchanged, with a type
    {"01 01 00000002 54 6162", "00000:1T//6162/9", "110102546162"},
    {"12 01 FF 54 09*255", "00010:2T//09*255/259"}, // the longest that is short
    {"02 01 00000100 54 09*256", "00000:2T//09*256/263"},
    {"0A FF 00010203 FF 54*255 69*255 07*66051", "00001:2" + std::string(255, 'T') + "/69*255/07*66051/66568"},
};

TEST(Codec, DecodesAndEncodesEachWireForm)
{
    for (const auto &[wire, expected, encoded] : wire_forms) {
        const Record r = decode(bytes(wire) + bytes("FE D1")); // what follows is ignored
        EXPECT_EQ(described(r.get()), expanded(expected)) << wire;
        EXPECT_EQ(encode(r), bytes(*encoded ? encoded : wire)) << wire;
    }
}

TEST(Codec, RefusesWhatIsNotARecord)
{
    for (const char *const wire :
         {"10 01 00 54", "10 00 01 61", "18 00 00 01 69",                   // empty, but with a field
          "15 01 00 54", "17 01 01 54 61",                                  // a type where none may be
          "01 00 FFFFFFFF 61", "09 01 FFFFFFFF FF 54", "01 FF FFFFFFFE 54", // sums that wrap in 32 bits
          "01 00 00000007 61", "01 00 00010000 61"})
        EXPECT_FALSE(decode(bytes(wire))) << wire;
    const uint8_t byte[] = {0xD0, 0, 0};
    EXPECT_EQ(nfc_ndef_record_create_from_byte_array(nullptr, 0, 3), nullptr);
    EXPECT_EQ(nfc_ndef_record_create_from_byte_array(byte, 0, 0), nullptr);
}

TEST(Codec, CountsTheLengthFromTheDataAndNotFromThePosition)
{
    const Exact data(bytes("FF FF D1 01 01 54 61"));
    const Record r(nfc_ndef_record_create_from_byte_array(data.data(), 2, 7));
    ASSERT_TRUE(r);
    EXPECT_EQ(r->parsed_length, 5U);
    EXPECT_EQ(payload_of(r.get()), text("a"));
    for (const auto &[position, length] :
         {std::pair{2U, 6U}, {2U, 5U}, {2U, 2U}, {6U, 7U}, {7U, 7U}, {8U, 7U}, {UINT32_MAX, 7U}})
        EXPECT_EQ(nfc_ndef_record_create_from_byte_array(data.data(), position, length), nullptr) << position;
}

TEST(Codec, EncodesNothingThatDisagreesWithItself)
{
    uint8_t byte[] = {'x'};
    struct Case {
        const char *what;
        nfc_ndef_record record;
        const char *expected; // empty: refused
    };
    for (const Case &c : std::initializer_list<Case>{
             {"payload without length", {.payload = byte, .record_type = {byte, 1, 1}}, ""},
             {"payload length alone", {.payload_length = 1, .record_type = {byte, 1, 1}}, ""},
             {"id without length", {.id = byte, .record_type = {byte, 1, 1}}, ""},
             {"id length alone", {.id_length = 1, .record_type = {byte, 1, 1}}, ""},
             {"name without length", {.record_type = {byte, 0, 1}}, ""},
             {"name length alone", {.record_type = {nullptr, 1, 1}}, ""},
             {"empty with a payload", {.payload_length = 1, .payload = byte}, ""},
             {"empty with an id", {.id_length = 1, .id = byte}, ""},
             {"empty with a name", {.record_type = {byte, 1, 0}}, ""},
             {"empty with a payload pointer", {.payload = byte}, ""},
             {"2^31 bytes", {.payload_length = 0x7FFFFFF9, .payload = byte, .record_type = {byte, 1, 1}}, ""},
             {"a length that wraps", {.payload_length = UINT32_MAX, .payload = byte, .record_type = {byte, 1, 1}}, ""},
             {"flags from the record, but short and id length not", {.mb = 2, .cf = 1, .il = 1}, "B00000"},
             {"me, not short",
              {.me = 1, .payload_length = 1, .payload = byte, .record_type = {nullptr, 0, 5}},
              "55000178"},
             {"a format above 7", {.record_type = {byte, 1, 9}}, "11010078"},
         }) {
        uint8_t *block = byte;
        const uint32_t length = nfc_ndef_record_to_byte_array(&c.record, &block);
        EXPECT_EQ(length, std::string_view(c.expected).size() / 2) << c.what;
        if (length == 0) {
            EXPECT_EQ(block, byte) << c.what; // not written
            continue;
        }
        EXPECT_EQ(hex(copy(block, length)), c.expected) << c.what;
        os_block_dealloc(block);
    }
    uint8_t *block = byte;
    EXPECT_EQ(nfc_ndef_record_to_byte_array(nullptr, &block), 0U);
    EXPECT_EQ(block, byte);
}

} // namespace
