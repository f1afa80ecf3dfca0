#include "text/encoded_text.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace tool {
namespace {

bool is_space(char c) { return std::string_view(" \t\r\n\f\v").find(c) != std::string_view::npos; }

std::optional<uint8_t> hex_digit(char c)
{
    const std::string_view digits = "0123456789abcdef";
    const size_t value = digits.find(static_cast<char>(std::tolower(static_cast<unsigned char>(c))));
    return value == std::string_view::npos ? std::nullopt : std::optional(static_cast<uint8_t>(value));
}

std::optional<uint8_t> base64_digit(char c)
{
    const std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const size_t value = digits.find(c == '-' ? '+' : c == '_' ? '/' : c);
    return value == std::string_view::npos ? std::nullopt : std::optional(static_cast<uint8_t>(value));
}

} // namespace

std::optional<std::vector<uint8_t>> decode_hex(std::string_view text)
{
    std::vector<uint8_t> bytes;
    for (size_t i = 0; i < text.size();) {
        if (is_space(text[i]) || text[i] == ':' || text[i] == '-' || text[i] == ',') {
            ++i;
        } else if (text[i] == '0' && i + 1 < text.size() && (text[i + 1] == 'x' || text[i + 1] == 'X')) {
            i += 2;
        } else {
            const auto high = hex_digit(text[i]);
            const auto low = i + 1 < text.size() ? hex_digit(text[i + 1]) : std::nullopt;
            if (!high || !low)
                return std::nullopt;
            bytes.push_back(static_cast<uint8_t>(*high << 4 | *low));
            i += 2;
        }
    }
    return bytes;
}

std::optional<std::vector<uint8_t>> decode_base64(std::string_view text)
{
    std::vector<uint8_t> bytes;
    uint32_t group = 0;
    size_t digits = 0, padding = 0;
    for (const char c : text) {
        if (is_space(c))
            continue;
        if (c == '=') {
            ++padding;
            continue;
        }
        const auto digit = base64_digit(c);
        if (!digit || padding > 0)
            return std::nullopt;
        group = group << 6 | *digit;
        if (++digits % 4 != 1) // the second, third and fourth digit of a group each complete a byte
            bytes.push_back(static_cast<uint8_t>(group >> (digits % 4 == 2 ? 4 : digits % 4 == 3 ? 2 : 0)));
    }
    if (digits % 4 == 1 || (padding > 0 && (digits + padding) % 4 != 0) || padding > 2)
        return std::nullopt;
    return bytes;
}

std::optional<std::vector<uint8_t>> decode_any(std::vector<uint8_t> bytes)
{
    const std::string_view text(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    const auto is_text = [](char c) { return is_space(c) || (c > 0x20 && c < 0x7F); };
    if (!std::all_of(text.begin(), text.end(), is_text))
        return bytes;
    auto hex = decode_hex(text);
    auto base64 = decode_base64(text);
    const auto begins_message = [](const auto &decoded) {
        return decoded && !decoded->empty() && (decoded->front() & 0x80) != 0;
    };
    return hex && (begins_message(hex) || !begins_message(base64)) ? hex : base64;
}

} // namespace tool
