#include "command.h"
#include "input.h"
#include "json.h"
#include "message.h"
#include "output.h"

#include <memory>

namespace tool {
namespace {

struct JsonOptions {
    std::string path = "-";
    InputOptions input;
    OutputOptions output;
};

} // namespace

void add_json_command(CLI::App &app)
{
    auto options = std::make_shared<JsonOptions>();
    CLI::App *command = app.add_subcommand("json", "Writes a message as JSON, which 'ndef make json' reads");
    command->add_option("FILE", options->path, "The message; standard input without it, or as -");
    add_output_file_option(*command, options->output);
    add_input_options(*command, options->input);
    command->footer("Examples:\n"
                    "  ndef json tag.ndef\n"
                    "  ndef json tag.ndef | jq -r '.records[] | select(.kind == \"uri\").uri'\n"
                    "  ndef json tag.ndef | sed s/http:/https:/ | ndef make json -o new.ndef");
    command->callback([options] {
        const std::vector<uint8_t> bytes = read_ndef(options->path, options->input);
        const nfc_ndef::Message message = parse_message(bytes, options->path);
        write_text(to_json(model::decode(*message)), options->output);
    });
}

} // namespace tool
