#include "color.h"

#include <CLI/CLI.hpp>

#include <cstdlib>
#include <string>
#include <string_view>
#include <unistd.h>

namespace tool {

void add_color_option(CLI::App &command, Color &color)
{
    command
        .add_option_function<std::string>(
            "--color",
            [&color](const std::string &when) {
                color = when == "auto" ? Color::automatic : when == "always" ? Color::always : Color::never;
            },
            "Colours: auto, always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}).description(""))
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
