#include "command_line/io_options.h"
#include "io/message.h"
#include "make/thing.h"

namespace tool::make {
namespace {

constexpr Option file{
    .names = "FILE", .help = "The JSON; standard input without it, or as -", .values = Option::Values::files};

values::Records records(const Arguments &given)
{
    const std::string path = given.value_or(file, "-");
    return parse_json(read_file(path, given.has(no_limit)), path);
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
