// Writing messages into the caller's buffer.
#include "message/encode.h"
#include "message/message.h"
#include "message/view.h"

using namespace ndef;

// In one walk: each record is written if it still fits behind those before it.
uint32_t nfc_ndef_msg_write(const nfc_ndef_msg *ndef_msg, uint8_t *buffer, uint32_t capacity)
{
    if (!ndef_msg)
        return 0;
    require_records(ndef_msg);
    const Records records(*ndef_msg->records);
    uint64_t total = 0;
    uint8_t framing = mb_bit;
    size_t left = records.size();
    for (const nfc_ndef_record &record : records) {
        const uint32_t length = nfc_ndef_record_get_byte_array_length(record);
        if (length == 0)
            return 0;
        if (--left == 0)
            framing |= me_bit;
        if (total + length <= capacity) {
            Writer out({buffer + total, length});
            nfc_ndef_record_write_to_byte_array(record, out, framing);
        }
        framing = 0;
        total += length;
    }
    return total <= longest_message ? static_cast<uint32_t>(total) : 0;
}

void nfc_ndef_msg_writer_begin(nfc_ndef_msg_writer *writer, uint8_t *buffer, uint32_t capacity)
{
    *writer = {.buffer = buffer, .capacity = capacity, .length = 0, .last = 0, .record_count = 0, .failed = 0};
}

uint8_t nfc_ndef_msg_writer_add(nfc_ndef_msg_writer *writer, const nfc_ndef_record_view *record)
{
    const nfc_ndef_record header = described(*record);
    const uint32_t length = encoded_length(*record, header);
    const uint64_t total = uint64_t{writer->length} + length;
    if (writer->failed || length == 0 || writer->record_count == most_read || total > longest_message) {
        writer->failed = 1;
        return 0;
    }
    if (total <= writer->capacity) {
        if (writer->record_count != 0) // the one before may have been the last for a while
            writer->buffer[writer->last] &= static_cast<uint8_t>(~me_bit);
        Writer out({writer->buffer + writer->length, length});
        write_header_apart(header, out, writer->record_count == 0 ? mb_bit : 0);
        write_payload(*record, out);
    }
    writer->last = writer->length;
    writer->length = static_cast<uint32_t>(total);
    ++writer->record_count;
    return 1;
}

uint32_t nfc_ndef_msg_writer_end(nfc_ndef_msg_writer *writer)
{
    if (writer->failed || writer->record_count == 0)
        return 0;
    if (writer->length <= writer->capacity)
        writer->buffer[writer->last] |= me_bit;
    return writer->length;
}
