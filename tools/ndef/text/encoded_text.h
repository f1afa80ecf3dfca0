// Bytes written as text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Pairs of hex digits, with or without spaces, line breaks, commas, colons, dashes, low lines and "0x" between them and
// an "h" behind each; nothing else. `wrong` gets the place of the first character that is none of these.
std::optional<std::vector<uint8_t>> decode_hex(std::string_view text, size_t *wrong = nullptr);

// Base64 of either alphabet, with or without padding and line breaks; nothing else.
std::optional<std::vector<uint8_t>> decode_base64(std::string_view text);
std::string base64_of(std::span<const uint8_t> bytes);

// What is meant by a text that is hex or base64: the one that begins like a message, hex when that does not tell. A
// message never begins with an ASCII character, so no message is mistaken for text.
bool means_hex(const std::vector<uint8_t> &as_hex, const std::vector<uint8_t> &as_base64);

} // namespace tool
