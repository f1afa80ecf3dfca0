#include "command_line/bash_completion.h"
#include "commands/commands.h"
#include "io/output.h"

namespace tool {
namespace {

constexpr Option shell{
    .names = "SHELL", .help = "Which one: bash", .values = Option::Values::listed, .list = "bash", .required = true};

void run(const Arguments &) { write_output(bash_completion(program())); }

} // namespace

Command completion_command()
{
    return {.name = "completion",
            .summary = "Prints what lets a shell complete command lines",
            .options = {&shell},
            .footer = "Example, for a line of ~/.bashrc:\n"
                      "  eval \"$(ndef completion bash)\"",
            .run = run};
}

} // namespace tool
