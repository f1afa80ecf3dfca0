// The memory of a storage card, in blocks: the commands READ BINARY and UPDATE BINARY of PC/SC 2.
#pragma once

#include "card.h"
#include "error.h"

#include <map>
#include <string>

namespace nfc_ndef::tags {

// Reads blocks when they are first asked for and keeps them.
class Storage {
public:
    // Blocks have so many bytes; a reader is asked for so many at a time, and for one block where it gives no more.
    Storage(Card &card, std::string block_name, size_t block_size, size_t read_size)
        : card_(card), block_name_(std::move(block_name)), block_size_(block_size), read_size_(read_size)
    {
    }

    size_t block_size() const { return block_size_; }
    size_t block_of(size_t address) const { return address / block_size_; }

    // One byte, or one block. Throws Refused when it cannot be read.
    uint8_t byte(size_t address) { return block(block_of(address))[address % block_size_]; }
    const Bytes &block(size_t number);
    // Whether there is a block that can be read.
    bool has(size_t number);

    // Throws Refused when the tag does not take it.
    void update(size_t number, ByteView bytes);
    // What was kept may not be what the tag holds.
    void forget() { blocks_.clear(); }

    // Everything up to the first block that cannot be read.
    Bytes all();

private:
    Response read(size_t number, size_t size);
    bool load(size_t number, uint16_t &status);
    [[noreturn]] void refuse(const char *what, size_t number, uint16_t status) const;

    Card &card_;
    std::string block_name_; // "page"
    size_t block_size_;
    size_t read_size_;
    std::map<size_t, Bytes> blocks_;
};

} // namespace nfc_ndef::tags
