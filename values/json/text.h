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
// The same as an entry of an array, so many blanks from the margin and without the line break.
std::string written_as_entry(const nlohmann::ordered_json &json, size_t margin);
// The same in one line, without its end.
std::string written_in_a_line(const nlohmann::ordered_json &json);

} // namespace nfc_ndef::values
