// Records inside the library: owned ones, and borrowed ones that live on the stack and point to somebody else's bytes.
#pragma once

#include "host/block.h"

namespace ndef {

// Frees a record with all that it owns.
inline void free_record(nfc_ndef_record *record)
{
    if (record->id)
        os_block_dealloc(record->id);
    if (record->payload)
        os_block_dealloc(record->payload);
    if (record->record_type.name)
        os_block_dealloc(record->record_type.name);
    os_block_dealloc(record);
}

struct RecordDelete {
    void operator()(nfc_ndef_record *record) const noexcept { free_record(record); }
};
using RecordPtr = std::unique_ptr<nfc_ndef_record, RecordDelete>;

// Bytes for the fields of a borrowed record or type, which nobody writes to or frees.
inline uint8_t *borrow(ByteView bytes) { return bytes.empty() ? nullptr : const_cast<uint8_t *>(bytes.data()); }

inline ByteView payload_of(const nfc_ndef_record *record)
{
    uint32_t length = 0;
    const uint8_t *payload = nfc_ndef_record_get_payload(record, &length);
    return {payload, length};
}

// The flags, lengths and format of a new record: all 0 and unknown.
constexpr nfc_ndef_record nfc_ndef_record_create_empty()
{
    nfc_ndef_record record{};
    record.record_type.format = NFC_NDEF_TNF_UNKNOWN;
    return record;
}

// The bytes of a field of a record that may be inconsistent.
inline ByteView bytes_of(const uint8_t *field, size_t length) { return {field, field ? length : 0}; }

// A record like the source, in blocks of its own, or null. A length without a pointer stays, a pointer without a length
// becomes null.
[[nodiscard]] inline RecordPtr copy_record(const nfc_ndef_record &source)
{
    RecordPtr copy{static_cast<nfc_ndef_record *>(os_block_alloc(sizeof source))};
    if (!copy)
        return nullptr;
    *copy = source;
    copy->id = copy->payload = copy->record_type.name = nullptr;
    const nfc_ndef_record_type &type = source.record_type;
    if (!copy_to(copy->id, bytes_of(source.id, source.id_length)) ||
        !copy_to(copy->payload, bytes_of(source.payload, source.payload_length)) ||
        !copy_to(copy->record_type.name, bytes_of(type.name, type.name_length)))
        return nullptr;
    return copy;
}

// The element callback for a list of records.
void nfc_ndef_record_member_free(void *record);

} // namespace ndef
