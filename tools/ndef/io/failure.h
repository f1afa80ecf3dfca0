// How a command ends that cannot do what it was asked.
#pragma once

#include <stdexcept>
#include <string>

namespace tool {

enum ExitStatus { exit_fine = 0, exit_refused = 1, exit_unusable = 2 };

// Ends the command: main() prints "ndef: " and the text as one line on standard error, or nothing when the text is
// empty, and exits with the status. Text that quotes a tag or a file must be made printable first (printable.h).
struct Failure : std::runtime_error {
    Failure(ExitStatus exit_status, const std::string &text) : std::runtime_error(text), status(exit_status) {}
    ExitStatus status;
};

} // namespace tool
