#include "message/scan.h"

#include "record/known_type.h"

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

// A Generic Control record leads a sequence of messages of one record each.
bool is_generic_control(const RecordView &record)
{
    return short_name(record.type()) == known::generic_control.short_name;
}

// Sees the headers go by and tells whether the message is one of the usual kind, which breaks no rule for MB, ME and
// chunks. Of the unusual ones some break none either, and broken_rule() knows.
class Usual {
public:
    void next(const RecordView &record)
    {
        marks_ += record.flags / me_bit;
        if ((before_ & cf_bit) != 0) {
            odd_ |= ((record.flags ^ NFC_NDEF_TNF_UNCHANGED) & (il_bit | tnf_bits)) | record.type_length;
            ++joined_;
        } else if (is_unchanged(record)) [[unlikely]] {
            odd_ = 1;
        }
        before_ = record.flags;
    }
    bool holds(const RecordView &first) const
    {
        return odd_ == 0 && marks_ == one_of_each && first.has(mb_bit) && (before_ & (me_bit | cf_bit)) == me_bit &&
               !is_generic_control(first);
    }
    size_t joined() const { return joined_; }

private:
    static constexpr unsigned one_of_each = (mb_bit | me_bit) / me_bit; // of two that are there

    unsigned marks_ = 0;  // each ME counts 1, and each MB 2
    unsigned before_ = 0; // the header of the record before
    unsigned odd_ = 0;    // not 0 when the message is unusual
    size_t joined_ = 0;   // chunks that continue a run
};

} // namespace

void Scan::report(nfc_ndef_msg_reason reason, size_t record, size_t offset)
{
    report_ = {reason, static_cast<uint32_t>(record), static_cast<uint32_t>(offset)};
}

// First all records are found, as far as they decode. Only what is unusual is looked at again.
void Scan::read(ByteView message)
{
    if (message.empty())
        return report(NFC_NDEF_MSG_BAD_ARGUMENTS, 0, 0);

    Fault fault{NFC_NDEF_MSG_VALID, 0};
    Reader in(message);
    Usual usual;
    RecordView *next = records_.data();
    RecordView *const end = next + most_read;
    do {
        if (next == end) [[unlikely]] {
            fault = {NFC_NDEF_MSG_TOO_MANY_RECORDS, 0};
            break;
        }
        RecordView record;
        fault = find_record(in, record);
        if (fault.reason != NFC_NDEF_MSG_VALID) [[unlikely]]
            break;
        usual.next(record);
        *next++ = record;
    } while (in.left() != 0);
    count_ = static_cast<size_t>(next - records_.data());

    if (fault.reason == NFC_NDEF_MSG_VALID && usual.holds(records_[0]))
        return report(NFC_NDEF_MSG_VALID, count_ - usual.joined(), message.size());
    judge(message, fault);
}

// Applies the rules to the records that were found. The first that breaks one is the one reported; the fault of what
// could not be found comes behind them all.
void Scan::judge(ByteView message, const Fault &fault)
{
    const bool bytes_left = fault.reason != NFC_NDEF_MSG_VALID;
    const auto position = [&](const uint8_t *at) { return static_cast<size_t>(at - message.data()); };
    const size_t end = count_ == 0 ? 0 : position(records_[count_ - 1].end());
    size_t joined = 0;
    for (size_t i = 0; i < count_; ++i)
        joined += records_[i].has(cf_bit);

    const bool lone = count_ != 0 && is_generic_control(records_[0]);
    Place place{.framing = lone ? lone_framing : mb_bit, .lone = lone, .in_run = false, .chunked = joined != 0};
    for (size_t i = 0; i < count_; ++i) {
        const RecordView &record = records_[i];
        const bool last = i + 1 == count_;
        if (last && !bytes_left)
            place.framing |= me_bit;
        nfc_ndef_msg_reason reason = broken_rule(record, place);
        if (reason == NFC_NDEF_MSG_ME_EARLY && last && fault.reason != NFC_NDEF_MSG_TOO_MANY_RECORDS) {
            // Nothing that is a record follows, so this one ends the message; unless it cannot, that is its only fault.
            place.framing |= me_bit;
            reason = broken_rule(record, place);
            if (reason == NFC_NDEF_MSG_VALID)
                return report(NFC_NDEF_MSG_BYTES_LEFT_OVER, count_, end);
        }
        if (reason != NFC_NDEF_MSG_VALID)
            return report(reason, i, position(record.header()));
        place.framing = lone ? lone_framing : 0;
        place.in_run = record.has(cf_bit);
    }
    if (bytes_left)
        return report(fault.reason, count_, end + fault.offset);
    report(NFC_NDEF_MSG_VALID, count_ - joined, end);
}

uint32_t WholeRecord::payload_length() const
{
    const RecordView *piece = first_;
    uint32_t length = piece->payload_length;
    while (piece->has(cf_bit))
        length += (++piece)->payload_length;
    return length;
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
    RecordPtr record = new_record();
    if (!record)
        return nullptr;
    *record = first_->described();
    const RecordView *const end = last() + 1;
    const uint32_t length = payload_length();
    record->me = end[-1].has(me_bit);
    record->cf = 0;
    record->sr = length <= longest_short_payload;
    record->payload_length = length;
    record->parsed_length = 2 + uint32_t{first_->type_length} + (record->il ? 1u + record->id_length : 0u) +
                            (record->sr ? 1u : 4u) + length;
    if (!copy_bytes(*record, first_->type(), first_->id(), {}))
        return nullptr;
    if (length == 0)
        return record;
    Block<uint8_t> payload = new_block<uint8_t>(length);
    if (!payload)
        return nullptr;
    Writer out({payload.get(), length});
    for (const RecordView *piece = first_; piece != end; ++piece)
        out.bytes(piece->payload());
    record->payload = payload.release();
    return record;
}

} // namespace ndef
