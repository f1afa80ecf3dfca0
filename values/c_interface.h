// What the types need to call the readers and builders of the C interface.
#pragma once

#include "record.h"

#include <nfc_ndef_types.h>

#include <algorithm>
#include <array>
#include <optional>

namespace nfc_ndef::values {

inline ByteView view_of(const nfc_ndef_bytes &bytes) { return {bytes.data, bytes.length}; }
inline Bytes bytes_of(const nfc_ndef_bytes &bytes) { return {bytes.data, bytes.data + bytes.length}; }
inline std::string string_of(const nfc_ndef_bytes &bytes) { return {bytes.data, bytes.data + bytes.length}; }

// Bytes, or a text's, as the library reads them; they are not more than 2^32 - 1.
inline nfc_ndef_bytes bytes_view(ByteView bytes) { return {bytes.data(), static_cast<uint32_t>(bytes.size())}; }
inline nfc_ndef_bytes bytes_view(std::string_view text) { return bytes_view(view_of(text)); }

// Byte strings that may be absent: in the library those have a null pointer, and empty ones have another.
inline std::optional<std::string> optional_string_of(const nfc_ndef_bytes &bytes)
{
    return bytes.data ? std::optional(string_of(bytes)) : std::nullopt;
}
inline std::optional<Bytes> optional_bytes_of(const nfc_ndef_bytes &bytes)
{
    return bytes.data ? std::optional(bytes_of(bytes)) : std::nullopt;
}
template <size_t N> std::optional<std::array<uint8_t, N>> optional_array_of(const nfc_ndef_bytes &bytes)
{
    std::optional<std::array<uint8_t, N>> array;
    if (bytes.data)
        std::copy_n(bytes.data, N, array.emplace().begin());
    return array;
}
template <class Container> nfc_ndef_bytes optional_bytes_view(const std::optional<Container> &value)
{
    static constexpr uint8_t no_byte = 0;
    return !value ? nfc_ndef_bytes{} : value->empty() ? nfc_ndef_bytes{&no_byte, 0} : bytes_view(view_of(*value));
}

// Appends what one of the library's functions writes; false when it writes nothing.
template <class Write, class Value> bool append(Bytes &bytes, Write write, const Value &value)
{
    const size_t before = bytes.size();
    const uint32_t length = write(&value, nullptr, 0);
    bytes.resize(before + length);
    return length != 0 && write(&value, bytes.data() + before, length) == length;
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

// A record that a builder borrows, if there is one.
class LentRecord {
public:
    explicit LentRecord(const OptionalRecord &record) : handle_(record ? to_handle(*record) : nullptr), absent_(!record)
    {
    }
    bool ok() const { return absent_ || handle_; } // whether what is there became a record
    nfc_ndef_record *get() const { return handle_.get(); }

private:
    nfc_ndef::Record handle_;
    bool absent_;
};

// The payload of a record, in chunks or not.
Bytes joined_payload(const nfc_ndef_record_view &record);

} // namespace nfc_ndef::values
