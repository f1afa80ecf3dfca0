// The memory of an NFC Forum Type 2 Tag.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace tool {

// The value of the first NDEF message TLV, in a whole memory image or in one that begins at the TLVs. Lock control,
// memory control, proprietary and null TLVs are stepped over, and so are the bytes inside the message that the control
// TLVs reserve. Throws Failure, exit_refused, when there is no whole message TLV.
std::vector<uint8_t> message_in_tag_memory(std::span<const uint8_t> memory);

} // namespace tool
