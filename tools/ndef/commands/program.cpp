#include "commands/commands.h"

namespace tool {

Command program()
{
    std::vector<Command> commands{show_command(), check_command(), json_command(),
                                  make_command(), edit_command(),  extract_command()};
    for (Command &command : tag_commands())
        commands.push_back(std::move(command));
    commands.push_back(completion_command());
    return {.name = "ndef",
            .summary = "Reads, checks and makes NFC Forum NDEF messages.",
            .footer =
                "Examples:\n"
                "  ndef show tag.ndef             what is on a tag\n"
                "  ndef show dump.bin             the same, from the memory of a tag\n"
                "  echo D101025503 61 | ndef show\n"
                "  ndef check *.ndef              why messages are refused\n"
                "\n'ndef COMMAND --help' tells more. Exit status: 0 fine, 1 refused, 2 unusable files or options.",
            .commands = std::move(commands)};
}

} // namespace tool
