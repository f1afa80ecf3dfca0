// The one source that knows the library for options, whose templates take long to compile.
#include "command_line/parse.h"

#include "command_line/suggestion.h"
#include "io/failure.h"
#include "io/output.h"
#include "text/wrapped.h"

#include <nfc_ndef/printable.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <sstream>

namespace tool {

namespace values = nfc_ndef::values;

namespace {

using Strings = std::vector<std::string>;

// CLI11 reads a meaning into some values: "[a,b]" is two, "++" ends a command, and "--id=" takes the next argument.
// This mark in front of them, or behind the last, hides them from it.
constexpr char mark = '\1';

std::string marked(std::string argument)
{
    if (argument.starts_with('[') || argument == "++" || argument.starts_with(mark))
        return mark + argument;
    if (argument.starts_with("--") && argument.find('=') == argument.size() - 1)
        return argument + mark;
    return argument;
}

std::string unmarked(std::string argument) { return argument.starts_with(mark) ? argument.substr(1) : argument; }

struct Unexpected : CLI::ParseError {
    Unexpected(const Strings &arguments, bool behind_dashes)
        : CLI::ParseError(fmt::format("The following {} not expected: {}",
                                      arguments.size() == 1 ? "argument was" : "arguments were",
                                      fmt::join(arguments, " ")),
                          CLI::ExitCodes::ExtrasError),
          option(!behind_dashes && arguments.front().starts_with('-') ? arguments.front() : "")
    {
    }
    std::string option; // the first of them, if it looks like one
};

// The help in lines that a terminal shows unbroken. What excludes what is said when it is refused.
class Help : public CLI::Formatter {
public:
    std::string make_option_opts(const CLI::Option *option) const override
    {
        std::string text;
        if (!option->get_type_name().empty())
            text.append(" ").append(option->get_type_name());
        if (option->get_expected_max() == CLI::detail::expected_max_vector_size)
            text += " ...";
        if (option->get_required())
            text += " REQUIRED";
        return text;
    }
    std::string make_option_desc(const CLI::Option *option) const override
    {
        return wrapped(option->get_description(), 0, 0, terminal - get_column_width());
    }
    std::string make_subcommand(const CLI::App *command) const override
    {
        const size_t indent = get_column_width();
        return fmt::format("{:<{}}{}\n", "  " + command->get_name(), indent,
                           wrapped(command->get_description(), indent, indent, terminal));
    }
    std::string make_footer(const CLI::App *command) const override // examples are indented, and stay as they are
    {
        std::istringstream footer(command->get_footer());
        std::string text;
        for (std::string line; std::getline(footer, line);)
            text.append(line.starts_with(' ') ? line : wrapped(line, 0, 0, terminal)).append("\n");
        return text;
    }

private:
    static constexpr size_t terminal = 80;
};

// A command as CLI11 sees it, and those below.
class Parser {
public:
    // Arguments behind "--" are no options, and `behind_dashes` says whether there are any.
    Parser(const Command &command, CLI::App &app, bool behind_dashes) : command_(command), app_(app)
    {
        app.footer(std::string(command.footer));
        for (const Option *option : command.options)
            add(*option, behind_dashes);
        for (const auto &[one, one_added] : added_)
            for (const auto &[other, other_added] : added_)
                if (one != other && !one->group.empty() && one->group == other->group)
                    one_added->excludes(other_added);
        app.require_subcommand(command.commands.empty() ? 0 : 1);
        for (const Command &below : command.commands)
            below_.emplace_back(
                below, *app.add_subcommand(std::string(below.name), std::string(below.summary))->group("Commands"),
                behind_dashes);
    }

    // The command that was asked for.
    const Parser &chosen() const
    {
        const auto found = std::ranges::find_if(below_, [](const Parser &below) { return below.app_.parsed(); });
        return found == below_.end() ? *this : found->chosen();
    }

    Invocation invocation(Strings behind_dashes) const { return {&command_, arguments(std::move(behind_dashes))}; }

    // "ndef make text"
    std::string full_name() const
    {
        std::string name = app_.get_name();
        for (const CLI::App *parent = app_.get_parent(); parent; parent = parent->get_parent())
            name.insert(0, parent->get_name() + ' ');
        return name;
    }

    bool needs_command() const { return !command_.commands.empty(); }

    // What might have been meant by a word that is none of them.
    Strings names_of_commands() const
    {
        Strings names;
        for (const Command &below : command_.commands)
            names.emplace_back(below.name);
        return names;
    }
    Strings names_of_options() const
    {
        Strings names{"--help"};
        if (!app_.get_parent())
            names.emplace_back("--version");
        for (const auto &[option, added] : added_)
            for (const std::string &name : CLI::detail::split(std::string(option->names), ','))
                if (name.starts_with("--"))
                    names.push_back(name);
        return names;
    }

private:
    void add(const Option &option, bool behind_dashes)
    {
        const std::string names(option.names), help(option.help);
        CLI::Option *added = option.is_flag() ? app_.add_flag(names, help) : app_.add_option(names);
        added->description(help);
        if (!option.is_flag()) {
            added->type_name(std::string(option.placeholder));
            if (option.repeatable)
                added->expected(1, CLI::detail::expected_max_vector_size)->allow_extra_args(option.is_positional());
            else if (!option.is_positional()) // as in an alias that is overridden
                added->take_last();
            if (option.values == Option::Values::listed)
                added->check(CLI::IsMember(words_of(option.list)).description(""));
            added->required(option.required && !(option.is_positional() && behind_dashes));
        }
        added_.emplace_back(&option, added);
    }

