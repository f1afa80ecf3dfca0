// How the command gets its bytes, and what it says when it gets none.
#include "run.h"

#include <gmock/gmock.h>

namespace test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct Case {
    std::string_view about;
    std::vector<std::string> options;
    std::string input;
    int status;
    std::string expected; // begins the output, or the complaint when the status is not 0
};

void expect_checks(const std::vector<Case> &cases)
{
    for (const Case &c : cases) {
        SCOPED_TRACE(c.about);
        std::vector<std::string> arguments{"check"};
        arguments.insert(arguments.end(), c.options.begin(), c.options.end());
        const Outcome run = ndef(arguments, c.input);
        EXPECT_EQ(run.status, c.status) << run.out << run.err;
        EXPECT_THAT(run.out + run.err, StartsWith(c.expected));
    }
}

const std::string one = "standard input: valid, 1 record\n", uri = "D1 01 02 55 03 61";

TEST(Input, IsToldApart)
{
    expect_checks({
        {"the bytes themselves", {}, raw(uri), 0, one},
        {"hex with spaces", {}, uri, 0, one},
        {"hex with all that may stand between", {}, "0xd1, 0x01,\r\n0x02:55-03 61", 0, one},
        {"base64", {}, "0QECVQNh\n", 0, one},
        {"base64 with padding and the other alphabet", {}, "0QEDVQP-\nPw==", 0, one},
        {"hex that could be base64, too", {}, "D00000", 0, one},
        {"padding within", {"--base64"}, "0Q==VQNh", 1, "ndef: standard input: text that is not base64"},
        {"half a byte", {"--hex"}, "D1 01 02 55 03 6", 1, "ndef: standard input: text that is not hex"},
        {"neither hex nor base64", {}, "Hello, world!", 1, "ndef: standard input: text that is not hex or base64"},
        {"nothing", {}, "", 1, "ndef: standard input: empty, no NDEF message"},
    });
}

TEST(Input, FindsTheMessageInTagMemory)
{
    const std::string header = "04A1B2937C4D5E80EF480000 E1 10 06 00 ", message = "03 06 " + uri + " FE";
    const std::string long_text = "D1 01 FB 54 02 65 6E" + std::string(3, ' ') + [] {
        std::string hex;
        for (int i = 0; i < 248; ++i)
            hex += "61";
        return hex;
    }();
    expect_checks({
        {"whole memory", {"--tlv"}, header + message, 0, one},
        {"behind lock, memory, proprietary and null TLVs",
         {"--tlv"},
         header + "01 03 A0 10 44 02 03 E0 02 44 00 00 FD 01 99" + message,
         0,
         one},
        {"reserved bytes within the message",
         {"--tlv"},
         header + "02 03 1A 02 44" + "03 06 D1 01 02 EE EE 55 03 61 FE",
         0,
         one},
        {"lock bits within the message",
         {"--tlv"},
         header + "01 03 1A 09 44" + "03 06 D1 01 02 EE EE 55 03 61 FE",
         0,
         one},
        {"TLVs alone that look like a header", {"--tlv"}, "00000000000000000000 FD 01 E1" + message, 0, one},
        {"a length of three bytes", {"--tlv"}, "03 FF 00 FF" + long_text, 0, one},
        {"a terminator before the message",
         {"--tlv"},
         header + "FE" + message,
         1,
         "ndef: standard input: the tag's memory holds no NDEF message TLV"},
        {"a length past the end",
         {"--tlv"},
         header + "03 07 " + uri,
         1,
         "ndef: standard input: the tag's memory ends within a TLV, at byte 24"},
        {"a message past the tag's data area",
         {"--tlv"},
         "04A1B2937C4D5E80EF480000 E1 10 01 00 0000000000000000" + message,
         1,
         "ndef: standard input: the tag's memory holds no NDEF message TLV"},
    });
}

TEST(Input, IsBounded)
{
    const TemporaryFile zeros(std::string((16 << 20) + 1, '\0'));
    expect_checks({
        {"over the limit",
         {zeros.path()},
         "",
         1,
         "ndef: " + zeros.path() + ": over 16 MiB of input (--no-limit reads it all the same)"},
        {"a megabyte of noise", {}, std::string(1 << 20, '\xA5'), 1, "standard input: record 1, byte "},
    });
}

TEST(Command, SaysWhatIsWrong)
{
    const std::vector<Case> cases{
        {"no command", {}, "", 2, "ndef: A subcommand is required"},
        {"an unknown option", {"show", "--frobnicate"}, "", 2, "ndef: "},
        {"an unknown colour", {"show", "--color=mauve"}, uri, 2, "ndef: --color"},
        {"no such file",
         {"show", "/nonexistent/a\x1B.ndef"},
         "",
         2,
         "ndef: /nonexistent/a\\x1B.ndef: No such file or directory"},
        {"a directory", {"show", "/"}, "", 2, "ndef: /: Is a directory"},
        {"no message", {"show"}, "D1 01 03 55 03 61", 1, "ndef: standard input: not an NDEF message: record 1, byte "},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.about);
        const Outcome run = ndef(c.options, c.input);
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.err, StartsWith(c.expected));
        EXPECT_EQ(run.err.find('\n'), run.err.size() - 1) << "not one line: " << run.err;
    }
    for (const std::string command : {"show", "check", "json", "make"}) {
        const Outcome help = ndef({command, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_THAT(help.out, HasSubstr("ndef " + command));
    }
    EXPECT_THAT(ndef({"--version"}).out, testing::MatchesRegex("ndef [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(Command, EndsQuietlyWhenNobodyReads)
{
    for (const std::string command : {"show", "check", "json"}) {
        const Outcome run = ndef_unread({command}, uri);
        EXPECT_EQ(run.err, "") << command;
        EXPECT_LT(run.status, 128) << command;
    }
}

} // namespace
} // namespace test
