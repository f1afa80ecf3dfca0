// A URI record (NFC Forum URI RTD 1.0).
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct Uri {
    Uri() = default;
    Uri(uint8_t code, std::string field) : identifier_code(code), uri_field(std::move(field)) {}
    explicit Uri(std::string_view uri); // abbreviated by the longest known prefix

    uint8_t identifier_code = 0;
    std::string uri_field; // without the prefix that the code stands for
    bool operator==(const Uri &) const = default;
};

// The prefix that an identifier code stands for; empty for 0 and for codes without a meaning.
std::string_view uri_prefix(uint8_t identifier_code);
constexpr uint8_t first_reserved_uri_code = 0x24;

// The whole URI.
std::string expand_uri(const Uri &uri);

template <> struct Kind<Uri> : Leaf {
    static constexpr Type type = well_known("U");
    static constexpr std::string_view json = "uri", title = "URI";
    static std::optional<Uri> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                   nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const Uri &uri);
    static void show(const Uri &uri, View &view);
    static std::string summary(const Uri &uri);

    template <class Fields> static void map(Fields &fields, Value<Fields, Uri> &uri)
    {
        std::optional<uint8_t> code;
        TextOrBytes whole;
        if constexpr (!Fields::reads) {
            code = uri.identifier_code;
            whole = whole_of(uri);
        }
        fields.number("identifier_code", code);
        fields.text_or_hex("uri", whole, {}, Presence::required);
        if constexpr (Fields::reads) {
            uri = uri_of(whole, code);
            fields.require(!has_control_characters(uri), "uri", "must not hold control characters");
            fields.require(!whole.is_text || expand_uri(uri) == whole.bytes, "uri",
                           "must begin with \"" + std::string(uri_prefix(uri.identifier_code)) +
                               "\", which the identifier_code stands for");
        }
    }

private:
    static TextOrBytes whole_of(const Uri &uri);
    static Uri uri_of(const TextOrBytes &whole, std::optional<uint8_t> code);
    static bool has_control_characters(const Uri &uri);
};

} // namespace nfc_ndef::values
