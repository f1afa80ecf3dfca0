// URIs that are not typed as such: places, telephone numbers, messages.
#include "make/content.h"
#include "make/thing.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

namespace tool::make {
namespace {

constexpr Option latitude{.names = "LAT", .help = "Latitude in degrees, north is positive", .required = true};
constexpr Option longitude{.names = "LON", .help = "Longitude in degrees, east is positive", .required = true};
constexpr Option number{.names = "NUMBER", .help = "The telephone number, best with + and country", .required = true};
constexpr Option address{.names = "ADDRESS", .help = "The e-mail address", .required = true};
constexpr Option body{.names = "--body", .placeholder = "TEXT", .help = "The text to begin with"};
constexpr Option subject{.names = "--subject", .placeholder = "TEXT", .help = "The subject to begin with"};
constexpr Option cc{.names = "--cc", .placeholder = "ADDRESS", .help = "Who gets a copy"};

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// A text as a field of a URI (RFC 3986): all but the characters that mean nothing anywhere is escaped.
std::string escaped(const std::string &text, std::string_view kept = "")
{
    std::string result;
    for (const char c : text) {
        const bool plain = is_digit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                           std::string_view("-._~").find(c) != std::string_view::npos ||
                           kept.find(c) != std::string_view::npos;
        result += plain ? std::string(1, c) : fmt::format("%{:02X}", static_cast<uint8_t>(c));
    }
    return result;
}

// Degrees as they were given, for their digits say how exact they are.
std::string degrees(const std::string &text, double most, std::string_view what)
{
    double value = 0;
    const char *const end = text.data() + text.size();
    const auto [read_to, error] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    require(error == std::errc() && read_to == end && is_digit(text.back()) && value >= -most && value <= most,
            fmt::format("\"{}\" is not a {}: degrees from -{} to {}, such as 52.52", text, what, most, most));
    return text;
}

std::string telephone_number(std::string text)
{
    std::erase(text, ' ');
    const bool dialled = std::ranges::all_of(
        text, [](char c) { return is_digit(c) || std::string_view("+-.()*#").find(c) != std::string_view::npos; });
    require(dialled && std::ranges::any_of(text, is_digit) && text.find('+', 1) == std::string::npos,
            fmt::format("\"{}\" is not a telephone number such as +4930123456", text));
    return escaped(text, "+()*");
}

std::string mail_address(const std::string &text)
{
    require_address(text);
    return escaped(text, "@+");
}

values::Record geo_record(const Arguments &given)
{
    return record_of(uri_content(fmt::format("geo:{},{}", degrees(given.value_or(latitude, ""), 90, "latitude"),
                                             degrees(given.value_or(longitude, ""), 180, "longitude"))));
}

values::Record tel_record(const Arguments &given)
{
    return record_of(uri_content("tel:" + telephone_number(given.value_or(number, ""))));
}

// "?name=text&name=text" of what was given.
std::string query_of(const Arguments &given, std::initializer_list<std::pair<std::string_view, const Option *>> fields)
{
    std::string query;
    for (const auto &[name, option] : fields)
        if (const auto text = given.value(*option)) {
            require(values::is_utf8(*text), fmt::format("the {} must be valid UTF-8", name));
            query += fmt::format("{}{}={}", query.empty() ? '?' : '&', name,
                                 option == &cc ? mail_address(*text) : escaped(*text));
        }
    return query;
}

values::Record sms_record(const Arguments &given)
{
    return record_of(
        uri_content("sms:" + telephone_number(given.value_or(number, "")) + query_of(given, {{"body", &body}})));
}

values::Record mail_record(const Arguments &given)
{
    return record_of(uri_content("mailto:" + mail_address(given.value_or(address, "")) +
                                 query_of(given, {{"cc", &cc}, {"subject", &subject}, {"body", &body}})));
}

} // namespace

Thing geo()
{
    return {.name = "geo",
            .summary = "Makes a URI of a place, which opens a map",
            .options = {&latitude, &longitude},
            .examples = "Example:\n"
                        "  ndef make geo 52.5163 13.3777",
            .record = geo_record};
}

Thing tel()
{
    return {.name = "tel",
            .summary = "Makes a URI of a telephone number, which a phone offers to call",
            .options = {&number},
            .examples = "Example:\n"
                        "  ndef make tel \"+49 30 123456\"",
            .record = tel_record};
}

Thing sms()
{
    return {.name = "sms",
            .summary = "Makes a URI of a text message to be sent",
            .options = {&number, &body},
            .examples = "Example:\n"
                        "  ndef make sms +4930123456 --body \"I am here\"",
            .record = sms_record};
}

Thing mail()
{
    return {.name = "mail",
            .summary = "Makes a URI of an e-mail to be sent",
            .options = {&address, &cc, &subject, &body},
            .examples = "Example:\n"
                        "  ndef make mail info@example.com --subject \"Room 7\"",
            .record = mail_record};
}

} // namespace tool::make
