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

    nfc_ndef_msg_report found;
    if (!check(message, found))
        return verdict.refused(found, 1);
    handover->message = opened(message, found);
    nfc_ndef_msg_view left = handover->message;
    for (nfc_ndef_record_view record; nfc_ndef_msg_view_next(&left, &record);) {
        if (record.chunks.length != 0)
            return verdict.refused(NFC_NDEF_PAYLOAD_IN_CHUNKS, record.chunks.data);
        // A sequence of Generic Control records is one message after another.
        if ((record.flags & me_bit) != 0 && left.rest.length != 0)
            return verdict.refused(NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, left.rest.data);
        handover->carrier_count +=
            CandidateType(record.format, bytes_of(record.type)).matches(known::alternative_carrier);
    }
    return verdict.valid();
}

} // namespace ndef
