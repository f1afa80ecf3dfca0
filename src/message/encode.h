// Writing records one after another as one NDEF message, wherever the records are kept.
#pragma once

#include "record/codec.h"

namespace ndef {

struct EncodedSize {
    uint64_t total = 0;       // of the records that can be encoded
    bool every_record = true; // can be
};

template <class Range> EncodedSize encoded_size(const Range &records)
{
    EncodedSize size;
    for (const nfc_ndef_record &record : records) {
        const uint32_t length = nfc_ndef_record_get_byte_array_length(record);
        size.total += length;
        size.every_record &= length != 0;
    }
    return size;
}

// MB and ME come from a record's place; chunks are never written. Returns the writer behind the last record.
template <class Range> Writer write_message(const Range &records, Writer out)
{
    uint8_t framing = mb_bit;
    size_t left = records.size();
    for (const nfc_ndef_record &record : records) {
        if (--left == 0)
            framing |= me_bit;
        nfc_ndef_record_write_to_byte_array(record, out, framing);
        framing = 0;
    }
    return out;
}

constexpr uint64_t longest_message = INT32_MAX;

} // namespace ndef
