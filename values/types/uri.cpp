#include "uri.h"

#include "../extract.h"
#include "../printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace nfc_ndef::values {

namespace {

// Indexed by the identifier code.
constexpr std::string_view prefixes[] = {
    "",
    "http://www.",
    "https://www.",
    "http://",
    "https://",
    "tel:",
    "mailto:",
    "ftp://anonymous:anonymous@",
    "ftp://ftp.",
    "ftps://",
    "sftp://",
    "smb://",
    "nfs://",
    "ftp://",
    "dav://",
    "news:",
    "telnet://",
    "imap:",
    "rtsp://",
    "urn:",
    "pop:",
    "sip:",
    "sips:",
    "tftp:",
    "btspp://",
    "btl2cap://",
    "btgoep://",
    "tcpobex://",
    "irdaobex://",
    "file://",
    "urn:epc:id:",
    "urn:epc:tag:",
    "urn:epc:pat:",
    "urn:epc:raw:",
    "urn:epc:",
    "urn:nfc:",
};
static_assert(std::size(prefixes) == first_reserved_uri_code);

} // namespace

std::string_view uri_prefix(uint8_t identifier_code)
{
    return identifier_code < std::size(prefixes) ? prefixes[identifier_code] : std::string_view();
}

std::string expand_uri(const Uri &uri) { return std::string(uri_prefix(uri.identifier_code)) + uri.uri_field; }

Uri::Uri(std::string_view uri)
{
    for (size_t code = 1; code < std::size(prefixes); ++code)
        if (uri.starts_with(prefixes[code]) && prefixes[code].size() > prefixes[identifier_code].size())
            identifier_code = static_cast<uint8_t>(code);
    uri_field = uri.substr(prefixes[identifier_code].size());
}

std::optional<Uri> Kind<Uri>::read(const nfc_ndef_record &record, const Nesting &)
{
    uint8_t identifier_code = 0;
    uint32_t length = 0;
    Block<> field;
    const int8_t result = rtdlib_uri_record_extract(&record, &identifier_code, out(field), &length);
    if (result != 1)
        return std::nullopt;
    return Uri{identifier_code, copy_of<std::string>(field, length)};
}

nfc_ndef::Record Kind<Uri>::make(const Uri &uri)
{
    return nfc_ndef::Record(rtdlib_uri_record_create(uri.identifier_code, static_cast<uint32_t>(uri.uri_field.size()),
                                                     pointer_to(uri.uri_field)));
}

void Kind<Uri>::show(const Uri &uri, View &view)
{
    const bool known = uri.identifier_code < first_reserved_uri_code;
    view.text("uri", view_of(expand_uri(uri)), View::Encoding::utf8,
              known ? "" : fmt::format("(reserved prefix code {})", uri.identifier_code));
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
