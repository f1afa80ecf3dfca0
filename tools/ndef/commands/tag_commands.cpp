#include "commands/tag_commands.h"

#include "commands/commands.h"

namespace tool {

std::vector<Command> tag_commands()
{
    return {read_command(), write_command(),   erase_command(), format_command(),
            lock_command(), readers_command(), watch_command()};
}

} // namespace tool
