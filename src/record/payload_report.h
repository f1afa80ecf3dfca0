// What a function that reads a payload in place found.
#pragma once

#include "record/view.h"

namespace ndef {

class Verdict {
public:
    Verdict(ByteView payload, nfc_ndef_payload_report *report) : payload_(payload), report_(report) {}

    uint8_t refused(nfc_ndef_payload_reason reason, const uint8_t *at) const
    {
        return refused(reason, static_cast<size_t>(at - payload_.data()));
    }
    uint8_t refused(nfc_ndef_payload_reason reason, size_t offset) const
    {
        return found({reason, static_cast<uint32_t>(offset), 0, 0}, 0);
    }
    // What a field is missing for stands at the end.
    uint8_t refused(nfc_ndef_payload_reason reason) const { return refused(reason, payload_.size()); }
    // The nested message that starts at an offset.
    uint8_t refused(const nfc_ndef_msg_report &message, size_t offset) const
    {
        return found({NFC_NDEF_PAYLOAD_NOT_A_MESSAGE, static_cast<uint32_t>(offset + message.offset), message.reason,
                      message.record},
                     0);
    }
    uint8_t valid() const { return found({NFC_NDEF_PAYLOAD_VALID, static_cast<uint32_t>(payload_.size()), 0, 0}, 1); }

private:
    uint8_t found(const nfc_ndef_payload_report &report, uint8_t result) const
    {
        if (report_)
            *report_ = report;
        return result;
    }

    ByteView payload_;
    nfc_ndef_payload_report *report_;
};

} // namespace ndef
