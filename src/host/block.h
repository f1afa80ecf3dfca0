// Owning handles over the host's block allocator.
#pragma once

#include "base/bytes.h"
#include "nfc_ndef.h"

#include <memory>
#include <type_traits>

namespace ndef {

struct BlockFree {
    void operator()(void *block) const noexcept { os_block_dealloc(block); }
};

// An array in a block of its own.
template <class T> using Block = std::unique_ptr<T[], BlockFree>;

// A new array whose entries are not set, or null.
template <class T> [[nodiscard]] Block<T> new_block(size_t count)
{
    static_assert(std::is_trivial_v<T>);
    return Block<T>{static_cast<T *>(os_block_alloc(count * sizeof(T)))};
}

// A new array of zeros, or null.
template <class T> [[nodiscard]] Block<T> new_zeroed_block(size_t count)
{
    static_assert(std::is_trivial_v<T>);
    return Block<T>{static_cast<T *>(os_block_alloc_and_clear(count * sizeof(T)))};
}

// A new block with a copy of bytes, of which there is at least one, or null. Not inline: where a compiler sees that a
// length fits a byte, it copies with a string instruction, whose start takes longer than a call.
[[nodiscard]] uint8_t *duplicate(const uint8_t *bytes, size_t length);

// A copy in a block of its own, even of nothing, or null.
[[nodiscard]] inline Block<uint8_t> copy_of(ByteView source)
{
    return source.empty() ? new_block<uint8_t>(0) : Block<uint8_t>{duplicate(source.data(), source.size())};
}

// The bytes of a field that may be inconsistent: none when the pointer is null, whatever the length says.
inline ByteView bytes_of(const uint8_t *field, size_t length) { return {field, field ? length : 0}; }

// Gives a field, which is null when there are no bytes, a copy of its own; false, and null, when memory runs out.
[[nodiscard]] inline bool copy_to(uint8_t *&field, ByteView source)
{
    field = source.empty() ? nullptr : duplicate(source.data(), source.size());
    return field || source.empty();
}

} // namespace ndef
