#include "view/tree.h"

#include "text/wrapped.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <algorithm>

namespace tool {
namespace {

using nfc_ndef::values::count_of;
using nfc_ndef::values::hex_of;

constexpr std::string_view bold = "\x1B[1m", dim = "\x1B[2m", green = "\x1B[32m", yellow = "\x1B[33m",
                           cyan = "\x1B[36m", plain = "\x1B[0m";

// Printable ASCII as it is, a dot for any other byte.
std::string ascii_of(ByteView bytes)
{
    std::string text;
    for (const uint8_t byte : bytes)
        text += byte >= 0x20 && byte < 0x7F ? static_cast<char>(byte) : '.';
    return text;
}

constexpr size_t columns_of_hex(size_t bytes) { return 3 * bytes - 1; }

} // namespace

std::string Tree::painted(std::string_view text, std::string_view color) const
{
    return style_.colored && !color.empty() && !text.empty() ? fmt::format("{}{}{}", color, text, plain)
                                                             : std::string(text);
}

std::string Tree::wrapped_here(std::string_view text, size_t column) const
{
    return wrapped(text, size_t{level_} * 2 + column, size_t{level_} * 2 + 4, style_.columns);
}

void Tree::line(std::string_view text)
{
    const size_t indent = size_t{level_} * 2;
    if (text_.size() + indent + text.size() >= end_)
        throw Full();
    text_.append(indent, ' ').append(text).append("\n");
}

void Tree::heading(std::string_view text) { line(painted(wrapped_here(text, 0), bold)); }

void Tree::field(std::string_view name, std::string_view value)
{
    constexpr size_t longest = 20'000; // more than any text that is cut short already
    const std::string label = fmt::format("{}:", name);
    const bool is_cut = !style_.everything && value.size() > longest;
    line(painted(label, cyan) +
         wrapped_here(fmt::format(" {}{}", is_cut ? value.substr(0, value.rfind(' ', longest)) : value,
                                  is_cut ? " ... (--all shows the rest)" : ""),
                      label.size()));
}

void Tree::side_field(std::string_view name, std::string_view value)
{
    line(painted(wrapped_here(fmt::format("{}: {}", name, value), 0), dim));
}

void Tree::warning(std::string_view text) { line(painted(wrapped_here(text, 0), yellow)); }

size_t Tree::bytes_in_a_row(size_t other_columns) const
{
    // An offset, hex, ASCII, and what is between and around them.
    const auto fits = [&](size_t bytes) {
        return other_columns + 4 + 2 + columns_of_hex(bytes) + 3 + bytes + 1 <= style_.columns;
    };
    return style_.columns == 0 || fits(16) ? 16 : fits(8) ? 8 : 4;
}

void Tree::dump(ByteView bytes) { rows(bytes, 0, "", Role::content); }

void Tree::rows(ByteView bytes, size_t offset, std::string_view before, Role role)
{
    const std::string_view color = role == Role::name ? green : "";
    const size_t row = bytes_in_a_row(size_t{level_} * 2 + before.size()), end = shown(bytes.size(), 256);
    for (size_t i = 0; i < end; i += row) {
        const ByteView part = bytes.subspan(i, std::min(row, end - i));
        const std::string hex = fmt::format("{:<{}}", hex_of(part), columns_of_hex(row));
        line(fmt::format("{}{}  {}  |{}|", painted(before, dim), painted(fmt::format("{:04X}", offset + i), dim),
                         painted(hex, color), painted(ascii_of(part), color)));
    }
    if (end < bytes.size())
        line(painted(before, dim) + painted(note_on_rest(bytes.size(), end), yellow));
}

void Tree::bytes_of_field(ByteView bytes, size_t offset, unsigned depth, std::string_view meaning, Role role)
{
    std::string before;
    for (unsigned i = 0; i < depth; ++i)
        before += "| ";
    const size_t indent = size_t{level_} * 2 + before.size();
    const size_t most = bytes_in_a_row(indent) / 2;
    if (bytes.empty())
        return;
    if (bytes.size() > most) {
        line(painted(before, dim) + painted(meaning, cyan));
        return rows(bytes, offset, before, role);
    }
    const std::string ascii = role == Role::length ? "" : fmt::format(" |{}|", ascii_of(bytes));
    const size_t column = indent + 4 + 2 + columns_of_hex(most) + 2;
    line(fmt::format("{}{}  {}  {}", painted(before, dim), painted(fmt::format("{:04X}", offset), dim),
                     painted(fmt::format("{:<{}}", hex_of(bytes), columns_of_hex(most)), role == Role::name     ? green
                                                                                         : role == Role::length ? cyan
                                                                                                                : ""),
                     wrapped(fmt::format("{}{}", meaning, ascii), column, column, style_.columns)));
}

std::string Tree::note_on_rest(size_t length, size_t shown)
{
    return length == shown ? "" : fmt::format("... {} more (--all shows them)", count_of(length - shown, "byte"));
}

} // namespace tool
