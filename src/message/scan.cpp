#include "message/scan.h"

namespace ndef {

namespace {

// The number of records of a message of short ones, as most are: they need nothing but MB, ME and CF in their places.
// 0 of any other, which may be valid all the same.
uint32_t count_of_short(ByteView message)
{
    constexpr uint8_t end_bits = me_bit | cf_bit;
    Reader in(message);
    RecordView record;
    if (!find_short_record(in, record) || !record.has(mb_bit) || is_generic_control(record))
        return 0;
    uint32_t count = 1;
    for (size_t found = 1; found < most_read && (record.flags & end_bits) != me_bit; ++found) {
        if (!record.has(cf_bit)) {
            if (!find_short_record(in, record) || record.has(mb_bit))
                return 0;
            ++count;
        } else if (record.has(me_bit) || !find_short_chunk(in, record)) {
            return 0;
        }
    }
    return (record.flags & end_bits) == me_bit && in.left() == 0 ? count : 0;
}

// Apart, so that the usual way saves no registers.
[[gnu::noinline]] bool check_any(ByteView message, nfc_ndef_msg_report &report)
{
    report = check(message, [](const RecordView &, bool) {});
    return report.reason == NFC_NDEF_MSG_VALID;
}

} // namespace

[[gnu::noinline]] bool check(ByteView message, nfc_ndef_msg_report &report)
{
    const uint32_t count = count_of_short(message);
    if (count == 0) [[unlikely]]
        return check_any(message, report);
    report = {NFC_NDEF_MSG_VALID, count, static_cast<uint32_t>(message.size())};
    return true;
}

Scan::Scan(ByteView message)
{
    RecordView *next = records_.data();
    report_ = check(message, [&](const RecordView &record, bool) { *next++ = record; });
    count_ = static_cast<size_t>(next - records_.data());
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
