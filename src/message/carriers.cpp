#include "message/carriers.h"

#include "message/view.h"
#include "record/payload_report.h"

namespace ndef {

uint8_t read_carriers(nfc_ndef_bytes payload, nfc_ndef_handover *handover, nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *handover = {};
    Reader in(bytes);
    handover->version = in.u8();
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    if (handover->version >> 4 != 1)
        return verdict.refused(NFC_NDEF_PAYLOAD_VERSION_NOT_READ, size_t{0});
    const ByteView message = in.rest();
    if (message.empty())
        return verdict.valid();

    const uint8_t *chunk = nullptr, *behind_end = nullptr;
    uint8_t carriers = 0;
    bool ended = false;
    const nfc_ndef_msg_report found = check(message, [&](const RecordView &record, bool) {
        if (record.has(cf_bit) && !chunk)
            chunk = record.header();
        if (ended && !behind_end) // of messages that Generic Control records make one after another
            behind_end = record.header();
        ended |= record.has(me_bit);
        carriers += CandidateType(record.format(), record.type()).matches(known::alternative_carrier);
    });
    if (found.reason != NFC_NDEF_MSG_VALID)
        return verdict.refused(found, 1);
    if (chunk)
        return verdict.refused(NFC_NDEF_PAYLOAD_IN_CHUNKS, chunk);
    if (behind_end)
        return verdict.refused(NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, behind_end);
    handover->message = opened(message, found);
    handover->carrier_count = carriers;
    return verdict.valid();
}

} // namespace ndef
