// Hex and base64.
#include "forms/all.h"
#include "text/encoded_text.h"

namespace tool::forms {
namespace {

Written written(std::optional<values::Bytes> bytes)
{
    return bytes ? Written{.match = Match::whole, .memory = {.bytes = *std::move(bytes)}} : Written{};
}

} // namespace

Written read_hex(std::string_view text) { return written(decode_hex(text)); }
Written read_base64(std::string_view text) { return written(decode_base64(text)); }

} // namespace tool::forms
