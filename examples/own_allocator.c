/*
 * A host with its own allocator: by defining the three os_block_ functions, a program gets every allocation of the
 * library. This one counts blocks and sets a limit, as a host with little memory would.
 */
#include <nfc_ndef.h>

#include <stdio.h>
#include <stdlib.h>

static unsigned live_blocks;
static unsigned block_limit;

/* Blocks come from malloc, because the library's Bluetooth structures are released with GLib's g_free(). */
void *os_block_alloc(size_t size)
{
    void *block = live_blocks < block_limit ? malloc(size ? size : 1) : NULL;
    if (block)
        ++live_blocks;
    return block;
}

void *os_block_alloc_and_clear(size_t size)
{
    void *block = live_blocks < block_limit ? calloc(size ? size : 1, 1) : NULL;
    if (block)
        ++live_blocks;
    return block;
}

void os_block_dealloc(void *block)
{
    if (block)
        --live_blocks;
    free(block);
}

/* One Text record, "Hi" in English. */
static const uint8_t sample[] = {0xD1, 0x01, 0x05, 'T', 0x02, 'e', 'n', 'H', 'i'};

static int parse_within(unsigned limit)
{
    block_limit = limit;
    nfc_ndef_msg *message = nfc_ndef_msg_create_by_msg_offset(sample, 0, sizeof sample);
    printf("limit of %u blocks: %s", limit, message ? "parsed" : "out of memory");
    printf(", %s while in use", live_blocks ? "blocks" : "no block");
    int parsed = message != NULL;
    nfc_ndef_msg_delete(&message);
    printf(", %u left\n", live_blocks);
    return parsed;
}

int main(void)
{
    int parsed = parse_within(100);
    int refused = !parse_within(2);
    return parsed && refused && live_blocks == 0 ? 0 : 1;
}
