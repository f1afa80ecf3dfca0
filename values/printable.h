// Makes bytes from a tag safe and readable on a terminal.
#pragma once

#include "bytes.h"

#include <string>
#include <string_view>

namespace nfc_ndef::values {

// Whether bytes are UTF-8 without a NUL.
bool is_utf8(std::string_view bytes);

// Whether a terminal obeys a character, or people do not see it: control characters, those that change the direction or
// take no place, and letters that are blank. Everything that is shown or written as JSON has these escaped.
bool acts_on_a_terminal(char32_t character);

// UTF-8 as it is, but characters that act on a terminal as \n or \u{202E}, bytes that are no UTF-8 as \xFF, and a
// backslash as two.
std::string printable_utf8(ByteView bytes);
std::string printable_utf8(std::string_view text);

// The same between quotes, with those inside escaped. UTF-16 is big-endian unless a byte order mark, which is not
// shown, says otherwise.
std::string quoted_utf8(ByteView bytes);
std::string quoted_utf16(ByteView bytes);

// So much of a UTF-8 text as a heading has room for, printable; the second also between quotes.
std::string shortened(std::string_view text);
std::string shortened_and_quoted(std::string_view text);

// "1.2" of a byte with the major version in bits 4 to 7.
std::string version_text(uint8_t version);

// "1 byte", "2 bytes".
std::string count_of(size_t count, std::string_view thing);

} // namespace nfc_ndef::values
