#include "uri.h"

#include "../c_interface.h"
#include "../meaning/show_fields.h"
#include "../meaning/uri_fields.h"
#include "../printable.h"

#include <fmt/format.h>

#include <algorithm>

namespace nfc_ndef::values {

std::string_view uri_prefix(uint8_t identifier_code) { return nfc_ndef_uri_prefix(identifier_code); }

std::string expand_uri(const Uri &uri) { return std::string(uri_prefix(uri.identifier_code)) + uri.uri_field; }

Uri::Uri(std::string_view uri)
{
    uint32_t prefix_length = 0;
    identifier_code = nfc_ndef_uri_prefix_code(bytes_view(uri), &prefix_length);
    uri_field = uri.substr(prefix_length);
}

std::optional<Uri> Kind<Uri>::read(const nfc_ndef_record_view &record, const Nesting &, nfc_ndef_payload_report &report)
{
    nfc_ndef_uri uri;
    if (!nfc_ndef_uri_read(record.payload, &uri, &report))
        return std::nullopt;
    return Uri{uri.identifier_code, string_of(uri.field)};
}

nfc_ndef::Record Kind<Uri>::make(const Uri &uri)
{
    return nfc_ndef::Record(rtdlib_uri_record_create(uri.identifier_code, static_cast<uint32_t>(uri.uri_field.size()),
                                                     pointer_to(uri.uri_field)));
}

std::string Kind<Uri>::summary(const Uri &uri) { return shortened(expand_uri(uri)); }

void Kind<Uri>::show(const Uri &uri, View &view)
{
    const bool known = uri.identifier_code < first_reserved_uri_code;
    view.text("uri", view_of(expand_uri(uri)), View::Encoding::utf8,
              known ? "" : fmt::format("(reserved prefix code {})", uri.identifier_code));
    show_fields(uri_fields(expand_uri(uri)), view);
}

TextOrBytes Kind<Uri>::whole_of(const Uri &uri)
{
    std::string whole = expand_uri(uri);
    return is_utf8(whole) ? TextOrBytes{std::move(whole), true} : TextOrBytes{uri.uri_field, false};
}

Uri Kind<Uri>::uri_of(const TextOrBytes &whole, std::optional<uint8_t> code)
{
    if (!whole.is_text)
        return {code.value_or(0), whole.bytes};
    if (!code)
        return Uri(whole.bytes);
    const std::string_view prefix = uri_prefix(*code);
    return {*code, whole.bytes.starts_with(prefix) ? whole.bytes.substr(prefix.size()) : whole.bytes};
}

bool Kind<Uri>::has_control_characters(const Uri &uri)
{
    return std::ranges::any_of(uri.uri_field, [](char c) { return static_cast<uint8_t>(c) < 0x20; });
}

} // namespace nfc_ndef::values
