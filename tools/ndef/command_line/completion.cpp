#include "command_line/completion.h"

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
    return fmt::format("choices='{}' files={}", option.list, option.values == Option::Values::files ? "yes" : "");
}

// What may follow a command's name, and what the value of each of its options may be.
std::string cases_of(const Command &command, const std::string &path, bool outermost)
{
    std::vector<std::string> words;
    std::string values = "choices='' files=''", options;
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
        fmt::format("    '{}')\n        {}\n        choices+=' {}'\n", path, values, fmt::join(words, " "));
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
constexpr std::string_view bash_beginning = R"(# Completion of the % command for bash, as '% completion bash' prints it.
_%()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command='%' choices='' files='' word
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
constexpr std::string_view bash_ending = R"(    esac
    COMPREPLY=()
    [[ -z $choices ]] || mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$current")
    if [[ -n $files && $current != -* ]]; then
        compopt -o filenames
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _% %
)";

constexpr std::string_view zsh_beginning = R"(#compdef %
# Completion of the % command for zsh, as '% completion zsh' prints it.
_%()
{
    local previous=${words[CURRENT-1]} command='%' choices='' files='' word
    if [[ $PREFIX == --*=* ]]; then
        previous=${PREFIX[(ws:=:)1]}
        compset -P '*='
    fi
    for word in "${(@)words[2,CURRENT-1]}"; do
        case "$command $word" in
)";
constexpr std::string_view zsh_ending = R"(    esac
    [[ -z $choices ]] || compadd -- ${=choices}
    [[ -z $files || $PREFIX == -* ]] || _files
}
if [[ $funcstack[1] == _% ]]; then
    _% "$@"
else
    compdef _% %
fi
)";
constexpr std::string_view fish_beginning = R"(# Completion of the % command for fish, as '% completion fish' prints it.
function __%_is
    set -l command %
    for word in (commandline -opc)[2..-1]
        switch "$command $word"
)";
constexpr std::string_view fish_between = R"(        end
    end
    test "$command" = "$argv[1]"
end
complete -c % -f
)";

std::string named(std::string_view text, std::string_view program)
{
    std::string result;
    for (const char c : text)
        result += c == '%' ? std::string(program) : std::string(1, c);
    return result;
}

std::string in_fish_quotes(std::string_view text)
{
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' || c == '\\' ? fmt::format("\\{}", c) : std::string(1, c);
    return quoted + "'";
}

// How fish is told of one option, or of what may stand in its place.
std::string fish_option(const Option &option)
{
    std::string text;
    for (const std::string &name : names_of(option))
        if (!option.is_positional())
            text +=
                name.starts_with("--") ? fmt::format(" -l {}", name.substr(2)) : fmt::format(" -s {}", name.substr(1));
    if (!option.is_flag() && !option.is_positional())
        text += option.values == Option::Values::files ? " -r" : " -x";
    if (option.values == Option::Values::files)
        text += " -F";
    if (!option.list.empty())
        text += fmt::format(" -a {}", in_fish_quotes(option.list));
    return text.empty() || option.is_positional() ? text : fmt::format("{} -d {}", text, in_fish_quotes(option.help));
}

std::string fish_lines_of(const std::string &name, const Command &command, const std::string &path)
{
    const std::string start = fmt::format("complete -c {} -n \"__{}_is '{}'\"", name, name, path);
    std::string text;
    for (const Command &below : command.commands)
        text += fmt::format("{} -a {} -d {}\n", start, below.name, in_fish_quotes(below.summary));
    for (const Option *option : command.options)
        if (const std::string what = fish_option(*option); !what.empty())
            text += start + what + '\n';
    text += start + " -l help\n";
    for (const Command &below : command.commands)
        text += fish_lines_of(name, below, fmt::format("{} {}", path, below.name));
    return text;
}

std::string fish_paths_of(const Command &command, const std::string &path)
{
    std::string cases;
    if (command.run_joined)
        cases += fmt::format("            case '{} * +'\n                set command '{}'\n", path, path);
    for (const Command &below : command.commands) {
        const std::string longer = fmt::format("{} {}", path, below.name);
        cases += fmt::format("            case '{}'\n                set command '{}'\n", longer, longer) +
                 fish_paths_of(below, longer);
    }
    return cases;
}

} // namespace

std::string bash_completion(const Command &program)
{
    const std::string name(program.name);
    return named(bash_beginning, name) + paths_of(program, name) + std::string(between) +
           cases_of(program, name, true) + named(bash_ending, name);
}

std::string zsh_completion(const Command &program)
{
    const std::string name(program.name);
    return named(zsh_beginning, name) + paths_of(program, name) + std::string(between) + cases_of(program, name, true) +
           named(zsh_ending, name);
}

std::string fish_completion(const Command &program)
{
    const std::string name(program.name);
    return named(fish_beginning, name) + fish_paths_of(program, name) + named(fish_between, name) +
           fmt::format("complete -c {} -n \"__{}_is '{}'\" -l version\n", name, name, name) +
           fish_lines_of(name, program, name);
}

} // namespace tool
