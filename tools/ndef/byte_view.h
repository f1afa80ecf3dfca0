// A record's bytes, field by field, down into nested messages: what a protocol analyser shows.
#pragma once

#include "tree.h"
#include "wire.h"

namespace tool {

// Records nested deeper than this are not followed.
constexpr unsigned max_depth = 8;

// Shows a record that came in these chunks.
void view_bytes(Tree &tree, std::span<const WireRecord> chunks);

} // namespace tool
