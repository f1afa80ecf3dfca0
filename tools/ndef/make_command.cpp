#include "commands.h"
#include "failure.h"
#include "json.h"
#include "make.h"
#include "printable.h"

#include <fmt/format.h>

namespace tool {
namespace {

// "TAG=REST" in two; "REST" alone has an empty tag unless a tag is said to look otherwise.
std::pair<std::string, std::string> split_tag(const std::string &text, auto is_tag)
{
    const size_t equals = text.find('=');
    if (equals == std::string::npos || !is_tag(text.substr(0, equals)))
        return {"", text};
    return {text.substr(0, equals), text.substr(equals + 1)};
}

Poster poster_of(const MakePosterOptions &options)
{
    Poster poster;
    poster.uri = options.uri;
    for (const std::string &title : options.titles) {
        poster.titles.push_back(split_tag(title, [](const std::string &tag) { return !tag.empty(); }));
        if (poster.titles.back().first.empty())
            throw ImpossibleValue(fmt::format("the title \"{}\" lacks its language, as in en=Hello", title));
    }
    for (const std::string &icon : options.icons) {
        const auto is_media_type = [](const std::string &tag) {
            return tag.starts_with("image/") || tag.starts_with("video/");
        };
        auto [media_type, path] = split_tag(icon, is_media_type);
        if (media_type.empty())
            media_type = media_type_of(path);
        if (media_type.empty())
            throw ImpossibleValue(
                fmt::format("the name of \"{}\" does not tell its media type: say image/...={}", path, path));
        poster.icons.push_back({media_type, read_file(path, options.unlimited)});
    }
    poster.action = action_of(options.action);
    poster.type = options.type;
    if (options.size)
        poster.size = size_of(*options.size);
    return poster;
}

// Names of members may be as long as the file.
std::string shortened(const std::string &text)
{
    constexpr size_t enough = 300;
    return text.size() <= enough ? text : text.substr(0, enough) + "...";
}

// Writes the message of one record.
void write_record(const MakeOptions &options, auto make_content)
{
    try {
        write_message(make_message(make_content(), options.id), options.output);
    } catch (const ImpossibleValue &impossible) {
        throw Failure(exit_unusable, printable_utf8(impossible.what()));
    }
}

} // namespace

void run_make_text(const MakeTextOptions &options)
{
    write_record(options, [&] { return make_text(options.text, options.language, options.utf16); });
}

void run_make_uri(const MakeUriOptions &options)
{
    write_record(options, [&] { return make_uri(options.uri); });
}

void run_make_poster(const MakePosterOptions &options)
{
    write_record(options, [&] { return make_poster(poster_of(options)); });
}

void run_make_json(const MakeJsonOptions &options)
{
    const std::vector<uint8_t> file = read_file(options.path, options.unlimited);
    const std::string_view text(reinterpret_cast<const char *>(file.data()), file.size());
    try {
        write_message(from_json(text), options.output);
    } catch (const JsonError &error) {
        const std::string path = error.path.empty() ? "" : shortened(printable_utf8(error.path)) + ": ";
        throw Failure(exit_refused,
                      fmt::format("{}: {}{}", name_of_input(options.path), path, printable_utf8(error.what())));
    }
}

} // namespace tool
