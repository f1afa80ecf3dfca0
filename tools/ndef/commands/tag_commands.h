// The commands that talk to tags on readers.
#pragma once

#include "command_line/command.h"

namespace tool {

Command read_command();
Command write_command();
Command erase_command();
Command format_command();
Command lock_command();
Command readers_command();
Command watch_command();

} // namespace tool
