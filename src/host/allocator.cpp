// Default block allocator, over the C library's heap. It has a source of its own and no caller beside it, so that no
// compiler binds a call to it: a program that defines these names gets every call.
#include "nfc_ndef.h"

#include <cstdlib>
#include <cstring>

// malloc(0) may be null, which would look like a failure.
static size_t at_least_one(size_t size) { return size + (size == 0); }

void *os_block_alloc(size_t size) { return std::malloc(at_least_one(size)); }

void *os_block_alloc_and_clear(size_t size)
{
    // For large blocks calloc gets zeroed pages for nothing, for small ones it is slower than clearing them here.
    constexpr size_t large = 4096;
    if (size >= large)
        return std::calloc(size, 1);
    void *block = std::malloc(at_least_one(size));
    return block ? std::memset(block, 0, size) : nullptr;
}

void os_block_dealloc(void *block) { std::free(block); }
