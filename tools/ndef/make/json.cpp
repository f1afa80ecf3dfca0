#include "command_line/io_options.h"
#include "io/failure.h"
#include "make/thing.h"

#include <nfc_ndef/printable.h>

#include <fmt/format.h>

namespace tool::make {
namespace {

constexpr Option file{
    .names = "FILE", .help = "The JSON; standard input without it, or as -", .values = Option::Values::files};

// Names of members may be as long as the file.
std::string shortened(const std::string &text)
{
    constexpr size_t enough = 300;
    return text.size() <= enough ? text : text.substr(0, enough) + "...";
}

values::Records records(const Arguments &given)
{
    const std::string path = given.value_or(file, "-");
    const std::vector<uint8_t> bytes = read_file(path, given.has(no_limit));
    try {
        return values::from_json(values::text_of(bytes));
    } catch (const values::JsonError &error) {
        const std::string member = error.path.empty() ? "" : shortened(values::printable_utf8(error.path)) + ": ";
        throw Failure(exit_refused,
                      fmt::format("{}: {}{}", name_of_input(path), member, values::printable_utf8(error.what())));
    }
}

} // namespace

Thing json()
{
    return {.name = "json",
            .summary = "Makes a message of JSON as 'ndef json' writes it",
            .options = {&file, &no_limit},
            .examples = "Examples:\n"
                        "  ndef make json message.json -o tag.ndef\n"
                        "  ndef json tag.ndef | ndef make json --format c",
            .records = records};
}

} // namespace tool::make
