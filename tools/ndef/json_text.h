// JSON text as values, within bounds: the text may come from anywhere.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace tool {

// The path of a member, with the characters escaped that a JSON pointer (RFC 6901) escapes.
std::string member_path(const std::string &parent, std::string_view name);

// Throws JsonError for what is not JSON, has a member twice or nests too deep.
nlohmann::json parse_json(std::string_view text);

} // namespace tool
