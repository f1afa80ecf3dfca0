#include "command_line/command.h"

#include <algorithm>
#include <sstream>

namespace tool {

std::vector<std::string> words_of(std::string_view list)
{
    std::istringstream stream{std::string(list)};
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

std::vector<std::string> Arguments::values(const Option &option) const
{
    const auto found = given_.find(&option);
    return found != given_.end() ? found->second : std::vector<std::string>{};
}

std::optional<std::string> Arguments::value(const Option &option) const
{
    const auto found = given_.find(&option);
    return found != given_.end() ? std::optional(found->second.at(0)) : std::nullopt;
}

std::string Arguments::value_or(const Option &option, const char *value_when_absent) const
{
    return value(option).value_or(value_when_absent);
}

std::optional<size_t> Arguments::place_in_list(const Option &option) const
{
    const std::optional<std::string> name = value(option);
    if (!name)
        return std::nullopt;
    const std::vector<std::string> names = words_of(option.list);
    return static_cast<size_t>(std::ranges::find(names, *name) - names.begin());
}

} // namespace tool
