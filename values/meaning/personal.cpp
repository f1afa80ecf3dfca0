#include "personal.h"

#include "../printable.h"
#include "content_lines.h"

#include <fmt/format.h>

#include <algorithm>

namespace nfc_ndef::values {

namespace {

using Lines = std::vector<ContentLine>;

bool equal_but_for_case(std::string_view a, std::string_view b)
{
    return media(a).matches(NFC_NDEF_TNF_MIME, b); // which media types are compared by
}

bool begins(std::string_view object, std::string_view first_line)
{
    const std::string_view line = object.substr(0, object.find('\n'));
    return equal_but_for_case(line.substr(0, line.size() - line.ends_with('\r')), first_line);
}

const ContentLine *find(const Lines &lines, std::string_view name)
{
    const auto found = std::ranges::find(lines, name, &ContentLine::name);
    return found != lines.end() ? &*found : nullptr;
}

// Prefix, given, additional and family name and suffix, in the order in which they are said.
std::string said(const ContentLine &name)
{
    std::vector<std::string> parts = name.parts();
    parts.resize(5);
    std::string text;
    for (const size_t i : {3u, 1u, 2u, 0u, 4u})
        if (!parts[i].empty())
            text += (text.empty() ? "" : " ") + parts[i];
    return text;
}

std::string name_of(const Lines &card)
{
    if (const ContentLine *full = find(card, "FN"); full && !full->value.empty())
        return full->text();
    if (const ContentLine *name = find(card, "N"); name && !said(*name).empty())
        return said(*name);
    const ContentLine *firm = find(card, "ORG");
    return firm ? firm->parts()[0] : "";
}

Lines first_card(Lines lines)
{
    lines.erase(std::ranges::find(lines, "END", &ContentLine::name), lines.end());
    return lines;
}

NamedTexts contact(const Lines &card)
{
    NamedTexts fields;
    if (const std::string name = name_of(card); !name.empty())
        fields.push_back({"name", name, false});
    for (const auto &[line_name, field] : {std::pair("TEL", "phone"), std::pair("EMAIL", "email")})
        for (const ContentLine &line : card)
            if (line.name == line_name) {
                std::string text = line.text();
                if (line.name == "TEL" && equal_but_for_case(text.substr(0, 4), "tel:"))
                    text.erase(0, 4);
                fields.push_back({field, text, false});
            }
    return fields;
}

// "20250131T090000Z" as people write it; any other text as it is.
std::string point_in_time(const ContentLine &line)
{
    std::string text = line.text();
    const auto digits = [&](size_t at, size_t count) {
        return text.size() >= at + count &&
               std::ranges::all_of(text.substr(at, count), [](char c) { return c >= '0' && c <= '9'; });
    };
    if (!digits(0, 8))
        return text;
    const bool is_date = text.size() == 8, is_utc = text.size() == 16 && text[15] == 'Z';
    if (!is_date && !((text.size() == 15 || is_utc) && text[8] == 'T' && digits(9, 6)))
        return text;
    std::string result = fmt::format("{}-{}-{}", text.substr(0, 4), text.substr(4, 2), text.substr(6, 2));
    if (!is_date)
        result += fmt::format(" {}:{}:{}", text.substr(9, 2), text.substr(11, 2), text.substr(13, 2));
    if (is_utc)
        return result + " UTC";
    const std::optional<std::string> zone = line.parameter("TZID");
    return zone ? fmt::format("{} {}", result, *zone) : result;
}

// The lines of the first event itself, without those of what is in it.
Lines first_event(const Lines &calendar)
{
    Lines event;
    size_t depth = 0; // within the event
    for (const ContentLine &line : calendar) {
        if (line.name == "BEGIN" && (depth > 0 || equal_but_for_case(line.value, "VEVENT")))
            ++depth;
        else if (line.name == "END" && depth > 0 && --depth == 0)
            return event;
        if (depth == 1)
            event.push_back(line);
    }
    return event;
}

NamedTexts calendar(const Lines &lines)
{
    NamedTexts fields;
    const Lines event = first_event(lines);
    if (const ContentLine *summary = find(event, "SUMMARY"))
        fields.push_back({"summary", summary->text(), false});
    if (const ContentLine *start = find(event, "DTSTART"))
        fields.push_back({"start", point_in_time(*start), true});
    return fields;
}

} // namespace

NamedTexts personal_fields(const Record &record)
{
    const std::string_view payload = text_of(record.payload);
    const auto has_type = [&](std::initializer_list<std::string_view> names) {
        return std::ranges::any_of(
            names, [&](std::string_view name) { return media(name).matches(record.format, text_of(record.type)); });
    };
    const bool is_card = has_type({"text/vcard", "text/x-vcard", "text/directory"});
    const bool is_calendar = has_type({"text/calendar", "text/x-vcalendar"});
    if ((!is_card && !is_calendar) || !is_utf8(payload))
        return {};
    if (is_card)
        return begins(payload, "BEGIN:VCARD") ? contact(first_card(content_lines(payload))) : NamedTexts();
    return begins(payload, "BEGIN:VCALENDAR") ? calendar(content_lines(payload)) : NamedTexts();
}

} // namespace nfc_ndef::values
