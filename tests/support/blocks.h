// The test program's own host allocator: it replaces the library's, counts blocks and fails on demand.
#pragma once

#include <cstddef>
#include <gtest/gtest.h>

namespace test {

// Blocks handed out and not yet freed. Every test must end with none.
size_t live_blocks();

// Blocks asked for since the program began, and by the last call under test alone.
size_t allocations();
size_t allocations_of_last_call();

enum class Failing { once, from_there_on };

// Lets the n-th allocation, counted from 1, of each call under test return null, or that one and all later ones, until
// it is forgotten.
void plan_failure(size_t n, Failing mode);
void forget_failure();
// Whether the last call under test met with a failure.
bool failure_happened();

// One call of the function that a test is about, apart from what prepares it.
class CallUnderTest {
public:
    CallUnderTest();
    CallUnderTest(const CallUnderTest &) = delete;
    CallUnderTest &operator=(const CallUnderTest &) = delete;
    ~CallUnderTest();
};
template <class Call> auto under_test(Call call)
{
    const CallUnderTest during;
    return call();
}

} // namespace test
