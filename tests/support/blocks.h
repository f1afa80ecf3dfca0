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

/**
 * Runs the operation with its first allocation failing, then its second, and so on until it gets through without a
 * failure; first with that single failure, then with all later allocations failing too. After each run, with memory
 * to be had again, verify(result, failed) looks at what the operation returned; the destruction of the result must
 * leave as many blocks as there were before.
 */
template <class Operation, class Verify> void sweep(Operation operation, Verify verify)
{
    for (const Failing mode : {Failing::once, Failing::from_there_on}) {
        bool failed = true;
        for (size_t n = 1; failed; ++n) {
            SCOPED_TRACE(testing::Message() << "allocation " << n << (mode == Failing::once ? " fails" : " on fails"));
            const size_t before = live_blocks();
            {
                AllocationFailure failure(n, mode);
                auto result = operation();
                failed = failure.disarm();
                verify(result, failed);
            }
            ASSERT_EQ(live_blocks(), before);
            ASSERT_TRUE(failed || n > 1) << "the operation allocates nothing";
        }
    }
}

} // namespace test

#endif
