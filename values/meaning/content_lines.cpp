#include "content_lines.h"

#include "../bytes.h"

#include <algorithm>

namespace nfc_ndef::values {

namespace {

std::string in_capitals(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) { return c >= 'a' && c <= 'z' ? char(c - 32) : c; });
    return result;
}

bool is_blank(char c) { return c == ' ' || c == '\t'; }

// Takes a line off the front, without its end.
std::string_view take_line(std::string_view &text)
{
    const size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

// Where a character first stands outside double quotes.
size_t find_unquoted(std::string_view text, char wanted)
{
    bool quoted = false;
    for (size_t i = 0; i < text.size(); ++i) {
        quoted ^= text[i] == '"';
        if (!quoted && text[i] == wanted)
            return i;
    }
    return text.npos;
}

bool is_quoted_printable(const ContentLine &line)
{
    return std::ranges::any_of(line.parameters, [](const std::string &parameter) {
        const std::string text = in_capitals(parameter);
        return text == "QUOTED-PRINTABLE" || text == "ENCODING=QUOTED-PRINTABLE";
    });
}

std::string without_quoted_printable(std::string_view text)
{
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        Bytes byte;
        if (text[i] == '=' && i + 2 < text.size() && bytes_of_hex(text.substr(i + 1, 2), byte))
            result += static_cast<char>(byte[0]), i += 2;
        else
            result += text[i];
    }
    return result;
}

// What stands in front of the colon: "[group.]NAME[;parameter]...".
ContentLine line_of(std::string_view head)
{
    ContentLine line;
    for (bool first = true; !head.empty() || first; first = false) {
        const size_t end = std::min(find_unquoted(head, ';'), head.size());
        const std::string_view part = head.substr(0, end);
        head.remove_prefix(std::min(end + 1, head.size()));
        if (first)
            line.name = in_capitals(part.substr(part.rfind('.') + 1)); // npos + 1 is 0
        else
            line.parameters.emplace_back(part);
    }
    return line;
}

} // namespace

std::optional<std::string> ContentLine::parameter(std::string_view wanted) const
{
    for (const std::string &one : parameters) {
        const size_t equals = one.find('=');
        if (equals == one.npos || in_capitals(one.substr(0, equals)) != wanted)
            continue;
        std::string text = one.substr(equals + 1);
        std::erase(text, '"');
        return text;
    }
    return std::nullopt;
}

std::vector<std::string> ContentLine::parts() const
{
    std::vector<std::string> result(1);
    for (size_t i = 0; i < value.size(); ++i) {
        std::string &part = result.back();
        if (value[i] == ';')
            result.emplace_back();
        else if (value[i] == '\r' || value[i] == '\n')
            part += value[i] == '\n' ? " " : "";
        else if (value[i] != '\\' || i + 1 == value.size())
            part += value[i];
        else if (const char next = value[++i]; next == 'n' || next == 'N')
            part += ' ';
        else
            part += next == ',' || next == ';' || next == '\\' ? std::string(1, next) : std::string{'\\', next};
    }
    return result;
}

std::string ContentLine::text() const
{
    std::string whole;
    for (const std::string &part : parts())
        whole += ';' + part;
    return whole.substr(1);
}

std::vector<ContentLine> content_lines(std::string_view object)
{
    std::vector<ContentLine> lines;
    while (!object.empty()) {
        std::string text(take_line(object));
        while (!object.empty() && is_blank(object[0])) {
            object.remove_prefix(1);
            text += take_line(object);
        }
        const size_t colon = find_unquoted(text, ':');
        if (colon == text.npos)
            continue;
        ContentLine line = line_of(std::string_view(text).substr(0, colon));
        line.value = text.substr(colon + 1);
        if (is_quoted_printable(line)) {
            while (line.value.ends_with('=') && !object.empty()) {
                line.value.pop_back();
                line.value += take_line(object);
            }
            line.value = without_quoted_printable(line.value);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace nfc_ndef::values
