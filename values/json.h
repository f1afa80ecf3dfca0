// Messages as JSON and back; docs/json.md describes the form.
#pragma once

#include "record.h"

#include <functional>
#include <stdexcept>

namespace nfc_ndef::values {

// Why a JSON text is not a message: the member as a JSON pointer (RFC 6901) such as /records/0/text, and the reason.
// May quote the text, so it must be made printable.
struct JsonError : std::runtime_error {
    JsonError(const std::string &member_path, const std::string &reason) : std::runtime_error(reason), path(member_path)
    {
    }
    std::string path;
};

// Ends with a line break. Characters that act on a terminal are escaped.
std::string to_json(const Records &message);

// The same for a message that was opened, handed on piece by piece, so that no more than a record is kept.
void write_json(nfc_ndef_msg_view message, const std::function<void(std::string_view text)> &write);

// The same in one line, without its end.
std::string to_json_line(const Records &message);

// The records of a message that can be encoded, and is a message when it is. Throws JsonError.
Records from_json(std::string_view text);

// The same from an object that may also have its number, `line`, which is not looked at.
Records from_json_line(std::string_view text);

// The form as a JSON Schema (draft 2020-12).
std::string json_schema();

} // namespace nfc_ndef::values
