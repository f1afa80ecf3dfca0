// What `ndef show` makes of records.
#include "run.h"

#include <gmock/gmock.h>

namespace test {
namespace {

using testing::HasSubstr;
using testing::Not;

struct Case {
    std::string_view about;
    std::string input;
    std::vector<std::string> lines; // each as it is printed, without its indentation
};

// The lines must come in this order, others between them.
void expect_lines(const std::vector<Case> &cases, const std::vector<std::string> &options = {})
{
    for (const Case &c : cases) {
        SCOPED_TRACE(c.about);
        std::vector<std::string> arguments{"show"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        if (c.input.ends_with(".ndef"))
            arguments.push_back(sample(c.input));
        const Outcome run = ndef(arguments, c.input);
        EXPECT_EQ(run.status, 0) << run.err;
        size_t from = 0;
        for (const std::string &line : c.lines) {
            const size_t found = run.out.find(line + "\n", from);
            if (found == std::string::npos) {
                ADD_FAILURE() << "not there, or not in this place: " << line << "\n" << run.out;
                break;
            }
            from = found + line.size();
        }
    }
}

TEST(Show, NamesTypesAndFlags)
{
    expect_lines({
        {"a record as a whole",
         "D9 01 08 01 54 61 02 65 6E 48 65 6C 6C 6F",
         {"Record 1: Text", "  type: well-known \"T\"", "  id: \"a\"", "  flags: MB ME SR IL", "  payload: 8 bytes",
          "  language: en", "  encoding: UTF-8", "  text: \"Hello\""}},
        {"chunks",
         "text-chunked.ndef",
         {"flags: MB ME CF SR, joined from 3 chunks", "text: \"In three chunks, one text.\""}},
        {"a length field that is too wide",
         "C1 01 00 00 00 02 55 03 61",
         {"flags: MB ME, long form of a short payload length"}},
        {"an id length without an id", "D9 01 02 00 55 03 61", {"flags: MB ME SR IL, an id length of 0"}},
        {"a media type and its payload",
         "D2 03 04 61 2F 62 00 41 7F C3",
         {"type: media type \"a/b\"", "0000  00 41 7F C3                                      |.A..|"}},
        {"absolute URIs",
         "absolute-uris.ndef",
         {"Record 2: Absolute URI", "type: absolute URI \"https://github.com\""}},
        {"a payload that does not fit",
         "D1 01 01 54 02",
         {"Record 1: Text", "malformed: the payload does not fit the type",
          "0000  02                                               |.|"}},
        {"a nested message that is none",
         "D1 02 03 53 70 D1 01 05",
         {"malformed: the nested message's record 1, byte 3: the type runs past the end"}},
    });
}

TEST(Show, NeverSendsWhatATerminalObeys)
{
    expect_lines({
        {"control characters, C1, and text that is no UTF-8",
         "D1 01 0F 54 00 41 1B 5B 32 4A 0A 09 C2 9B 7F FF C0 80 5C",
         {"language: no language", "text: \"A\\x1B[2J\\n\\t\\u{009B}\\x7F\\xFF\\xC0\\x80\\\\\""}},
        {"direction override, zero width, and letters that stay",
         "D1 01 0C 54 00 E2 80 AE C3 9F E2 80 8B E2 82 AC",
         {"text: \"\\u{202E}\u00DF\\u{200B}\u20AC\""}},
        {"UTF-16 with either mark",
         "91 01 05 54 80 FE FF 00 41 51 01 05 54 80 FF FE 42 00",
         {"text: \"A\"", "text: \"B\""}},
        {"UTF-16 with a surrogate pair, half of one, and half a unit",
         "D1 01 08 54 80 D8 3D DE 00 DC 00 41",
         {"text: \"\U0001F600\\u{DC00}\\x41\""}},
        {"a type and an id", "DC 02 00 01 1B 61 0D", {"type: external \"\\x1Ba\"", "id: \"\\r\""}},
        {"a URI", "D1 01 04 55 01 C2 85 61", {"uri: \"http://www.\\u{0085}a\""}},
        {"a URI of an unknown prefix", "D1 01 02 55 24 61", {"uri: \"a\" (reserved prefix code 36)"}},
    });
}

TEST(Show, FollowsNestedMessages)
{
    expect_lines({
        {"a Smart Poster",
         "smart-poster.ndef",
         {"  uri: \"https://example.com/manual.pdf\"", "  title: \"Manual\" (en, UTF-8)",
          "  title: \"Anleitung\" (de, UTF-8)", "  action: save for later (1)",
          "  icon: media type \"image/png\", 67 bytes", "  size: 81920 bytes", "  type: \"application/pdf\""}},
        {"a Generic Control",
         "generic-control.ndef",
         {"  configuration: 0x00", "  target: Record", "    type: well-known \"t\"", "  action: code 3",
          "  data: Record"}},
        {"a Handover Select and its carrier",
         "handover-select-bluetooth.ndef",
         {"Record 1: Handover Select", "  version: 1.2", "  carrier: Alternative Carrier",
          "    power state: active (1)", "    carrier data: \"0\" -> record 2, Bluetooth OOB",
          "Record 2: Bluetooth OOB", "  device address: 12:34:56:78:90:AB", "  local name: \"Kitchen speaker\"",
          "  class of device: 0x240414, Audio/Video; services: Rendering, Audio",
          "  hash C: 10 11 12 13 14 15 16 17 18 19 1A 1B 1C 1D 1E 1F",
          "  16-bit service UUIDs: 0x110B Audio Sink, 0x110E A/V Remote Control, 0x111E Hands-Free",
          "  manufacturer data: company 0xFFFF, data 01 02"}},
        {"a Handover Request",
         "handover-request.ndef",
         {"  collision resolution: Collision Resolution", "    random number: 0x1234", "    power state: inactive (0)",
          "    carrier data: \"w\" -> record 3, Media", "    auxiliary data: \"x\" -> record 4, Media"}},
        {"a reference to nothing",
         "D1 02 0A 48 73 12 D1 02 04 61 63 01 01 39 00",
         {"    carrier data: \"9\" -> no record here has this id"}},
        {"a Handover Carrier",
         "handover-static.ndef",
         {"  carrier type: media type \"application/vnd.bluetooth.ep.oob\"", "  carrier data: 01 02"}},
        {"an error",
         "handover-error.ndef",
         {"  error: Handover Select Error", "    reason: temporary memory constraints (1)", "    error data: 0x64"}},
        {"legacy Bluetooth, which holds the address in the same order",
         "vendor-bluetooth.ndef",
         {"  device address: 12:34:56:78:90:AB", "  class of device: 0x240414, Audio/Video; services: Rendering, Audio",
          "  pairing type: 0x24", "  pairing data: A1 A2 A3 A4", "  local name: \"Phone\""}},
        {"a Sharing Enquiry",
         "vendor-sharing-enquiry.ndef",
         {"  version: 1.0", "  enquiry type: 0x01", "  enquiry data: 61 6C 62 75 6D"}},
        {"UUIDs of 128 and 32 bits",
         "D2 20 26 6170706C69636174696F6E2F766E642E626C7565746F6F74682E65702E6F6F62 26 00 01 02 03 04 05 06"
         "11 07 FB 34 9B 5F 80 00 00 80 00 10 00 00 0B 11 00 00 05 05 0B 11 00 00 00 03 1C 02 00 00",
         {"  128-bit service UUIDs: 0000110b-0000-1000-8000-00805f9b34fb",
          "  32-bit service UUIDs: 0x0000110B Audio Sink"}},
    });
}

// Generic Control records, each the only nested control of the one before.
std::string nested_controls(int depth)
{
    std::string message = raw("D1 01 02 55 03 61");
    for (int i = 0; i < depth; ++i) {
        const std::string control = raw("00 91 01 00 74") + message;
        const std::string nested = std::string("\x51\x02", 2) + static_cast<char>(control.size()) + "Gc" + control;
        message = i + 1 < depth ? nested : "\xD1" + nested.substr(1);
    }
    return message;
}

TEST(Show, FollowsNestingToALimit)
{
    const std::string note = "nested deeper than 8 records: not followed";
    EXPECT_THAT(ndef({"show"}, nested_controls(8)).out, Not(HasSubstr(note)));
    const Outcome run = ndef({"show"}, nested_controls(11));
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr(note));
    EXPECT_THAT(ndef({"show", "--bytes"}, nested_controls(11)).out, HasSubstr("bytes not followed"));
}

TEST(Show, CutsWhatIsLong)
{
    const std::string media = raw("C2 03 00 00 03 E8 61 2F 62") + std::string(999, 'x') + "!";
    const Outcome cut = ndef({"show"}, media), whole = ndef({"show", "--all"}, media);
    EXPECT_THAT(cut.out, HasSubstr("  ... 744 bytes more (--all shows them)\n"));
    EXPECT_THAT(cut.out, Not(HasSubstr("!|")));
    EXPECT_THAT(whole.out, HasSubstr("03E0  78 78 78 78 78 78 78 21"));
    EXPECT_THAT(whole.out, Not(HasSubstr("bytes more")));
    // The cut falls within a character, which is then left out whole.
    std::string text = raw("C1 01 00 00 17 73 54 02") + "en";
    for (int i = 0; i < 2000; ++i)
        text += "\u20AC";
    EXPECT_THAT(ndef({"show"}, text).out, HasSubstr("\u20AC\" ... 1905 bytes more"));
}

TEST(Show, MarksTheBytesOfEachField)
{
    const Outcome run = ndef({"show", "-x"}, "91 02 0A 53 70 D9 01 02 01 55 69 03 61 51 00 01 7A");
    EXPECT_EQ(run.status, 1) << "the second record's format is one with a type";
    expect_lines(
        {{"down into a Smart Poster",
          "D1 02 08 53 70 D9 01 02 01 55 69 03 61",
          {"  bytes", "    0000  D1                       header: MB ME SR, well-known",
           "    0001  02                       type length: 2", "    0002  08                       payload length: 8",
           "    0003  53 70                    type |Sp|",
           "    0005  D9                         header: MB ME SR IL, well-known",
           "    0006  01                         type length: 1",
           "    0007  02                         payload length: 2",
           "    0008  01                         id length: 1", "    0009  55                         type |U|",
           "    000A  69                         id |i|", "    000B  03 61                      payload |.a|"}},
         {"behind the version of a Handover Select",
          "D1 02 0A 48 73 12 D1 02 04 61 63 01 01 39 00",
          {"    0005  12                       payload, before the nested message",
           "    0006  D1                         header: MB ME SR, well-known"}},
         {"chunk by chunk",
          "B1 01 02 54 00 61 56 00 01 62",
          {"    0000  B1                       header: MB CF SR, well-known",
           "    0004  00 61                    payload |.a|",
           "    0006  56                       header: ME SR, unchanged",
           "    0009  62                       payload |b|"}}},
        {"--bytes"});
}

TEST(Show, ColoursOnlyWhenAsked)
{
    EXPECT_THAT(ndef({"show"}, "D00000").out, Not(HasSubstr("\x1B")));
    EXPECT_THAT(ndef({"show", "--color=always"}, "D00000").out, HasSubstr("\x1B[1mRecord 1: Empty\x1B[0m"));
}

} // namespace
} // namespace test
