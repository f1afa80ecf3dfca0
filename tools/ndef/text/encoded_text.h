// Bytes written as text.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tool {

// Pairs of hex digits, with or without spaces, line breaks, commas, colons, dashes and "0x" between them; nothing else.
std::optional<std::vector<uint8_t>> decode_hex(std::string_view text);

// Base64 of either alphabet, with or without padding and line breaks; nothing else.
std::optional<std::vector<uint8_t>> decode_base64(std::string_view text);

// The bytes as they are, unless they are text: then what it means as hex or base64, whichever begins like a message;
// none when it is neither. A message never begins with an ASCII character, so no message is mistaken for text.
std::optional<std::vector<uint8_t>> decode_any(std::vector<uint8_t> bytes);

} // namespace tool
