// `ndef make`: a command for each thing that can be made, and one message of what several of them made.
#include "command_line/io_options.h"
#include "commands/commands.h"
#include "io/failure.h"
#include "make/content.h"
#include "make/thing.h"

#include <nfc_ndef/printable.h>

#include <algorithm>

namespace tool {

namespace values = nfc_ndef::values;

namespace {

constexpr Option id{.names = "--id", .placeholder = "ID", .help = "Give the record this id"};

values::Records records_of(const make::Thing &thing, const Arguments &given)
{
    if (thing.records)
        return thing.records(given);
    values::Records records{thing.record(given)};
    records.front().id = values::bytes_of(given.value_or(id, ""));
    make::require(records.front().id.size() <= 255, "an id is at most 255 bytes long");
    return records;
}

// One message of all that was asked for. How it is written may be said with any of them.
void make_message(const std::vector<make::Thing> &things, const std::vector<Invocation> &invocations)
{
    if (const auto thing = std::ranges::find(things, invocations.front().command->name, &make::Thing::name);
        invocations.size() == 1 && thing->write &&
        thing->write(invocations.front().given, output_options(invocations.front().given)))
        return;
    values::Records message;
    OutputOptions output;
    for (const Invocation &one : invocations) {
        const auto thing = std::ranges::find(things, one.command->name, &make::Thing::name);
        std::ranges::move(records_of(*thing, one.given), std::back_inserter(message));
        const OutputOptions said = output_options(one.given);
        if (one.given.has(output_file))
            output.path = said.path;
        if (said.format)
            output.format = said.format;
        if (said.image)
            output.image = said.image;
        output.no_clobber |= said.no_clobber;
    }
    write_message(make::message_of(message), output);
}

Command command_of(const make::Thing &thing)
{
    std::vector<const Option *> options = thing.options;
    if (thing.record)
        options.push_back(&id);
    options.insert(options.end(), {&output_file, &no_clobber, &output_format, &output_image});
    return {.name = thing.name, .summary = thing.summary, .options = std::move(options), .footer = thing.examples};
}

} // namespace

Command make_command()
{
    Command command{.name = "make",
                    .summary = "Makes a message",
                    .footer = "A + joins several things to one message:\n"
                              "  ndef make uri https://example.com + app com.example.app -o tag.ndef\n"
                              "\n'ndef make WHAT --help' tells more."};
    const std::vector<make::Thing> things = make::all_things();
    for (const make::Thing &thing : things)
        command.commands.push_back(command_of(thing));
    command.run_joined = [things](const std::vector<Invocation> &invocations) {
        try {
            make_message(things, invocations);
        } catch (const make::ImpossibleValue &impossible) {
            throw Failure(exit_unusable, values::printable_utf8(impossible.what()));
        }
    };
    return command;
}

} // namespace tool
