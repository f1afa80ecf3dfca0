// Reading a message in place: every record found, every rule applied, nothing allocated. The parser, the check, the
// views and the nested types all stand on it.
#pragma once

#include "record/codec.h"
#include "record/known_type.h"

#include <array>

namespace ndef {

// A Generic Control record leads a sequence of messages of one record each.
inline bool is_generic_control(const RecordView &record)
{
    constexpr std::string_view name = known::generic_control.name;
    return record.type_length == name.size() && std::memcmp(record.body, name.data(), name.size()) == 0;
}

inline bool is_unchanged(const RecordView &record) { return record.format() == NFC_NDEF_TNF_UNCHANGED; }

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
    bool in_run() const { return (before_ & cf_bit) != 0; }
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

constexpr size_t most_read = NFC_NDEF_MSG_MOST_RECORDS;

// What is to be reported of an unusual message, of which so many records were found before the fault, if any.
nfc_ndef_msg_report judge(ByteView message, size_t count, const Fault &fault);

// Checks a message. Each record that is found is shown to the visitor on the way, with whether it continues a run of
// chunks; what the visitor saw counts only when the message is valid. First all records are found, as far as they
// decode. Only what is unusual is looked at again.
template <class Visit> [[gnu::always_inline]] inline nfc_ndef_msg_report check(ByteView message, Visit visit)
{
    if (message.empty())
        return {NFC_NDEF_MSG_BAD_ARGUMENTS, 0, 0};
    Fault fault{NFC_NDEF_MSG_VALID, 0};
    Reader in(message);
    Usual usual;
    RecordView first{};
    size_t count = 0;
    do {
        if (count == most_read) [[unlikely]] {
            fault = {NFC_NDEF_MSG_TOO_MANY_RECORDS, 0};
            break;
        }
        RecordView record;
        fault = find_record(in, record);
        if (fault.reason != NFC_NDEF_MSG_VALID) [[unlikely]]
            break;
        visit(record, usual.in_run());
        usual.next(record);
        if (count++ == 0)
            first = record;
    } while (in.left() != 0);

    if (fault.reason == NFC_NDEF_MSG_VALID && usual.holds(first))
        return {NFC_NDEF_MSG_VALID, static_cast<uint32_t>(count - usual.joined()),
                static_cast<uint32_t>(message.size())};
    return judge(message, count, fault);
}

// As above, for who only wants to know: whether it is valid, and the report.
bool check(ByteView message, nfc_ndef_msg_report &report);

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
    explicit Scan(ByteView message);
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

private:
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
