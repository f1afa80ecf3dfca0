#include "command_line/io_options.h"
#include "io/message.h"
#include "make/content.h"
#include "make/thing.h"
#include "view/lines.h"

namespace tool::make {
namespace {

constexpr Option file{
    .names = "FILE", .help = "The JSON; standard input without it, or as -", .values = Option::Values::files};
constexpr Option lines{.names = "--lines",
                       .help = "Take one message a line, and write one line of hex or base64 for each"};

values::Records records(const Arguments &given)
{
    const std::string path = given.value_or(file, "-");
    return parse_json(read_file(path, given.has(no_limit)), path);
}

// With --lines no message is made, but one for each line.
bool write(const Arguments &given, const OutputOptions &output)
{
    if (!given.has(lines))
        return false;
    const OutputFormat format = output.format.value_or(OutputFormat::hex);
    require(output.path == "-" && !output.image && (format == OutputFormat::hex || format == OutputFormat::base64),
            "--lines writes hex or base64 to standard output");
    write_message_lines(
        {.path = given.value_or(file, "-"), .at_once = given.has(unbuffered), .unlimited = given.has(no_limit)},
        format);
    return true;
}

} // namespace

Thing json()
{
    return {.name = "json",
            .summary = "Makes a message of JSON as 'ndef json' writes it",
            .options = {&file, &lines, &unbuffered, &no_limit},
            .examples = "Examples:\n"
                        "  ndef make json message.json -o tag.ndef\n"
                        "  ndef json tag.ndef | ndef make json --format c",
            .records = records,
            .write = write};
}

} // namespace tool::make
