// Reading a message in place: every record found, every rule applied, nothing allocated. The parser, the check and the
// nested types all stand on it.
#pragma once

#include "record/codec.h"

#include <array>

namespace ndef {

// A record of the message, or a run of chunks that are one.
class WholeRecord {
public:
    explicit WholeRecord(const RecordView *first) : first_(first) {}

    const RecordView *first() const { return first_; }
    const RecordView *last() const
    {
        const RecordView *piece = first_;
        while (piece->has(cf_bit))
            ++piece;
        return piece;
    }
    bool is_chunked() const { return first_->has(cf_bit); }
    uint32_t payload_length() const;
    uint8_t first_payload_byte() const; // of a payload that is not empty

    // The record in blocks of its own, or null.
    RecordPtr make() const { return is_chunked() ? join() : first_->make(); }

private:
    RecordPtr join() const;

    const RecordView *first_;
};

class Scan {
public:
    explicit Scan(ByteView message) { read(message); }
    Scan(const Scan &) = delete;
    Scan &operator=(const Scan &) = delete;

    bool valid() const { return report_.reason == NFC_NDEF_MSG_VALID; }
    const nfc_ndef_msg_report &report() const { return report_; }

    // Hands each whole record of a valid message to the visitor, in order; false as soon as the visitor returns false.
    template <class Visit> bool each(Visit visit) const
    {
        const RecordView *const end = records_.data() + count_;
        for (const RecordView *next = records_.data(); next != end;) {
            const WholeRecord record{next};
            if (!visit(record))
                return false;
            next = record.last() + 1;
        }
        return true;
    }

    // Records as they stand in the bytes, each chunk on its own, are counted from 0.
    size_t position(const WholeRecord &record) const { return static_cast<size_t>(record.first() - records_.data()); }
    WholeRecord at(size_t position) const { return WholeRecord{records_.data() + position}; }

    static constexpr size_t most_read = NFC_NDEF_MSG_MOST_RECORDS;

private:
    void read(ByteView message);
    void judge(ByteView message, const Fault &fault);
    void report(nfc_ndef_msg_reason reason, size_t record, size_t offset);

    std::array<RecordView, most_read> records_; // the first count_ are set
    size_t count_ = 0;
    nfc_ndef_msg_report report_;
};

// The bytes of a message as the public functions take them; none when the arguments are bad.
inline ByteView message_bytes(const uint8_t *data, uint32_t offset, uint32_t length)
{
    return data && offset < length ? ByteView{data + offset, length} : ByteView{};
}

} // namespace ndef
