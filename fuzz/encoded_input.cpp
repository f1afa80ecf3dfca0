// The ways in which the command takes bytes: the input's first byte says which.
#include "forms/recognise.h"
#include "fuzz.h"
#include "text/encoded_text.h"

#include <nfc_ndef/bytes.h>

#include <glib.h>

using namespace fuzz;
namespace values = nfc_ndef::values;

namespace {

std::string base64_of(ByteView bytes)
{
    gchar *const text = g_base64_encode(bytes.data(), bytes.size());
    const std::string copy(text);
    g_free(text);
    return copy;
}

void hex(ByteView input)
{
    const auto bytes = tool::decode_hex(values::text_of(input));
    must(!bytes || bytes->size() <= input.size() / 2, "two digits make a byte");
    for (const char *separator : {"", " ", ":", ", 0x"})
        must(!bytes || tool::decode_hex(values::hex_of(*bytes, separator)) == bytes,
             "hex text means what it was made of");
}

void base64(ByteView input)
{
    const auto bytes = tool::decode_base64(values::text_of(input));
    must(!bytes || bytes->size() <= input.size() * 3 / 4, "four digits make three bytes");
    must(!bytes || tool::decode_base64(base64_of(*bytes)) == bytes, "base64 text means what it was made of");
}

// What is found is a message, or else there is a reason; and what is asked for is taken.
void recognised(ByteView input)
{
    const tool::forms::Recognised found = tool::forms::recognise({input.begin(), input.end()}, {});
    must(found.refused.empty() || (found.message.empty() && found.taken_for.empty()), "a refusal comes alone");
    must(found.taken_for.empty() || tool::forms::is_message(found.message), "only a message is taken for something");
    for (const std::string_view name : tool::forms::names()) {
        tool::forms::Asked asked;
        must(tool::forms::find_form(name, asked), "names stand for forms");
        const tool::forms::Recognised forced = tool::forms::recognise({input.begin(), input.end()}, asked);
        must(forced.refused.empty() || forced.message.empty(), "a refusal comes alone");
        must(forced.message.size() <= input.size() || !asked.raw, "a message lies within its bytes");
    }
}

// Each form that is cut short somewhere is as harmless as a whole one.
void cut_short(ByteView input)
{
    constexpr size_t longest = 1 << 12, cuts = 64;
    const ByteView part = input.first(std::min(input.size(), longest));
    for (size_t i = 0; i < cuts; ++i)
        recognised(part.first(part.size() * i / cuts));
}

bool is_found(const Bytes &written, const Bytes &message)
{
    return tool::forms::recognise(written, {}).message == message;
}

bool is_found_or_doubtful(const Bytes &written, const Bytes &message)
{
    const tool::forms::Recognised found = tool::forms::recognise(written, {});
    return found.message == message || found.refused.starts_with("may be");
}

// Whichever way a message is written, the command takes it for what it is.
void message(ByteView input)
{
    const Bytes message(input.begin(), input.end());
    if (!tool::forms::is_message(message))
        return;
    must(is_found(message, message), "a message is not taken for anything else");
    must(is_found(values::bytes_of(values::hex_of(message)), message), "hex text is told from base64");
    must(is_found(values::bytes_of(base64_of(message)), message), "base64 text is told from hex");
    if (message.size() >= 0xFF)
        return;
    Bytes area{0, 0xFD, 1, 0x55, 3, length8(message)}; // null, a proprietary TLV, the message
    area.insert(area.end(), message.begin(), message.end());
    Bytes memory{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xE1, 0x10, 0xFF, 0}; // up to the capability container
    memory.insert(memory.end(), area.begin(), area.end());
    must(is_found_or_doubtful(memory, message), "a message comes out of the memory as it was");
    Bytes file{0, length8(message)};
    file.insert(file.end(), message.begin(), message.end());
    must(is_found_or_doubtful(file, message), "and out of the file of a Type 4 tag");
    tool::forms::Asked tlv;
    tool::forms::find_form("type2", tlv);
    const bool looks_whole = area.size() > 16 && area[12] == 0xE1 && area[13] >> 4 == 1 && area[14] != 0;
    if (!looks_whole) // which no reader of the memory could tell from a capability container
        must(tool::forms::recognise(area, tlv).message == message, "and out of the data area alone");
}

} // namespace

void fuzz::run(ByteView input)
{
    constexpr void (*const ways[])(ByteView){hex, base64, recognised, message, cut_short};
    if (!input.empty())
        ways[input[0] % std::size(ways)](input.subspan(1));
}
