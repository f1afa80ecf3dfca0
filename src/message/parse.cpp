#include "message/message.h"
#include "message/scan.h"

using namespace ndef;

nfc_ndef_msg *nfc_ndef_msg_create_by_msg_offset(const uint8_t *data, uint32_t offset, uint32_t length)
{
    const Scan scan(message_bytes(data, offset, length));
    if (!scan.valid())
        return nullptr;
    MessagePtr message{nfc_ndef_msg_create()};
    if (!message)
        return nullptr;
    const bool complete = scan.each([&](const WholeRecord &record) { return push_record(*message, record.make()); });
    return complete ? message.release() : nullptr;
}
