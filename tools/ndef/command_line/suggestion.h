// What somebody may have meant.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// " (did you mean 'show'?)" for a word that is nearly one of the names; nothing when none is near.
std::string suggestion(std::string_view word, const std::vector<std::string> &names);

} // namespace tool
