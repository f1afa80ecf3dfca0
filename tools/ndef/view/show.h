// Shows a message as a tree.
#pragma once

#include "io/color.h"
#include "io/input.h"

#include <string>

namespace tool {

struct ShowOptions {
    std::string path = "-";
    InputOptions input;
    Color color = Color::automatic;
    bool bytes = false;
    bool everything = false;
};

// Throws Failure.
void run_show(const ShowOptions &options);

} // namespace tool
