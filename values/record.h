// Records as values: read from bytes, made of what they hold, and put back into bytes.
#pragma once

#include "content.h"

namespace nfc_ndef::values {

constexpr size_t max_records = NFC_NDEF_MSG_MOST_RECORDS; // of a message that is read

struct Record {
    uint32_t format = NFC_NDEF_TNF_EMPTY;
    Bytes type;
    Bytes id;
    Bytes payload;
    Content content; // what the payload reads as; changing it does not change the payload

    // Records are equal when their bytes are.
    bool operator==(const Record &other) const
    {
        return format == other.format && type == other.type && id == other.id && payload == other.payload;
    }
};

// Reads a record and those nested in it.
Record decode(const nfc_ndef_record_view &record, const Nesting &nesting = {});
Record decode(const nfc_ndef_record &record, const Nesting &nesting = {});
Records decode(const nfc_ndef_msg &message, const Nesting &nesting = {});

Records decode(nfc_ndef_msg_view message, const Nesting &nesting = {}); // those that were not handed out yet

// Reads the records of a whole message; none when the bytes are not one (nfc_ndef_msg_check() tells why).
std::optional<Records> decode(ByteView message, const Nesting &nesting = {});

// Makes a record of this content, which is not Generic; none when the values do not make one.
std::optional<Record> build(Content content, Bytes id = {});

// A record of any type; nothing looks at the payload.
Record generic_record(const Type &type, Bytes payload, Bytes id = {});

// Whether a message begins with a "Gc" record: readers accept it only as a sequence of one-record messages.
bool is_sequence(const Records &message);

// The bytes of a message; none when a record cannot be encoded. Each record of a sequence carries both MB and ME.
std::optional<Bytes> encode(const Records &message);

// A record as the C interface has it, outside any message; null when its fields cannot be those of a record.
nfc_ndef::Record to_handle(const Record &record);

// Makes the record of the content as the C interface does; null when its values make none, or it is Generic.
nfc_ndef::Record make(const Content &content);

// How many bytes precede the message nested in a record of this type; none for a type that nests no message.
std::optional<size_t> nested_at(uint32_t format, ByteView type);

// Whether it is of a type of media that is text, whatever it says, and its payload is UTF-8: then people want to read
// and edit it.
bool is_text(const Record &record);

// What people call a record: "Text", "Bluetooth OOB", also where its payload is refused; by its type where that is not
// known.
std::string title_of(const Record &record);
// The same and what it says, in so many words as a heading has room for: "URI https://example.com", "Text "Hello"
// (en)".
std::string heading_of(const Record &record);

// A type with its format, safe to look at: media type "image/png".
std::string printable_type(const Record &record);

} // namespace nfc_ndef::values
