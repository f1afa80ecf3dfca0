// How a terminal shows what is written: in colour or not, and how wide.
#pragma once

#include <cstddef>

namespace tool {

enum class Color { automatic, always, never };

// Whether standard output gets colours.
bool wants_color(Color color);

// How many columns a line on standard output has: what COLUMNS says, or the terminal; 0 when it is not a terminal.
size_t columns_of_terminal();

} // namespace tool
