#include "uri_fields.h"

#include "../bytes.h"

#include <algorithm>

namespace nfc_ndef::values {

namespace {

using Texts = std::vector<std::string_view>;

bool is_digit(char c) { return c >= '0' && c <= '9'; }

Texts split(std::string_view text, char separator)
{
    Texts parts;
    for (size_t end = 0; end != text.npos; text.remove_prefix(std::min(end + 1, text.size()))) {
        end = text.find(separator);
        parts.push_back(text.substr(0, end));
    }
    return parts;
}

// The text in front of a separator and that behind it.
std::pair<std::string_view, std::string_view> cut(std::string_view text, char separator)
{
    const size_t end = text.find(separator);
    return {text.substr(0, end), end == text.npos ? "" : text.substr(end + 1)};
}

std::string in_lower_case(std::string_view text)
{
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return result;
}

std::optional<std::string> decoded(std::string_view text)
{
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        Bytes byte;
        if (text[i] != '%')
            result += text[i];
        else if (i + 2 < text.size() && bytes_of_hex(text.substr(i + 1, 2), byte))
            result += static_cast<char>(byte[0]), i += 2;
        else
            return std::nullopt;
    }
    return result;
}

// Fields in the making; what cannot be decoded, or must be there and is not, leaves none at all.
class Fields {
public:
    void add(std::string_view name, std::string_view encoded, bool plain = false)
    {
        const std::optional<std::string> text = decoded(encoded);
        ok_ = ok_ && text && !text->empty();
        if (ok_)
            fields_.push_back({name, *text, plain});
    }
    void require(bool possible) { ok_ = ok_ && possible; }
    NamedTexts take() { return ok_ ? std::move(fields_) : NamedTexts(); }

private:
    NamedTexts fields_;
    bool ok_ = true;
};

bool is_number(std::string_view text)
{
    if (text.starts_with('-'))
        text.remove_prefix(1);
    const auto [whole, fraction] = cut(text, '.');
    return !whole.empty() && std::ranges::all_of(whole, is_digit) && std::ranges::all_of(fraction, is_digit) &&
           (text.size() == whole.size() || !fraction.empty());
}

// "name=value" where the name is the one looked for, in any case.
std::optional<std::string_view> value_of(const Texts &parameters, std::string_view wanted)
{
    for (const std::string_view parameter : parameters)
        if (const auto [name, value] = cut(parameter, '='); in_lower_case(name) == wanted)
            return value;
    return std::nullopt;
}

NamedTexts place(std::string_view rest)
{
    const auto [path, query] = cut(rest, '?');
    const Texts parameters = split(path, ';');
    const Texts coordinates = split(parameters[0], ',');
    const auto uncertainty = value_of(parameters, "u"), asked = value_of(split(query, '&'), "q");
    Fields fields;
    fields.require((coordinates.size() == 2 || coordinates.size() == 3) &&
                   std::ranges::all_of(coordinates, is_number) &&
                   (!uncertainty || (is_number(*uncertainty) && !uncertainty->starts_with('-'))));
    const auto is_zero = [](std::string_view text) { return text.find_first_of("123456789") == text.npos; };
    const bool anywhere = asked && std::ranges::all_of(coordinates, is_zero); // the query alone says where
    constexpr std::string_view names[] = {"latitude", "longitude", "altitude"};
    for (size_t i = 0; !anywhere && i < std::min(coordinates.size(), std::size(names)); ++i)
        fields.add(names[i], coordinates[i], true);
    if (!anywhere && uncertainty)
        fields.add("uncertainty", *uncertainty, true);
    if (asked)
        fields.add("query", *asked);
    return fields.take();
}

NamedTexts telephone(std::string_view rest)
{
    const Texts parameters = split(rest, ';');
    Fields fields;
    fields.add("number", parameters[0], true);
    if (const auto context = value_of(parameters, "phone-context"))
        fields.add("phone-context", *context, true);
    if (const auto extension = value_of(parameters, "ext"))
        fields.add("extension", *extension, true);
    return fields.take();
}

void add_recipients(Fields &fields, std::string_view list)
{
    for (const std::string_view recipient : split(list, ','))
        fields.add("recipient", recipient);
}

NamedTexts text_message(std::string_view rest)
{
    const auto [recipients, query] = cut(rest, '?');
    Fields fields;
    add_recipients(fields, recipients);
    if (const auto body = value_of(split(query, '&'), "body"))
        fields.add("body", *body);
    return fields.take();
}

NamedTexts mail(std::string_view rest)
{
    const auto [recipients, query] = cut(rest, '?');
    const Texts parameters = split(query, '&');
    Fields fields;
    if (!recipients.empty())
        add_recipients(fields, recipients);
    if (const auto more = value_of(parameters, "to"))
        add_recipients(fields, *more);
    for (const std::string_view name : {"cc", "subject", "body"})
        if (const auto value = value_of(parameters, name))
            fields.add(name, *value);
    return fields.take();
}

} // namespace

NamedTexts uri_fields(std::string_view uri)
{
    const auto [scheme, rest] = cut(uri, ':');
    const std::string name = in_lower_case(scheme);
    if (name == "geo")
        return place(rest);
    if (name == "tel")
        return telephone(rest);
    if (name == "sms" || name == "smsto")
        return text_message(rest);
    return name == "mailto" ? mail(rest) : NamedTexts();
}

} // namespace nfc_ndef::values
