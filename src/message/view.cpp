#include "message/view.h"

using namespace ndef;

uint8_t nfc_ndef_msg_view_open(nfc_ndef_bytes message, nfc_ndef_msg_view *view, nfc_ndef_msg_report *report)
{
    const ByteView bytes = bytes_of(message);
    const nfc_ndef_msg_report found = check(bytes, [](const RecordView &, bool) {});
    const bool valid = found.reason == NFC_NDEF_MSG_VALID;
    *view = valid ? opened(bytes, found) : nfc_ndef_msg_view{};
    if (report)
        *report = found;
    return valid;
}

uint8_t nfc_ndef_msg_view_next(nfc_ndef_msg_view *view, nfc_ndef_record_view *record)
{
    Reader in(bytes_of(view->rest));
    if (!next_record(in, *record))
        return 0;
    view->rest = lent(in.rest());
    --view->record_count;
    return 1;
}
