#include "command_line/bash_completion.h"

#include <fmt/format.h>

#include <algorithm>

namespace tool {
namespace {

std::vector<std::string> names_of(const Option &option)
{
    std::string names(option.names);
    std::ranges::replace(names, ',', ' ');
    return words_of(names);
}

// What may stand where a value is expected.
std::string values_of(const Option &option)
{
    return fmt::format("words='{}' files={}", option.list, option.values == Option::Values::files ? "yes" : "");
}

// What may follow a command's name, and what the value of each of its options may be.
std::string cases_of(const Command &command, const std::string &path, bool outermost)
{
    std::vector<std::string> words;
    std::string values = "words='' files=''", options;
    for (const Command &below : command.commands)
        words.emplace_back(below.name);
    for (const Option *option : command.options) {
        const std::vector<std::string> names = names_of(*option);
        if (option->is_positional()) {
            values = values_of(*option);
            continue;
        }
        words.push_back(names.back());
        if (!option->is_flag())
            options += fmt::format("        {}) {} ;;\n", fmt::join(names, " | "), values_of(*option));
    }
    words.emplace_back("--help");
    if (outermost)
        words.emplace_back("--version");
    std::string text =
        fmt::format("    '{}')\n        {}\n        words+=' {}'\n", path, values, fmt::join(words, " "));
    if (!options.empty())
        text += fmt::format("        case $previous in\n{}        esac\n", options);
    text += "        ;;\n";
    for (const Command &below : command.commands)
        text += cases_of(below, fmt::format("{} {}", path, below.name), false);
    return text;
}

// The patterns of all commands that have commands, with those.
std::string paths_of(const Command &command, const std::string &path)
{
    std::string patterns;
    if (command.run_joined)
        patterns += fmt::format("        '{} '*' +') command='{}' ;;\n", path, path);
    for (const Command &below : command.commands) {
        const std::string longer = fmt::format("{} {}", path, below.name);
        patterns += fmt::format("        '{}') command=\"$command $word\" ;;\n", longer) + paths_of(below, longer);
    }
    return patterns;
}

// The places of the program's name are marked by %, as braces mean something to the shell.
constexpr std::string_view beginning = R"(# Completion of the % command for bash, as '% completion bash' prints it.
_%()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command='%' words='' files='' word
    # Bash splits --color=auto into three words.
    [[ $current == = ]] && current=
    [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD - 2]}
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case "$command $word" in
)";
constexpr std::string_view between = R"(        esac
    done
    case $command in
)";
constexpr std::string_view ending = R"(    esac
    COMPREPLY=()
    [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    if [[ -n $files && $current != -* ]]; then
        compopt -o filenames
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _% %
)";

std::string named(std::string_view text, std::string_view program)
{
    std::string result;
    for (const char c : text)
        result += c == '%' ? std::string(program) : std::string(1, c);
    return result;
}

} // namespace

std::string bash_completion(const Command &program)
{
    const std::string name(program.name);
    return named(beginning, name) + paths_of(program, name) + std::string(between) + cases_of(program, name, true) +
           named(ending, name);
}

} // namespace tool
