#include "command_line/io_options.h"
#include "commands/commands.h"
#include "commands/show_options.h"
#include "io/message.h"
#include "io/output.h"

namespace tool {
namespace {

constexpr Option file{.names = "FILE",
                      .help = "The messages; standard input without any, or as -",
                      .values = Option::Values::files,
                      .repeatable = true};

void run(const Arguments &given)
{
    const bool is_one = given.values(file).size() <= 1;
    bool is_first = true;
    for_each_file(given, file, [&](const std::string &path) {
        const Input input = read_input(path, input_options(given));
        open_message(input.message, path); // before anything is said of it
        if (!is_one)
            write_output((is_first ? "" : "\n") + name_of_input(path) + ":\n");
        is_first = false;
        show_message(input.message, path, input.taken_for, show_options(given));
    });
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
