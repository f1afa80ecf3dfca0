#include "record/record.h"

namespace ndef {

namespace {

bool paired(const void *bytes, size_t length) { return (bytes != nullptr) == (length != 0); }

} // namespace

RecordPtr copy_record(const nfc_ndef_record &source)
{
    RecordPtr copy = nfc_ndef_record_create_empty();
    if (!copy)
        return nullptr;
    const nfc_ndef_record_type &type = source.record_type;
    *copy = source;
    copy->id = copy->payload = copy->record_type.name = nullptr;
    const bool complete =
        copy_bytes(*copy, bytes_of(type.name, type.name_length), bytes_of(source.id, source.id_length),
                   bytes_of(source.payload, source.payload_length));
    return complete ? std::move(copy) : nullptr;
}

void nfc_ndef_record_member_free(void *record)
{
    if (record)
        free_record(static_cast<nfc_ndef_record *>(record));
}

} // namespace ndef

using namespace ndef;

nfc_ndef_record *nfc_ndef_record_create_from_param(const nfc_ndef_record_type *type, const uint8_t *id,
                                                   uint8_t id_length, const uint8_t *payload, uint32_t payload_length)
{
    if (!type || !paired(id, id_length) || !paired(payload, payload_length))
        return nullptr;
    RecordPtr record = nfc_ndef_record_create_empty();
    if (!record)
        return nullptr;
    record->record_type.format = type->format;
    if (type->format == NFC_NDEF_TNF_EMPTY)
        return record.release();
    ByteView name;
    if (type->format != NFC_NDEF_TNF_UNKNOWN && type->name)
        name = {type->name, type->name_length};
    record->record_type.name_length = static_cast<uint8_t>(name.size());
    record->il = id != nullptr;
    record->id_length = id_length;
    record->sr = payload && payload_length < flagged_short_below;
    record->payload_length = payload_length;
    return copy_bytes(*record, name, {id, id_length}, {payload, payload_length}) ? record.release() : nullptr;
}

nfc_ndef_record *nfc_ndef_rec_create_and_copy(const nfc_ndef_record *record)
{
    return record ? copy_record(*record).release() : nullptr;
}

void nfc_ndef_record_delete(nfc_ndef_record **record)
{
    if (!record || !*record)
        return;
    free_record(*record);
    *record = nullptr;
}

const uint8_t *nfc_ndef_record_get_id(const nfc_ndef_record *record, uint8_t *id_length)
{
    if (!record || !record->id || record->id_length == 0)
        return nullptr;
    *id_length = record->id_length;
    return record->id;
}

const uint8_t *nfc_ndef_record_get_payload(const nfc_ndef_record *record, uint32_t *payload_length)
{
    if (!record || !record->payload || record->payload_length == 0) {
        *payload_length = 0;
        return nullptr;
    }
    *payload_length = record->payload_length;
    return record->payload;
}

uint32_t nfc_ndef_record_get_payload_length(const nfc_ndef_record *record)
{
    return record ? record->payload_length : 0;
}

const nfc_ndef_record_type *nfc_ndef_record_get_record_type(const nfc_ndef_record *record)
{
    return record ? &record->record_type : nullptr;
}

uint8_t nfc_ndef_record_set_id(nfc_ndef_record *record, uint8_t *id, uint8_t id_length)
{
    if (!record || !paired(id, id_length) || !paired(record->id, record->id_length))
        return 0;
    if (record->id && record->id != id)
        os_block_dealloc(record->id);
    record->id = id;
    record->id_length = id_length;
    return id_length;
}

uint8_t nfc_ndef_record_append_payload(nfc_ndef_record *record, const uint8_t *data, uint32_t data_length)
{
    const ByteView old = payload_of(record);
    if (old.empty() || !data || data_length == 0 || data_length > UINT32_MAX - old.size())
        return NFC_NDEF_REFUSED;
    // On a 32-bit host a size_t holds just what the check above let through.
    const size_t length = old.size() + data_length;
    Block<uint8_t> joined = new_block<uint8_t>(length);
    if (!joined)
        return NFC_NDEF_REFUSED;
    Writer({joined.get(), length}).bytes(old).bytes({data, data_length});
    os_block_dealloc(record->payload);
    record->payload = joined.release();
    record->payload_length = static_cast<uint32_t>(length);
    return NFC_NDEF_OK;
}
