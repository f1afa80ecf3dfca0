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

bool is_unchanged(const RecordView &record) { return record.format() == NFC_NDEF_TNF_UNCHANGED; }

// Whether a record keeps all the rules of its place. What ends a message cannot be a chunk that others must follow.
inline bool fits(const RecordView &record, const Place &place)
{
    const int checked = place.ends() ? mb_bit | me_bit | cf_bit : mb_bit | me_bit;
    if (((record.flags ^ place.framing) & checked) != 0)
        return false;
    if (place.in_run)
        return ((record.flags ^ NFC_NDEF_TNF_UNCHANGED) & (il_bit | tnf_bits)) == 0 && record.type_length == 0;
    return !place.chunked || !is_unchanged(record);
}

// Names the rule that a record breaks when it does not fit.
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
    return record.has(cf_bit) ? NFC_NDEF_MSG_CHUNK_UNFINISHED : NFC_NDEF_MSG_ME_MISSING;
}

// A Generic Control record leads a sequence of messages of one record each.
bool is_generic_control(const RecordView &record)
{
    return record.type_length == 2 && record.type()[0] == 'G' && record.type()[1] == 'c';
}

nfc_ndef_msg_report verdict(nfc_ndef_msg_reason reason, size_t record, size_t offset)
{
    return {reason, static_cast<uint32_t>(record), static_cast<uint32_t>(offset)};
}

} // namespace

Scan::Scan(ByteView message) : report_(read(message)) {}

// First all records are found, as far as they decode; then the other rules are applied to what was found. The first
// record that breaks one is the one reported.
nfc_ndef_msg_report Scan::read(ByteView message)
{
    if (message.empty())
        return verdict(NFC_NDEF_MSG_BAD_ARGUMENTS, 0, 0);

    Fault fault{NFC_NDEF_MSG_VALID, 0};
    Reader in(message);
    size_t left = message.size();
    size_t joined = 0; // chunks that others of their run follow
    size_t count = 0;
    for (; left != 0; left = in.left()) {
        RecordView record;
        if (count == most_read)
            fault = {NFC_NDEF_MSG_TOO_MANY_RECORDS, 0};
        else
            fault = find_record(in, record);
        if (fault.reason != NFC_NDEF_MSG_VALID)
            break;
        joined += record.has(cf_bit);
        records_[count++] = record;
    }
    const size_t at = message.size() - left;
    count_ = count;

    const bool bytes_left = left != 0;
    const bool lone = count != 0 && is_generic_control(records_[0]);
    Place place{.framing = lone ? lone_framing : mb_bit, .lone = lone, .in_run = false, .chunked = joined != 0};
    for (size_t i = 0; i < count; ++i) {
        const RecordView &record = records_[i];
        const bool last = i + 1 == count;
        if (last && !bytes_left)
            place.framing |= me_bit;
        if (!fits(record, place)) {
            nfc_ndef_msg_reason reason = broken_rule(record, place);
            if (reason == NFC_NDEF_MSG_ME_EARLY && last) {
                // Nothing that is a record follows, so this one ends the message; unless it cannot, that is its only
                // fault.
                place.framing |= me_bit;
                if (fits(record, place))
                    return verdict(NFC_NDEF_MSG_BYTES_LEFT_OVER, count, at);
                reason = broken_rule(record, place);
            }
            return verdict(reason, i, static_cast<size_t>(record.header() - message.data()));
        }
        place.framing = lone ? lone_framing : 0;
        place.in_run = record.has(cf_bit);
    }
    if (bytes_left)
        return verdict(fault.reason, count, at + fault.offset);
    return verdict(NFC_NDEF_MSG_VALID, count - joined, at);
}

uint8_t WholeRecord::first_payload_byte() const
{
    const RecordView *piece = first_;
    while (piece->payload_length == 0)
        ++piece;
    return piece->payload()[0];
}

// A run takes all but its payload from the initial chunk, and its end from the terminating one; its length is what it
// would take unchunked.
RecordPtr WholeRecord::join() const
{
    RecordPtr record = nfc_ndef_record_create_empty();
    if (!record)
        return nullptr;
    first_->describe(*record);
    record->me = last_->has(me_bit);
    record->cf = 0;
    record->sr = payload_length_ <= longest_short_payload;
    record->payload_length = payload_length_;
    record->parsed_length = 2 + uint32_t{first_->type_length} + (record->il ? 1u + record->id_length : 0u) +
                            (record->sr ? 1u : 4u) + payload_length_;
    if (!copy_bytes(*record, first_->type(), first_->id(), {}))
        return nullptr;
    if (payload_length_ == 0)
        return record;
    Block<uint8_t> payload = new_block<uint8_t>(payload_length_);
    if (!payload)
        return nullptr;
    Writer out({payload.get(), payload_length_});
    for (const RecordView *piece = first_; piece <= last_; ++piece)
        out.bytes(piece->payload());
    record->payload = payload.release();
    return record;
}

} // namespace ndef
