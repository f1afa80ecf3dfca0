// What the subcommands and main() agree on.
#pragma once

#include "failure.h"

#include <CLI/CLI.hpp>

#include <string_view>

namespace tool {

// Writes to standard output. Ends the command when that fails, quietly when the reader went away.
void write_output(std::string_view text);

// Writes "ndef: " and the text as one line to standard error; nothing when the text is empty.
void complain(std::string_view text);

// Each command adds its subcommand, with options, examples in the footer, and a callback that does the work.
void add_show_command(CLI::App &app);
void add_check_command(CLI::App &app);
void add_json_command(CLI::App &app);
void add_make_command(CLI::App &app);

} // namespace tool
