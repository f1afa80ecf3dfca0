// Records of types of one's own, whose payload is a file.
#include "command_line/io_options.h"
#include "make/content.h"
#include "make/thing.h"

#include <fmt/format.h>

#include <algorithm>

namespace tool::make {
namespace {

constexpr Option media_type{.names = "TYPE", .help = "The media type, such as text/vcard", .required = true};
constexpr Option external_type{
    .names = "TYPE", .help = "The type: a domain and a name in it, such as example.com:door", .required = true};
constexpr Option file{.names = "FILE",
                      .help = "The file that becomes the payload; - for standard input",
                      .values = Option::Values::files,
                      .required = true};

values::Record media_record(const Arguments &given)
{
    const std::string name = given.value_or(media_type, "");
    require_media_type(name);
    return values::generic_record(values::media(name), read_file(given.value_or(file, "-"), given.has(no_limit)));
}

values::Record external_record(const Arguments &given)
{
    const std::string name = given.value_or(external_type, "");
    const size_t colon = name.find(':');
    const bool printable = std::ranges::all_of(name, [](char c) { return c > ' ' && c < 0x7F; });
    require(printable && colon != std::string::npos && colon > 0 && colon + 1 < name.size() && name.size() <= 255,
            fmt::format("\"{}\" is not an external type such as example.com:door", name));
    return values::generic_record(values::external(name), read_file(given.value_or(file, "-"), given.has(no_limit)));
}

} // namespace

Thing media()
{
    return {.name = "media",
            .summary = "Makes a record of a media type from a file",
            .options = {&media_type, &file, &no_limit},
            .examples = "Examples:\n"
                        "  ndef make media image/png logo.png\n"
                        "  echo '{\"door\": 7}' | ndef make media application/json -",
            .record = media_record};
}

Thing external()
{
    return {.name = "external",
            .summary = "Makes a record of an external type from a file",
            .options = {&external_type, &file, &no_limit},
            .examples = "Example:\n"
                        "  ndef make external example.com:door door.bin",
            .record = external_record};
}

} // namespace tool::make
