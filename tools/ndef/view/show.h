// Shows a message as a tree.
#pragma once

#include "io/color.h"

#include <nfc_ndef/bytes.h>

#include <string>

namespace tool {

struct ShowOptions {
    Color color = Color::automatic;
    bool bytes = false;
    bool brief = false; // without what the header says
    bool everything = false;
};

// Writes a message, after a line of what there is to say first, if anything. Throws Failure, exit_refused, when the
// bytes, which are called so, are no message.
void show_message(nfc_ndef::values::ByteView bytes, const std::string &name, const std::string &first_line,
                  const ShowOptions &options);

} // namespace tool