    Arguments arguments(Strings behind_dashes) const
    {
        Arguments given;
        for (const auto &[option, added] : added_) {
            if (option->is_flag()) {
                if (added->count() > 0 && added->as<bool>())
                    given.add(*option, {});
                continue;
            }
            Strings values = added->reduced_results();
            std::ranges::transform(values, values.begin(), unmarked);
            if (option->is_positional()) {
                const auto room = option->repeatable ? behind_dashes.size() : 1 - std::min<size_t>(1, values.size());
                const auto taken = behind_dashes.begin() + std::min(std::ptrdiff_t(room), std::ssize(behind_dashes));
                values.insert(values.end(), behind_dashes.begin(), taken);
                behind_dashes.erase(behind_dashes.begin(), taken);
            }
            if (!values.empty())
                given.add(*option, std::move(values));
        }
        if (!behind_dashes.empty())
            throw Unexpected(behind_dashes, true);
        return given;
    }

    const Command &command_;
    CLI::App &app_;
    std::vector<std::pair<const Option *, CLI::Option *>> added_;
    std::vector<Parser> below_;
};

// Why a command line cannot be followed.
std::string reason_of(const CLI::ParseError &error, const Parser &chosen, const Strings &arguments)
{
    const std::string name = chosen.full_name();
    if (dynamic_cast<const CLI::RequiredError *>(&error) && chosen.needs_command()) {
        const auto next = static_cast<size_t>(std::ranges::count(name, ' ')); // behind the command's name
        const std::string unknown = next < arguments.size() ? arguments[next] : "";
        if (unknown.empty())
            return fmt::format("'{}' needs the name of a command", name);
        Strings names = chosen.names_of_options();
        std::ranges::copy(chosen.names_of_commands(), std::back_inserter(names));
        return fmt::format("{} has no {} '{}'{}", name, unknown.starts_with('-') ? "option" : "command",
                           values::printable_utf8(unknown),
                           suggestion(unknown == "-v" || unknown == "-V" ? "--version" : unknown, names));
    }
    std::string reason = error.what();
    std::erase(reason, mark);
    const auto *const unexpected = dynamic_cast<const Unexpected *>(&error);
    if (unexpected && !unexpected->option.empty())
        reason = fmt::format("{} has no option '{}'{}", name, unexpected->option,
                             suggestion(unexpected->option, chosen.names_of_options()));
    return values::printable_utf8(reason);
}

// The command that all arguments name; none when it was its help that was asked for, which is then written.
std::optional<Invocation> parsed(const Command &program, std::string_view version, const Strings &all)
{
    const auto dashes = std::ranges::find(all, "--");
    Strings behind_dashes(dashes == all.end() ? dashes : dashes + 1, all.end());
    Strings reversed(std::make_reverse_iterator(dashes), all.rend()); // as CLI11 takes them
    std::ranges::transform(reversed, reversed.begin(), marked);

    CLI::App app(std::string(program.summary), std::string(program.name));
    app.set_version_flag("--version", fmt::format("{} {}", program.name, version));
    app.formatter(std::make_shared<Help>());
    app.get_formatter()->label("SUBCOMMAND", "COMMAND");
    const Parser parser(program, app, !behind_dashes.empty());
    const auto refuse_what_is_left = [&] {
        if (const Strings left = app.remaining(true); !left.empty())
            throw Unexpected(left, false);
    };
    try {
        try {
            app.parse(std::move(reversed));
        } catch (const CLI::ExtrasError &) {
            refuse_what_is_left(); // in the order given
        } catch (const CLI::CallForHelp &) {
            // In "-hi" no help is asked for.
            for (const std::string &left : app.remaining(true))
                if (std::ranges::find(all, unmarked(left)) == all.end())
                    refuse_what_is_left();
            throw;
        }
        return parser.chosen().invocation(std::move(behind_dashes));
    } catch (const CLI::Success &request) {
        std::ostringstream text;
        app.exit(request, text);
        write_output(text.str());
        return std::nullopt;
    } catch (const CLI::ParseError &error) {
        const Parser &chosen = parser.chosen();
        throw Failure(exit_unusable,
                      fmt::format("{} ('{} --help' tells more)", reason_of(error, chosen, all), chosen.full_name()));
    }
}

const Command *find_command(const std::vector<Command> &commands, const std::string &name)
{
    const auto found = std::ranges::find(commands, name, &Command::name);
    return found != commands.end() ? &*found : nullptr;
}

// "A B + C" as "A B" and "A C". A "+" joins only when what follows it is a command, so that it may be a text too.
std::vector<Strings> split(const Command &joining, const Strings &all)
{
    std::vector<Strings> parts(1);
    const auto dashes = std::ranges::find(all, "--");
    for (auto argument = all.begin(); argument != all.end(); ++argument) {
        const bool joins = argument < dashes && *argument == "+" && argument + 1 != all.end() &&
                           find_command(joining.commands, argument[1]);
        if (joins)
            parts.push_back({std::string(joining.name)});
        else
            parts.back().push_back(*argument);
    }
    return parts;
}

} // namespace

void run_command_line(const Command &program, std::string_view version, int argc, char **argv)
{
    Strings all(argv + std::min(argc, 1), argv + argc);
    if (!all.empty() && all.front() == "help") { // "help show" is "show --help"
        all.erase(all.begin());
        all.push_back("--help");
    }
    const Command *const first = all.empty() ? nullptr : find_command(program.commands, all.front());
    const bool joins = first && first->run_joined;
    std::vector<Invocation> invocations;
    for (const Strings &part : joins ? split(*first, all) : std::vector<Strings>{all}) {
        std::optional<Invocation> one = parsed(program, version, part);
        if (!one)
            return;
        invocations.push_back(*std::move(one));
    }
    if (joins)
        first->run_joined(invocations);
    else
        invocations.front().command->run(invocations.front().given);
}

} // namespace tool
