#include "io/tag_memory.h"

#include "io/failure.h"

#include <fmt/format.h>

#include <algorithm>

namespace tool {
namespace {

enum Tag : uint8_t { null_tlv = 0, lock_control = 1, memory_control = 2, ndef_message = 3, terminator = 0xFE };

constexpr size_t header_size = 16; // UID, internal and static lock bytes, capability container

// An image may also begin with the TLVs. What stands where a capability container would be is then data, so all of it
// has to look like one: the magic number, version 1 of the mapping and a size, which is in units of 8 bytes.
bool begins_with_header(std::span<const uint8_t> memory)
{
    return memory.size() > header_size && memory[12] == 0xE1 && memory[13] >> 4 == 1 && memory[14] != 0;
}

// Walks the data area, never onto a reserved byte.
class Area {
public:
    explicit Area(std::span<const uint8_t> memory)
        : memory_(memory), position_(0), end_(memory.size()), reserved_(memory.size())
    {
        if (!begins_with_header(memory))
            return;
        base_ = position_ = header_size;
        end_ = std::min(end_, header_size + size_t{memory[14]} * 8);
    }
    bool at_end()
    {
        while (position_ < end_ && reserved_[position_])
            ++position_;
        return position_ >= end_;
    }
    uint8_t next()
    {
        if (at_end())
            throw Failure(exit_refused, fmt::format("the tag's memory ends within a TLV, at byte {}", position_));
        return memory_[position_++];
    }
    std::vector<uint8_t> take(size_t length)
    {
        std::vector<uint8_t> value;
        while (value.size() < length)
            value.push_back(next());
        return value;
    }
    // The value of a lock or memory control TLV: where the bytes are, how many bits or bytes, and the size of a page.
    void reserve(const std::vector<uint8_t> &control, bool counts_bits)
    {
        if (control.size() != 3)
            return;
        const size_t size = control[1] == 0 ? 256 : control[1];
        const size_t page_size = size_t{1} << (control[2] & 0x0F);
        const size_t start = (control[0] >> 4) * page_size + (control[0] & 0x0F);
        if (start + base_ < header_size) // counted from the start of the memory, which may not be in the image
            return;
        const size_t first = std::min(start + base_ - header_size, reserved_.size());
        const size_t count = std::min(counts_bits ? (size + 7) / 8 : size, reserved_.size() - first);
        std::fill_n(reserved_.begin() + static_cast<std::ptrdiff_t>(first), count, true);
    }

private:
    std::span<const uint8_t> memory_;
    size_t position_, end_;
    size_t base_ = 0;            // where the TLVs begin in the image
    std::vector<bool> reserved_; // of each byte of the image
};

} // namespace

std::vector<uint8_t> message_in_tag_memory(std::span<const uint8_t> memory)
{
    Area area(memory);
    while (!area.at_end()) {
        const uint8_t tag = area.next();
        if (tag == null_tlv)
            continue;
        if (tag == terminator)
            break;
        size_t length = area.next();
        if (length == 0xFF) { // two more bytes hold the length
            length = size_t{area.next()} << 8;
            length |= area.next();
        }
        std::vector<uint8_t> value = area.take(length);
        if (tag == ndef_message)
            return value;
        if (tag == lock_control || tag == memory_control)
            area.reserve(value, tag == lock_control);
    }
    throw Failure(exit_refused, "the tag's memory holds no NDEF message TLV");
}

} // namespace tool
