// An array of bytes as C writes it, such as "ndef make --format c" and "xxd -i" print.
#include "forms/all.h"
#include "text/plain_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace tool::forms {
namespace {

// Comments and lines of the preprocessor become blanks, so that every place stays where it is.
std::string without_comments(std::string_view text)
{
    std::string code(text);
    const auto blank = [&](size_t begin, size_t end) {
        std::replace_if(
            code.begin() + static_cast<std::ptrdiff_t>(begin), code.begin() + static_cast<std::ptrdiff_t>(end),
            [](char c) { return c != '\n'; }, ' ');
    };
    const size_t last_end = code.rfind("*/");
    bool line_is_blank = true;
    for (size_t i = 0; i < code.size(); ++i) {
        const std::string_view rest = std::string_view(code).substr(i);
        const bool directive = line_is_blank && rest.starts_with('#');
        if (directive || rest.starts_with("//"))
            blank(i, std::min(code.find('\n', i), code.size()));
        else if (rest.starts_with("/*") && i + 2 <= last_end && last_end != std::string::npos)
            blank(i, code.find("*/", i + 2) + 2);
        line_is_blank = code[i] == '\n' || (line_is_blank && code[i] == ' ');
    }
    return code;
}

std::optional<uint64_t> number_of(std::string_view word)
{
    int base = 10;
    if (word.starts_with("0x") || word.starts_with("0X")) {
        base = 16;
        word.remove_prefix(2);
    } else if (word.size() > 1 && word.starts_with('0')) {
        base = 8;
        word.remove_prefix(1);
    }
    if (word.ends_with('u') || word.ends_with('U'))
        word.remove_suffix(1);
    uint64_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number, base);
    return error == std::errc() && end == word.data() + word.size() ? std::optional(number) : std::nullopt;
}

std::optional<uint8_t> byte_of(std::string_view word)
{
    if (const size_t cast = word.find(')'); word.starts_with('(') && cast != std::string_view::npos)
        word = trimmed(word.substr(cast + 1));
    if (word.size() == 3 && word.starts_with('\'') && word.ends_with('\'') && word[1] != '\\' && word[1] != '\'')
        return static_cast<uint8_t>(word[1]);
    const auto number = number_of(word);
    return number && *number <= 0xFF ? std::optional(static_cast<uint8_t>(*number)) : std::nullopt;
}

} // namespace

Written read_c_array(std::string_view text)
{
    const std::string code = without_comments(text);
    const std::string_view view = code;
    const size_t begin = view.find('{');
    if (begin == std::string_view::npos)
        return {};
    const std::string_view declaration = view.substr(0, begin);
    const char last = trimmed(declaration).empty() ? ' ' : trimmed(declaration).back();
    const bool is_declared = declaration.find('[') != std::string_view::npos && (last == '=' || last == ']');
    if (!is_declared && !trimmed(declaration).empty())
        return {};
    const size_t end = std::min(view.find('}', begin), view.size());
    values::Bytes bytes;
    for (size_t at = begin + 1; at < end;) {
        const size_t comma = std::min(view.find(',', at), end);
        const std::string_view word = trimmed(view.substr(at, comma - at));
        const auto byte = byte_of(word);
        if (byte)
            bytes.push_back(*byte);
        else if (!word.empty() || comma != end) // a comma may follow the last
            return !is_declared
                       ? Written{}
                       : alike(fmt::format("{} is no byte", place_in(view, view.find_first_not_of(" \t\r\n", at))));
        at = comma + 1;
    }
    if (end == view.size())
        return is_declared ? alike("it has no end") : Written{};
    if (view.find('{', end) != std::string_view::npos)
        return alike("it is more than one");
    const size_t size = declaration.rfind('[');
    if (is_declared && size != std::string_view::npos) {
        const auto stated = number_of(trimmed(declaration.substr(size + 1, declaration.rfind(']') - size - 1)));
        if (stated && *stated != bytes.size())
            return alike(fmt::format("it has {} bytes and says {}", bytes.size(), *stated));
    }
    return {.match = Match::whole, .memory = {.bytes = std::move(bytes)}};
}

} // namespace tool::forms
