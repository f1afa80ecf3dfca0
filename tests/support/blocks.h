/*
 * The test program's own host allocator: it replaces the library's, counts blocks and fails on demand.
 *
 * SPDX-License-Identifier: MIT
 */
#ifndef TESTS_SUPPORT_BLOCKS_H
#define TESTS_SUPPORT_BLOCKS_H

#include <cstddef>
#include <gtest/gtest.h>

namespace test {

/** Blocks handed out and not yet freed. Every test must end with none. */
size_t live_blocks();

/** Blocks asked for since the program began. */
size_t allocations();

enum class Failing { once, from_there_on };

/** Makes the n-th allocation from here, counted from 1, return null, or that one and all later ones. */
class AllocationFailure {
public:
    AllocationFailure(size_t n, Failing mode);
    AllocationFailure(const AllocationFailure &) = delete;
    AllocationFailure &operator=(const AllocationFailure &) = delete;
    ~AllocationFailure() { disarm(); }
    /** Lets allocations succeed again and tells whether one failed. */
    bool disarm();
};

/** One round of a sweep: calls the operation under test with memory about to run out, and remembers whether it did. */
class Armed {
public:
    Armed(size_t n, Failing mode) : n_(n), mode_(mode) {}
    template <class Call> auto operator()(Call call)
    {
        AllocationFailure failure(n_, mode_);
        const auto result = call();
        failed_ = failure.disarm();
        return result;
    }
    bool failed() const { return failed_; }

private:
    size_t n_;
    Failing mode_;
    bool failed_ = false;
};

} // namespace test

#endif
