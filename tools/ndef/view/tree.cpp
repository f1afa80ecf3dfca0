#include "view/tree.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <algorithm>

namespace tool {
namespace {

using nfc_ndef::values::count_of;
using nfc_ndef::values::hex_of;

constexpr std::string_view bold = "\x1B[1m", cyan = "\x1B[36m", yellow = "\x1B[33m", plain = "\x1B[0m";

} // namespace

std::string Tree::painted(std::string_view text, std::string_view color) const
{
    return colored_ ? fmt::format("{}{}{}", color, text, plain) : std::string(text);
}

void Tree::line(std::string_view text)
{
    if (!text.empty())
        text_.append(size_t{level_} * 2, ' ').append(text);
    text_.append("\n");
}

void Tree::heading(std::string_view text) { line(painted(text, bold)); }

void Tree::field(std::string_view name, std::string_view value)
{
    line(fmt::format("{} {}", painted(fmt::format("{}:", name), cyan), value));
}

void Tree::warning(std::string_view text) { line(painted(text, yellow)); }

void Tree::dump(ByteView bytes)
{
    constexpr size_t row = 16, limit = 16 * row;
    const size_t end = shown(bytes.size(), limit);
    for (size_t i = 0; i < end; i += row) {
        const ByteView part = bytes.subspan(i, std::min(row, end - i));
        line(fmt::format("{:04X}  {:<47}  |{}|", i, hex_of(part), ascii_of(part)));
    }
    if (end < bytes.size())
        warning(note_on_rest(bytes.size(), end));
}

std::string Tree::note_on_rest(size_t length, size_t shown)
{
    return length == shown ? "" : fmt::format("... {} more (--all shows them)", count_of(length - shown, "byte"));
}

std::string ascii_of(ByteView bytes)
{
    std::string text;
    for (const uint8_t byte : bytes)
        text += byte >= 0x20 && byte < 0x7F ? static_cast<char>(byte) : '.';
    return text;
}

} // namespace tool
