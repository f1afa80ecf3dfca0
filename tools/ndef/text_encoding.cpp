#include "text_encoding.h"

#include <glib.h>

namespace tool {

namespace {

struct GFree {
    void operator()(void *block) const { g_free(block); }
};
template <class T> using GBlock = std::unique_ptr<T[], GFree>;

bool is_little(ByteOrderMark mark) { return mark == ByteOrderMark::little; }

} // namespace

bool is_utf8(std::string_view bytes) { return g_utf8_validate_len(bytes.data(), bytes.size(), nullptr); }

ByteOrderMark byte_order_mark_of(const model::Text &text)
{
    if (text.utf16 && text.text.size() >= 2) {
        if (text.text[0] == 0xFE && text.text[1] == 0xFF)
            return ByteOrderMark::big;
        if (text.text[0] == 0xFF && text.text[1] == 0xFE)
            return ByteOrderMark::little;
    }
    return ByteOrderMark::none;
}

std::optional<std::string> utf8_of(const model::Text &text)
{
    if (!text.utf16) {
        std::string utf8(text.text.begin(), text.text.end());
        return is_utf8(utf8) ? std::optional(std::move(utf8)) : std::nullopt;
    }
    if (text.text.size() % 2 != 0)
        return std::nullopt;
    const ByteOrderMark mark = byte_order_mark_of(text);
    std::vector<gunichar2> units;
    for (size_t i = mark == ByteOrderMark::none ? 0 : 2; i < text.text.size(); i += 2) {
        const uint8_t high = text.text[i + (is_little(mark) ? 1 : 0)];
        const uint8_t low = text.text[i + (is_little(mark) ? 0 : 1)];
        units.push_back(static_cast<gunichar2>(high << 8 | low));
    }
    if (units.empty())
        return "";
    glong read = 0, written = 0;
    const auto length = static_cast<glong>(units.size());
    const GBlock<char> utf8(g_utf16_to_utf8(units.data(), length, &read, &written, nullptr));
    if (!utf8 || read != length) // read ends early at a NUL or half a surrogate pair
        return std::nullopt;
    return std::string(utf8.get(), static_cast<size_t>(written));
}

model::Bytes utf16_of(std::string_view utf8, ByteOrderMark mark)
{
    glong count = 0;
    const GBlock<gunichar2> units(
        g_utf8_to_utf16(utf8.data(), static_cast<glong>(utf8.size()), nullptr, &count, nullptr));
    model::Bytes bytes;
    const auto append = [&](gunichar2 unit) {
        const auto high = static_cast<uint8_t>(unit >> 8), low = static_cast<uint8_t>(unit);
        bytes.push_back(is_little(mark) ? low : high);
        bytes.push_back(is_little(mark) ? high : low);
    };
    if (mark != ByteOrderMark::none)
        append(0xFEFF);
    for (glong i = 0; i < count; ++i)
        append(units[static_cast<size_t>(i)]);
    return bytes;
}

} // namespace tool
