#include "message/scan.h"

namespace ndef {

namespace {

bool is_generic_control(const RecordView &record)
{
    return record.type_length == 2 && record.type()[0] == 'G' && record.type()[1] == 'c';
}

} // namespace

Scan::Scan(ByteView message) : report_(read(message)) {}

nfc_ndef_msg_report Scan::broken(nfc_ndef_msg_reason reason, size_t record) const
{
    return {reason, static_cast<uint32_t>(record), static_cast<uint32_t>(records_[record].header - records_[0].header)};
}

// Record by record: that it decodes, then MB and ME, then the chunks. The first rule that breaks is the one reported.
nfc_ndef_msg_report Scan::read(ByteView message)
{
    if (message.empty())
        return {NFC_NDEF_MSG_BAD_ARGUMENTS, 0, 0};

    for (size_t at = 0; at < message.size(); ++count_) {
        const auto number = static_cast<uint32_t>(count_);
        if (count_ == most_records)
            return {NFC_NDEF_MSG_TOO_MANY_RECORDS, number, static_cast<uint32_t>(at)};
        RecordView &record = records_[count_];
        if (const Fault fault = find_record(message.subspan(at), record); fault.reason != NFC_NDEF_MSG_VALID)
            return {fault.reason, number, static_cast<uint32_t>(at + fault.offset)};
        at += record.length();
        if (count_ == 0)
            one_record_messages_ = is_generic_control(record);

        if (const auto reason = check_begin(record); reason != NFC_NDEF_MSG_VALID)
            return broken(reason, count_);
        if (one_record_messages_) {
            if (!record.has(me_bit))
                return broken(NFC_NDEF_MSG_ME_MISSING, count_);
        } else if (record.has(me_bit) && at < message.size()) {
            RecordView next;
            if (find_record(message.subspan(at), next).reason == NFC_NDEF_MSG_VALID)
                return broken(NFC_NDEF_MSG_ME_EARLY, count_);
            return {NFC_NDEF_MSG_BYTES_LEFT_OVER, number + 1, static_cast<uint32_t>(at)};
        }
        if (const auto reason = check_chunk(record); reason != NFC_NDEF_MSG_VALID)
            return broken(reason, count_);
        if (chunked_ && stray_)
            return broken(NFC_NDEF_MSG_UNCHANGED_OUTSIDE_CHUNKS, static_cast<size_t>(stray_ - records_.data()));
        whole_count_ += !in_run_;
    }
    if (in_run_)
        return broken(NFC_NDEF_MSG_CHUNK_UNFINISHED, count_ - 1);
    if (!records_[count_ - 1].has(me_bit))
        return broken(NFC_NDEF_MSG_ME_MISSING, count_ - 1);
    return {NFC_NDEF_MSG_VALID, whole_count_, static_cast<uint32_t>(message.size())};
}

nfc_ndef_msg_reason Scan::check_begin(const RecordView &record) const
{
    const bool begins = record.has(mb_bit);
    if (count_ == 0 || one_record_messages_)
        return begins ? NFC_NDEF_MSG_VALID : NFC_NDEF_MSG_MB_MISSING;
    return begins ? NFC_NDEF_MSG_MB_REPEATED : NFC_NDEF_MSG_VALID;
}

// Without any chunk in the message, the format "unchanged" breaks no rule. A chunk that carries MB needs no rule of its
// own: only the first record may, and that one begins a run.
nfc_ndef_msg_reason Scan::check_chunk(const RecordView &record)
{
    const bool unchanged = record.format() == NFC_NDEF_TNF_UNCHANGED;
    const bool more_follow = record.has(cf_bit);
    if (more_follow && record.has(me_bit))
        return NFC_NDEF_MSG_CHUNK_WITH_ME;
    if (in_run_) {
        if (record.has(il_bit))
            return NFC_NDEF_MSG_CHUNK_WITH_ID;
        if (record.type_length != 0)
            return NFC_NDEF_MSG_CHUNK_WITH_TYPE;
        if (!unchanged)
            return NFC_NDEF_MSG_CHUNK_NOT_UNCHANGED;
    } else if (unchanged) {
        if (more_follow)
            return NFC_NDEF_MSG_CHUNK_FIRST_UNCHANGED;
        if (!stray_)
            stray_ = &record;
    }
    in_run_ = more_follow;
    chunked_ |= more_follow;
    return NFC_NDEF_MSG_VALID;
}

uint32_t WholeRecord::payload_length() const
{
    uint32_t total = 0;
    for (const RecordView *piece = first_; piece <= last_; ++piece)
        total += piece->payload_length;
    return total;
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
nfc_ndef_record WholeRecord::borrowed() const
{
    nfc_ndef_record record = first_->borrowed();
    if (first_ == last_)
        return record;
    const uint32_t total = payload_length();
    record.me = last_->has(me_bit);
    record.cf = 0;
    record.sr = total <= 255;
    record.payload_length = total;
    record.payload = nullptr;
    record.parsed_length = 2 + uint32_t{record.record_type.name_length} + (record.il ? 1u + record.id_length : 0u) +
                           (record.sr ? 1u : 4u) + total;
    return record;
}

RecordPtr WholeRecord::make() const
{
    RecordPtr record = copy_record(borrowed());
    if (first_ == last_ || !record || record->payload_length == 0)
        return record;
    Block<uint8_t> joined = new_block<uint8_t>(record->payload_length);
    if (!joined)
        return nullptr;
    Writer out({joined.get(), record->payload_length});
    for (const RecordView *piece = first_; piece <= last_; ++piece)
        out.bytes(piece->payload());
    record->payload = joined.release();
    return record;
}

} // namespace ndef
