#include "command_line/suggestion.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>

namespace tool {
namespace {

// How many letters have to be put in, taken out or changed, where two that changed places count as one.
size_t distance(std::string_view a, std::string_view b)
{
    std::vector<size_t> before, row(b.size() + 1), above;
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 1; i <= a.size(); ++i) {
        before = std::move(above);
        above = row;
        row[0] = i;
        for (size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
    }
    return row.back();
}

} // namespace

std::string suggestion(std::string_view word, const std::vector<std::string> &names)
{
    constexpr size_t longest = 40;
    if (word.size() > longest)
        return "";
    const std::string *nearest = nullptr;
    size_t least = std::max<size_t>(1, word.size() / 3) + 1;
    for (const std::string &name : names) {
        const bool begins_it = word.size() > 1 && name.starts_with(word) && name != word;
        const size_t far = begins_it ? 1 : distance(word, name);
        if (far < least) {
            least = far;
            nearest = &name;
        }
    }
    return nearest ? fmt::format(" (did you mean '{}'?)", *nearest) : "";
}

} // namespace tool
