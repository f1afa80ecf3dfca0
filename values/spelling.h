// Byte strings of a fixed length in the form that people write them in, both ways.
#pragma once

#include "bytes.h"

#include <optional>

namespace nfc_ndef::values {

struct Spelling {
    enum class Order { as_stored, reversed };

    std::string text_of(ByteView stored) const; // of `length` bytes
    std::optional<Bytes> bytes_of(std::string_view text) const;

    size_t length;
    Order order;
    std::string_view example; // hex digits, and a separator wherever this form has one
};

// Bluetooth device addresses, classes of device and UUIDs.
constexpr Spelling address(Spelling::Order order) { return {6, order, "12:34:56:78:90:AB"}; }
constexpr Spelling class_of_device(Spelling::Order order) { return {3, order, "240414"}; }
constexpr Spelling uuid(size_t length, Spelling::Order order = Spelling::Order::reversed)
{
    return length == 2   ? Spelling{2, order, "110B"}
           : length == 4 ? Spelling{4, order, "0000110B"}
                         : Spelling{16, order, "0000110B-0000-1000-8000-00805F9B34FB"};
}

} // namespace nfc_ndef::values
