// The memory of a tag that holds a message, for emulators.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tool {

// What "type2:144" says.
struct MemoryImage {
    std::string type;
    size_t size = 0; // of the data area in bytes; just enough when 0
};

// Throws Failure, exit_unusable, for a text that says nothing of the kind.
MemoryImage memory_image(const std::string &text);

// The memory of such a tag with the message in it:
//   type2  serial number, lock bytes, capability container, data area (NFC Forum Type 2 Tag 1.1)
//   type4  the file: the length of the message in two bytes, the message, zeros (NFC Forum Type 4 Tag 2.0)
//   type5  capability container, data area (NFC Forum Type 5 Tag 1.0)
// Throws Failure, exit_unusable, when the message does not fit.
std::vector<uint8_t> image_of(std::span<const uint8_t> message, const MemoryImage &image);

} // namespace tool
