#include "command_line/io_options.h"
#include "commands/commands.h"
#include "commands/show_options.h"
#include "io/failure.h"
#include "io/message.h"
#include "view/lines.h"

#include <nfc_ndef/json.h>

namespace tool {
namespace {

constexpr Option file{.names = "FILE",
                      .help = "The messages; standard input without any, or as -",
                      .values = Option::Values::files,
                      .repeatable = true};
constexpr Option lines{.names = "--lines",
                       .help = "Take one message a line, in hex or base64, and write one line of JSON for each"};
constexpr Option schema{.names = "--schema", .help = "Write the JSON Schema of the form instead"};

void run(const Arguments &given)
{
    if (given.has(schema))
        return write_text(nfc_ndef::values::json_schema(), output_options(given));
    if (given.has(lines))
        return for_each_file(given, file, [&](const std::string &path) {
            write_json_lines({.path = path, .at_once = given.has(unbuffered), .unlimited = given.has(no_limit)});
        });
    if (given.values(file).size() > 1 && given.has(output_file))
        throw Failure(exit_unusable, "--output is for the JSON of one message");
    for_each_file(given, file, [&](const std::string &path) {
        const std::vector<uint8_t> bytes = read_ndef(path, input_options(given));
        const nfc_ndef_msg_view message = open_message(bytes, path);
        const OutputOptions output = output_options(given);
        if (output.path == "-")
            return nfc_ndef::values::write_json(message, write_output);
        std::string whole; // for a file, which is replaced wholly or not at all
        nfc_ndef::values::write_json(message, [&](std::string_view text) { whole += text; });
        write_text(whole, output);
    });
}

} // namespace

Command json_command()
{
    return {.name = "json",
            .summary = "Writes a message as JSON, which 'ndef make json' reads",
            .options = with_input_options({&file, &lines, &unbuffered, &schema, &output_file, &no_clobber}),
            .footer = "Examples:\n"
                      "  ndef json tag.ndef\n"
                      "  ndef json tag.ndef | jq -r '.records[] | select(.kind == \"uri\").uri'\n"
                      "  ndef json --lines < tags.hex | jq -c 'select(.refused)'\n"
                      "  ndef json tag.ndef | sed s/http:/https:/ | ndef make json -o new.ndef",
            .run = run};
}

} // namespace tool
