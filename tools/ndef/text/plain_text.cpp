#include "text/plain_text.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace tool {
namespace {

constexpr std::string_view blanks = " \t\r\n\f\v";

bool is_space(char c) { return blanks.find(c) != std::string_view::npos; }
bool is_ascii_text(char c) { return is_space(c) || (c > 0x20 && c < 0x7F); }

// The characters of UTF-16 in one byte order.
std::optional<std::string> utf16_text(std::span<const uint8_t> bytes, bool big_endian)
{
    std::string text;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const uint8_t high = bytes[big_endian ? i : i + 1], low = bytes[big_endian ? i + 1 : i];
        const char c = high == 0 && low < 0x80 ? static_cast<char>(low) : '?';
        if (!is_ascii_text(c))
            return std::nullopt;
        text += c;
    }
    return text;
}

std::optional<PlainText> utf16(std::span<const uint8_t> bytes)
{
    if (bytes.size() < 2 || bytes.size() % 2 != 0)
        return std::nullopt;
    const bool little = bytes[0] == 0xFF && bytes[1] == 0xFE, big = bytes[0] == 0xFE && bytes[1] == 0xFF;
    for (const bool big_endian : {false, true}) {
        if ((little || big) && big != big_endian)
            continue;
        auto text = utf16_text(bytes.subspan(little || big ? 2 : 0), big_endian);
        if (text && (little || big || text->find('?') == std::string::npos))
            return PlainText{.text = *std::move(text), .is_utf16 = true, .may_be_message = false};
    }
    return std::nullopt;
}

} // namespace

std::optional<PlainText> plain_text(std::span<const uint8_t> bytes)
{
    if (auto text = utf16(bytes))
        return text;
    constexpr std::array<uint8_t, 3> mark{0xEF, 0xBB, 0xBF};
    const bool marked = bytes.size() >= mark.size() && std::ranges::equal(bytes.first(mark.size()), mark);
    const std::string_view text = nfc_ndef::values::text_of(marked ? bytes.subspan(mark.size()) : bytes);
    if (std::ranges::all_of(text, is_ascii_text))
        return PlainText{.text = std::string(text), .is_utf16 = false, .may_be_message = false};
    const auto is_text = [](char c) { return static_cast<uint8_t>(c) >= 0x80 || is_ascii_text(c); };
    if (!std::ranges::all_of(text, is_text) || !nfc_ndef::values::is_utf8(text))
        return std::nullopt;
    return PlainText{.text = std::string(text), .is_utf16 = false, .may_be_message = !marked};
}

std::string place_in(std::string_view text, size_t offset)
{
    const std::string_view before = text.substr(0, offset);
    const size_t line = before.rfind('\n');
    return fmt::format("line {}, column {}", std::ranges::count(before, '\n') + 1,
                       line == std::string_view::npos ? offset + 1 : offset - line);
}

std::string_view take_line(std::string_view &text)
{
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

std::string_view trimmed(std::string_view text)
{
    const size_t begin = text.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

} // namespace tool
