// How many blocks the library and the floor have asked for.
#pragma once

#include <cstddef>
#include <optional>

namespace bench {

// None in the program that measures time, where both have the C library's heap to themselves.
std::optional<size_t> blocks_asked_for();

} // namespace bench
