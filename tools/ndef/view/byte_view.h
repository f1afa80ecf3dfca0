// A record's bytes, field by field, down into nested messages: what a protocol analyser shows.
#pragma once

#include "view/tree.h"
#include "view/wire.h"

namespace tool {

// Shows a record that came in these chunks.
void view_bytes(Tree &tree, std::span<const WireRecord> chunks);

} // namespace tool
