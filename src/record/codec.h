// The wire form of one record: NFC Forum NDEF 1.0.
#pragma once

#include "record/record.h"

namespace ndef {

constexpr uint8_t mb_bit = 0x80;
constexpr uint8_t me_bit = 0x40;
constexpr uint8_t cf_bit = 0x20;
constexpr uint8_t sr_bit = 0x10;
constexpr uint8_t il_bit = 0x08;
constexpr uint8_t tnf_bits = 0x07;

// One record in the bytes that hold it: found and checked against their end, nothing copied. Kept small, because a
// whole message is read into an array of these on the stack.
struct RecordView {
    const uint8_t *header;
    uint32_t payload_length;
    uint8_t flags; // the header byte
    uint8_t header_length;
    uint8_t type_length;
    uint8_t id_length;

    bool has(uint8_t bit) const { return (flags & bit) != 0; }
    uint8_t format() const { return flags & tnf_bits; }
    ByteView type() const { return {header + header_length, type_length}; }
    ByteView id() const { return {type().data() + type_length, id_length}; }
    ByteView payload() const { return {id().data() + id_length, payload_length}; }
    uint32_t length() const { return header_length + uint32_t{type_length} + id_length + payload_length; }

    // The same as a type and a record that point into the bytes.
    nfc_ndef_record_type borrowed_type() const
    {
        return {.name = borrow(type()), .name_length = type_length, .format = format()};
    }
    nfc_ndef_record borrowed() const;
};

// What a record breaks, and where, counted from its header.
struct Fault {
    nfc_ndef_msg_reason reason;
    size_t offset;
};

// Finds the record at the front of the bytes; the view is set only when the reason is NFC_NDEF_MSG_VALID.
Fault find_record(ByteView bytes, RecordView &record);

// How many bytes a record takes in its wire form; 0 when it is inconsistent or would take more than 2^31 - 1.
uint32_t nfc_ndef_record_get_byte_array_length(const nfc_ndef_record &record);

// The MB, ME and CF bits of a record's own flags.
inline uint8_t position_bits(const nfc_ndef_record &record)
{
    return static_cast<uint8_t>((record.mb ? mb_bit : 0) | (record.me ? me_bit : 0) | (record.cf ? cf_bit : 0));
}

// Writes a record that has a length; `position` holds the MB, ME and CF bits.
void nfc_ndef_record_write_to_byte_array(const nfc_ndef_record &record, Writer &out, uint8_t position);

} // namespace ndef
