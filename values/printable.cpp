#include "printable.h"

#include <fmt/format.h>
#include <glib.h>

#include <algorithm>
#include <iterator>

namespace nfc_ndef::values {

namespace {

// Characters that Unicode counts as letters, marks or symbols, but that show as nothing (Default_Ignorable_Code_Point)
// or as a blank.
struct Range {
    char32_t first, last;
};
constexpr Range unseen[] = {{0x034F, 0x034F}, {0x115F, 0x1160},   {0x17B4, 0x17B5},  {0x180B, 0x180F},
                            {0x2800, 0x2800}, {0x3164, 0x3164},   {0xFE00, 0xFE0F},  {0xFFA0, 0xFFA0},
                            {0xFFFC, 0xFFFC}, {0x16FE4, 0x16FE4}, {0xE0100, 0xE01EF}};

enum class Quotes { no, yes };

void append_printable(std::string &out, char32_t character, Quotes quotes)
{
    switch (character) {
    case '\n':
        out += "\\n";
        return;
    case '\r':
        out += "\\r";
        return;
    case '\t':
        out += "\\t";
        return;
    case '\\':
        out += "\\\\";
        return;
    case '"':
        out += quotes == Quotes::yes ? "\\\"" : "\"";
        return;
    }
    const auto number = static_cast<uint32_t>(character);
    if (acts_on_a_terminal(character)) {
        out += number < 0x80 ? fmt::format("\\x{:02X}", number) : fmt::format("\\u{{{:04X}}}", number);
        return;
    }
    char utf8[6];
    out.append(utf8, static_cast<size_t>(g_unichar_to_utf8(number, utf8)));
}

std::string printable(std::string_view text, Quotes quotes)
{
    std::string out;
    for (size_t i = 0; i < text.size();) {
        const auto first = static_cast<unsigned char>(text[i]);
        if (first < 0x80) {
            append_printable(out, first, quotes);
            ++i;
            continue;
        }
        const auto left = static_cast<gssize>(text.size() - i);
        const gunichar character = g_utf8_get_char_validated(text.data() + i, left);
        if (character == static_cast<gunichar>(-1) || character == static_cast<gunichar>(-2)) {
            fmt::format_to(std::back_inserter(out), "\\x{:02X}", first);
            ++i;
        } else {
            append_printable(out, character, quotes);
            i += static_cast<size_t>(g_unichar_to_utf8(character, nullptr));
        }
    }
    return out;
}

} // namespace

bool is_utf8(std::string_view bytes) { return g_utf8_validate_len(bytes.data(), bytes.size(), nullptr); }

bool acts_on_a_terminal(char32_t character)
{
    switch (g_unichar_type(character)) {
    case G_UNICODE_CONTROL:
    case G_UNICODE_FORMAT: // direction overrides and isolates, zero-width characters, tags
    case G_UNICODE_UNASSIGNED:
    case G_UNICODE_PRIVATE_USE:
    case G_UNICODE_SURROGATE:
    case G_UNICODE_LINE_SEPARATOR:
    case G_UNICODE_PARAGRAPH_SEPARATOR:
        return true;
    default:
        return std::ranges::any_of(
            unseen, [&](const Range &range) { return character >= range.first && character <= range.last; });
    }
}

std::string printable_utf8(std::string_view text) { return printable(text, Quotes::no); }
std::string printable_utf8(ByteView bytes) { return printable(text_of(bytes), Quotes::no); }
std::string quoted_utf8(ByteView bytes) { return '"' + printable(text_of(bytes), Quotes::yes) + '"'; }

std::string quoted_utf16(ByteView bytes)
{
    const bool marked = bytes.size() >= 2 && (bytes[0] ^ bytes[1]) == 1 && std::max(bytes[0], bytes[1]) == 0xFF;
    const bool little = marked && bytes[0] == 0xFF;
    if (marked)
        bytes = bytes.subspan(2);
    const auto unit_at = [&](size_t i) -> char32_t {
        return static_cast<char32_t>(little ? bytes[i] | bytes[i + 1] << 8 : bytes[i] << 8 | bytes[i + 1]);
    };
    std::string out = "\"";
    size_t i = 0;
    for (; i + 1 < bytes.size(); i += 2) {
        char32_t character = unit_at(i);
        const bool high_surrogate = character >= 0xD800 && character < 0xDC00;
        if (high_surrogate && i + 3 < bytes.size() && unit_at(i + 2) >= 0xDC00 && unit_at(i + 2) < 0xE000) {
            i += 2;
            character = 0x10000 + ((character - 0xD800) << 10) + (unit_at(i) - 0xDC00);
        }
        append_printable(out, character, Quotes::yes);
    }
    if (i < bytes.size())
        fmt::format_to(std::back_inserter(out), "\\x{:02X}", bytes[i]);
    return out + '"';
}

namespace {

constexpr size_t room_in_a_heading = 60;

// Cut at the start of a character.
size_t length_in_a_heading(std::string_view text)
{
    if (text.size() <= room_in_a_heading)
        return text.size();
    size_t length = room_in_a_heading;
    for (int back = 0; back < 3 && (static_cast<uint8_t>(text[length]) & 0xC0) == 0x80; ++back)
        --length;
    return length;
}

} // namespace

std::string shortened(std::string_view text)
{
    const size_t length = length_in_a_heading(text);
    return printable_utf8(text.substr(0, length)) + (length < text.size() ? "..." : "");
}

std::string shortened_and_quoted(std::string_view text)
{
    const size_t length = length_in_a_heading(text);
    return quoted_utf8(view_of(text.substr(0, length))) + (length < text.size() ? "..." : "");
}

std::string version_text(uint8_t version) { return fmt::format("{}.{}", version >> 4, version & 0x0F); }

std::string count_of(size_t count, std::string_view thing)
{
    return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

} // namespace nfc_ndef::values
