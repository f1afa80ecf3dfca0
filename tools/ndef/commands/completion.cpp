#include "command_line/completion.h"
#include "commands/commands.h"
#include "io/output.h"

namespace tool {
namespace {

constexpr Option shell{.names = "SHELL",
                       .help = "Which one: bash, zsh or fish",
                       .values = Option::Values::listed,
                       .list = "bash zsh fish",
                       .required = true};

void run(const Arguments &given)
{
    constexpr std::string (*const scripts[])(const Command &){bash_completion, zsh_completion, fish_completion};
    write_output(scripts[given.choice<size_t>(shell).value_or(0)](program()));
}

} // namespace

Command completion_command()
{
    return {.name = "completion",
            .summary = "Prints what lets a shell complete command lines",
            .options = {&shell},
            .footer = "Examples:\n"
                      "  eval \"$(ndef completion bash)\"                  in ~/.bashrc\n"
                      "  ndef completion zsh > ~/.zfunc/_ndef            in a folder of $fpath\n"
                      "  ndef completion fish | source                   in config.fish",
            .run = run};
}

} // namespace tool
