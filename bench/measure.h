#pragma once

#include "blocks.h"

#include <benchmark/benchmark.h>

namespace bench {

// The loop of every benchmark: times the operation, and counts its blocks where blocks are counted.
template <class Operation> void measure(benchmark::State &state, Operation operation)
{
    if (const auto before = blocks_asked_for()) {
        operation();
        state.counters["blocks"] = static_cast<double>(*blocks_asked_for() - *before);
    }
    for (auto _ : state)
        operation();
}

} // namespace bench
