// Completion of command lines in bash.
#pragma once

#include "command_line/command.h"

namespace tool {

// A script for bash to read.
std::string bash_completion(const Command &program);

} // namespace tool
