// Text as files hold it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tool {

struct PlainText {
    std::string text;    // without a byte order mark; of UTF-16, what is not ASCII is "?"
    bool is_utf16;       // with a byte order mark, or ASCII characters alone
    bool may_be_message; // it has characters outside ASCII and no byte order mark, so it may be no text at all
};

// The text that bytes hold; none when there are control characters in it or it is in no encoding known here.
std::optional<PlainText> plain_text(std::span<const uint8_t> bytes);

// "line 3, column 7", both from 1, of the character at an offset.
std::string place_in(std::string_view text, size_t offset);

// Takes the next line off the front of a text, without its end.
std::string_view take_line(std::string_view &text);

// The text without blanks, tabs and line ends around it.
std::string_view trimmed(std::string_view text);

} // namespace tool
