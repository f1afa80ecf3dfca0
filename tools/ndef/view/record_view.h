// What a record means, as a tree.
#pragma once

#include "view/tree.h"

#include <nfc_ndef/record.h>

namespace tool {

struct RecordViewOptions {
    bool dump_payloads = true; // those that have no other form
};

// Shows the content of a record: all that follows from its type and payload. `message` is the one that the record is
// in: references are looked up there.
void view_content(Tree &tree, const nfc_ndef::values::Record &record, const nfc_ndef::values::Records &message,
                  RecordViewOptions options);

} // namespace tool
