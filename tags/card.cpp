#include "card.h"

#include "error.h"

#include <cstdio>

namespace nfc_ndef::tags {
namespace {

constexpr uint8_t wrong_length_expected = 0x6C; // and SW2 says the right one

Response response_of(Bytes bytes)
{
    if (bytes.size() < 2)
        throw Gone(); // which some drivers say so
    const auto status = static_cast<uint16_t>(bytes[bytes.size() - 2] << 8 | bytes.back());
    bytes.resize(bytes.size() - 2);
    return {std::move(bytes), status};
}

} // namespace

Response Card::command(uint8_t cla, uint8_t ins, uint8_t p1, uint8_t p2, ByteView data, size_t expected)
{
    Bytes bytes{cla, ins, p1, p2};
    if (!data.empty()) {
        bytes.push_back(static_cast<uint8_t>(data.size()));
        bytes.insert(bytes.end(), data.begin(), data.end());
    }
    if (expected != 0)
        bytes.push_back(static_cast<uint8_t>(expected)); // 256 is said as 0
    Response response = response_of(transmit(bytes));
    if (expected != 0 && response.status >> 8 == wrong_length_expected) {
        bytes.back() = static_cast<uint8_t>(response.status);
        response = response_of(transmit(bytes));
    }
    return response;
}

std::string status_text(uint16_t status)
{
    char text[5];
    std::snprintf(text, sizeof text, "%04X", unsigned{status});
    return text;
}

} // namespace nfc_ndef::tags
