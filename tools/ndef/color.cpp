#include "color.h"

#include <CLI/CLI.hpp>

#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <unistd.h>

namespace tool {

void add_color_option(CLI::App &command, Color &color)
{
    const std::map<std::string, Color> names{
        {"auto", Color::automatic}, {"always", Color::always}, {"never", Color::never}};
    command.add_option("--color", color, "Colours: auto, always or never")
        ->transform(CLI::CheckedTransformer(names).description(""))
        ->type_name("WHEN");
}

bool wants_color(Color color)
{
    if (color != Color::automatic)
        return color == Color::always;
    const char *terminal = std::getenv("TERM");
    const char *refusal = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) && terminal && std::string_view(terminal) != "dumb" && (!refusal || !*refusal);
}

} // namespace tool
