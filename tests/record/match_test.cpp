#include "ndef.h"

using namespace test;

namespace {

TEST(Match, FollowsTheRuleOfTheFormat)
{
    struct Case {
        uint32_t key_format;
        const char *key;
        uint32_t candidate_format;
        const char *candidate;
        int expected;
    };
    constexpr uint32_t wkt = NFC_NDEF_TNF_WELL_KNOWN, mime = NFC_NDEF_TNF_MIME, uri = NFC_NDEF_TNF_ABSOLUTE_URI,
                       ext = NFC_NDEF_TNF_EXTERNAL;
    for (const Case &c : std::initializer_list<Case>{
             {wkt, "T", wkt, "T", 1},
             {wkt, "T", wkt, "t", 0},
             {wkt, "Sp", wkt, "S", 0},
             {wkt, "S", wkt, "Sp", 0},
             {wkt, "T", ext, "T", 0},
             {wkt, "", wkt, "", 0},
             {wkt, "", wkt, "T", 0},
             {uri, "HTTP://a/[", uri, "http://A/[", 1},
             {uri, "http://a/[", uri, "http://a/{", 0}, // '[' is not an upper-case '{'
             {uri, "http://a/@", uri, "http://a/`", 0},
             {uri, "http://a", uri, "http://a/", 0},
             {ext, "Example.com:BT", ext, "example.COM:bt", 1},
             {ext, "AZ", ext, "az", 1},
             {ext, "a:b", ext, "a:bc", 0},
             {ext, "", ext, "", 0},
             {0, "", 0, "", 1},
             {5, "", 5, "", 1},
             {0, "", 5, "", 0},
             {6, "T", 6, "T", 0},
             {7, "T", 7, "T", 0},
             {255, "T", 255, "T", 0},

             {mime, "Text/Plain", mime, "text/plain", 1},
             {mime, "text/plain", mime, "text/plainx", 0},
             {mime, "text/plainx", mime, "text/plain", 0},
             {mime, "", mime, "text/plain", 0},
             {mime, "text/plain", mime, "", 0},
             {mime, "image*", mime, "image/png", 1},
             {mime, "image*", mime, "IMAGINE/x", 1}, // four letters count
             {mime, "image*", mime, "imag", 1},
             {mime, "image*", mime, "ima", 1},
             {mime, "image*", mime, "imx", 0},
             {mime, "image/*", mime, "image/png", 1},
             {mime, "image/*", mime, "imagine/png", 0},
             {mime, "a*", mime, "zzz", 1}, // a prefix of no bytes
             {mime, "text/plain;charset=utf-8", mime, "text/plain", 1},
             {mime, "text/plain;charset=utf-8", mime, "text/plainx", 1},
             {mime, "text/plain;charset=utf-8", mime, "text/plain;q=1", 1},
             {mime, "text/plain;charset=utf-8", mime, "text/html;q=1", 0},
             {mime, "ab;*", mime, "abc", 1}, // the first of the two decides
             {mime, "ab*;", mime, "axx", 1},
             {mime, "text/plain", mime, "text/plain;q=1", 1},
             {mime, "text/pla", mime, "text/plain;q=1", 1}, // compared over the shorter
             {mime, "text/plainx", mime, "text/plain;q=1", 1},
             {mime, "text/plaix", mime, "text/plain;q=1", 0},
             {mime, "text/x", mime, "text*", 1},
             {mime, "texu/x", mime, "text*", 0},
             {mime, ";", mime, "anything", 1},
             {mime, ";x", mime, "a;b", 1},
             {mime, "*", mime, "text/plain", 0},
             {mime, "*", mime, "a;b", 0},
             {mime, "*", mime, "*", 1},
             {mime, "*abc", mime, ";", 1},
             {mime, "text/plain", mime, "*", 1},
             {mime, "text/plain", mime, ";q=1", 1},
         }) {
        Bytes key_name = text(c.key), candidate_name = text(c.candidate);
        const Exact key_bytes(key_name), candidate_bytes(candidate_name);
        const auto view = [](uint32_t format, const Exact &name) {
            return nfc_ndef_record_type{name.size() ? const_cast<uint8_t *>(name.data()) : nullptr,
                                        static_cast<uint8_t>(name.size()), format};
        };
        const nfc_ndef_record_type key = view(c.key_format, key_bytes),
                                   candidate = view(c.candidate_format, candidate_bytes);
        EXPECT_EQ(nfc_ndef_record_type_equals(&key, &candidate), c.expected)
            << c.key_format << " " << c.key << " against " << c.candidate_format << " " << c.candidate;
    }
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
