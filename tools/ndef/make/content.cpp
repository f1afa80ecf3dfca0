#include "make/content.h"

#include <nfc_ndef/printable.h>

#include <algorithm>

namespace tool::make {
namespace {

bool is_of_language_code(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

} // namespace

void require(bool possible, const std::string &reason)
{
    if (!possible)
        throw ImpossibleValue(reason);
}

values::Content text_content(const std::string &text, const std::string &language, bool utf16)
{
    require(!language.empty() && language.size() <= 63 && std::ranges::all_of(language, is_of_language_code),
            "a language code is 1 to 63 letters, digits and hyphens long");
    require(!text.empty(), "a text must not be empty");
    require(values::is_utf8(text), "a text must be valid UTF-8");
    return utf16 ? values::utf16_text(text, language) : values::utf8_text(text, language);
}

values::Content uri_content(const std::string &uri)
{
    require(!uri.empty(), "a URI must not be empty");
    require(std::ranges::all_of(uri, [](char c) { return static_cast<uint8_t>(c) >= 0x20; }) && values::is_utf8(uri),
            "a URI must be valid UTF-8 without control characters");
    return values::Uri(uri);
}

values::Record record_of(values::Content content)
{
    std::optional<values::Record> record = build(std::move(content));
    require(record.has_value(), "the values do not make a record");
    return *std::move(record);
}

values::Bytes message_of(values::Content content, const std::string &id)
{
    require(id.size() <= 255, "an id is at most 255 bytes long");
    values::Records records;
    records.push_back(record_of(std::move(content)));
    records.front().id = values::bytes_of(id);
    const std::optional<values::Bytes> bytes = encode(records);
    require(bytes.has_value(), "the record cannot be encoded");
    return *bytes;
}

} // namespace tool::make
