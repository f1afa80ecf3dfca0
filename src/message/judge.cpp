// The rules for MB, ME and chunks, one by one: for messages that are not of the usual kind.
#include "message/scan.h"

namespace ndef {

namespace {

// Where a record stands, as far as the rules for MB, ME and chunks go.
struct Place {
    uint8_t framing; // the MB and ME bits that it must carry, and no others
    bool lone;       // it is one of a sequence of messages of one record each
    bool in_run;     // it continues a run of chunks
    bool chunked;    // there are chunks in the message; without any, the format "unchanged" breaks no rule

    bool begins() const { return (framing & mb_bit) != 0; }
    bool ends() const { return (framing & me_bit) != 0; }
};

constexpr uint8_t lone_framing = mb_bit | me_bit;

// Names the rule that a record breaks in its place, if any.
nfc_ndef_msg_reason broken_rule(const RecordView &record, const Place &place)
{
    if (record.has(mb_bit) != place.begins())
        return place.begins() ? NFC_NDEF_MSG_MB_MISSING : NFC_NDEF_MSG_MB_REPEATED;
    if (record.has(me_bit) && !place.ends())
        return NFC_NDEF_MSG_ME_EARLY;
    if (place.lone && !record.has(me_bit))
        return NFC_NDEF_MSG_ME_MISSING;
    if (record.has(cf_bit) && record.has(me_bit))
        return NFC_NDEF_MSG_CHUNK_WITH_ME;
    if (place.in_run) {
        if (record.has(il_bit))
            return NFC_NDEF_MSG_CHUNK_WITH_ID;
        if (record.type_length != 0)
            return NFC_NDEF_MSG_CHUNK_WITH_TYPE;
        if (!is_unchanged(record))
            return NFC_NDEF_MSG_CHUNK_NOT_UNCHANGED;
    } else if (place.chunked && is_unchanged(record)) {
        return record.has(cf_bit) ? NFC_NDEF_MSG_CHUNK_FIRST_UNCHANGED : NFC_NDEF_MSG_UNCHANGED_OUTSIDE_CHUNKS;
    }
    if (!place.ends() || record.has(me_bit))
        return NFC_NDEF_MSG_VALID;
    return record.has(cf_bit) ? NFC_NDEF_MSG_CHUNK_UNFINISHED : NFC_NDEF_MSG_ME_MISSING;
}

} // namespace

// Applies the rules to the records that were found, again from the bytes. The first that breaks one is the one
// reported; the fault of what could not be found comes behind them all.
nfc_ndef_msg_report judge(ByteView message, size_t count, const Fault &fault)
{
    const auto report = [](nfc_ndef_msg_reason reason, size_t record, size_t offset) {
        return nfc_ndef_msg_report{reason, static_cast<uint32_t>(record), static_cast<uint32_t>(offset)};
    };
    const bool bytes_left = fault.reason != NFC_NDEF_MSG_VALID;
    Reader in(message);
    RecordView record;
    size_t joined = 0;
    bool lone = false;
    for (size_t i = 0; i < count; ++i) {
        find_record_apart(in, record);
        joined += record.has(cf_bit);
        lone |= i == 0 && is_generic_control(record);
    }
    const size_t end = message.size() - in.left();

    Place place{.framing = lone ? lone_framing : mb_bit, .lone = lone, .in_run = false, .chunked = joined != 0};
    in = Reader(message);
    for (size_t i = 0; i < count; ++i) {
        find_record_apart(in, record);
        const bool last = i + 1 == count;
        if (last && !bytes_left)
            place.framing |= me_bit;
        nfc_ndef_msg_reason reason = broken_rule(record, place);
        if (reason == NFC_NDEF_MSG_ME_EARLY && last && fault.reason != NFC_NDEF_MSG_TOO_MANY_RECORDS) {
            // Nothing that is a record follows, so this one ends the message; unless it cannot, that is its only fault.
            place.framing |= me_bit;
            reason = broken_rule(record, place);
            if (reason == NFC_NDEF_MSG_VALID)
                return report(NFC_NDEF_MSG_BYTES_LEFT_OVER, count, end);
        }
        if (reason != NFC_NDEF_MSG_VALID)
            return report(reason, i, static_cast<size_t>(record.header() - message.data()));
        place.framing = lone ? lone_framing : 0;
        place.in_run = record.has(cf_bit);
    }
    if (bytes_left)
        return report(fault.reason, count, end + fault.offset);
    return report(NFC_NDEF_MSG_VALID, count - joined, end);
}

} // namespace ndef
