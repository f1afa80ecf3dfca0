#include "ndef.h"

#include <dlfcn.h>

using namespace test;

namespace {

// The library's own three, which this program's definitions hide from everyone else.
template <class Function> Function *default_of(Function *, const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

TEST(Allocator, DefaultsGiveABlockForAnySize)
{
    auto *const alloc = default_of(&os_block_alloc, "os_block_alloc");
    auto *const alloc_and_clear = default_of(&os_block_alloc_and_clear, "os_block_alloc_and_clear");
    auto *const dealloc = default_of(&os_block_dealloc, "os_block_dealloc");
    ASSERT_TRUE(alloc && alloc_and_clear && dealloc && alloc != &os_block_alloc);

    for (const size_t size : std::initializer_list<size_t>{0, 1, 31, 4095, 4096, 100000}) {
        auto *const used_before = static_cast<uint8_t *>(alloc(size));
        ASSERT_NE(used_before, nullptr) << size;
        std::fill_n(used_before, size, uint8_t{0xFF});
        dealloc(used_before);
        auto *const zeros = static_cast<uint8_t *>(alloc_and_clear(size));
        ASSERT_NE(zeros, nullptr) << size;
        EXPECT_EQ(copy(zeros, size), filled(size, 0)) << size;
        dealloc(zeros);
    }
    dealloc(nullptr);
}

} // namespace
