#include "io/color.h"

#include <cstdlib>
#include <string_view>
#include <unistd.h>

namespace tool {

bool wants_color(Color color)
{
    if (color != Color::automatic)
        return color == Color::always;
    const char *terminal = std::getenv("TERM");
    const char *refusal = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) && terminal && std::string_view(terminal) != "dumb" && (!refusal || !*refusal);
}

} // namespace tool
