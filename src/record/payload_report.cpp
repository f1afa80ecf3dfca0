#include "record/payload_report.h"

const char *nfc_ndef_payload_reason_text(uint32_t reason)
{
    switch (reason) {
    case NFC_NDEF_PAYLOAD_VALID:
        return "valid";
    case NFC_NDEF_PAYLOAD_EMPTY:
        return "there is no payload";
    case NFC_NDEF_PAYLOAD_FIELD_PAST_END:
        return "a field runs past the end";
    case NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER:
        return "bytes are left over after the last field";
    case NFC_NDEF_PAYLOAD_FIELD_TOO_LONG:
        return "a field is too long";
    case NFC_NDEF_PAYLOAD_WRONG_LENGTH:
        return "a field has a wrong length";
    case NFC_NDEF_PAYLOAD_FIELD_REPEATED:
        return "a field that may come once comes again";
    case NFC_NDEF_PAYLOAD_TOO_MANY:
        return "more fields of one kind than can be counted";
    case NFC_NDEF_PAYLOAD_NOT_A_MESSAGE:
        return "the nested message is not valid";
    case NFC_NDEF_PAYLOAD_RECORD_MISSING:
        return "a required nested record is missing";
    case NFC_NDEF_PAYLOAD_RECORD_REPEATED:
        return "a nested record that may come once comes again";
    case NFC_NDEF_PAYLOAD_VERSION_NOT_READ:
        return "the version is not one that is read";
    case NFC_NDEF_PAYLOAD_NO_TEXT:
        return "no text follows the language code";
    case NFC_NDEF_PAYLOAD_CONTROL_CHARACTER:
        return "the URI has a control character";
    case NFC_NDEF_PAYLOAD_REFERENCE_CHARACTER:
        return "the reference has a character that is not allowed there";
    case NFC_NDEF_PAYLOAD_NOTHING_SELECTED:
        return "nothing is selected, and the record is not alone in its message";
    case NFC_NDEF_PAYLOAD_RANDOMIZER_WITHOUT_HASH:
        return "there is a Randomizer R, but no Hash C";
    case NFC_NDEF_PAYLOAD_PAIRING_TYPE:
        return "the pairing type is not known";
    case NFC_NDEF_PAYLOAD_LIST_NOT_WHOLE:
        return "a list of UUIDs ends within one";
    case NFC_NDEF_PAYLOAD_FIELD_MISSING:
        return "a required field is missing";
    case NFC_NDEF_PAYLOAD_CHARACTER_NOT_ALLOWED:
        return "a name has a character that is not allowed there";
    case NFC_NDEF_PAYLOAD_NOT_UTF8:
        return "a URI is not UTF-8";
    case NFC_NDEF_PAYLOAD_NUMBER_NOT_ALLOWED:
        return "a number is not one that its field may have";
    case NFC_NDEF_PAYLOAD_FIELD_EMPTY:
        return "a field is empty that must not be";
    case NFC_NDEF_PAYLOAD_IN_CHUNKS:
        return "a nested record is in chunks";
    default:
        return "unknown reason";
    }
}
