#include "record/build.h"

namespace ndef {

RecordPtr record_of(const KnownType &type, Payload payload, ByteView id)
{
    if (payload.length() == 0)
        return nullptr;
    RecordPtr record = nfc_ndef_record_create_empty();
    if (!record)
        return nullptr;
    record->record_type.format = type.format;
    record->record_type.name_length = static_cast<uint8_t>(type.name.size());
    record->il = !id.empty();
    record->id_length = static_cast<uint8_t>(id.size());
    if (!copy_bytes(*record, type.bytes(), id, {}))
        return nullptr;
    record->sr = payload.length() < flagged_short_below;
    record->payload_length = payload.length();
    record->payload = payload.release();
    return record;
}

RecordPtr lone_record_of(const KnownType &type, Payload payload)
{
    RecordPtr record = record_of(type, std::move(payload));
    if (record)
        record->mb = record->me = record->sr = 1;
    return record;
}

} // namespace ndef
