#include "agreement.h"
#include "ndef.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

using namespace test;

namespace {

struct Verdict {
    uint32_t reason, record, offset;
    bool operator==(const Verdict &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Verdict &v)
{
    return out << nfc_ndef_msg_check_text(v.reason) << ", record " << v.record << ", byte " << v.offset;
}

Verdict check(const Bytes &data)
{
    const Exact input(data);
    EXPECT_STREQ(agreement::broken_by({input.data(), input.size()}), nullptr);
    nfc_ndef_msg_report report{99, 99, 99};
    const uint8_t valid = nfc_ndef_msg_check(input.data(), 0, input.size(), &report);
    EXPECT_EQ(valid, report.reason == NFC_NDEF_MSG_VALID);
    return {report.reason, report.record, report.offset};
}

struct Case {
    const char *wire;
    Verdict expected;
};
const Case cases[] = {
    {"D1010354616263", {NFC_NDEF_MSG_VALID, 1, 7}},
    {"9101015461 16000162 5101015563", {NFC_NDEF_MSG_VALID, 3, 14}},
    {"B101025461 62 3600026364 5600026566", {NFC_NDEF_MSG_VALID, 1, 16}}, // chunks joined
    {"D102014763 61 D1010154 62", {NFC_NDEF_MSG_VALID, 2, 11}},
    {"", {NFC_NDEF_MSG_BAD_ARGUMENTS, 0, 0}},
    {"9101015461 51", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 1, 5}},
    {"9101015461 41010000", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 1, 5}},
    {"9101015461 51020155", {NFC_NDEF_MSG_TYPE_PAST_END, 1, 8}},
    {"9101015461 5901010255 69", {NFC_NDEF_MSG_ID_PAST_END, 1, 10}},
    {"9101015461 590102015569 61", {NFC_NDEF_MSG_PAYLOAD_PAST_END, 1, 11}},
    {"C101FFFFFFFF54", {NFC_NDEF_MSG_PAYLOAD_PAST_END, 0, 7}},
    {"C1010080000054", {NFC_NDEF_MSG_PAYLOAD_PAST_END, 0, 7}},
    {"9101015461 50000161", {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 1, 5}},
    {"1001", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 0, 0}},
    {"9101015461 55010055", {NFC_NDEF_MSG_TYPE_NOT_ALLOWED, 1, 5}},
    {"D701010055", {NFC_NDEF_MSG_TYPE_NOT_ALLOWED, 0, 0}},
    {"D101015461 FE", {NFC_NDEF_MSG_BYTES_LEFT_OVER, 1, 5}},
    {"F50000 FE", {NFC_NDEF_MSG_CHUNK_WITH_ME, 0, 0}}, // before what is left over
    {"B101015461 5E00000169 FE", {NFC_NDEF_MSG_CHUNK_WITH_ID, 1, 5}},
    {"D101015461 510101", {NFC_NDEF_MSG_BYTES_LEFT_OVER, 1, 5}},
    {"1101015461 51010255", {NFC_NDEF_MSG_MB_MISSING, 0, 0}}, // the first that broke
    {"D102004763 51010055", {NFC_NDEF_MSG_MB_MISSING, 1, 5}},
    {"1101015461 91010055 51010055", {NFC_NDEF_MSG_MB_MISSING, 0, 0}}, // as many flags as there should be
    {"9101015461 91010055 51010055", {NFC_NDEF_MSG_MB_REPEATED, 1, 5}},
    {"9101015461 91010055 91010055 51010055", {NFC_NDEF_MSG_MB_REPEATED, 1, 5}},
    {"9101015461 11010055", {NFC_NDEF_MSG_ME_MISSING, 1, 5}},
    {"9102004763 51010055", {NFC_NDEF_MSG_ME_MISSING, 0, 0}},
    {"B102004763 560000", {NFC_NDEF_MSG_ME_MISSING, 0, 0}}, // no chunk is one of several messages
    {"D102004763 91010055", {NFC_NDEF_MSG_ME_MISSING, 1, 5}},
    {"9103004763 78 51010055", {NFC_NDEF_MSG_VALID, 2, 10}},  // a type that only begins with "Gc"
    {"D102004763 FE", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 1, 5}}, // where another message may follow
    {"D101015461 51010055", {NFC_NDEF_MSG_ME_EARLY, 0, 0}},
    {"9101015461 51010055 51010055", {NFC_NDEF_MSG_ME_EARLY, 1, 5}},
    {"9101015461 71010055", {NFC_NDEF_MSG_CHUNK_WITH_ME, 1, 5}},
    {"B101015461 760000", {NFC_NDEF_MSG_CHUNK_WITH_ME, 1, 5}},
    {"B6000161 560000", {NFC_NDEF_MSG_CHUNK_FIRST_UNCHANGED, 0, 0}},
    {"B101015461 3E000100 61 560000", {NFC_NDEF_MSG_CHUNK_WITH_ID, 1, 5}},
    {"B101015461 36010055 560000", {NFC_NDEF_MSG_CHUNK_WITH_TYPE, 1, 5}},
    {"B101015461 56010055", {NFC_NDEF_MSG_CHUNK_WITH_TYPE, 1, 5}},
    {"B101015461 350000 560000", {NFC_NDEF_MSG_CHUNK_NOT_UNCHANGED, 1, 5}},
    {"B101015461 500000", {NFC_NDEF_MSG_CHUNK_NOT_UNCHANGED, 1, 5}},
    {"B101015461 160000 560000", {NFC_NDEF_MSG_UNCHANGED_OUTSIDE_CHUNKS, 2, 8}},
    {"960000 31010055 560000", {NFC_NDEF_MSG_UNCHANGED_OUTSIDE_CHUNKS, 0, 0}}, // the chunk makes it wrong
    {"B101015461 36000161", {NFC_NDEF_MSG_CHUNK_UNFINISHED, 1, 5}},
};

