#include "command_line/io_options.h"
#include "commands/commands.h"
#include "commands/show_options.h"

namespace tool {
namespace {

constexpr Option file{
    .names = "FILE", .help = "The message; standard input without it, or as -", .values = Option::Values::files};

void run(const Arguments &given)
{
    const std::string path = given.value_or(file, "-");
    const Input input = read_input(path, input_options(given));
    show_message(input.message, path, input.taken_for, show_options(given));
}

} // namespace

Command show_command()
{
    return {.name = "show",
            .summary = "Shows the records of a message as a tree",
            .options = with_input_options({&file, &show_bytes, &show_brief, &show_all, &color}),
            .footer = "Examples:\n"
                      "  ndef show tag.ndef\n"
                      "  echo D1 01 04 55 03 61 2E 62 | ndef show\n"
                      "  ndef show --bytes --color=always tag.ndef | less -R\n"
                      "  ndef show memory-of-a-tag.bin",
            .run = run};
}

} // namespace tool
