// A message as JSON and back; docs/json.md and docs/ndef-message.schema.json describe the form.
#pragma once

#include "model.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace tool {

// Why a JSON text is not a message: the member as a JSON pointer such as /records/0/text, and the reason. May quote the
// text, so it must be made printable.
struct JsonError : std::runtime_error {
    JsonError(const std::string &member_path, const std::string &reason) : std::runtime_error(reason), path(member_path)
    {
    }
    std::string path;
};

// Ends with a line break. Characters that act on a terminal are escaped.
std::string to_json(const model::Records &message);

// The bytes of the message. Throws JsonError.
model::Bytes from_json(std::string_view text);

} // namespace tool
