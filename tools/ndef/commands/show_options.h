// The options of how a message is shown.
#pragma once

#include "command_line/command.h"
#include "view/show.h"

namespace tool {

inline constexpr Option show_bytes{.names = "-x,--bytes", .help = "Also show each record's bytes, field by field"};
inline constexpr Option show_brief{.names = "-b,--brief", .help = "Leave out type, id, flags and length"};
inline constexpr Option show_all{.names = "-a,--all", .help = "Show long payloads and texts to their end"};
inline constexpr Option color{.names = "--color",
                              .placeholder = "WHEN",
                              .help = "Colours: auto, always or never",
                              .values = Option::Values::listed,
                              .list = "auto always never"};

inline ShowOptions show_options(const Arguments &given)
{
    return {.color = given.choice<Color>(color).value_or(Color::automatic),
            .bytes = given.has(show_bytes),
            .brief = given.has(show_brief),
            .everything = given.has(show_all)};
}

// Calls what is to be done for each of the files that were given, and goes on where one fails.
void for_each_file(const Arguments &given, const Option &files, const std::function<void(const std::string &)> &call);

} // namespace tool
