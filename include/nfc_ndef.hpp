/*
 * Owning handles for C++ callers of nfc-ndef: each frees what it holds as nfc_ndef.h says.
 *
 * SPDX-License-Identifier: MIT
 */
#ifndef NFC_NDEF_HPP
#define NFC_NDEF_HPP

#include "nfc_ndef.h"

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace nfc_ndef {

/** Deletes with a function of the C interface, which takes the object's pointer or that pointer's address. */
template <auto Delete> struct Deleter {
    template <class T> void operator()(T *object) const noexcept
    {
        if constexpr (std::is_invocable_v<decltype(Delete), T *>)
            Delete(object);
        else {
            static_assert(!std::is_invocable_v<decltype(Delete), void *>, "a block of constant bytes has no owner");
            Delete(&object);
        }
    }
};

/** A block from the host allocator, such as a text that an extractor hands back. */
template <class T = uint8_t> using Block = std::unique_ptr<T[], Deleter<os_block_dealloc>>;

using Record = std::unique_ptr<nfc_ndef_record, Deleter<nfc_ndef_record_delete>>;
using RecordType = std::unique_ptr<nfc_ndef_record_type, Deleter<nfc_ndef_record_type_delete>>;
using Message = std::unique_ptr<nfc_ndef_msg, Deleter<nfc_ndef_msg_delete>>;
using BluetoothOob = std::unique_ptr<nfc_ndef_bt_rtd_2_1_str, Deleter<nfc_ndef_bt_rtd_2_1_str_delete>>;
using BluetoothLegacy = std::unique_ptr<nfc_ndef_bt_rtd_2_0_str, Deleter<nfc_ndef_bt_rtd_2_0_str_delete>>;

/** Receives an object through a pointer output of the C interface: `extract(record, &length, out(text));` */
template <class Handle> class Out {
public:
    explicit Out(Handle &handle) : handle_(handle) {}
    Out(const Out &) = delete;
    Out &operator=(const Out &) = delete;
    ~Out() { handle_.reset(pointer_); }
    operator typename Handle::pointer *() { return &pointer_; }

private:
    Handle &handle_;
    typename Handle::pointer pointer_ = nullptr;
};

template <class Handle> Out<Handle> out(Handle &handle) { return Out<Handle>(handle); }

/**
 * Receives an array that an extractor hands back with its count, and frees the array with all that is in it:
 * `Array<Record> titles; extract(record, titles.out_count(), titles.out());`
 */
template <class Handle> class Array {
public:
    using Element = typename Handle::pointer;

    Array() = default;
    Array(Array &&other) noexcept
        : count_(std::exchange(other.count_, uint8_t{0})), elements_(std::exchange(other.elements_, nullptr))
    {
    }
    Array &operator=(Array other) noexcept
    {
        std::swap(count_, other.count_);
        std::swap(elements_, other.elements_);
        return *this;
    }
    ~Array()
    {
        for (const Element element : *this)
            Handle{element}.reset();
        os_block_dealloc(elements_);
    }

    uint8_t *out_count() { return &count_; }
    Element **out() { return &elements_; }

    std::size_t size() const { return elements_ ? count_ : 0; }
    bool empty() const { return size() == 0; }
    const Element *begin() const { return elements_; }
    const Element *end() const { return elements_ + size(); }
    Element operator[](std::size_t index) const { return elements_[index]; }

private:
    uint8_t count_ = 0;
    Element *elements_ = nullptr;
};

} // namespace nfc_ndef

#endif
