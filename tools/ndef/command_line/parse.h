// Follows a command line as the tables of commands (command.h) say.
#pragma once

#include "command_line/command.h"

namespace tool {

// Runs the command that is asked for, or prints what --help and --version ask for. Throws Failure, exit_unusable also
// for a command line that nobody can follow.
void run_command_line(const Command &program, std::string_view version, int argc, char **argv);

} // namespace tool
