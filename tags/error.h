// Why something that was asked of a tag was not done.
#pragma once

#include <stdexcept>
#include <string>

namespace nfc_ndef::tags {

// What the text of an exception says is one line without a full stop, safe to print.

// The tag does not do it: it refuses, is not formatted, too small or read-only, or holds nothing of the kind.
struct Refused : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// There is nobody to ask: no PC/SC service, no reader, no tag in time, or the tag was taken away.
struct Unavailable : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Gone : Unavailable {
    Gone() : Unavailable("the tag was taken away") {}
};

} // namespace nfc_ndef::tags
