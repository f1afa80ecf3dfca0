// The TLV blocks of a tag: NFC Forum Type 1, Type 2 and Type 5 Tag, and NXP AN1305 have the same.
#pragma once

#include "forms/form.h"

#include <utility>
#include <vector>

namespace tool::forms {

enum Tag : uint8_t {
    null_tlv = 0,
    lock_control = 1,
    memory_control = 2,
    ndef_message = 3,
    proprietary = 0xFD,
    terminator = 0xFE
};

// Hands out the blocks of an area one by one, but for null TLVs.
class Blocks {
public:
    explicit Blocks(values::ByteView area) : area_(area) {}

    // Steps to the next block. False at a terminator, at the end, and where a block is cut short.
    bool next();
    bool is_cut_short() const { return cut_short_; }
    uint8_t tag() const { return tag_; }
    values::ByteView value() const { return value_; }
    // Where the value begins; behind the last block, where the search ended.
    size_t at() const { return at_; }

private:
    values::ByteView area_, value_;
    size_t at_ = 0;
    uint8_t tag_ = null_tlv;
    bool cut_short_ = false;
};

// The first NDEF message TLV of a whole Type 2 memory, or of a data area alone, that begins at a byte of what there is.
// Control TLVs reserve bytes in it.
Found found_in_type2(values::ByteView all, size_t begin, bool asked);

// A data area that is gathered from pieces of a memory.
class TlvArea {
public:
    explicit TlvArea(values::ByteView memory) : memory_(memory) {}

    // Adds what there is of a piece behind those that were added.
    void add(size_t begin, size_t end);
    // Takes bytes of the memory out again.
    void reserve(size_t begin, size_t end);

    values::Bytes gathered() const;
    // The first NDEF message TLV. Control TLVs are stepped over: their type of tag knows what they reserve.
    Found find() const;

private:
    size_t place_of(size_t offset) const;

    values::ByteView memory_;
    std::vector<std::pair<size_t, size_t>> pieces_; // begin and end; none is empty
};

} // namespace tool::forms
