// Makes a Smart Poster from typed values, reads it again, changes it, and prints it as JSON.

#include <nfc_ndef/values.h>

#include <cstdio>

using namespace nfc_ndef::values;

namespace {

std::optional<Record> make_poster(std::string_view uri, std::string_view title)
{
    const std::optional<Record> link = build(Uri(uri)), text = build(utf8_text(title, "en"));
    if (!link || !text)
        return std::nullopt;
    SmartPoster poster;
    poster.uri_record = *link;
    poster.titles = {*text};
    poster.action = 0;
    return build(poster, bytes_of("menu"));
}

// The first web page that a message leads to.
std::string page_of(const Records &message)
{
    for (const Record &record : message) {
        if (const auto *uri = std::get_if<Uri>(&record.content))
            return expand_uri(*uri);
        if (const auto *poster = std::get_if<SmartPoster>(&record.content))
            return page_of({*poster->uri_record});
    }
    return "";
}

bool save_for_later(Record &record)
{
    auto *poster = std::get_if<SmartPoster>(&record.content);
    if (!poster)
        return false;
    poster->action = 1;
    std::optional<Record> changed = build(*poster, record.id); // the payload follows from the content here alone
    if (changed)
        record = *std::move(changed);
    return changed.has_value();
}

void explain(std::string_view json)
{
    try {
        std::printf("%zu records\n", from_json(json).size());
    } catch (const JsonError &error) {
        std::printf("%s: %s\n", error.path.c_str(), error.what());
    }
}

} // namespace

int main()
{
    const std::optional<Record> poster = make_poster("https://www.example.com/menu", "The menu");
    const std::optional<Bytes> bytes = poster ? encode({*poster}) : std::nullopt;
    std::optional<Records> message = bytes ? decode(*bytes) : std::nullopt;
    if (!message || !save_for_later(message->front()))
        return 1;
    const Record &record = message->front();
    std::printf("%s: %s\n%s", title_of(record).c_str(), page_of(*message).c_str(), to_json(*message).c_str());
    explain(R"({"records": [{"kind": "text", "language_code": "en"}]})");
    return 0;
}
