#include "message/draft.h"

#include "message/encode.h"

namespace ndef {

Draft &Draft::add(const nfc_ndef_record *record)
{
    if (record && count_ < most_records)
        records_[count_++] = record;
    else
        ok_ = false;
    return *this;
}

Draft &Draft::add_each(uint8_t count, nfc_ndef_record *const *records)
{
    for (uint8_t i = 0; records && i < count; ++i)
        add_if(records[i]);
    return *this;
}

// A message holds copies, and copying a record drops a pointer that has no length.
nfc_ndef_record Draft::Iterator::operator*() const
{
    nfc_ndef_record record = **record_;
    if (record.id_length == 0)
        record.id = nullptr;
    if (record.payload_length == 0)
        record.payload = nullptr;
    if (record.record_type.name_length == 0)
        record.record_type.name = nullptr;
    return record;
}

Payload Draft::pack(ByteView leading) const
{
    const EncodedSize size = encoded_size(*this);
    if (!ok_ || !size.every_record || size.total == 0 || size.total > longest_message)
        return {};
    return laid_out([&](Writer &out) { out = write_message(*this, out.bytes(leading)); }, leading.size() + size.total);
}

} // namespace ndef
