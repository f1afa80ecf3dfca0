// What a record means, as a tree.
#pragma once

#include "model.h"
#include "tree.h"

namespace tool {

struct RecordViewOptions {
    bool dump_payloads = true; // those that have no other form
};

// Shows the content of a record: all that follows from its type and payload. `message` is the one that the record is
// in: references are looked up there.
void view_content(Tree &tree, const model::Record &record, const model::Records &message, RecordViewOptions options);

// A type with its format by name: media type "image/png".
std::string type_of(const model::Record &record);

} // namespace tool
