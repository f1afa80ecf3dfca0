// What all targets share: the statement that must hold, the bytes of an input as fields, the host's memory, records.
#pragma once

#include <nfc_ndef.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace fuzz {

using ByteView = std::span<const uint8_t>;
using Bytes = std::vector<uint8_t>;

// Each target defines this one function. What it allocates from the host must be freed when it returns.
void run(ByteView input);

// Stops the program, which is how the fuzzer learns of a finding.
void must(bool holds, const char *property, const char *file = __builtin_FILE(), unsigned line = __builtin_LINE());

// What the blocks handed out since this object was made took at most, in bytes as asked for.
struct Memory {
    Memory();
    size_t peak() const;
    size_t allocations() const;

    const size_t bytes_before, allocations_before;
};

// Makes the n-th allocation from here, counted from 1, return null.
void fail_allocation(size_t n);

// Lets allocations succeed again and tells whether one failed.
bool end_failure();

// The memory that the library may take for so many bytes. Nothing costs more than a record of three bytes, which comes
// as a record and a node of the list; what is left is the message and its list, or the largest structure.
constexpr size_t cost_of_record = sizeof(nfc_ndef_record) + 3 * sizeof(void *);
constexpr size_t cost_of_message = sizeof(nfc_ndef_msg) + 4 * sizeof(void *);
constexpr size_t bytes_per_byte = (cost_of_record + 2) / 3;
constexpr size_t most_memory(size_t length)
{
    return std::max(cost_of_message, sizeof(nfc_ndef_bt_rtd_2_1_str)) + bytes_per_byte * length;
}

class Input {
public:
    explicit Input(ByteView bytes) : left_(bytes) {}
    bool empty() const { return left_.empty(); }
    ByteView take(size_t length)
    {
        const ByteView taken = left_.first(std::min(length, left_.size()));
        left_ = left_.subspan(taken.size());
        return taken;
    }
    ByteView rest() { return take(left_.size()); }
    uint8_t u8()
    {
        const ByteView byte = take(1);
        return byte.empty() ? uint8_t{0} : byte[0];
    }

private:
    ByteView left_;
};

// The pointer that goes with a length: null when that is 0.
inline const uint8_t *pointer(ByteView bytes) { return bytes.empty() ? nullptr : bytes.data(); }
inline uint8_t length8(ByteView bytes) { return static_cast<uint8_t>(bytes.size()); }
inline uint32_t length32(ByteView bytes) { return static_cast<uint32_t>(bytes.size()); }
inline bool equal(ByteView a, ByteView b) { return std::equal(a.begin(), a.end(), b.begin(), b.end()); }

inline ByteView payload_of(const nfc_ndef_record &record) { return {record.payload, record.payload_length}; }
inline ByteView id_of(const nfc_ndef_record &record) { return {record.id, record.id_length}; }
inline ByteView name_of(const nfc_ndef_record &record)
{
    return {record.record_type.name, record.record_type.name_length};
}

// The same type, id and payload.
bool same(const nfc_ndef_record &a, const nfc_ndef_record &b);

// Chunks can give an empty record a payload, and editing an id: then it has no wire form in one piece.
inline bool is_encodable(const nfc_ndef_record &record)
{
    return record.record_type.format != NFC_NDEF_TNF_EMPTY || (!record.payload && !record.id);
}

// The wire form; empty when there is none.
Bytes encoded(const nfc_ndef_record &record);
Bytes encoded(const nfc_ndef_msg &message);

nfc_ndef::Record make_record(uint32_t format, ByteView name, ByteView id, ByteView payload);
inline ByteView bytes_of(std::string_view text)
{
    return {reinterpret_cast<const uint8_t *>(text.data()), text.size()};
}

} // namespace fuzz
