// The record types that the library knows by name.
#pragma once

#include "base/bytes.h"
#include "nfc_ndef.h"

#include <string_view>

namespace ndef {

// A name of one to three bytes as a number, so that short names are compared in one step; 0 for any other.
template <class Bytes> constexpr uint32_t short_name(const Bytes &name)
{
    if (name.size() > 3)
        return 0;
    auto number = static_cast<uint32_t>(name.size());
    for (const auto byte : name)
        number = number << 8 | static_cast<uint8_t>(byte);
    return number;
}

struct KnownType {
    uint32_t format;
    uint32_t short_name;   // of a well-known type, else 0
    std::string_view name; // of 255 bytes at most

    ByteView bytes() const { return {reinterpret_cast<const uint8_t *>(name.data()), name.size()}; }
};

constexpr KnownType well_known(std::string_view name) { return {NFC_NDEF_TNF_WELL_KNOWN, short_name(name), name}; }
constexpr KnownType media(std::string_view name) { return {NFC_NDEF_TNF_MIME, 0, name}; }
constexpr KnownType external(std::string_view name) { return {NFC_NDEF_TNF_EXTERNAL, 0, name}; }

} // namespace ndef
