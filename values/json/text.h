// JSON text as values, within bounds: the text may come from anywhere.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace nfc_ndef::values {

// The path of a member, with the characters escaped that a JSON pointer (RFC 6901) escapes.
std::string member_path(const std::string &parent, std::string_view name);

// Throws JsonError for what is not JSON, has a member twice or nests too deep.
nlohmann::json parse_json(std::string_view text);

// Text that ends with a line break, in which characters that act on a terminal are escaped.
std::string written(const nlohmann::ordered_json &json);
// The same in one line, without its end.
std::string written_in_a_line(const nlohmann::ordered_json &json);

} // namespace nfc_ndef::values
