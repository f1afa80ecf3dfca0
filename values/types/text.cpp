#include "text.h"

#include "../c_interface.h"
#include "../printable.h"

#include <fmt/format.h>
#include <glib.h>

namespace nfc_ndef::values {

namespace {

struct GFree {
    void operator()(void *block) const { g_free(block); }
};
template <class T> using GBlock = std::unique_ptr<T[], GFree>;

bool is_little(ByteOrderMark mark) { return mark == ByteOrderMark::little; }

Bytes utf16_of(std::string_view utf8, ByteOrderMark mark)
{
    glong count = 0;
    const GBlock<gunichar2> units(
        g_utf8_to_utf16(utf8.data(), static_cast<glong>(utf8.size()), nullptr, &count, nullptr));
    Bytes bytes;
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

} // namespace

std::optional<std::string> utf8_of(const Text &text)
{
    if (!text.utf16) {
        std::string utf8(text_of(text.text));
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

ByteOrderMark byte_order_mark_of(const Text &text)
{
    if (text.utf16 && text.text.size() >= 2) {
        if (text.text[0] == 0xFE && text.text[1] == 0xFF)
            return ByteOrderMark::big;
        if (text.text[0] == 0xFF && text.text[1] == 0xFE)
            return ByteOrderMark::little;
    }
    return ByteOrderMark::none;
}

Text utf8_text(std::string_view utf8, std::string_view language_code)
{
    return {false, std::string(language_code), bytes_of(utf8)};
}

Text utf16_text(std::string_view utf8, std::string_view language_code, ByteOrderMark mark)
{
    return {true, std::string(language_code), utf16_of(utf8, mark)};
}

std::optional<Text> Kind<Text>::read(const nfc_ndef_record_view &record, const Nesting &,
                                     nfc_ndef_payload_report &report)
{
    nfc_ndef_text text;
    if (!nfc_ndef_text_read(record.payload, &text, &report))
        return std::nullopt;
    return Text{text.utf16 != 0, string_of(text.language), bytes_of(text.text)};
}

nfc_ndef::Record Kind<Text>::make(const Text &text)
{
    if (!fit_in_a_byte(text.language_code.size()))
        return nullptr;
    return nfc_ndef::Record(rtdlib_text_record_create(text.utf16, static_cast<uint8_t>(text.language_code.size()),
                                                      pointer_to(text.language_code), pointer_to(text.text),
                                                      static_cast<uint32_t>(text.text.size())));
}

std::string Kind<Text>::summary(const Text &text)
{
    const std::optional<std::string> utf8 = utf8_of(text);
    const std::string language = text.language_code.empty() ? "" : fmt::format(" ({})", shortened(text.language_code));
    return utf8 ? shortened_and_quoted(*utf8) + language : "";
}

void Kind<Text>::show(const Text &text, View &view)
{
    view.field("language", text.language_code.empty() ? "no language" : printable_utf8(text.language_code));
    view.field("encoding", text.utf16 ? "UTF-16" : "UTF-8");
    view.text("text", text.text, text.utf16 ? View::Encoding::utf16 : View::Encoding::utf8);
}

Kind<Text>::Plain Kind<Text>::plain_of(const Text &text)
{
    // A mark alone is a text of bytes: JSON has no empty text.
    if (const std::optional<std::string> utf8 = utf8_of(text); utf8 && !utf8->empty())
        return {static_cast<uint8_t>(byte_order_mark_of(text)), {*utf8, true}};
    return {0, {std::string(text_of(text.text)), false}};
}

Bytes Kind<Text>::encoded(const Plain &plain, bool utf16)
{
    const bool as_is = !utf16 || !plain.text.is_text;
    return as_is ? bytes_of(plain.text.bytes) : utf16_of(plain.text.bytes, static_cast<ByteOrderMark>(plain.mark));
}

} // namespace nfc_ndef::values
