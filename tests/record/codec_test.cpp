#include "ndef.h"

using namespace test;

namespace {

struct WireForm {
    const char *what;
    Bytes wire;
    uint32_t format;
    const char *type;
    Bytes id, payload;
    bool canonical = true; // comes back byte by byte when encoded again
};

const WireForm wire_forms[] = {
    {"text", bytes("D1 01 05 54 02656E4869"), 1, "T", {}, bytes("02656E4869")},
    {"empty", bytes("D0 00 00"), 0, "", {}, {}},
    {"empty with an id length of 0", bytes("18 00 00 00"), 0, "", {}, {}, false},
    {"empty in the long form", bytes("C0 00 00000000"), 0, "", {}, {}, false},
    {"id", bytes("19 01 02 03 54 696A6B 6162"), 1, "T", text("ijk"), text("ab")},
    {"id length of 0", bytes("1A 01 01 00 54 61"), 2, "T", {}, text("a"), false},
    {"ends with its type", bytes("D1 01 00 54"), 1, "T", {}, {}},
    {"ends with its id", bytes("1C 01 00 02 54 6162"), 4, "T", text("ab"), {}},
    {"id alone", bytes("1D 00 00 01 69"), 5, "", text("i"), {}},
    {"payload alone", bytes("15 00 02 6162"), 5, "", {}, text("ab")},
    {"no field at all", bytes("13 00 00"), 3, "", {}, {}},
    {"reserved", bytes("57 00 01 61"), 7, "", {}, text("a")},
    {"unchanged with a type", bytes("36 01 01 54 61"), 6, "T", {}, text("a")},
    {"short payload in the long form", bytes("01 01 00000002 54 6162"), 1, "T", {}, text("ab"), false},
    {"255 bytes of payload", bytes("12 01 FF 54") + filled(255, 9), 2, "T", {}, filled(255, 9)},
    {"256 bytes of payload", bytes("02 01 00000100 54") + filled(256, 9), 2, "T", {}, filled(256, 9)},
    {"every length at its largest",
     bytes("0A FF 00010203 FF") + filled(255, 'T') + filled(255, 'i') + filled(0x10203, 7), 2, "TTT", filled(255, 'i'),
     filled(0x10203, 7)},
};

TEST(Codec, DecodesAndEncodesEachWireForm)
{
    for (const WireForm &form : wire_forms) {
        SCOPED_TRACE(form.what);
        const Record r = decode(form.wire);
        ASSERT_TRUE(r);
        const uint8_t header = form.wire[0];
        EXPECT_EQ((Bytes{r->mb, r->me, r->cf, r->sr, r->il}),
                  (Bytes{uint8_t(header >> 7), uint8_t(header >> 6 & 1), uint8_t(header >> 5 & 1),
                         uint8_t(header >> 4 & 1), uint8_t(header >> 3 & 1)}));
        EXPECT_EQ(r->record_type.format, form.format);
        EXPECT_EQ(type_of(r.get()).substr(0, 3), form.type);
        EXPECT_EQ(r->record_type.name_length, form.wire[1]);
        EXPECT_EQ(id_of(r.get()), form.id);
        EXPECT_EQ(payload_of(r.get()), form.payload);
        EXPECT_TRUE((r->id == nullptr) == form.id.empty() && (r->payload == nullptr) == form.payload.empty());
        EXPECT_EQ(r->parsed_length, form.wire.size());
        if (form.canonical)
            EXPECT_EQ(encode(r), form.wire);
        else
            EXPECT_EQ(payload_of(decode(encode(r)).get()), form.payload);
        EXPECT_FALSE(encode(r).empty());
    }
}

TEST(Codec, RefusesEveryTruncationAndIgnoresWhatFollows)
{
    for (const WireForm &form : wire_forms) {
        SCOPED_TRACE(form.what);
        const size_t step = form.wire.size() > 1000 ? 997 : 1;
        for (size_t length = 0; length < form.wire.size(); length += step)
            EXPECT_FALSE(decode(Bytes(form.wire.begin(), form.wire.begin() + static_cast<int>(length)))) << length;
        EXPECT_FALSE(decode(Bytes(form.wire.begin(), form.wire.end() - 1)));
        const Record r = decode(form.wire + bytes("FE D1"));
        ASSERT_TRUE(r);
        EXPECT_EQ(r->parsed_length, form.wire.size());
    }
}

TEST(Codec, RefusesWhatIsNotARecord)
{
    for (const char *const wire : {
             "10 01 00 54",
             "10 00 01 61",
             "18 00 00 01 69",
             "00 00 00000001 61", // empty, but with a field
             "15 01 00 54",
             "17 01 01 54 61",
             "05 01 00000000 54", // a type where none may be
             "01 00 FFFFFFFF 61",
             "09 01 FFFFFFFF FF 54",
             "01 FF FFFFFFFE 54", // sums that wrap in 32 bits
             "01 00 00000007 61",
             "01 00 00010000 61",
         })
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
             {"more than 2^31 - 1 bytes",
              {.payload_length = 0x7FFFFFF9, .payload = byte, .record_type = {byte, 1, 1}},
              ""},
             {"a length that wraps", {.payload_length = UINT32_MAX, .payload = byte, .record_type = {byte, 1, 1}}, ""},
             {"flags from the record, but short and id length not", {.mb = 2, .cf = 1, .il = 1}, "B00000"},
             {"me alone, short flag unset",
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
