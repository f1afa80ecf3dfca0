#include "ndef.h"

using namespace test;

namespace {

struct Case {
    const char *key, *candidate;
    bool match = true;
};

void expect_matches(uint32_t format, const std::vector<Case> &cases)
{
    const auto view = [format](const Exact &name) {
        uint8_t *const data = name.size() ? const_cast<uint8_t *>(name.data()) : nullptr;
        return nfc_ndef_record_type{data, static_cast<uint8_t>(name.size()), format};
    };
    for (const Case &c : cases) {
        const Exact key_name(text(c.key)), candidate_name(text(c.candidate));
        const nfc_ndef_record_type key = view(key_name), candidate = view(candidate_name);
        EXPECT_EQ(nfc_ndef_record_type_equals(&key, &candidate), c.match) << format << c.key << " and " << c.candidate;
    }
}

TEST(Match, FollowsTheRuleOfTheFormat)
{
    expect_matches(NFC_NDEF_TNF_WELL_KNOWN, {{"T", "T"}, {"T", "t", false}, {"Sp", "S", false}, {"S", "Sp", false}});
    expect_matches(NFC_NDEF_TNF_WELL_KNOWN, {{"", "", false}, {"", "T", false}});
    expect_matches(NFC_NDEF_TNF_ABSOLUTE_URI, {{"HTTP://a/[", "http://A/["}, {"http://a", "http://a/", false}});
    expect_matches(NFC_NDEF_TNF_ABSOLUTE_URI, {{"a/[", "a/{", false}, {"a/@", "a/`", false}}); // not letters
    expect_matches(NFC_NDEF_TNF_EXTERNAL, {{"Example.com:BT", "example.COM:bt"}, {"AZ", "az"}});
    expect_matches(NFC_NDEF_TNF_EXTERNAL, {{"a:b", "a:bc", false}, {"", "", false}});
    for (const uint32_t format : std::initializer_list<uint32_t>{NFC_NDEF_TNF_EMPTY, NFC_NDEF_TNF_UNKNOWN})
        expect_matches(format, {{"", ""}});
    for (const uint32_t format : std::initializer_list<uint32_t>{NFC_NDEF_TNF_UNCHANGED, NFC_NDEF_TNF_RESERVED, 255})
        expect_matches(format, {{"T", "T", false}});
    EXPECT_EQ(nfc_ndef_record_type_equals(type(1, "T").get(), type(4, "T").get()), 0);
    EXPECT_EQ(nfc_ndef_record_type_equals(type(0, "").get(), type(5, "").get()), 0);
}

TEST(Match, ReadsTheMarksInMediaTypes)
{
    const std::vector<Case> cases = {
        // without marks
        {"Text/Plain", "text/plain"},
        {"text/plain", "text/plainx", false},
        {"text/plainx", "text/plain", false},
        {"", "text/plain", false},
        {"text/plain", "", false},
        // a '*' in the key takes the character before it along
        {"image*", "image/png"},
        {"image*", "IMAGINE/x"},
        {"image*", "ima"},
        {"image*", "imx", false},
        {"image/*", "imagine/png", false},
        {"a*", "zzz"},
        // parameters do not count, and the shorter decides
        {"text/plain;charset=utf-8", "text/plain"},
        {"text/plain;charset=utf-8", "text/plainx"},
        {"text/plain;charset=utf-8", "text/html;q=1", false},
        {"text/pla", "text/plain;q=1"},
        {"text/plainx", "text/plain;q=1"},
        {"text/plaix", "text/plain;q=1", false},
        {"text/x", "text*"},
        {"texu/x", "text*", false},
        // the first of two marks
        {"ab;*", "abc"},
        {"ab*;", "axx"},
        // names that begin with one
        {";", "anything"},
        {";x", "a;b"},
        {"*", "text/plain", false},
        {"*", "a;b", false},
        {"*", "*"},
        {"*abc", ";"},
        {"text/plain", "*"},
        {"text/plain", ";q=1"},
    };
    expect_matches(NFC_NDEF_TNF_MIME, cases);
}

TEST(Match, ComparesTheLongestNamesToTheirEnd)
{
    const RecordType key = type(2, std::string(253, 'a') + "b*");
    EXPECT_EQ(nfc_ndef_record_type_equals(key.get(), type(2, std::string(253, 'a') + "x").get()), 1);
    EXPECT_EQ(nfc_ndef_record_type_equals(key.get(), type(2, std::string(252, 'a') + "xa").get()), 0);
}

TEST(Match, TheSameObjectAlwaysMatchesAndNullOnlyNull)
{
    const RecordType same = type(6, "T"), other = type(6, "T");
    EXPECT_EQ(nfc_ndef_record_type_equals(same.get(), same.get()), 1);
    EXPECT_EQ(nfc_ndef_record_type_equals(same.get(), other.get()), 0);
    EXPECT_EQ(nfc_ndef_record_type_equals(nullptr, nullptr), 1);
    EXPECT_EQ(nfc_ndef_record_type_equals(same.get(), nullptr), 0);
    EXPECT_EQ(nfc_ndef_record_type_equals(nullptr, same.get()), 0);
    uint8_t name[] = {'T'};
    const nfc_ndef_record_type named{name, 1, 5}, odd{nullptr, 1, 5}, odd_known{nullptr, 1, 1}, known{name, 1, 1},
        unnamed{nullptr, 0, 5};
    EXPECT_EQ(nfc_ndef_record_type_equals(&named, &unnamed), 0);
    EXPECT_EQ(nfc_ndef_record_type_equals(&unnamed, &odd), 0);
    EXPECT_EQ(nfc_ndef_record_type_equals(&odd_known, &known), 0);
}

} // namespace
