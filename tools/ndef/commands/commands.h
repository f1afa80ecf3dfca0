// What the program can do. Each is a table, and the list is in program.cpp.
#pragma once

#include "command_line/command.h"

namespace tool {

Command show_command();
Command check_command();
Command json_command();
Command make_command();
Command extract_command();
Command edit_command();
Command completion_command();

// Those for tags on readers; none where the command was built without PC/SC.
std::vector<Command> tag_commands();

// All of them, below the program itself.
Command program();

} // namespace tool
