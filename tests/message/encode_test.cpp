#include "ndef.h"

using namespace test;

namespace {

TEST(Encode, SetsTheFlagsByPosition)
{
    // The record's own flags, each of them wrong somewhere, do not count.
    const Record r = decode(bytes("F1 01 01 54 61"));
    for (const auto &[count, expected] :
         {std::pair{1, "D101015461"}, {2, "91010154615101015461"}, {4, "9101015461110101546111010154615101015461"}}) {
        const Message m(nfc_ndef_msg_create());
        for (int i = 0; i < count; ++i)
            ASSERT_EQ(nfc_ndef_msg_append_record(m.get(), r.get()), 1U);
        EXPECT_EQ(hex(encode(m)), expected);
        EXPECT_EQ(at(m, 0)->cf, 1); // the message is not changed
    }
    EXPECT_EQ(encode(message({well_known("T", filled(300, 7)).get(), record(0, "", {}).get()})),
              bytes("81 01 0000012C 54") + filled(300, 7) + bytes("50 00 00"));
}

TEST(Encode, SaysByThePointerWhereItFailed)
{
    uint8_t byte[] = {1};
    const nfc_ndef_record good{.payload_length = 1, .payload = byte, .record_type = {nullptr, 0, 5}};
    nfc_ndef_record bad = good, half = good, huge = good;
    bad.payload_length = 0;
    half.payload_length = 0x40000000;
    huge.payload_length = 0x7FFFFFFF;
    struct Case {
        const char *what;
        std::vector<nfc_ndef_record> records;
        bool written; // null is
    };
    for (const Case &c : std::initializer_list<Case>{
             {"no records", {}, false},
             {"none can be encoded", {bad}, false},
             {"nor any of two", {bad, bad}, false},
             {"the first cannot", {bad, good}, true},
             {"the last cannot", {good, good, bad}, true},
             {"one is too long by itself", {good, huge}, true},
             {"all together are too long", {half, half}, false},
             {"even modulo 2^32", {half, half, half, half, good}, false},
         }) {
        const Message m(nfc_ndef_msg_create());
        for (const nfc_ndef_record &each : c.records) {
            ASSERT_EQ(nfc_ndef_msg_append_record(m.get(), &good), 1U);
            nfc_ndef_record *const stored = nfc_ndef_msg_edit_record_by_index(
                m.get(), static_cast<uint8_t>(nfc_ndef_msg_get_number_of_records(m.get()) - 1));
            stored->payload_length = each.payload_length;
        }
        uint8_t *block = byte;
        EXPECT_EQ(nfc_ndef_msg_to_byte_array(m.get(), &block), 0) << c.what;
        EXPECT_EQ(block, c.written ? nullptr : byte) << c.what;
    }
    uint8_t *block = byte;
    EXPECT_EQ(nfc_ndef_msg_to_byte_array(nullptr, &block), 0);
    EXPECT_EQ(block, byte);
}

} // namespace
