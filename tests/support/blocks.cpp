#include "blocks.h"

#include "nfc_ndef.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <unordered_set>

namespace test {
namespace {

std::unordered_set<void *> live;
size_t asked = 0, asked_before_call = 0, asked_by_call = 0;
size_t planned = 0; // 0 when nothing is to fail
Failing failing_mode = Failing::once;
bool in_call = false, failed = false;

void *allocate(size_t size, int fill)
{
    const size_t n = ++asked - asked_before_call;
    if (in_call && planned != 0 && (n == planned || (n > planned && failing_mode == Failing::from_there_on))) {
        failed = true;
        return nullptr;
    }
    void *const block = std::malloc(size == 0 ? 1 : size);
    if (!block)
        std::abort();
    std::memset(block, fill, size);
    live.insert(block);
    return block;
}

void release(void *block)
{
    if (!block)
        return;
    EXPECT_EQ(live.erase(block), 1U) << "freed a block that is not a live one of the host allocator";
    std::free(block);
}

class NothingLeft : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo &) override
    {
        EXPECT_EQ(live.size(), 0U) << "blocks left at the end of the test";
        EXPECT_EQ(planned, 0U) << "allocations still fail at the end of the test";
        live.clear();
    }
};

} // namespace

size_t live_blocks() { return live.size(); }
size_t allocations() { return asked; }
size_t allocations_of_last_call() { return asked_by_call; }

void plan_failure(size_t n, Failing mode)
{
    planned = n;
    failing_mode = mode;
}
void forget_failure() { planned = 0; }
bool failure_happened() { return failed; }

CallUnderTest::CallUnderTest()
{
    asked_before_call = asked;
    in_call = true;
    failed = false;
}
CallUnderTest::~CallUnderTest()
{
    asked_by_call = asked - asked_before_call;
    in_call = false;
}

} // namespace test

// Garbage in fresh blocks shows code that counts on zeros which it did not ask for.
void *os_block_alloc(size_t size) { return test::allocate(size, 0xA5); }
void *os_block_alloc_and_clear(size_t size) { return test::allocate(size, 0); }
void os_block_dealloc(void *block) { test::release(block); }

// The Bluetooth structures are blocks of the host allocator that the library releases with GLib.
extern "C" __attribute__((visibility("default"))) void g_free(void *block)
{
    EXPECT_NE(block, nullptr);
    test::release(block);
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new test::NothingLeft);
    return RUN_ALL_TESTS();
}
