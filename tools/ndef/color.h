// Whether to colour what a terminal shows.
#pragma once

namespace CLI {
class App;
}

namespace tool {

enum class Color { automatic, always, never };

// Adds --color=auto|always|never.
void add_color_option(CLI::App &command, Color &color);

// Whether standard output gets colours.
bool wants_color(Color color);

} // namespace tool
