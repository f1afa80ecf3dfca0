// Counts every block: the library's through the replaced host allocator, the floor's because this program is linked so
// that its own calls of malloc come here.
#include "blocks.h"

#include "nfc_ndef.h"

#include <cstdlib>
#include <cstring>

static size_t asked = 0;

std::optional<size_t> bench::blocks_asked_for() { return asked; }

extern "C" void *__real_malloc(size_t size);
extern "C" void *__wrap_malloc(size_t size)
{
    ++asked;
    return __real_malloc(size);
}

void *os_block_alloc(size_t size) { return std::malloc(size + 1); }

void *os_block_alloc_and_clear(size_t size)
{
    void *const block = os_block_alloc(size);
    return block ? std::memset(block, 0, size) : nullptr;
}

void os_block_dealloc(void *block) { std::free(block); }
