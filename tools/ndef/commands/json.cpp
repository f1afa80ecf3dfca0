#include "command_line/io_options.h"
#include "commands/commands.h"
#include "io/message.h"

#include <nfc_ndef/json.h>

namespace tool {
namespace {

constexpr Option file{
    .names = "FILE", .help = "The message; standard input without it, or as -", .values = Option::Values::files};
constexpr Option schema{.names = "--schema", .help = "Write the JSON Schema of the form instead"};

void run(const Arguments &given)
{
    const std::string path = given.value_or(file, "-");
    if (given.has(schema))
        return write_text(nfc_ndef::values::json_schema(), output_options(given));
    const std::vector<uint8_t> bytes = read_ndef(path, input_options(given));
    write_text(to_json(parse_message(bytes, path)), output_options(given));
}

} // namespace

Command json_command()
{
    return {.name = "json",
            .summary = "Writes a message as JSON, which 'ndef make json' reads",
            .options = with_input_options({&file, &schema, &output_file}),
            .footer = "Examples:\n"
                      "  ndef json tag.ndef\n"
                      "  ndef json tag.ndef | jq -r '.records[] | select(.kind == \"uri\").uri'\n"
                      "  ndef json tag.ndef | sed s/http:/https:/ | ndef make json -o new.ndef",
            .run = run};
}

} // namespace tool
