// Opens a whole message, and says why bytes are not one.
#pragma once

#include <nfc_ndef/record.h>

#include <string>

namespace tool {

// "record 1, byte 12: a payload runs past the end" for bytes that are not a message; records count from 1.
std::string reason_of(const nfc_ndef_msg_report &report);

// "byte 7: a required nested record is missing" for a payload that its reader refuses.
std::string reason_of(const nfc_ndef_payload_report &report);

// Both throw Failure, exit_refused, with the path and the reason when the bytes are not a message.
nfc_ndef_msg_view open_message(nfc_ndef::values::ByteView bytes, const std::string &path);
nfc_ndef::values::Records parse_message(nfc_ndef::values::ByteView bytes, const std::string &path);

// The records that a JSON text says. Throws Failure, exit_refused, with the path and the member that is wrong.
nfc_ndef::values::Records parse_json(nfc_ndef::values::ByteView text, const std::string &path);

} // namespace tool
