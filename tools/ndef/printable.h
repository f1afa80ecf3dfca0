// Makes bytes from a tag safe and readable on a terminal.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tool {

// UTF-8 as it is, except that control characters, invisible and direction-changing characters show as \n or \u{202E},
// bytes that are no UTF-8 as \xFF, and a backslash as two.
std::string printable_utf8(std::span<const uint8_t> bytes);
std::string printable_utf8(std::string_view text);

// The same for UTF-16, big-endian unless a byte order mark, which is not shown, says otherwise.
std::string printable_utf16(std::span<const uint8_t> bytes);

// "D1 01 0A"; with another separator "D1:01:0A".
std::string hex_of(std::span<const uint8_t> bytes, std::string_view separator = " ");

} // namespace tool
