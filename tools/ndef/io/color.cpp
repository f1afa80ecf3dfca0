#include "io/color.h"

#include <charconv>
#include <cstdlib>
#include <string_view>

#include <sys/ioctl.h>
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

size_t columns_of_terminal()
{
    if (!isatty(STDOUT_FILENO))
        return 0;
    const char *said = std::getenv("COLUMNS");
    const std::string_view text = said ? said : "";
    size_t columns = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), columns);
    if (error == std::errc() && end == text.data() + text.size() && columns > 0)
        return columns;
    struct winsize window {};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) == 0 ? window.ws_col : 0;
}

} // namespace tool
