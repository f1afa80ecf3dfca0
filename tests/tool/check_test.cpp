// What `ndef check` prints and returns.
#include "run.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace test {
namespace {

TEST(Check, ShowsWhereARuleBroke)
{
    const struct {
        std::string_view about;
        std::string input, expected;
    } cases[] = {
        {"a payload past the end: the mark is where it begins", "D1 01 05 54 02 65 6E",
         "standard input: record 1, byte 4: the payload runs past the end\n"
         "  0000  D1 01 05 54 02 65 6E\n"
         "                    ^^\n"},
        {"the first byte", "D1 01",
         "standard input: record 1, byte 0: the record header is cut short\n"
         "  0000  D1 01\n"
         "        ^^\n"},
        {"far from the start: the bytes around it", "91 01 0A 54 02 65 6E 61 62 63 64 65 66 67 11 01 01 55 00",
         "standard input: record 2, byte 14: the Message End flag is missing\n"
         "  0006  6E 61 62 63 64 65 66 67 11 01 01 55 00\n"
         "                                ^^\n"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.about);
        const Outcome run = ndef({"check"}, c.input);
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.out, c.expected);
        EXPECT_EQ(run.err, "");
    }
}

TEST(Check, GivesTheWorstStatusOfAllFiles)
{
    const std::string good = sample("text-uri-and-json.ndef"), none = "/nonexistent";
    const TemporaryFile bad("D1");
    const Outcome mixed = ndef({"check", bad.path(), good});
    EXPECT_EQ(mixed.status, 1);
    EXPECT_THAT(mixed.out, testing::EndsWith(good + ": valid, 3 records\n"));
    EXPECT_EQ(ndef({"check", none, bad.path(), good}).status, 2);
    const Outcome quiet = ndef({"check", "--quiet", none, bad.path(), good});
    EXPECT_EQ(quiet.status, 2);
    EXPECT_EQ(quiet.out + quiet.err, "");
    EXPECT_EQ(ndef({"check", "-q", good}).status, 0);
}

TEST(Samples, AreValidAndShownWhole)
{
    std::vector<std::string> check{"check"};
    for (const auto &file : std::filesystem::directory_iterator(SAMPLES)) {
        if (file.path().extension() != ".ndef")
            continue;
        check.push_back(file.path());
        const Outcome shown = ndef({"show", "--bytes", file.path()});
        EXPECT_EQ(shown.status, 0) << file.path() << shown.err;
        EXPECT_THAT(shown.out, testing::Not(testing::HasSubstr("malformed"))) << file.path();
    }
    EXPECT_GE(check.size(), 13u);
    EXPECT_EQ(ndef(check).status, 0);
    EXPECT_EQ(ndef({"check", "--tlv", sample("type-2-tag.bin")}).status, 0);
}

} // namespace
} // namespace test
