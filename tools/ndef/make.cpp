#include "make.h"

#include "text_encoding.h"
#include "uri_prefix.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace tool {
namespace {

void require(bool possible, const std::string &reason)
{
    if (!possible)
        throw ImpossibleValue(reason);
}

model::Record record_of(model::Content content)
{
    std::optional<model::Record> record = build(std::move(content));
    require(record.has_value(), "the values do not make a record");
    return *std::move(record);
}

model::Record record_of(uint32_t format, const std::string &type, model::Bytes payload)
{
    model::Record record;
    record.format = format;
    record.type.assign(type.begin(), type.end());
    record.payload = std::move(payload);
    return record;
}

model::Bytes bytes_of(const std::string &text) { return {text.begin(), text.end()}; }

void require_media_type(const std::string &type)
{
    const size_t slash = type.find('/');
    const bool printable = std::ranges::all_of(type, [](char c) { return c > ' ' && c < 0x7F; });
    require(printable && slash != std::string::npos && slash > 0 && slash + 1 < type.size() && type.size() <= 255,
            fmt::format("\"{}\" is not a media type", type));
}

// A decimal number; the type's whole range is allowed.
template <class Number> Number number_of(const std::string &text, std::string_view meaning)
{
    Number number = 0;
    const char *const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    require(error == std::errc() && end == last, fmt::format("\"{}\" is not {}", text, meaning));
    return number;
}

bool is_of_language_code(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-';
}

} // namespace

model::Content make_text(const std::string &text, const std::string &language, bool utf16)
{
    require(!language.empty() && language.size() <= 63 && std::ranges::all_of(language, is_of_language_code),
            "a language code is 1 to 63 letters, digits and hyphens long");
    require(!text.empty(), "a text must not be empty");
    require(is_utf8(text), "a text must be valid UTF-8");
    return model::Text{utf16, language, utf16 ? utf16_of(text, ByteOrderMark::none) : bytes_of(text)};
}

model::Content make_uri(const std::string &uri)
{
    require(!uri.empty(), "a URI must not be empty");
    require(std::ranges::all_of(uri, [](char c) { return static_cast<uint8_t>(c) >= 0x20; }) && is_utf8(uri),
            "a URI must be valid UTF-8 without control characters");
    return abbreviate_uri(uri);
}

model::Content make_poster(const Poster &poster)
{
    constexpr size_t max_records = 254; // what the library reads
    require(poster.titles.size() + poster.icons.size() + 4 <= max_records, "a poster holds at most 254 records");
    model::SmartPoster content;
    content.uri_record = std::make_unique<model::Record>(record_of(make_uri(poster.uri)));
    for (const auto &[language, text] : poster.titles)
        content.titles.push_back(record_of(make_text(text, language, false)));
    content.action = poster.action;
    for (const Icon &icon : poster.icons) {
        require_media_type(icon.media_type);
        require(icon.media_type.starts_with("image/") || icon.media_type.starts_with("video/"),
                fmt::format("an icon is an image or a video, not \"{}\"", icon.media_type));
        content.icons.push_back(record_of(NFC_NDEF_TNF_MIME, icon.media_type, icon.image));
    }
    if (!poster.type.empty()) {
        require_media_type(poster.type);
        content.type_record =
            std::make_unique<model::Record>(record_of(NFC_NDEF_TNF_WELL_KNOWN, "t", bytes_of(poster.type)));
    }
    if (poster.size) {
        model::Bytes size;
        for (int shift = 24; shift >= 0; shift -= 8)
            size.push_back(static_cast<uint8_t>(*poster.size >> shift));
        content.size_record = std::make_unique<model::Record>(record_of(NFC_NDEF_TNF_WELL_KNOWN, "s", std::move(size)));
    }
    return content;
}

model::Bytes make_message(model::Content content, const std::string &id)
{
    require(id.size() <= 255, "an id is at most 255 bytes long");
    model::Records records;
    records.push_back(record_of(std::move(content)));
    records.front().id = bytes_of(id);
    const std::optional<model::Bytes> bytes = encode(records);
    require(bytes.has_value(), "the record cannot be encoded");
    return *bytes;
}

std::string media_type_of(const std::string &file_name)
{
    constexpr std::array<std::pair<std::string_view, std::string_view>, 9> types{{{".png", "image/png"},
                                                                                  {".jpg", "image/jpeg"},
                                                                                  {".jpeg", "image/jpeg"},
                                                                                  {".gif", "image/gif"},
                                                                                  {".webp", "image/webp"},
                                                                                  {".svg", "image/svg+xml"},
                                                                                  {".mp4", "video/mp4"},
                                                                                  {".mpg", "video/mpeg"},
                                                                                  {".mpeg", "video/mpeg"}}};
    std::string name = file_name;
    std::ranges::transform(name, name.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    const auto *found = std::ranges::find_if(types, [&](const auto &type) { return name.ends_with(type.first); });
    return found != types.end() ? std::string(found->second) : "";
}

uint8_t action_of(const std::string &name)
{
    constexpr std::array<std::string_view, 3> actions{"do", "save", "open"};
    if (const auto *found = std::ranges::find(actions, name); found != actions.end())
        return static_cast<uint8_t>(found - actions.begin());
    return number_of<uint8_t>(name, "an action: do, save, open or a number from 0 to 255");
}

uint32_t size_of(const std::string &number)
{
    return number_of<uint32_t>(number, "a size: a number from 0 to 4294967295");
}

} // namespace tool
