#include "smart_poster.h"

#include "../c_interface.h"
#include "../printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace nfc_ndef::values {

namespace {

void show_uri(const Record &record, View &view)
{
    if (const auto *uri = std::get_if<Uri>(&record.content))
        Kind<Uri>::show(*uri, view);
    else
        view.record("uri", record);
}

void show_title(const Record &record, View &view)
{
    const auto *text = std::get_if<Text>(&record.content);
    if (!text)
        return view.record("title", record);
    const std::string language = text->language_code.empty() ? "no language" : printable_utf8(text->language_code);
    view.text("title", text->text, text->utf16 ? View::Encoding::utf16 : View::Encoding::utf8,
              fmt::format("({}, {})", language, text->utf16 ? "UTF-16" : "UTF-8"));
}

uint32_t size_of(const Record &record)
{
    uint32_t size = 0;
    for (const uint8_t byte : record.payload)
        size = size << 8 | byte;
    return size;
}

} // namespace

std::optional<SmartPoster> Kind<SmartPoster>::read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                   nfc_ndef_payload_report &report)
{
    nfc_ndef_smart_poster read;
    if (!nfc_ndef_smart_poster_read(record.payload, &read, &report))
        return std::nullopt;
    SmartPoster poster;
    poster.action = read.action;
    Records videos;
    nfc_ndef_record_view inner;
    while (const uint32_t part = nfc_ndef_smart_poster_next(&read, &inner)) {
        if (part == NFC_NDEF_SMART_POSTER_ACTION)
            continue;
        Record decoded = decode(inner, nesting.inner());
        switch (part) {
        case NFC_NDEF_SMART_POSTER_URI:
            poster.uri_record = std::move(decoded);
            break;
        case NFC_NDEF_SMART_POSTER_TITLE:
            poster.titles.push_back(std::move(decoded));
            break;
        case NFC_NDEF_SMART_POSTER_TYPE:
            poster.type_record = std::move(decoded);
            break;
        case NFC_NDEF_SMART_POSTER_SIZE:
            poster.size_record = std::move(decoded);
            break;
        case NFC_NDEF_SMART_POSTER_IMAGE:
            poster.icons.push_back(std::move(decoded));
            break;
        case NFC_NDEF_SMART_POSTER_VIDEO:
            videos.push_back(std::move(decoded));
            break;
        default:
            poster.other_records.push_back(std::move(decoded));
        }
    }
    std::ranges::move(videos, std::back_inserter(poster.icons)); // in the order of the extractor
    return poster;
}

nfc_ndef::Record Kind<SmartPoster>::make(const SmartPoster &poster)
{
    const LentRecords titles(poster.titles), icons(poster.icons), others(poster.other_records);
    const LentRecord uri_record(poster.uri_record), size_record(poster.size_record), type_record(poster.type_record);
    if (!titles.ok() || !icons.ok() || !others.ok() || !uri_record.ok() || !size_record.ok() || !type_record.ok())
        return nullptr;
    return nfc_ndef::Record(rtdlib_smart_poster_record_create(
        titles.count(), titles.data(), uri_record.get(), poster.action, icons.count(), icons.data(), size_record.get(),
        type_record.get(), others.count(), others.data()));
}

std::string Kind<SmartPoster>::summary(const SmartPoster &poster)
{
    const auto *const uri = poster.uri_record ? std::get_if<Uri>(&poster.uri_record->content) : nullptr;
    return uri ? Kind<Uri>::summary(*uri) : "";
}

void Kind<SmartPoster>::show(const SmartPoster &poster, View &view)
{
    show_uri(*poster.uri_record, view);
    for (const Record &record : poster.titles)
        show_title(record, view);
    if (poster.action != 255)
        view.field("action", fmt::format("{} ({})", Names(poster_actions).title_of(poster.action), poster.action));
    for (const Record &icon : poster.icons)
        view.field("icon", fmt::format("{}, {}", printable_type(icon), count_of(icon.payload.size(), "byte")));
    if (poster.size_record)
        view.field("size", count_of(size_of(*poster.size_record), "byte"));
    if (poster.type_record)
        view.text("type", poster.type_record->payload);
    view.message("other record", poster.other_records);
}

bool Kind<SmartPoster>::has_a_size_of_4_bytes(const SmartPoster &poster)
{
    return !poster.size_record || poster.size_record->payload.size() == 4;
}

} // namespace nfc_ndef::values
