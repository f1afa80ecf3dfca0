#include "spelling.h"

#include <algorithm>

namespace nfc_ndef::values {

namespace {

bool is_separator(char c) { return c == ':' || c == '-'; }

} // namespace

std::string Spelling::text_of(ByteView stored) const
{
    Bytes bytes(stored.begin(), stored.end());
    if (order == Order::reversed)
        std::ranges::reverse(bytes);
    const std::string digits = hex_of(bytes, "");
    std::string text(example);
    auto next = digits.begin();
    for (char &c : text)
        if (!is_separator(c) && next != digits.end())
            c = *next++;
    return text;
}

std::optional<Bytes> Spelling::bytes_of(std::string_view text) const
{
    if (text.size() != example.size())
        return std::nullopt;
    std::string digits;
    for (size_t i = 0; i < text.size(); ++i)
        if (!is_separator(example[i]))
            digits += text[i];
        else if (text[i] != example[i])
            return std::nullopt;
    Bytes bytes;
    if (!bytes_of_hex(digits, bytes))
        return std::nullopt;
    if (order == Order::reversed)
        std::ranges::reverse(bytes);
    return bytes;
}

} // namespace nfc_ndef::values
