// Byte strings, and how they become text and back.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace nfc_ndef::values {

using Bytes = std::vector<uint8_t>;
using ByteView = std::span<const uint8_t>;

inline std::string_view text_of(ByteView bytes) { return {reinterpret_cast<const char *>(bytes.data()), bytes.size()}; }
inline ByteView view_of(std::string_view text) { return {reinterpret_cast<const uint8_t *>(text.data()), text.size()}; }
inline ByteView view_of(ByteView bytes) { return bytes; }
inline Bytes bytes_of(std::string_view text) { return {text.begin(), text.end()}; }

// "D1 01 0A"; with another separator "D1:01:0A".
std::string hex_of(ByteView bytes, std::string_view separator = " ");

// Pairs of hex digits and nothing else; false when the text is not that.
bool bytes_of_hex(std::string_view hex, Bytes &bytes);

} // namespace nfc_ndef::values
