#include "command_line/io_options.h"
#include "commands/on_reader.h"
#include "commands/show_options.h"
#include "commands/tag_commands.h"
#include "io/message.h"

#include <nfc_ndef/json.h>

namespace tool {
namespace {

constexpr Option as_json{.names = "--json", .help = "Give the message as JSON, as 'ndef json' does", .group = "form"};
constexpr Option format{.names = "--format",
                        .placeholder = "FORMAT",
                        .help = "Give the message: raw, hex, base64 or c",
                        .values = Option::Values::listed,
                        .list = "raw hex base64 c",
                        .group = "form"};
constexpr Option memory_file{.names = "--memory",
                             .placeholder = "FILE",
                             .help = "Also save the whole memory of the tag",
                             .values = Option::Values::files};

void run(const Arguments &given)
{
    const std::string name = "the tag";
    std::vector<uint8_t> message;
    std::string description;
    with_tag(given, [&](nfc_ndef::tags::Tag &tag) {
        if (given.has(memory_file)) {
            const std::vector<uint8_t> memory = tag.memory();
            write_message(memory, {.path = given.value_or(memory_file, "-"),
                                   .format = OutputFormat::raw,
                                   .no_clobber = given.has(no_clobber)});
        }
        message = tag.read();
        description = described(tag, message.size());
    });
    const OutputOptions output{.path = given.value_or(output_file, "-"),
                               .format = given.choice<OutputFormat>(format),
                               .no_clobber = given.has(no_clobber)};
    if (given.has(as_json)) {
        const auto records = message.empty() ? nfc_ndef::values::Records() : parse_message(message, name);
        return write_text(to_json(records), output);
    }
    if (given.has(format) || given.has(output_file)) {
        if (!message.empty())
            open_message(message, name);
        return write_message(message, output);
    }
    if (message.empty())
        return write_output(description + "\nNo message.\n");
    show_message(message, name, description, show_options(given));
}

} // namespace

Command read_command()
{
    return {.name = "read",
            .summary = "Shows the message of a tag on a reader",
            .options = {&reader_name, &wait_seconds, &show_bytes, &show_brief, &show_all, &color, &as_json, &format,
                        &output_file, &memory_file, &no_clobber},
            .footer =
                "Examples:\n"
                "  ndef read\n"
                "  ndef read --reader ACR122 --wait 60 -o tag.ndef\n"
                "  ndef read --memory tag.bin\n"
                "\nExit status: 0 when there is a valid message or none, 1 when the tag is not formatted, refuses, "
                "or holds what is not valid, 2 without a service, a reader or a tag in time.",
            .run = run};
}

} // namespace tool
