// The command line: which commands there are, their options, and what --help says of them.
#pragma once

namespace tool {

// Runs the command that is asked for, or prints what --help and --version ask for. Throws Failure, exit_unusable also
// for a command line that nobody can follow.
void run_command_line(int argc, char **argv);

} // namespace tool
