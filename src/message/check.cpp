#include "message/scan.h"

#define SPELLED(number) #number
#define IN_DIGITS(name) SPELLED(name)

using namespace ndef;

uint8_t nfc_ndef_msg_check(const uint8_t *data, uint32_t offset, uint32_t length, nfc_ndef_msg_report *report)
{
    nfc_ndef_msg_report unwanted{};
    return check(message_bytes(data, offset, length), report ? *report : unwanted);
}

const char *nfc_ndef_msg_check_text(uint32_t reason)
{
    switch (reason) {
    case NFC_NDEF_MSG_VALID:
        return "valid";
    case NFC_NDEF_MSG_BAD_ARGUMENTS:
        return "no bytes to read";
    case NFC_NDEF_MSG_HEADER_CUT_SHORT:
        return "the record header is cut short";
    case NFC_NDEF_MSG_TYPE_PAST_END:
        return "the type runs past the end";
    case NFC_NDEF_MSG_ID_PAST_END:
        return "the id runs past the end";
    case NFC_NDEF_MSG_PAYLOAD_PAST_END:
        return "the payload runs past the end";
    case NFC_NDEF_MSG_EMPTY_WITH_LENGTHS:
        return "an empty record has a type, an id or a payload";
    case NFC_NDEF_MSG_TYPE_NOT_ALLOWED:
        return "an unknown or reserved record has a type";
    case NFC_NDEF_MSG_BYTES_LEFT_OVER:
        return "bytes are left over after the last record";
    case NFC_NDEF_MSG_TOO_MANY_RECORDS:
        return "more than " IN_DIGITS(NFC_NDEF_MSG_MOST_RECORDS) " records";
    case NFC_NDEF_MSG_MB_MISSING:
        return "the Message Begin flag is missing";
    case NFC_NDEF_MSG_MB_REPEATED:
        return "the Message Begin flag is repeated";
    case NFC_NDEF_MSG_ME_MISSING:
        return "the Message End flag is missing";
    case NFC_NDEF_MSG_ME_EARLY:
        return "the Message End flag comes before the last record";
    case NFC_NDEF_MSG_CHUNK_WITH_ME:
        return "a chunk that others must follow has the Message End flag";
    case NFC_NDEF_MSG_CHUNK_FIRST_UNCHANGED:
        return "an initial chunk has the format \"unchanged\"";
    case NFC_NDEF_MSG_CHUNK_WITH_ID:
        return "a middle or terminating chunk has an id length";
    case NFC_NDEF_MSG_CHUNK_WITH_TYPE:
        return "a middle or terminating chunk has a type";
    case NFC_NDEF_MSG_CHUNK_NOT_UNCHANGED:
        return "a middle or terminating chunk has a format other than \"unchanged\"";
    case NFC_NDEF_MSG_UNCHANGED_OUTSIDE_CHUNKS:
        return "a record with the format \"unchanged\" continues no chunk";
    case NFC_NDEF_MSG_CHUNK_UNFINISHED:
        return "the bytes end before the terminating chunk";
    case NFC_NDEF_MSG_OUT_OF_MEMORY:
        return "out of memory";
    default:
        return "unknown reason";
    }
}
