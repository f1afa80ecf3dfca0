// Breaks lines between words.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

// Goes on in a line of a terminal that has taken so many columns already, and breaks it at a blank where the word
// behind that would go over column `most`. Lines that follow begin with so many blanks; a word longer than a line stays
// whole. The text must be printable. All of it stays in one line when `most` is 0.
std::string wrapped(std::string_view text, size_t column, size_t indent, size_t most);

} // namespace tool
