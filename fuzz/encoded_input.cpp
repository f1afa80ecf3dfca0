// The ways in which the command takes bytes: the input's first byte says which.
#include "fuzz.h"
#include "io/failure.h"
#include "io/tag_memory.h"
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

void tag_memory(ByteView input)
{
    try {
        must(tool::message_in_tag_memory(input).size() + 2 <= input.size(), "a message lies within the memory");
    } catch (const tool::Failure &failure) {
        must(failure.status == tool::exit_refused && *failure.what() != '\0', "a refusal says why");
    }
}

// Whichever way a message is written, the command takes it for what it is.
void message(ByteView input)
{
    Bytes message(input.begin(), input.end());
    if (message.empty())
        return;
    message[0] |= 0x80;
    must(tool::decode_any(message) == message, "a message is not taken for text");
    must(tool::decode_any(values::bytes_of(values::hex_of(message))) == message, "hex text is told from base64");
    const std::string base64 = base64_of(message);
    if (!tool::decode_hex(base64))
        must(tool::decode_any(values::bytes_of(base64)) == message, "base64 text is told from hex");
    if (message.size() >= 0xFF)
        return;
    Bytes area{0, 0xFD, 1, 0x55, 3, length8(message)}; // null, a proprietary TLV, the message
    area.insert(area.end(), message.begin(), message.end());
    Bytes memory{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xE1, 0x10, 0xFF, 0}; // up to the capability container
    memory.insert(memory.end(), area.begin(), area.end());
    must(tool::message_in_tag_memory(memory) == message, "a message comes out of the memory as it was");
    const bool looks_whole = area.size() > 16 && area[12] == 0xE1 && area[13] >> 4 == 1 && area[14] != 0;
    if (!looks_whole) // which no reader of the memory could tell from a capability container
        must(tool::message_in_tag_memory(area) == message, "and out of the data area alone");
}

} // namespace

void fuzz::run(ByteView input)
{
    constexpr void (*const ways[])(ByteView){hex, base64, tag_memory, message};
    if (!input.empty())
        ways[input[0] % std::size(ways)](input.subspan(1));
}
