// Records inside the library: owned ones, and borrowed ones that live on the stack and point to somebody else's bytes.
#pragma once

#include "host/block.h"

namespace ndef {

struct RecordDelete {
    void operator()(nfc_ndef_record *record) const noexcept { nfc_ndef_record_delete(&record); }
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

// A record like the source, in blocks of its own, or null. A length without a pointer stays, a pointer without a length
// becomes null.
[[nodiscard]] RecordPtr copy_record(const nfc_ndef_record &source);

// The element callback for a list of records.
void nfc_ndef_record_member_free(void *record);

} // namespace ndef
