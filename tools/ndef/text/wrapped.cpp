#include "text/wrapped.h"

#include <fmt/format.h>

namespace tool {
namespace {

// Padding goes by what a terminal shows: two columns for most letters of East Asia.
size_t columns_of(std::string_view text)
{
    constexpr size_t more_than_any_line = 4096;
    const size_t enough = 2 * text.size();
    return enough > more_than_any_line ? enough : enough + text.size() - fmt::format("{:<{}}", text, enough).size();
}

} // namespace

std::string wrapped(std::string_view text, size_t column, size_t indent, size_t most)
{
    if (most == 0)
        return std::string(text);
    std::string lines;
    while (!text.empty()) {
        // Each word but the first begins with the blank before it, which a break takes the place of.
        const std::string_view word = text.substr(0, text.find(' ', 1));
        const size_t columns = columns_of(word);
        const bool breaks = word.front() == ' ' && column + columns > most;
        if (breaks)
            lines.append("\n").append(indent, ' ').append(word.substr(1));
        else
            lines.append(word);
        column = breaks ? indent + columns - 1 : column + columns;
        text.remove_prefix(word.size());
    }
    return lines;
}

} // namespace tool
