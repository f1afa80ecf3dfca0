#include "printable.h"

#include <fmt/format.h>
#include <glib.h>

#include <algorithm>
#include <iterator>

namespace tool {
namespace {

// Appends a character as itself when it takes up a place of its own on a terminal, else escaped.
void append_printable(std::string &out, gunichar character)
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
    }
    switch (g_unichar_type(character)) {
    case G_UNICODE_CONTROL:
    case G_UNICODE_FORMAT: // direction overrides and isolates, zero-width characters, tags
    case G_UNICODE_UNASSIGNED:
    case G_UNICODE_PRIVATE_USE:
    case G_UNICODE_SURROGATE:
    case G_UNICODE_LINE_SEPARATOR:
    case G_UNICODE_PARAGRAPH_SEPARATOR:
        out += character < 0x80 ? fmt::format("\\x{:02X}", character) : fmt::format("\\u{{{:04X}}}", character);
        return;
    default:
        char utf8[6];
        out.append(utf8, static_cast<size_t>(g_unichar_to_utf8(character, utf8)));
    }
}

} // namespace

std::string printable_utf8(std::string_view text)
{
    std::string out;
    for (size_t i = 0; i < text.size();) {
        const auto first = static_cast<unsigned char>(text[i]);
        if (first < 0x80) {
            append_printable(out, first);
            ++i;
            continue;
        }
        const auto left = static_cast<gssize>(text.size() - i);
        const gunichar character = g_utf8_get_char_validated(text.data() + i, left);
        if (character == static_cast<gunichar>(-1) || character == static_cast<gunichar>(-2)) {
            fmt::format_to(std::back_inserter(out), "\\x{:02X}", first);
            ++i;
        } else {
            append_printable(out, character);
            i += static_cast<size_t>(g_unichar_to_utf8(character, nullptr));
        }
    }
    return out;
}

std::string printable_utf8(std::span<const uint8_t> bytes)
{
    return printable_utf8(std::string_view(reinterpret_cast<const char *>(bytes.data()), bytes.size()));
}

std::string printable_utf16(std::span<const uint8_t> bytes)
{
    const bool marked = bytes.size() >= 2 && (bytes[0] ^ bytes[1]) == 1 && std::max(bytes[0], bytes[1]) == 0xFF;
    const bool little = marked && bytes[0] == 0xFF;
    if (marked)
        bytes = bytes.subspan(2);
    const auto unit_at = [&](size_t i) -> gunichar {
        return static_cast<gunichar>(little ? bytes[i] | bytes[i + 1] << 8 : bytes[i] << 8 | bytes[i + 1]);
    };
    std::string out;
    size_t i = 0;
    for (; i + 1 < bytes.size(); i += 2) {
        gunichar character = unit_at(i);
        const bool high_surrogate = character >= 0xD800 && character < 0xDC00;
        if (high_surrogate && i + 3 < bytes.size() && unit_at(i + 2) >= 0xDC00 && unit_at(i + 2) < 0xE000) {
            i += 2;
            character = 0x10000 + ((character - 0xD800) << 10) + (unit_at(i) - 0xDC00);
        }
        append_printable(out, character);
    }
    if (i < bytes.size())
        fmt::format_to(std::back_inserter(out), "\\x{:02X}", bytes[i]);
    return out;
}

std::string hex_of(std::span<const uint8_t> bytes, std::string_view separator)
{
    return fmt::format("{:02X}", fmt::join(bytes, separator));
}

} // namespace tool