TEST(Check, GivesEachReasonWithRecordAndOffset)
{
    for (const Case &c : cases) {
        EXPECT_EQ(check(bytes(c.wire)), c.expected) << c.wire;
        EXPECT_EQ(parse(bytes(c.wire)) != nullptr, c.expected.reason == NFC_NDEF_MSG_VALID) << c.wire;
    }
    EXPECT_EQ(check(sequence(255, "910000", "110000", "510000")), (Verdict{NFC_NDEF_MSG_TOO_MANY_RECORDS, 254, 762}));
    for (const uint32_t last : {252U, 253U}) // ended too early, be there too many records or not
        EXPECT_EQ(check(sequence(last + 1, "910000", "110000", "510000") + bytes("510000")),
                  (Verdict{NFC_NDEF_MSG_ME_EARLY, last, 3 * last}));

    const Bytes behind = bytes("00 00 00 910100 54 11010055");
    nfc_ndef_msg_report report;
    EXPECT_EQ(nfc_ndef_msg_check(behind.data(), 3, 8, &report), 0);
    EXPECT_EQ(report.offset, 4U) << "counted from the message, not from the data";
    EXPECT_EQ(nfc_ndef_msg_check(behind.data(), 3, 3, nullptr), 0);
    for (const uint8_t *const data : {behind.data(), static_cast<const uint8_t *>(nullptr)}) {
        EXPECT_EQ(nfc_ndef_msg_check(data, 3, 3, &report), 0);
        EXPECT_EQ(report.reason, uint32_t{NFC_NDEF_MSG_BAD_ARGUMENTS});
    }
}

TEST(Check, EachReasonHasTheTextThatTheGuideSays)
{
    std::stringstream guide;
    guide << std::ifstream(TEST_DATA "/../../docs/reasons.md").rdbuf();
    const struct {
        const char *(*text_of)(uint32_t reason);
        uint32_t last;
    } lists[] = {{nfc_ndef_msg_check_text, NFC_NDEF_MSG_OUT_OF_MEMORY},
                 {nfc_ndef_payload_reason_text, NFC_NDEF_PAYLOAD_IN_CHUNKS},
                 {nfc_ndef_tlv_reason_text, NFC_NDEF_TLV_TOO_MANY_AREAS}};
    for (const auto &[text_of, last] : lists) {
        std::string table = "|---|---|\n";
        for (uint32_t reason = 0; reason <= last; ++reason)
            table += "| " + std::to_string(reason) + " | " + text_of(reason) + " |\n";
        EXPECT_NE((guide.str() + '\n').find(table + '\n'), std::string::npos) << table;
        EXPECT_STREQ(text_of(last + 1), "unknown reason");
    }
}

// The vectors say what they are refused for, or as what they are encoded again when not as themselves.
const nlohmann::json &vectors()
{
    static const nlohmann::json all = nlohmann::json::parse(std::ifstream(TEST_DATA "/vectors.json"));
    return all;
}

TEST(Check, GivesTheTrueReasonOfEveryRefusedVector)
{
    for (const auto &vector : vectors()) {
        const std::string wire = vector.at("hex"), refused = vector.value("refused", "");
        const Verdict verdict = check(bytes(wire));
        EXPECT_EQ(verdict.reason == NFC_NDEF_MSG_VALID ? "" : testing::PrintToString(verdict), refused) << wire;
        EXPECT_EQ(hex(encode(parse(bytes(wire)))), refused.empty() ? vector.value("encoded", wire) : "");
    }
}

} // namespace
