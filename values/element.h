// One of the numbered fields that a payload may be a list of.
#pragma once

#include "bytes.h"

#include <array>

namespace nfc_ndef::values {

// With a number of `Width` bytes, most significant first.
template <size_t Width> struct Element {
    std::array<uint8_t, Width> id{};
    Bytes data;
    bool operator==(const Element &) const = default;
};

} // namespace nfc_ndef::values
