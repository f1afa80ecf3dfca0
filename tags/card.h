// What a reader can exchange with what lies on it: commands and responses of ISO/IEC 7816-4.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace nfc_ndef::tags {

using Bytes = std::vector<uint8_t>;
using ByteView = std::span<const uint8_t>;

struct Response {
    Bytes data;
    uint16_t status; // SW1 and SW2

    bool ok() const { return status == 0x9000; }
};

class Card {
public:
    Card() = default;
    Card(const Card &) = delete;
    Card &operator=(const Card &) = delete;
    virtual ~Card() = default;

    // The answer to reset, by which readers tell what kind of tag it is (PC/SC 2, contactless cards).
    virtual Bytes answer_to_reset() = 0;
    // The response to a command, status included. Throws Gone when the tag is.
    virtual Bytes transmit(ByteView command) = 0;

    // A command with data, and with the length of the response that is expected (256 at most) unless it is 0.
    Response command(uint8_t cla, uint8_t ins, uint8_t p1, uint8_t p2, ByteView data, size_t expected = 0);
    // The same, for those that only ask.
    Response ask(uint8_t cla, uint8_t ins, uint8_t p1, uint8_t p2, size_t expected)
    {
        return command(cla, ins, p1, p2, {}, expected);
    }
};

// A status as people look it up: "6A82".
std::string status_text(uint16_t status);

} // namespace nfc_ndef::tags
