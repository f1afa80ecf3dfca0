#include "io/message.h"

#include "io/failure.h"
#include "io/input.h"

#include <nfc_ndef/json.h>
#include <nfc_ndef/printable.h>

#include <fmt/format.h>

namespace tool {

namespace values = nfc_ndef::values;

namespace {

// Names of members may be as long as the file.
std::string shortened(const std::string &text)
{
    constexpr size_t enough = 300;
    return text.size() <= enough ? text : text.substr(0, enough) + "...";
}

} // namespace

std::string reason_of(const nfc_ndef_msg_report &report)
{
    return fmt::format("record {}, byte {}: {}", report.record + 1, report.offset,
                       nfc_ndef_msg_check_text(report.reason));
}

std::string reason_of(const nfc_ndef_payload_report &report)
{
    if (report.reason == NFC_NDEF_PAYLOAD_NOT_A_MESSAGE)
        return fmt::format("byte {}, record {} of the nested message: {}", report.offset, report.record + 1,
                           nfc_ndef_msg_check_text(report.message_reason));
    return fmt::format("byte {}: {}", report.offset, nfc_ndef_payload_reason_text(report.reason));
}

nfc_ndef_msg_view open_message(values::ByteView bytes, const std::string &path)
{
    nfc_ndef_msg_view message;
    nfc_ndef_msg_report report;
    if (nfc_ndef_msg_view_open({bytes.data(), static_cast<uint32_t>(bytes.size())}, &message, &report))
        return message;
    throw Failure(exit_refused, fmt::format("{}: not an NDEF message: {}", name_of_input(path), reason_of(report)));
}

values::Records parse_message(values::ByteView bytes, const std::string &path)
{
    return values::decode(open_message(bytes, path));
}

values::Records parse_json(values::ByteView text, const std::string &path)
{
    try {
        return values::from_json(values::text_of(text));
    } catch (const values::JsonError &error) {
        const std::string member = error.path.empty() ? "" : shortened(values::printable_utf8(error.path)) + ": ";
        throw Failure(exit_refused,
                      fmt::format("{}: {}{}", name_of_input(path), member, values::printable_utf8(error.what())));
    }
}

} // namespace tool
