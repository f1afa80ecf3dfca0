#include "view/show.h"
#include "command_line/io_options.h"
#include "commands/commands.h"

namespace tool {
namespace {

constexpr Option file{
    .names = "FILE", .help = "The message; standard input without it, or as -", .values = Option::Values::files};
constexpr Option show_bytes{.names = "-x,--bytes", .help = "Also show each record's bytes, field by field"};
constexpr Option show_all{.names = "-a,--all", .help = "Show long payloads and texts to their end"};
constexpr Option color{.names = "--color",
                       .placeholder = "WHEN",
                       .help = "Colours: auto, always or never",
                       .values = Option::Values::listed,
                       .list = "auto always never"};

void run(const Arguments &given)
{
    run_show({.path = given.value_or(file, "-"),
              .input = input_options(given),
              .color = given.choice<Color>(color).value_or(Color::automatic),
              .bytes = given.has(show_bytes),
              .everything = given.has(show_all)});
}

} // namespace

Command show_command()
{
    return {.name = "show",
            .summary = "Shows the records of a message as a tree",
            .options = with_input_options({&file, &show_bytes, &show_all, &color}),
            .footer = "Examples:\n"
                      "  ndef show tag.ndef\n"
                      "  echo D1 01 04 55 03 61 2E 62 | ndef show\n"
                      "  ndef show --bytes --color=always tag.ndef | less -R\n"
                      "  ndef show memory-of-a-tag.bin",
            .run = run};
}

} // namespace tool
