// Messages in place, as the public interface shows them, and what a nested one holds.
#pragma once

#include "message/scan.h"
#include "record/match.h"
#include "record/view.h"

#include <array>

namespace ndef {

// A message that was found valid.
inline nfc_ndef_msg_view opened(ByteView message, const nfc_ndef_msg_report &report)
{
    return {lent(message), report.record};
}

// The records of a nested message, counted by type: each belongs to the first of the given types that it matches, or to
// none. Types are referred to by their position in that list.
class Sorted {
public:
    static constexpr size_t most_types = 7;

    Sorted(ByteView message, std::span<const KnownType> types);
    bool valid() const { return report_.reason == NFC_NDEF_MSG_VALID; }
    const nfc_ndef_msg_report &report() const { return report_; }

    uint8_t count(size_t type) const { return kinds_[type].count; }
    // Where the first record of a type, which has one, begins; and the second of a type that has two.
    const uint8_t *first(size_t type) const { return kinds_[type].first; }
    const uint8_t *second(size_t type) const { return kinds_[type].second; }
    // The first record of a type, if any.
    nfc_ndef_record_view record(size_t type) const;

private:
    struct Kind {
        const uint8_t *first, *second;
        uint8_t count;
    };
    const uint8_t *end_;
    std::array<Kind, most_types + 1> kinds_{}; // the last is of no type
    nfc_ndef_msg_report report_;
};

} // namespace ndef
