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

// A copy in a block of its own, even of nothing, or null.
[[nodiscard]] inline Block<uint8_t> copy_of(ByteView source)
{
    Block<uint8_t> copy = new_block<uint8_t>(source.size());
    if (copy && !source.empty())
        std::memcpy(copy.get(), source.data(), source.size());
    return copy;
}

// The bytes of a field that may be inconsistent: none when the pointer is null, whatever the length says.
inline ByteView bytes_of(const uint8_t *field, size_t length) { return {field, field ? length : 0}; }

// Gives a field, which is null when there are no bytes, a copy of its own; false, and null, when memory runs out.
[[nodiscard]] inline bool copy_to(uint8_t *&field, ByteView source)
{
    field = source.empty() ? nullptr : copy_of(source).release();
    return field || source.empty();
}

} // namespace ndef
