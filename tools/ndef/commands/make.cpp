// `ndef make`: a command for each thing that can be made.
#include "command_line/io_options.h"
#include "commands/commands.h"
#include "io/failure.h"
#include "make/content.h"
#include "make/thing.h"

#include <nfc_ndef/printable.h>

namespace tool {

namespace values = nfc_ndef::values;

namespace {

constexpr Option id{.names = "--id", .placeholder = "ID", .help = "Give the record this id"};

Command command_of(const make::Thing &thing)
{
    std::vector<const Option *> options = thing.options;
    if (thing.content)
        options.push_back(&id);
    options.insert(options.end(), {&output_file, &output_format});
    const auto run = [thing](const Arguments &given) {
        try {
            write_message(thing.content ? make::message_of(thing.content(given), given.value_or(id, ""))
                                        : thing.message(given),
                          output_options(given));
        } catch (const make::ImpossibleValue &impossible) {
            throw Failure(exit_unusable, values::printable_utf8(impossible.what()));
        }
    };
    return {.name = thing.name,
            .summary = thing.summary,
            .options = std::move(options),
            .footer = thing.examples,
            .run = run};
}

} // namespace

Command make_command()
{
    Command command{.name = "make", .summary = "Makes a message", .footer = "'ndef make WHAT --help' tells more."};
    for (const make::Thing &thing : make::all_things())
        command.commands.push_back(command_of(thing));
    return command;
}

} // namespace tool
