// Records inside the library: making, filling, copying and freeing them.
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

inline ByteView payload_of(const nfc_ndef_record *record)
{
    const bool present = record && record->payload && record->payload_length != 0;
    return present ? ByteView{record->payload, record->payload_length} : ByteView{};
}

// Constructors set the Short Record flag below this length. The encoder, which does not look at the flag, writes a
// payload of exactly this length in the short form too.
constexpr uint32_t flagged_short_below = 255;

// A new record whose fields are not set yet, pointers included; or null.
[[nodiscard]] inline RecordPtr new_record()
{
    return RecordPtr{static_cast<nfc_ndef_record *>(os_block_alloc(sizeof(nfc_ndef_record)))};
}

// A new record without type, id and payload, of unknown format; or null.
[[nodiscard]] inline RecordPtr nfc_ndef_record_create_empty()
{
    RecordPtr record = new_record();
    if (record) {
        *record = {};
        record->record_type.format = NFC_NDEF_TNF_UNKNOWN;
    }
    return record;
}

// Gives a record that has its lengths, but no bytes yet, copies of the bytes; false when memory runs out.
[[nodiscard]] inline bool copy_bytes(nfc_ndef_record &record, ByteView name, ByteView id, ByteView payload)
{
    return copy_to(record.id, id) && copy_to(record.payload, payload) && copy_to(record.record_type.name, name);
}

// A record like the source, in blocks of its own, or null. A length without a pointer stays, a pointer without a length
// becomes null.
[[nodiscard]] RecordPtr copy_record(const nfc_ndef_record &source);

// The element callback for a list of records.
void nfc_ndef_record_member_free(void *record);

} // namespace ndef
