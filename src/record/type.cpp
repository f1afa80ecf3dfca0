#include "host/block.h"

using ndef::Block;
using ndef::copy_of;
using ndef::new_zeroed_block;

static bool has_no_name(uint32_t format) { return format == NFC_NDEF_TNF_EMPTY || format == NFC_NDEF_TNF_UNKNOWN; }

nfc_ndef_record_type *nfc_ndef_record_type_create(uint32_t format, const uint8_t *name, uint8_t name_length)
{
    const bool named = name_length != 0;
    if ((name != nullptr) != named || has_no_name(format) == named)
        return nullptr;
    Block<nfc_ndef_record_type> type = new_zeroed_block<nfc_ndef_record_type>(1);
    if (!type)
        return nullptr;
    type[0].format = format;
    type[0].name_length = name_length;
    if (named) {
        type[0].name = copy_of({name, name_length}).release();
        if (!type[0].name)
            return nullptr;
    }
    return type.release();
}

void nfc_ndef_record_type_delete(nfc_ndef_record_type *type)
{
    if (!type)
        return;
    if (type->name)
        os_block_dealloc(type->name);
    os_block_dealloc(type);
}

const uint8_t *nfc_ndef_record_type_get_name(const nfc_ndef_record_type *type, uint8_t *name_length)
{
    *name_length = 0;
    if (!type || has_no_name(type->format) || !type->name || type->name_length == 0)
        return nullptr;
    *name_length = type->name_length;
    return type->name;
}

uint32_t nfc_ndef_record_type_get_format(const nfc_ndef_record_type *type) { return type ? type->format : 255; }
