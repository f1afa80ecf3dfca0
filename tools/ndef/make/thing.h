// What can be made, as a table; commands/make.cpp has a command for each row.
#pragma once

#include "command_line/command.h"
#include "io/output.h"

#include <nfc_ndef/values.h>

namespace tool::make {

namespace values = nfc_ndef::values;

// One of the functions is there. They throw ImpossibleValue (content.h) or Failure.
struct Thing {
    std::string_view name;
    std::string_view summary;
    std::vector<const Option *> options; // its own, besides those of output and the record's id
    std::string_view examples;
    std::function<values::Record(const Arguments &)> record{};   // without an id
    std::function<values::Records(const Arguments &)> records{}; // which have their own ids
    // If there, it is asked first, with nothing joined to it; true when it wrote all there is to write.
    std::function<bool(const Arguments &, const OutputOptions &)> write{};
};

// The list is in all.cpp.
std::vector<Thing> all_things();

} // namespace tool::make
