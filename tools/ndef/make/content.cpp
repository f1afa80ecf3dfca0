#include "make/content.h"

#include "io/input.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

#include <algorithm>

namespace tool::make {
namespace {

bool is_of_language_code(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

// RFC 3986, 3.1.
bool is_scheme(const std::string &text)
{
    const auto is_letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return !text.empty() && is_letter(text[0]) && std::ranges::all_of(text, [&](char c) {
        return is_letter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
    });
}

} // namespace

void require(bool possible, const std::string &reason)
{
    if (!possible)
        throw ImpossibleValue(reason);
}

std::string text_of_input(bool unlimited)
{
    const std::vector<uint8_t> bytes = read_file("-", unlimited);
    std::string_view text = values::text_of(bytes);
    if (text.ends_with('\n'))
        text.remove_suffix(text.ends_with("\r\n") ? 2 : 1);
    return std::string(text);
}

values::Content text_content(const std::string &text, const std::string &language, bool utf16)
{
    require(!language.empty() && language.size() <= 63 && std::ranges::all_of(language, is_of_language_code),
            "a language code is 1 to 63 letters, digits and hyphens long");
    require(!text.empty(), "a text must not be empty");
    require(values::is_utf8(text), "a text must be valid UTF-8");
    return utf16 ? values::utf16_text(text, language) : values::utf8_text(text, language);
}

void require_media_type(const std::string &name)
{
    const size_t slash = name.find('/');
    const bool printable = std::ranges::all_of(name, [](char c) { return c > ' ' && c < 0x7F; });
    require(printable && slash != std::string::npos && slash > 0 && slash + 1 < name.size() && name.size() <= 255,
            fmt::format("\"{}\" is not a media type", name));
}

void require_address(const std::string &email)
{
    const size_t at = email.find('@');
    const bool plain =
        values::is_utf8(email) && std::ranges::all_of(email, [](char c) { return static_cast<uint8_t>(c) > ' '; });
    require(plain && at != std::string::npos && at > 0 && at + 1 < email.size() &&
                email.find('@', at + 1) == std::string::npos,
            fmt::format("\"{}\" is not an e-mail address", email));
}

// What is a URI to a phone; what has no scheme, or blanks, opens nothing there.
values::Content uri_content(const std::string &uri)
{
    require(!uri.empty(), "a URI must not be empty");
    require(std::ranges::all_of(uri, [](char c) { return static_cast<uint8_t>(c) >= 0x20; }) && values::is_utf8(uri),
            "a URI must be valid UTF-8 without control characters");
    require(uri.find(' ') == std::string::npos, fmt::format("the URI \"{}\" has a space; in a URI that is %20", uri));
    const size_t scheme = uri.find(':');
    require(scheme != std::string::npos && is_scheme(uri.substr(0, scheme)),
            fmt::format("the URI \"{}\" has no scheme such as https:", uri));
    return values::Uri(uri);
}

values::Record record_of(values::Content content)
{
    std::optional<values::Record> record = build(std::move(content));
    require(record.has_value(), "the values do not make a record");
    return *std::move(record);
}

values::Bytes message_of(const values::Records &records)
{
    require(records.size() <= values::max_records,
            fmt::format("a message holds at most {} records", values::max_records));
    std::optional<values::Bytes> bytes = encode(records);
    require(bytes.has_value(), "the record cannot be encoded");
    nfc_ndef_msg_report report{};
    require(nfc_ndef_msg_check(bytes->data(), 0, static_cast<uint32_t>(bytes->size()), &report) == 1,
            fmt::format("these records make no message: {}", nfc_ndef_msg_check_text(report.reason)));
    return *std::move(bytes);
}

} // namespace tool::make
