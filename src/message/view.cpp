#include "message/view.h"

namespace ndef {

Sorted::Sorted(ByteView message, std::span<const KnownType> types) : end_(message.data() + message.size())
{
    report_ = check(message, [&](const RecordView &record, bool in_run) {
        if (in_run)
            return;
        const size_t type = position_of(CandidateType(record.format(), record.type()), types);
        Kind &kind = kinds_[type < types.size() ? type : most_types];
        if (++kind.count <= 2)
            (kind.count == 1 ? kind.first : kind.second) = record.header();
    });
}

nfc_ndef_record_view Sorted::record(size_t type) const
{
    nfc_ndef_record_view view{};
    if (kinds_[type].count != 0) {
        Reader in({kinds_[type].first, end_});
        next_record(in, view);
    }
    return view;
}

} // namespace ndef

using namespace ndef;

uint8_t nfc_ndef_msg_view_open(nfc_ndef_bytes message, nfc_ndef_msg_view *view, nfc_ndef_msg_report *report)
{
    const ByteView bytes = bytes_of(message);
    nfc_ndef_msg_report unwanted{};
    nfc_ndef_msg_report &found = report ? *report : unwanted;
    const bool valid = check(bytes, found);
    *view = valid ? opened(bytes, found) : nfc_ndef_msg_view{};
    return valid;
}

uint8_t nfc_ndef_msg_view_next(nfc_ndef_msg_view *view, nfc_ndef_record_view *record)
{
    if (view->rest.length == 0)
        return 0;
    Reader in(bytes_of(view->rest));
    if (!next_record(in, *record))
        return 0;
    view->rest = lent(in.rest());
    --view->record_count;
    return 1;
}
