// Completion of command lines in shells, printed from the tables of commands and options.
#pragma once

#include "command_line/command.h"

namespace tool {

// Scripts for each shell to read.
std::string bash_completion(const Command &program);
std::string zsh_completion(const Command &program);
std::string fish_completion(const Command &program);

} // namespace tool
