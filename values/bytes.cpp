#include "bytes.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

std::string hex_of(ByteView bytes, std::string_view separator)
{
    return fmt::format("{:02X}", fmt::join(bytes, separator));
}

bool bytes_of_hex(std::string_view hex, Bytes &bytes)
{
    constexpr std::string_view digits = "0123456789ABCDEF0123456789abcdef";
    bytes.clear();
    bytes.reserve(hex.size() / 2);
    for (size_t i = 0; i + 1 < hex.size(); i += 2) {
        const size_t high = digits.find(hex[i]), low = digits.find(hex[i + 1]);
        if (high == std::string_view::npos || low == std::string_view::npos)
            return false;
        bytes.push_back(static_cast<uint8_t>(high % 16 << 4 | low % 16));
    }
    return hex.size() % 2 == 0;
}

} // namespace nfc_ndef::values
