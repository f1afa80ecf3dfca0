#include "json.h"
#include "command_line/io_options.h"
#include "commands/commands.h"
#include "message.h"

namespace tool {
namespace {

constexpr Option file{
    .names = "FILE", .help = "The message; standard input without it, or as -", .values = Option::Values::files};

void run(const Arguments &given)
{
    const std::string path = given.value_or(file, "-");
    const std::vector<uint8_t> bytes = read_ndef(path, input_options(given));
    const nfc_ndef::Message message = parse_message(bytes, path);
    write_text(to_json(model::decode(*message)), output_options(given));
}

} // namespace

Command json_command()
{
    return {.name = "json",
            .summary = "Writes a message as JSON, which 'ndef make json' reads",
            .options = with_input_options({&file, &output_file}),
            .footer = "Examples:\n"
                      "  ndef json tag.ndef\n"
                      "  ndef json tag.ndef | jq -r '.records[] | select(.kind == \"uri\").uri'\n"
                      "  ndef json tag.ndef | sed s/http:/https:/ | ndef make json -o new.ndef",
            .run = run};
}

} // namespace tool
