// Messages in place, as the public interface shows them, and what a nested one holds.
#pragma once

#include "message/scan.h"
#include "record/match.h"
#include "record/view.h"

namespace ndef {

// A message that was found valid.
inline nfc_ndef_msg_view opened(ByteView message, const nfc_ndef_msg_report &report)
{
    return {lent(message), report.record};
}

// The records of a nested message, counted by type: each belongs to the first of the given types that it matches, or to
// none. Types are referred to by their position in that list.
template <size_t n> class Sorted {
public:
    Sorted(ByteView message, const KnownType (&types)[n])
        : end_(message.data() + message.size()), report_(check(message, [&](const RecordView &record, bool in_run) {
              if (in_run)
                  return;
              Kind &kind = kinds_[position_of(CandidateType(record.format(), record.type()), types)];
              if (++kind.count <= 2)
                  (kind.count == 1 ? kind.first : kind.second) = record.header();
          }))
    {
    }
    bool valid() const { return report_.reason == NFC_NDEF_MSG_VALID; }
    const nfc_ndef_msg_report &report() const { return report_; }

    // Of a type, or of none of them, which is `n`.
    uint8_t count(size_t type) const { return kinds_[type].count; }
    // Where the second record of a type, which has two, begins.
    const uint8_t *second(size_t type) const { return kinds_[type].second; }
    const uint8_t *first(size_t type) const { return kinds_[type].first; }
    // The first record of a type, if any.
    nfc_ndef_record_view record(size_t type) const
    {
        nfc_ndef_record_view view{};
        if (kinds_[type].count != 0) {
            Reader in({kinds_[type].first, end_});
            next_record(in, view);
        }
        return view;
    }

private:
    struct Kind {
        const uint8_t *first, *second;
        uint8_t count;
    };
    const uint8_t *end_;
    Kind kinds_[n + 1]{};
    nfc_ndef_msg_report report_;
};

} // namespace ndef
