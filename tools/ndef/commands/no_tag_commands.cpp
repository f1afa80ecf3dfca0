// For a command without PC/SC.
#include "commands/commands.h"

namespace tool {

std::vector<Command> tag_commands() { return {}; }

} // namespace tool
