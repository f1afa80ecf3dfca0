// Writing a message of the caller's records into a payload.
#pragma once

#include "message/message.h"
#include "record/build.h"

#include <array>

namespace ndef {

// The records of a message to come, borrowed. What goes wrong on the way is remembered, and shows in the payload.
class Draft {
public:
    // A required record: null fails.
    Draft &add(const nfc_ndef_record *record);

    // An optional record, or an array with null for what is left out.
    Draft &add_if(const nfc_ndef_record *record) { return record ? add(record) : *this; }
    Draft &add_each(uint8_t count, nfc_ndef_record *const *records);

    // The leading bytes and the encoded message. Fails when there is no record, or one that cannot be encoded.
    Payload pack(ByteView leading) const;

    class Iterator {
    public:
        explicit Iterator(const nfc_ndef_record *const *record) : record_(record) {}
        nfc_ndef_record operator*() const;
        Iterator &operator++()
        {
            ++record_;
            return *this;
        }
        bool operator==(const Iterator &) const = default;

    private:
        const nfc_ndef_record *const *record_;
    };
    Iterator begin() const { return Iterator{records_.data()}; }
    Iterator end() const { return Iterator{records_.data() + count_}; }
    size_t size() const { return count_; }

private:
    std::array<const nfc_ndef_record *, most_records> records_; // the first count_ are set
    size_t count_ = 0;
    bool ok_ = true;
};

} // namespace ndef
