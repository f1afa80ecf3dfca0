/* A host's own allocator: linked into a program or preloaded, it must get every call, and says at the end what it saw.
 */
#include "nfc_ndef.h"

#include <stdio.h>
#include <stdlib.h>

static unsigned long blocks;
static unsigned long freed;

static void *counted(void *block)
{
    if (block)
        ++blocks;
    return block;
}

void *os_block_alloc(size_t size) { return counted(malloc(size ? size : 1)); }

void *os_block_alloc_and_clear(size_t size) { return counted(calloc(1, size ? size : 1)); }

void os_block_dealloc(void *block)
{
    if (block)
        ++freed;
    free(block);
}

__attribute__((destructor)) static void report(void)
{
    printf("allocator: %lu blocks, %lu left\n", blocks, blocks - freed);
}
