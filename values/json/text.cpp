#include "text.h"

#include "../json.h"
#include "../printable.h"

#include <fmt/format.h>
#include <glib.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

namespace nfc_ndef::values {

namespace {

using Json = nlohmann::json;

// Each record takes two levels, the object and the array around it; its own members take two more.
constexpr size_t max_depth = 2 * max_nesting + 6;

// "line 1, column 2: syntax error ...", without the parser's own name for it and without quoting the text.
std::string reason_of(const nlohmann::json::exception &error)
{
    std::string reason = error.what();
    reason.erase(0, reason.find("at line ") == std::string::npos ? 0 : reason.find("at line ") + 3);
    return reason.substr(0, reason.find("; last read:"));
}

// Takes what the parser finds, and knows where it is. The parser's own way of being watched goes over all entries of an
// array whenever one of them ends, and does not tell of members that are there twice.
class Builder : public nlohmann::json_sax<Json> {
public:
    Json take() { return std::move(root_); }

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(value); }
    bool number_unsigned(number_unsigned_t value) override { return add(value); }
    bool number_float(number_float_t value, const string_t &) override { return add(value); }
    bool string(string_t &value) override { return add(std::move(value)); }
    bool binary(binary_t &) override { return false; } // not in JSON text
    bool start_object(size_t) override { return open(Json::object()); }
    bool start_array(size_t) override { return open(Json::array()); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }
    bool key(string_t &name) override
    {
        levels_.back().name = std::move(name);
        if (levels_.back().value->contains(*levels_.back().name))
            throw JsonError(path(), "is there twice");
        return true;
    }
    bool parse_error(size_t, const std::string &, const nlohmann::json::exception &error) override
    {
        if (dynamic_cast<const Json::parse_error *>(&error))
            throw JsonError("", reason_of(error));
        throw JsonError(path(), "is a number out of range");
    }

private:
    struct Level {
        Json *value;
        std::optional<std::string> name; // of the member that comes next, or is being read
    };

    bool add(Json value)
    {
        place(std::move(value));
        return true;
    }
    bool open(Json value)
    {
        levels_.push_back({place(std::move(value)), {}});
        if (levels_.size() > max_depth)
            throw JsonError(path(), "is nested too deep");
        return true;
    }
    bool close()
    {
        levels_.pop_back();
        return true;
    }

    // Only the last entry of an array is ever open, so that what opens stays where it is.
    Json *place(Json value)
    {
        if (levels_.empty())
            return &(root_ = std::move(value));
        Json &parent = *levels_.back().value;
        if (parent.is_array())
            return &parent.emplace_back(std::move(value));
        return &(parent[*levels_.back().name] = std::move(value));
    }

    // Of the value that comes next, or is being read.
    std::string path() const
    {
        std::string path;
        for (const Level &level : levels_)
            if (level.value->is_object())
                path = level.name ? member_path(path, *level.name) : path;
            else
                path += fmt::format("/{}", level.value->size() - (&level != &levels_.back() ? 1 : 0));
        return path;
    }

    Json root_;
    std::vector<Level> levels_;
};

// The library that writes JSON leaves characters as they are that a terminal obeys, all of them inside strings.
std::string escape_controls(const std::string &json)
{
    std::string escaped;
    escaped.reserve(json.size());
    for (const char *at = json.data(), *end = at + json.size(); at != end;) {
        const char *const plain = std::find_if(at, end, [](char c) { return c != '\n' && (c < ' ' || c == 0x7F); });
        escaped.append(at, plain);
        if ((at = plain) == end)
            break;
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
    Builder builder;
    nlohmann::json::sax_parse(text, &builder);
    return builder.take();
}

std::string written(const nlohmann::ordered_json &json) { return escape_controls(json.dump(2)) + '\n'; }
std::string written_as_entry(const nlohmann::ordered_json &json, size_t margin)
{
    const std::string text = escape_controls(json.dump(2)), blanks(margin, ' ');
    std::string entry = blanks;
    entry.reserve(text.size() + text.size() / 8);
    for (const char c : text) {
        entry += c;
        if (c == '\n') // which ends a line, for in strings it is escaped
            entry += blanks;
    }
    return entry;
}
std::string written_in_a_line(const nlohmann::ordered_json &json) { return escape_controls(json.dump()); }

} // namespace nfc_ndef::values
