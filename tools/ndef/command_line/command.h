// Commands as tables: the command line, the help and the completion of shells are printed from them.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

// Something that a command takes: an option, or a positional argument when its name has no dash. Commands share the
// options of which there is one object; a command asks for what was given by that object.
struct Option {
    enum class Values {
        any,       // of which nothing is known
        listed,    // one of `list`
        suggested, // any, but often one of `list`
        files
    };

    std::string_view names;         // "-o,--output"
    std::string_view placeholder{}; // of the value; an option without one is a flag
    std::string_view help{};
    Values values = Values::any;
    std::string_view list{}; // separated by blanks
    bool required = false;
    bool repeatable = false;  // else the last one given counts
    std::string_view group{}; // options of one group exclude each other

    bool is_positional() const { return !names.starts_with('-'); }
    bool is_flag() const { return !is_positional() && placeholder.empty(); }
};

// The blank-separated words of a list.
std::vector<std::string> words_of(std::string_view list);

// What was given on a command line.
class Arguments {
public:
    void add(const Option &option, std::vector<std::string> values) { given_[&option] = std::move(values); }

    bool has(const Option &option) const { return given_.contains(&option); }
    std::vector<std::string> values(const Option &option) const;
    std::optional<std::string> value(const Option &option) const;
    std::string value_or(const Option &option, const char *value_when_absent) const;

    // For an option with a list of values, in the order of the enumeration's.
    template <class Enum> std::optional<Enum> choice(const Option &option) const
    {
        const std::optional<size_t> place = place_in_list(option);
        return place ? std::optional(static_cast<Enum>(*place)) : std::nullopt;
    }

private:
    std::optional<size_t> place_in_list(const Option &option) const;

    std::map<const Option *, std::vector<std::string>> given_;
};

struct Command;

// A command that was asked for, and what it was given.
struct Invocation {
    const Command *command;
    Arguments given;
};

// A command with what it takes, or one that only has commands of its own.
struct Command {
    std::string_view name;
    std::string_view summary;
    std::vector<const Option *> options{};        // in the order of the help
    std::string_view footer{};                    // of the help: examples, and what else there is to say
    std::function<void(const Arguments &)> run{}; // throws Failure
    std::vector<Command> commands{};
    // Runs one or more of its commands, which "+" joins on the command line, in place of their own `run`.
    std::function<void(const std::vector<Invocation> &)> run_joined{};
};

} // namespace tool
