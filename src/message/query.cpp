#include "message/message.h"

using namespace ndef;

namespace {

// A new array of one entry per record that is a hit: counted in one walk, filled in a second.
template <class Entry, class IsHit, class MakeEntry>
Entry *entries(const nfc_ndef_msg *ndef_msg, uint8_t *count, const char *operation, IsHit is_hit, MakeEntry make_entry)
{
    if (count)
        *count = 0;
    if (!ndef_msg || !count)
        return nullptr;
    require_records(ndef_msg, operation);
    const Records records(*ndef_msg->records);
    size_t hits = 0;
    for (const nfc_ndef_record &record : records)
        hits += is_hit(record);
    if (hits == 0)
        return nullptr;
    Block<Entry> array = new_block<Entry>(hits);
    if (!array)
        return nullptr;
    size_t filled = 0;
    for (const nfc_ndef_record &record : records)
        if (is_hit(record))
            array[filled++] = make_entry(record);
    *count = static_cast<uint8_t>(hits);
    return array.release();
}

bool every_record(const nfc_ndef_record &) { return true; }
const nfc_ndef_record *record_itself(const nfc_ndef_record &record) { return &record; }
const nfc_ndef_record_type *its_type(const nfc_ndef_record &record) { return &record.record_type; }

} // namespace

const nfc_ndef_record **nfc_ndef_msg_get_records(const nfc_ndef_msg *ndef_msg, uint8_t *count)
{
    return entries<const nfc_ndef_record *>(ndef_msg, count, __func__, every_record, record_itself);
}

const nfc_ndef_record_type **nfc_ndef_msg_get_record_types(const nfc_ndef_msg *ndef_msg, uint8_t *count)
{
    return entries<const nfc_ndef_record_type *>(ndef_msg, count, __func__, every_record, its_type);
}

const nfc_ndef_record **nfc_ndef_msg_get_records_by_type(const nfc_ndef_msg *ndef_msg, const nfc_ndef_record_type *key,
                                                         uint8_t *count)
{
    const auto matches = [key](const nfc_ndef_record &record) {
        return nfc_ndef_record_type_equals(key, &record.record_type) != 0;
    };
    return entries<const nfc_ndef_record *>(ndef_msg, count, __func__, matches, record_itself);
}

int32_t nfc_ndef_record_index_by_type_from_msg(const nfc_ndef_msg *ndef_msg, const nfc_ndef_record_type *key)
{
    if (!ndef_msg)
        return -1;
    require_records(ndef_msg);
    int32_t position = 0;
    for (const nfc_ndef_record &record : Records(*ndef_msg->records)) {
        if (nfc_ndef_record_type_equals(key, &record.record_type))
            return position;
        ++position;
    }
    return -1;
}
