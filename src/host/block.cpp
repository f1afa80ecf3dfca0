#include "host/block.h"

uint8_t *ndef::duplicate(const uint8_t *bytes, size_t length)
{
    void *const block = os_block_alloc(length);
    return block ? static_cast<uint8_t *>(std::memcpy(block, bytes, length)) : nullptr;
}
