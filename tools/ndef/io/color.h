// Whether to colour what a terminal shows.
#pragma once

namespace tool {

enum class Color { automatic, always, never };

// Whether standard output gets colours.
bool wants_color(Color color);

} // namespace tool
