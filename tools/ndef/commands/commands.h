// What the program can do. Each is a table, and the list is in program.cpp.
#pragma once

#include "command_line/command.h"

namespace tool {

Command show_command();
Command check_command();
Command json_command();
Command make_command();
Command completion_command();

// All of them, below the program itself.
Command program();

} // namespace tool
