// A Text record (NFC Forum Text RTD 1.0).
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

// UTF-16 without a mark is big-endian.
enum class ByteOrderMark : uint8_t { none, big, little };

struct Text {
    bool utf16 = false;
    std::string language_code;
    Bytes text; // as it is on the tag, a byte order mark included
    bool operator==(const Text &) const = default;
};

// The text as UTF-8, without its byte order mark; none when it is not valid in its encoding or holds a NUL.
std::optional<std::string> utf8_of(const Text &text);

// The mark at the start of a UTF-16 text; UTF-8 has none.
ByteOrderMark byte_order_mark_of(const Text &text);

// A text record of valid UTF-8, written on the tag as UTF-8 or as UTF-16 behind a mark and in its byte order.
Text utf8_text(std::string_view utf8, std::string_view language_code);
Text utf16_text(std::string_view utf8, std::string_view language_code, ByteOrderMark mark = ByteOrderMark::none);

template <> struct Kind<Text> : Leaf {
    static constexpr Type type = well_known("T");
    static constexpr std::string_view json = "text", title = "Text";
    static std::optional<Text> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                    nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const Text &text);
    static void show(const Text &text, View &view);
    static std::string summary(const Text &text);

    template <class Fields> static void map(Fields &fields, Value<Fields, Text> &text)
    {
        static constexpr Name marks[] = {{1, "big"}, {2, "little"}};
        fields.flag("utf16", text.utf16);
        fields.text_or_hex("language_code", text.language_code, {1, 63}, Presence::required);
        Plain plain;
        if constexpr (!Fields::reads)
            plain = plain_of(text);
        fields.choice("byte_order_mark", plain.mark, marks, Presence::optional);
        fields.require(plain.mark == 0 || text.utf16, "byte_order_mark", "is for UTF-16 only");
        fields.text_or_hex("text", plain.text, {1}, Presence::required);
        if constexpr (Fields::reads)
            text.text = encoded(plain, text.utf16);
    }

private:
    // The text as JSON says it.
    struct Plain {
        uint8_t mark = 0; // a ByteOrderMark
        TextOrBytes text;
    };
    static Plain plain_of(const Text &text);
    static Bytes encoded(const Plain &plain, bool utf16);
};

} // namespace nfc_ndef::values
