#include "message/message.h"

#include <algorithm>

namespace ndef {

namespace {

ctlDListNode *node_at(const ctlDList &list, uint32_t position)
{
    ctlDListNode *node = list.first;
    for (; node && position > 0; --position)
        node = node->next;
    return node;
}

nfc_ndef_record *nfc_ndef_msg_record_by_index(const nfc_ndef_msg *ndef_msg, uint8_t position)
{
    if (!ndef_msg)
        return nullptr;
    require_records(ndef_msg);
    const ctlDListNode *node = node_at(*ndef_msg->records, position);
    return node ? record_at(node) : nullptr;
}

nfc_ndef_record *nfc_ndef_msg_record_by_id(const nfc_ndef_msg *ndef_msg, const uint8_t *id, uint8_t id_length)
{
    if (!ndef_msg || !id || id_length == 0)
        return nullptr;
    require_records(ndef_msg);
    for (nfc_ndef_record &record : Records(*ndef_msg->records))
        if (record.id && record.id_length == id_length && std::equal(id, id + id_length, record.id))
            return &record;
    return nullptr;
}

} // namespace

} // namespace ndef

using namespace ndef;

nfc_ndef_msg *nfc_ndef_msg_create(void)
{
    Block<nfc_ndef_msg> message = new_block<nfc_ndef_msg>(1);
    if (!message)
        return nullptr;
    message[0].records = ctlDListCreateConfig(CTL_NODE_CFG_NODE, &ctlMemberConfig_NoAlloc);
    return message[0].records ? message.release() : nullptr;
}

void nfc_ndef_msg_delete(nfc_ndef_msg **ndef_msg)
{
    if (!ndef_msg || !*ndef_msg)
        return;
    if ((*ndef_msg)->records)
        ctlDListDestroyFree((*ndef_msg)->records, nfc_ndef_record_member_free);
    os_block_dealloc(*ndef_msg);
    *ndef_msg = nullptr;
}

nfc_ndef_msg *nfc_ndef_msg_copy(const nfc_ndef_msg *msg)
{
    if (!msg)
        return nullptr;
    require(msg->records != nullptr, "((void *)0) != msg->records");
    MessagePtr copy{nfc_ndef_msg_create()};
    if (!copy)
        return nullptr;
    for (const nfc_ndef_record &record : Records(*msg->records))
        if (!push_record(*copy, copy_record(record)))
            return nullptr;
    return copy.release();
}

nfc_ndef_msg *nfc_ndef_msg_create_by_records(nfc_ndef_record **records, uint8_t count)
{
    if (!records || count == 0)
        return nullptr;
    MessagePtr message{nfc_ndef_msg_create()};
    if (!message)
        return nullptr;
    for (uint8_t i = 0; i < count; ++i)
        if (nfc_ndef_msg_append_record(message.get(), records[i]) != NFC_NDEF_OK)
            return nullptr;
    for (uint8_t i = 0; i < count; ++i)
        nfc_ndef_record_delete(&records[i]);
    os_block_dealloc(records);
    return message.release();
}

uint32_t nfc_ndef_msg_append_record(nfc_ndef_msg *ndef_msg, const nfc_ndef_record *record)
{
    if (!ndef_msg || !record)
        return NFC_NDEF_REFUSED;
    require_records(ndef_msg);
    if (ndef_msg->records->count >= most_records || !push_record(*ndef_msg, copy_record(*record)))
        return NFC_NDEF_REFUSED;
    return NFC_NDEF_OK;
}

uint32_t nfc_ndef_msg_insert_record(nfc_ndef_msg *ndef_msg, uint8_t position, nfc_ndef_record *record)
{
    if (!ndef_msg)
        return NFC_NDEF_REFUSED;
    require_records(ndef_msg);
    ctlDList &list = *ndef_msg->records;
    if (position > list.count || !record || list.count >= most_records)
        return NFC_NDEF_REFUSED;
    if (list.count == 0) {
        if (nfc_ndef_msg_append_record(ndef_msg, record) != NFC_NDEF_OK)
            return NFC_NDEF_REFUSED;
        nfc_ndef_record_delete(&record);
        return NFC_NDEF_OK;
    }
    return ctlDListInsertBefore(&list, node_at(list, position), record) ? NFC_NDEF_OK : NFC_NDEF_REFUSED;
}

uint32_t nfc_ndef_msg_set_record(nfc_ndef_msg *ndef_msg, uint8_t position, nfc_ndef_record *record)
{
    if (!ndef_msg)
        return NFC_NDEF_REFUSED;
    require_records(ndef_msg);
    ctlDListNode *const node = node_at(*ndef_msg->records, position);
    if (!node || !record)
        return NFC_NDEF_REFUSED;
    nfc_ndef_record *replaced = record_at(node);
    node->member = record;
    nfc_ndef_record_delete(&replaced);
    return NFC_NDEF_OK;
}

uint32_t nfc_ndef_msg_remove_record(nfc_ndef_msg *ndef_msg, uint8_t position)
{
    if (!ndef_msg)
        return NFC_NDEF_REFUSED;
    require_records(ndef_msg);
    if (position >= ndef_msg->records->count)
        return NFC_NDEF_REFUSED;
    ctlDListNode *iterator = node_at(*ndef_msg->records, position);
    require(iterator != nullptr, "((void *)0) != (iterator)");
    nfc_ndef_record *removed = record_at(iterator);
    ctlDListRemoveAt(ndef_msg->records, &iterator);
    nfc_ndef_record_delete(&removed);
    return NFC_NDEF_OK;
}

const nfc_ndef_record *nfc_ndef_msg_get_record_by_index(const nfc_ndef_msg *ndef_msg, uint8_t position)
{
    return nfc_ndef_msg_record_by_index(ndef_msg, position);
}

nfc_ndef_record *nfc_ndef_msg_edit_record_by_index(nfc_ndef_msg *ndef_msg, uint8_t position)
{
    return nfc_ndef_msg_record_by_index(ndef_msg, position);
}

const nfc_ndef_record *nfc_ndef_msg_get_record_by_id(const nfc_ndef_msg *ndef_msg, const uint8_t *id, uint8_t id_length)
{
    return nfc_ndef_msg_record_by_id(ndef_msg, id, id_length);
}

nfc_ndef_record *nfc_ndef_msg_edit_record_by_id(nfc_ndef_msg *ndef_msg, const uint8_t *id, uint8_t id_length)
{
    return nfc_ndef_msg_record_by_id(ndef_msg, id, id_length);
}

uint8_t nfc_ndef_msg_get_number_of_records(const nfc_ndef_msg *ndef_msg)
{
    if (!ndef_msg)
        return 0;
    require_records(ndef_msg);
    return static_cast<uint8_t>(ndef_msg->records->count);
}
