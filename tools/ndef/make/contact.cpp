// A contact as a vCard (RFC 2426), the version that phones read from tags.
#include "make/content.h"
#include "make/thing.h"

#include <fmt/format.h>

#include <algorithm>

namespace tool::make {
namespace {

constexpr Option name{
    .names = "--name", .placeholder = "NAME", .help = "The person's or firm's name", .required = true};
constexpr Option phone{.names = "--phone", .placeholder = "NUMBER", .help = "A telephone number", .repeatable = true};
constexpr Option email{.names = "--email", .placeholder = "ADDRESS", .help = "An e-mail address", .repeatable = true};
constexpr Option url{.names = "--url", .placeholder = "URL", .help = "A web page", .repeatable = true};

constexpr size_t longest_line = 75; // in bytes, without the line end

std::string escaped(const std::string &text)
{
    std::string result;
    for (const char c : text) {
        if (c == ',' || c == ';' || c == '\\')
            result += '\\';
        result += c;
    }
    return result;
}

bool continues_character(char c) { return (static_cast<uint8_t>(c) & 0xC0) == 0x80; }

// A line, broken where it is too long; what follows begins with a blank.
std::string line(const std::string &text)
{
    std::string result;
    size_t length = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        size_t end = i + 1;
        while (end < text.size() && continues_character(text[end]))
            ++end;
        if (length + end - i > longest_line) {
            result += "\r\n ";
            length = 1;
        }
        result += text.substr(i, end - i);
        length += end - i;
        i = end - 1;
    }
    return result + "\r\n";
}

void require_line(const std::string &text, std::string_view what)
{
    require(!text.empty(), fmt::format("{} must not be empty", what));
    require(values::is_utf8(text) && std::ranges::none_of(text, [](char c) { return static_cast<uint8_t>(c) < 0x20; }),
            fmt::format("{} must be one line of UTF-8", what));
}

values::Record record(const Arguments &given)
{
    const std::string full_name = given.value_or(name, "");
    require_line(full_name, "a name");
    // Family and given name are not told apart, so that all is the family name, which nothing but sorting looks at.
    std::string card = line("BEGIN:VCARD") + line("VERSION:3.0") + line(fmt::format("N:{};;;;", escaped(full_name))) +
                       line(fmt::format("FN:{}", escaped(full_name)));
    for (const std::string &number : given.values(phone)) {
        require_line(number, "a telephone number");
        require(std::ranges::any_of(number, [](char c) { return c >= '0' && c <= '9'; }),
                fmt::format("\"{}\" is not a telephone number", number));
        card += line(fmt::format("TEL:{}", escaped(number)));
    }
    for (const std::string &address : given.values(email)) {
        require_line(address, "an e-mail address");
        require_address(address);
        card += line(fmt::format("EMAIL:{}", escaped(address)));
    }
    for (const std::string &page : given.values(url)) {
        uri_content(page); // refuses what opens nothing
        card += line(fmt::format("URL:{}", page));
    }
    return values::generic_record(values::media("text/vcard"), values::bytes_of(card + line("END:VCARD")));
}

} // namespace

Thing contact()
{
    return {.name = "contact",
            .summary = "Makes a contact, which phones offer to save",
            .options = {&name, &phone, &email, &url},
            .examples = "Example:\n"
                        "  ndef make contact --name \"Ada Lovelace\" --phone +4930123456 --email ada@example.com",
            .record = record};
}

} // namespace tool::make
