// `ndef make text|uri|poster`, and where and how messages are written.
#include "run.h"

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

namespace test {
namespace {

using Arguments = std::vector<std::string>;

auto make(Arguments arguments, const Arguments &more = {})
{
    arguments.insert(arguments.begin(), "make");
    arguments.insert(arguments.end(), more.begin(), more.end());
    return ndef(arguments);
}

TEST(Make, BuildsTheEverydayRecords)
{
    const TemporaryFile icon("\x89");
    const struct {
        Arguments arguments;
        std::string expected;
    } cases[] = {
        {{"text", "Hi"}, "D101055402656E4869"},
        {{"text", "é€😀", "--language", "fr", "--utf16"}, "D1010B5482667200E920ACD83DDE00"},
        {{"text", "Hi", "--id", "x"}, "D9010501547802656E4869"},
        {{"uri", "https://www.example.com"}, "D1010C55026578616D706C652E636F6D"},
        {{"uri", "urn:epc:id:1"}, "D10102551E31"},
        {{"uri", "HTTP://a"}, "D101095500485454503A2F2F61"},
        {{"uri", "tel:"}, "D101015505"},
        {{"poster", "tel:1", "--title", "en=a=b"},
         "D102175370910102550531"
         "1101065402656E613D62"
         "51030161637400"},
        {{"poster", "tel:1", "--action", "open"},
         "D1020D5370910102550531"
         "51030161637402"},
        {{"poster", "tel:1", "--action", "255", "--size", "258", "--type", "a/b", "--icon", "image/x=" + icon.path()},
         "D102275370910102550531"
         "110301616374FF"
         "120701696D6167652F7889"
         "11010374612F62"
         "5101047300000102"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.arguments));
        const auto run = make(c.arguments, {"--format", "hex"});
        EXPECT_EQ(run.out, c.expected + "\n") << run.err;
        EXPECT_EQ(run.status, 0);
    }
}

TEST(Make, RefusesWhatMakesNoRecord)
{
    const TemporaryFile nameless("x");
    const struct {
        Arguments arguments;
        std::string reason;
    } cases[] = {
        {{}, "required"},
        {{"text"}, "TEXT is required"},
        {{"text", ""}, "must not be empty"},
        {{"text", "\xFF"}, "UTF-8"},
        {{"text", "a", "--language", ""}, "1 to 63 bytes"},
        {{"text", "a", "--language", std::string(64, 'a')}, "1 to 63 bytes"},
        {{"text", "a", "--id", std::string(256, 'a')}, "at most 255 bytes"},
        {{"text", "a", "--format", "xml"}, "xml not in {raw,hex,base64,c}"},
        {{"uri", "a\x1B"}, "control characters"},
        {{"uri", "a", "-o", "/nonexistent/file"}, "/nonexistent/file"},
        {{"uri", "a", "-o", "/dev/full"}, "/dev/full"},
        {{"poster", "a", "--title", "Hello"}, "lacks its language"},
        {{"poster", "a", "--action", "256"}, "not an action"},
        {{"poster", "a", "--size", "4294967296"}, "--size"},
        {{"poster", "a", "--type", "text"}, "not a media type"},
        {{"poster", "a", "--icon", nameless.path()}, "media type"},
        {{"poster", "a", "--icon", "/nonexistent.png"}, "/nonexistent.png"},
        {{"json", "/nonexistent"}, "/nonexistent"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.arguments));
        const auto run = make(c.arguments);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.err, testing::HasSubstr(c.reason));
    }
}

TEST(Make, WritesEachFormat)
{
    const Arguments text{"text", "Hello"};
    const std::string bytes = raw("D1 01 08 54 02 65 6E 48 65 6C 6C 6F");
    EXPECT_EQ(make(text).out, bytes); // not a terminal
    EXPECT_EQ(make(text, {"--format", "base64"}).out, "0QEIVAJlbkhlbGxv\n");
    EXPECT_EQ(make({"text", "Hello!"}, {"--format", "c"}).out,
              "static const unsigned char ndef_message[13] = {\n"
              "    0xD1, 0x01, 0x09, 0x54, 0x02, 0x65, 0x6E, 0x48, 0x65, 0x6C, 0x6C, 0x6F,\n"
              "    0x21,\n"
              "};\n");
    const TemporaryFile file("something longer than the message");
    const auto run = make(text, {"-o", file.path()});
    EXPECT_EQ(run.out + run.err, "");
    std::ifstream written(file.path(), std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(written), {}), bytes);
}

} // namespace
} // namespace test
