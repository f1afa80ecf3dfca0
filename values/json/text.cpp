#include "text.h"

#include "../json.h"
#include "../printable.h"

#include <fmt/format.h>
#include <glib.h>

#include <iterator>
#include <set>
#include <vector>

namespace nfc_ndef::values {

namespace {

// Each record takes two levels, the object and the array around it; its own members take two more.
constexpr size_t max_depth = 2 * max_nesting + 6;

// More than any array or object of a message has. The parser goes over all entries whenever one that is an object ends.
constexpr size_t max_entries = 1000, max_members = 100;

// Follows the parser through the text and knows where it is.
class Watch {
public:
    void see(nlohmann::json::parse_event_t event, const nlohmann::json &parsed)
    {
        using Event = nlohmann::json::parse_event_t;
        switch (event) {
        case Event::object_start:
        case Event::array_start:
            levels_.push_back({event == Event::array_start, 0, {}, {}});
            if (levels_.size() > max_depth)
                throw JsonError(path(), "is nested too deep");
            break;
        case Event::key:
            levels_.back().name = parsed.get<std::string>();
            if (!levels_.back().names.insert(levels_.back().name).second)
                throw JsonError(path(), "is there twice");
            if (levels_.back().names.size() > max_members)
                throw JsonError(path(), fmt::format("is past the {} members that an object may have", max_members));
            break;
        case Event::object_end:
        case Event::array_end:
            levels_.pop_back();
            [[fallthrough]];
        case Event::value:
            if (!levels_.empty() && ++levels_.back().index > max_entries && levels_.back().is_array)
                throw JsonError(path(), fmt::format("is past the {} entries that an array may have", max_entries));
        }
    }

    // Of the value that comes next, or is being read.
    std::string path() const
    {
        std::string path;
        for (const Level &level : levels_)
            if (level.is_array)
                path += fmt::format("/{}", level.index);
            else if (!level.names.empty())
                path = member_path(path, level.name);
        return path;
    }

private:
    struct Level {
        bool is_array;
        size_t index;
        std::string name;
        std::set<std::string> names;
    };

    std::vector<Level> levels_;
};

// "line 1, column 2: syntax error ...", without the parser's own name for it and without quoting the text.
std::string reason_of(const nlohmann::json::parse_error &error)
{
    std::string reason = error.what();
    reason.erase(0, reason.find("at line ") == std::string::npos ? 0 : reason.find("at line ") + 3);
    return reason.substr(0, reason.find("; last read:"));
}

// The library that writes JSON leaves characters as they are that a terminal obeys, all of them inside strings.
std::string escape_controls(const std::string &json)
{
    std::string escaped;
    escaped.reserve(json.size());
    for (const char *at = json.data(), *end = at + json.size(); at != end;) {
        const gunichar character = g_utf8_get_char(at);
        const char *next = g_utf8_next_char(at);
        if (character == '\n' || !acts_on_a_terminal(character))
            escaped.append(at, next);
        else if (character < 0x10000)
            fmt::format_to(std::back_inserter(escaped), "\\u{:04x}", character);
        else
            fmt::format_to(std::back_inserter(escaped), "\\u{:04x}\\u{:04x}", 0xD7C0 + (character >> 10),
                           0xDC00 + (character & 0x3FF));
        at = next;
    }
    return escaped;
}

} // namespace

std::string member_path(const std::string &parent, std::string_view name)
{
    std::string path = parent + '/';
    for (const char c : name)
        path += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
    return path;
}

nlohmann::json parse_json(std::string_view text)
{
    Watch watch;
    const auto see = [&](int, nlohmann::json::parse_event_t event, const nlohmann::json &parsed) {
        watch.see(event, parsed);
        return true;
    };
    try {
        return nlohmann::json::parse(text, see);
    } catch (const nlohmann::json::parse_error &error) {
        throw JsonError("", reason_of(error));
    } catch (const nlohmann::json::out_of_range &) {
        throw JsonError(watch.path(), "is a number out of range");
    }
}

std::string written(const nlohmann::ordered_json &json) { return escape_controls(json.dump(2)) + '\n'; }

} // namespace nfc_ndef::values
