// Reading a message in place: every record found, every rule of NFC Forum NDEF 1.0 applied, nothing allocated. The
// parser, the check and the nested types all stand on it.
#pragma once

#include "record/codec.h"

#include <array>

namespace ndef {

// A record of the message, or a run of chunks that are one.
class WholeRecord {
public:
    WholeRecord(const RecordView *first, const RecordView *last) : first_(first), last_(last) {}

    const RecordView *first() const { return first_; }
    nfc_ndef_record_type borrowed_type() const { return first_->borrowed_type(); }
    uint32_t payload_length() const;
    uint8_t first_payload_byte() const; // of a payload that is not empty

    // The record as it reads from the bytes, chunks joined; a joined payload has its length but no bytes.
    nfc_ndef_record borrowed() const;

    // The record in blocks of its own, or null.
    RecordPtr make() const;

private:
    const RecordView *first_;
    const RecordView *last_;
};

class Scan {
public:
    explicit Scan(ByteView message);
    Scan(const Scan &) = delete;
    Scan &operator=(const Scan &) = delete;

    bool valid() const { return report_.reason == NFC_NDEF_MSG_VALID; }
    const nfc_ndef_msg_report &report() const { return report_; }

    // Walks the whole records of a valid message, in order.
    class Iterator {
    public:
        explicit Iterator(const RecordView *first) : first_(first) {}
        WholeRecord operator*() const { return {first_, last()}; }
        Iterator &operator++()
        {
            first_ = last() + 1;
            return *this;
        }
        bool operator==(const Iterator &) const = default;

    private:
        const RecordView *last() const
        {
            const RecordView *record = first_;
            while (record->has(cf_bit))
                ++record;
            return record;
        }
        const RecordView *first_;
    };
    Iterator begin() const { return Iterator{records_.data()}; }
    Iterator end() const { return Iterator{records_.data() + count_}; }

    // Records as they stand in the bytes, each chunk on its own, are counted from 0.
    size_t size() const { return count_; }
    size_t position(const WholeRecord &record) const { return static_cast<size_t>(record.first() - records_.data()); }
    WholeRecord at(size_t position) const { return *Iterator{records_.data() + position}; }

    static constexpr size_t most_records = 254;

private:
    nfc_ndef_msg_report read(ByteView message);
    nfc_ndef_msg_reason check_begin(const RecordView &record) const;
    nfc_ndef_msg_reason check_chunk(const RecordView &record);
    nfc_ndef_msg_report broken(nfc_ndef_msg_reason reason, size_t record) const;

    std::array<RecordView, most_records> records_; // the first count_ are set
    size_t count_ = 0;
    uint32_t whole_count_ = 0;
    const RecordView *stray_ = nullptr; // the first record that would be a chunk, if there were any
    bool chunked_ = false;              // there are
    bool in_run_ = false;               // and the last record was one that others must follow
    bool one_record_messages_ = false;  // a Generic Control record leads a sequence of messages of one record each
    nfc_ndef_msg_report report_;
};

// The bytes of a message as the public functions take them; none when the arguments are bad.
inline ByteView message_bytes(const uint8_t *data, uint32_t offset, uint32_t length)
{
    return data && offset < length ? ByteView{data + offset, length} : ByteView{};
}

} // namespace ndef
