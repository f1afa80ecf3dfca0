#include "command_line/io_options.h"
#include "make/content.h"
#include "make/thing.h"

#include <fmt/format.h>
#include <nfc_ndef.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <set>

namespace tool::make {
namespace {

constexpr Option uri_argument{.names = "URI", .help = "The URI; its prefix is abbreviated", .required = true};
constexpr Option title{.names = "--title",
                       .placeholder = "LANG=TEXT",
                       .help = "A title in a language; give it once for each language",
                       .repeatable = true};
constexpr Option action{.names = "--action",
                        .placeholder = "ACTION",
                        .help = "do, save, open, or a number from 0 to 255; do without it",
                        .values = Option::Values::suggested,
                        .list = "do save open"};
constexpr Option icon{.names = "--icon",
                      .placeholder = "[MEDIA-TYPE=]FILE",
                      .help = "An image or video file; say its media type where the file's name does not tell it",
                      .values = Option::Values::files,
                      .repeatable = true};
constexpr Option type{.names = "--type", .placeholder = "MEDIA-TYPE", .help = "Media type of what the URI leads to"};
constexpr Option size{.names = "--size", .placeholder = "BYTES", .help = "Size of what the URI leads to"};

// "TAG=REST" in two; the tag is empty where what precedes the first "=" is none.
std::pair<std::string, std::string> split_tag(const std::string &text, auto is_tag)
{
    const size_t equals = text.find('=');
    if (equals == std::string::npos || !is_tag(text.substr(0, equals)))
        return {"", text};
    return {text.substr(0, equals), text.substr(equals + 1)};
}

// A decimal number; its type's whole range is allowed.
template <class Number> Number number_of(const std::string &text, std::string_view meaning)
{
    Number number = 0;
    const char *const last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, number);
    require(error == std::errc() && end == last, fmt::format("\"{}\" is not {}", text, meaning));
    return number;
}

// Of ASCII letters.
std::string in_lower_case(std::string text)
{
    std::ranges::transform(text, text.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return text;
}

values::Record title_record(const std::string &given)
{
    const auto [language, text] = split_tag(given, [](const std::string &tag) { return !tag.empty(); });
    require(!language.empty(), fmt::format("the title \"{}\" lacks its language, as in en=Hello", given));
    return record_of(text_content(text, language, false));
}

uint8_t action_of(const std::string &name)
{
    if (const auto known = values::Names(values::poster_actions).value_of(name))
        return static_cast<uint8_t>(*known);
    return number_of<uint8_t>(name, "an action: do, save, open or a number from 0 to 255");
}

// The media type that a file name tells; empty when it tells none.
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
    const std::string name = in_lower_case(file_name);
    const auto *found = std::ranges::find_if(types, [&](const auto &row) { return name.ends_with(row.first); });
    return found != types.end() ? std::string(found->second) : "";
}

values::Record icon_record(const std::string &given, bool unlimited)
{
    auto [media_type, path] =
        split_tag(given, [](const std::string &tag) { return tag.starts_with("image/") || tag.starts_with("video/"); });
    if (media_type.empty())
        media_type = media_type_of(path);
    require(!media_type.empty(),
            fmt::format("the name of \"{}\" does not tell its media type: say image/...={}", path, path));
    require_media_type(media_type);
    return values::generic_record(values::media(media_type), read_file(path, unlimited));
}

values::Bytes big_endian(uint32_t number)
{
    values::Bytes bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<uint8_t>(number >> shift));
    return bytes;
}

values::Record record(const Arguments &given)
{
    const std::vector<std::string> titles = given.values(title), icons = given.values(icon);
    require(titles.size() + icons.size() + 4 <= values::max_records,
            fmt::format("a poster holds at most {} records", values::max_records));
    values::SmartPoster poster;
    poster.uri_record = record_of(uri_content(given.value_or(uri_argument, "")));
    std::set<std::string> languages;
    for (const std::string &one : titles) {
        poster.titles.push_back(title_record(one));
        const auto &language = std::get<values::Text>(poster.titles.back().content).language_code;
        require(languages.insert(in_lower_case(language)).second,
                fmt::format("there are two titles in the language {}", language));
    }
    poster.action = action_of(given.value_or(action, "do"));
    for (const std::string &one : icons)
        poster.icons.push_back(icon_record(one, given.has(no_limit)));
    if (const std::string media_type = given.value_or(type, ""); !media_type.empty()) {
        require_media_type(media_type);
        poster.type_record = values::generic_record(values::well_known("t"), values::bytes_of(media_type));
    }
    if (const auto number = given.value(size))
        poster.size_record = values::generic_record(
            values::well_known("s"), big_endian(number_of<uint32_t>(*number, "a size: a number from 0 to 4294967295")));
    return record_of(std::move(poster));
}

} // namespace

Thing poster()
{
    return {.name = "poster",
            .summary = "Makes a Smart Poster: a URI with titles, icons and an action",
            .options = {&uri_argument, &title, &action, &icon, &type, &size, &no_limit},
            .examples = "Examples:\n"
                        "  ndef make poster https://example.com --title en=Welcome --title de=Willkommen\n"
                        "  ndef make poster https://example.com/manual.pdf --action save --type application/pdf\n"
                        "      --size 81920 --icon logo.png --icon image/x-icon=favicon -o poster.ndef",
            .record = record};
}

} // namespace tool::make
