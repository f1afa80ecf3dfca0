// The records of a message as they lie in its bytes, chunks singly.
#pragma once

#include <nfc_ndef/bytes.h>

#include <span>
#include <string>
#include <vector>

namespace tool {

using nfc_ndef::values::ByteView;

struct WireRecord {
    enum Flag : uint8_t { mb = 0x80, me = 0x40, cf = 0x20, sr = 0x10, il = 0x08 };

    bool has(Flag flag) const { return (header & flag) != 0; }
    uint32_t format() const { return header & 7u; }

    size_t offset = 0; // of the header, from where the message was read
    uint8_t header = 0;
    ByteView bytes; // the whole record
    ByteView type, id, payload;
};

// Reads records up to the end, or up to bytes that are none.
std::vector<WireRecord> wire_records(ByteView message);

// Each record of the message with the chunks that it came in.
std::vector<std::span<const WireRecord>> joined(const std::vector<WireRecord> &records);

// "MB ME SR".
std::string flag_names(uint8_t header);

} // namespace tool
