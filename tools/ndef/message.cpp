#include "message.h"

#include "io/failure.h"
#include "io/input.h"

#include <fmt/format.h>

namespace tool {

std::string reason_of(const nfc_ndef_msg_report &report)
{
    return fmt::format("record {}, byte {}: {}", report.record + 1, report.offset,
                       nfc_ndef_msg_check_text(report.reason));
}

nfc_ndef::Message parse_message(std::span<const uint8_t> bytes, const std::string &path)
{
    const auto length = static_cast<uint32_t>(bytes.size());
    nfc_ndef_msg_report report{};
    if (nfc_ndef_msg_check(bytes.data(), 0, length, &report) == 0)
        throw Failure(exit_refused, fmt::format("{}: not an NDEF message: {}", name_of_input(path), reason_of(report)));
    nfc_ndef::Message message(nfc_ndef_msg_create_by_msg_offset(bytes.data(), 0, length));
    if (!message)
        throw Failure(exit_unusable, nfc_ndef_msg_check_text(NFC_NDEF_MSG_OUT_OF_MEMORY));
    return message;
}

} // namespace tool
