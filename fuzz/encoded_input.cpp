// The ways in which the command takes bytes: the input's first byte says which.
#include "forms/recognise.h"
#include "fuzz.h"
#include "io/memory_image.h"
#include "text/encoded_text.h"

#include <nfc_ndef/bytes.h>

using namespace fuzz;
namespace values = nfc_ndef::values;

namespace {

void hex(ByteView input)
{
    const auto bytes = tool::decode_hex(values::text_of(input));
    must(!bytes || tool::decode_hex(values::hex_of(*bytes, ", 0x")) == bytes, "hex text means what it was made of");
}

void base64(ByteView input)
{
    const auto bytes = tool::decode_base64(values::text_of(input));
    must(!bytes || tool::decode_base64(tool::base64_of(*bytes)) == bytes, "base64 text means what it was made of");
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
    }
}

void cut_short(ByteView input)
{
    const ByteView part = input.first(std::min<size_t>(input.size(), 4096));
    for (size_t i = 0; i < 64; ++i)
        recognised(part.first(part.size() * i / 64));
}

bool is_found(const Bytes &written, const Bytes &message, bool may_be_doubtful = false)
{
    const tool::forms::Recognised found = tool::forms::recognise(written, {});
    return found.message == message || (may_be_doubtful && found.refused.starts_with("may be"));
}

// Whichever way a message is written, the command takes it for what it is.
void message(ByteView input)
{
    const Bytes message(input.begin(), input.end());
    if (!tool::forms::is_message(message) || message.size() > UINT8_MAX)
        return;
    must(is_found(message, message), "a message is not taken for anything else");
    must(is_found(values::bytes_of(values::hex_of(message)), message), "hex text is told from base64");
    must(is_found(values::bytes_of(tool::base64_of(message)), message), "base64 text is told from hex");
    for (const char *const tag : {"type2:504", "type4", "type5"})
        must(is_found(tool::image_of(message, tool::memory_image(tag)), message, true), "and comes out of a tag");
}

} // namespace

void fuzz::run(ByteView input)
{
    constexpr void (*const ways[])(ByteView){hex, base64, recognised, message, cut_short};
    if (!input.empty())
        ways[input[0] % std::size(ways)](input.subspan(1));
}
