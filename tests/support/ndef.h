// Bytes, records and messages in as few words as a table of test cases has room for.
#pragma once

#include "blocks.h"
#include "nfc_ndef.hpp"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace test {

using nfc_ndef::Message;
using nfc_ndef::Record;
using nfc_ndef::RecordType;
using Bytes = std::vector<uint8_t>;

// Bytes written as hex, with or without spaces, where "78*255" is 255 times the same: bytes("D1 01 FF 54 61*255").
Bytes bytes(std::string_view hex);
// The characters of a text as bytes.
Bytes text(std::string_view characters);
Bytes filled(size_t count, uint8_t value);
// The bytes of `count` records, at least two: the first, the last, and all between.
Bytes sequence(size_t count, std::string_view first, std::string_view between, std::string_view last);
Bytes operator+(Bytes left, const Bytes &right);
// A copy of what the library handed out; null gives no bytes.
Bytes copy(const uint8_t *data, size_t length);
// Upper case, without spaces.
std::string hex(const Bytes &data);
// A text in which "78*255" stands for as many digits.
std::string expanded(std::string_view text);

// How the interface wants a byte string: null exactly when there are no bytes.
inline const uint8_t *ptr(const Bytes &data) { return data.empty() ? nullptr : data.data(); }

// A heap copy without a spare byte before or behind it, so that AddressSanitizer sees the first byte too far.
class Exact {
public:
    explicit Exact(const Bytes &data);
    const uint8_t *data() const { return copy_.get(); }
    uint32_t size() const { return size_; }

private:
    std::unique_ptr<uint8_t[]> copy_;
    uint32_t size_;
};

// A copy in a block of the host allocator, for the calls that take a buffer over.
uint8_t *owned(const Bytes &data);

RecordType type(uint32_t format, std::string_view name);
Record record(uint32_t format, std::string_view type_name, const Bytes &payload, const Bytes &id = {});
// A well-known "T", "U", ... record.
Record well_known(std::string_view type_name, const Bytes &payload, const Bytes &id = {});
// A record around a payload whose type no extractor looks at, and on which reading in place agrees with them.
Record with_payload(const Bytes &payload);
// A message of copies of the records.
Message message(const std::vector<const nfc_ndef_record *> &records);

// Decodes an exact copy of the bytes, in which reading in place agrees; null when refused.
Record decode(const Bytes &data);
Message parse(const Bytes &data);
// Encodes; no bytes when refused. Fails the test when pointer and length disagree.
Bytes encode(const nfc_ndef_record *record);
inline Bytes encode(const Record &record) { return encode(record.get()); }
Bytes encode(const Message &message);

Bytes payload_of(const nfc_ndef_record *record);
Bytes id_of(const nfc_ndef_record *record);
std::string type_of(const nfc_ndef_record *record);
const nfc_ndef_record *at(const Message &message, uint8_t position);
// A record as its flags (mb me cf sr il), format, type, id, payload and parsed length: "11010:1T/6964/61/6".
std::string described(const nfc_ndef_record *record);
// The payloads in order, as characters, which is enough to tell the records of a message apart.
std::string contents(const Message &message);

} // namespace test
