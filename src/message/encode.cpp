#include "message/encode.h"

#include "message/message.h"

using namespace ndef;

int32_t nfc_ndef_msg_to_byte_array(const nfc_ndef_msg *ndef_msg, uint8_t **byte_array)
{
    if (!ndef_msg)
        return 0;
    require_records(ndef_msg);
    const Records records(*ndef_msg->records);
    const EncodedSize size = encoded_size(records);
    if (size.total == 0 || size.total > longest_message)
        return 0;
    const auto total = static_cast<size_t>(size.total);
    *byte_array = size.every_record ? new_block<uint8_t>(total).release() : nullptr;
    if (!*byte_array)
        return 0;
    write_message(records, Writer({*byte_array, total}));
    return static_cast<int32_t>(total);
}
