/* Makes, encodes, parses and frees a message and a type, so that each kind of block is asked for and given back. */
#include "nfc_ndef.h"

#include <stdio.h>

int main(void)
{
    static const uint8_t language[] = {'e', 'n'};
    static const uint8_t text[] = {'h', 'i'};

    nfc_ndef_msg *message = nfc_ndef_msg_create();
    nfc_ndef_record *record = rtdlib_text_record_create(0, sizeof language, language, text, sizeof text);
    uint8_t *bytes = NULL;
    const int appended = nfc_ndef_msg_append_record(message, record) == 1;
    const int32_t length = nfc_ndef_msg_to_byte_array(message, &bytes);
    nfc_ndef_msg *parsed = nfc_ndef_msg_create_by_msg_offset(bytes, 0, (uint32_t)length);
    const int same = parsed && nfc_ndef_msg_get_number_of_records(parsed) == 1;
    nfc_ndef_record_type *type = nfc_ndef_record_type_create(NFC_NDEF_TNF_WELL_KNOWN, text, sizeof text);
    const int typed = type != NULL;

    nfc_ndef_record_type_delete(type);
    nfc_ndef_msg_delete(&parsed);
    os_block_dealloc(bytes);
    nfc_ndef_record_delete(&record);
    nfc_ndef_msg_delete(&message);
    puts(appended && same && typed ? "round trip done" : "round trip failed");
    return 0;
}
