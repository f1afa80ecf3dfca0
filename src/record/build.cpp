#include "record/build.h"

namespace ndef {

RecordPtr record_of(const nfc_ndef_record_type &type, Payload &payload, ByteView id)
{
    if (!payload.ready())
        return nullptr;
    nfc_ndef_record fields = nfc_ndef_record_create_empty();
    fields.record_type = type;
    fields.il = !id.empty();
    fields.id = borrow(id);
    fields.id_length = static_cast<uint8_t>(id.size());
    RecordPtr record = copy_record(fields);
    if (!record)
        return nullptr;
    record->sr = payload.size() < 255;
    record->payload_length = payload.size();
    record->payload = payload.release();
    return record;
}

RecordPtr lone_record_of(const nfc_ndef_record_type &type, Payload &payload)
{
    RecordPtr record = record_of(type, payload);
    if (record)
        record->mb = record->me = record->sr = 1;
    return record;
}

} // namespace ndef
