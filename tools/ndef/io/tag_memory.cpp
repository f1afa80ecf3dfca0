#include "io/tag_memory.h"

#include "io/failure.h"

#include <nfc_ndef_view.h>

#include <fmt/format.h>

namespace tool {

std::vector<uint8_t> message_in_tag_memory(std::span<const uint8_t> memory)
{
    nfc_ndef_tlv found;
    nfc_ndef_tlv_report report;
    if (!nfc_ndef_tlv_find({memory.data(), static_cast<uint32_t>(memory.size())}, &found, &report))
        throw Failure(exit_refused,
                      fmt::format("{}, at byte {}", nfc_ndef_tlv_reason_text(report.reason), report.offset));
    std::vector<uint8_t> message(found.length);
    nfc_ndef_tlv_join(&found, message.data(), found.length);
    return message;
}

} // namespace tool
