#include "text/encoded_text.h"

#include <glib.h>

#include <cctype>
#include <memory>
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

std::optional<std::vector<uint8_t>> decode_hex(std::string_view text, size_t *wrong)
{
    std::vector<uint8_t> bytes;
    for (size_t i = 0; i < text.size();) {
        if (is_space(text[i]) || std::string_view(":-,_").find(text[i]) != std::string_view::npos) {
            ++i;
        } else if (text[i] == '0' && i + 1 < text.size() && (text[i + 1] == 'x' || text[i + 1] == 'X')) {
            i += 2;
        } else {
            const auto high = hex_digit(text[i]);
            const auto low = i + 1 < text.size() ? hex_digit(text[i + 1]) : std::nullopt;
            if (!high || !low) {
                if (wrong)
                    *wrong = high ? i + 1 : i;
                return std::nullopt;
            }
            bytes.push_back(static_cast<uint8_t>(*high << 4 | *low));
            i += 2;
            if (i < text.size() && (text[i] == 'h' || text[i] == 'H'))
                ++i;
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

std::string base64_of(std::span<const uint8_t> bytes)
{
    struct Free {
        void operator()(char *text) const { g_free(text); }
    };
    return std::unique_ptr<char, Free>(g_base64_encode(bytes.data(), bytes.size())).get();
}

bool means_hex(const std::vector<uint8_t> &as_hex, const std::vector<uint8_t> &as_base64)
{
    const auto begins_message = [](const auto &decoded) { return !decoded.empty() && (decoded.front() & 0x80) != 0; };
    return begins_message(as_hex) || !begins_message(as_base64);
}

} // namespace tool
