// What the types need to call the extractors and builders of the C interface.
#pragma once

#include "record.h"

#include <nfc_ndef.hpp>

#include <initializer_list>
#include <new>

namespace nfc_ndef::values {

// A byte string that the library gave: null only when its length is 0, or else memory ran out.
template <class Container = Bytes> Container copy_of(const uint8_t *bytes, size_t length)
{
    if (!bytes && length != 0)
        throw std::bad_alloc();
    return Container(bytes, bytes + length);
}
template <class Container = Bytes> Container copy_of(const Block<> &bytes, size_t length)
{
    return copy_of<Container>(bytes.get(), length);
}

// A byte string as the library takes it: null when it is empty.
template <class Container> const uint8_t *pointer_to(const Container &bytes)
{
    return bytes.empty() ? nullptr : reinterpret_cast<const uint8_t *>(bytes.data());
}

// The same for the structures of the interface, whose pointers are not to const though nothing is written there.
template <class Container> uint8_t *field_pointer_to(const Container &bytes)
{
    return const_cast<uint8_t *>(pointer_to(bytes));
}

// Whether lengths can be said in the 8 bits that the interface has for them.
template <class... Length> bool fit_in_a_byte(Length... lengths) { return ((lengths <= UINT8_MAX) && ...); }

// Records as an array that a builder borrows.
class LentRecords {
public:
    enum class Order { given, reversed };

    explicit LentRecords(const Records &records, Order order = Order::given);
    bool ok() const; // whether all became records, and the count fits
    uint8_t count() const { return static_cast<uint8_t>(pointers_.size()); }
    nfc_ndef_record *const *data() const { return pointers_.empty() ? nullptr : pointers_.data(); }

private:
    std::vector<nfc_ndef::Record> handles_;
    std::vector<nfc_ndef_record *> pointers_;
};

// Records that an extractor took out of another.
OptionalRecord nested(const nfc_ndef::Record &record, const Nesting &nesting);
Records nested(const Array<nfc_ndef::Record> &records, const Nesting &nesting);

// Those of the message nested behind the first `prefix` bytes of the payload that are not of these well-known types.
Records others_in(const nfc_ndef_record &record, size_t prefix, std::initializer_list<std::string_view> taken,
                  const Nesting &nesting);

nfc_ndef::Record to_handle(const OptionalRecord &record);

} // namespace nfc_ndef::values
