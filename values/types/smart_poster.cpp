#include "smart_poster.h"

#include "../extract.h"
#include "../printable.h"

#include <fmt/format.h>

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

std::optional<SmartPoster> Kind<SmartPoster>::read(const nfc_ndef_record &record, const Nesting &nesting)
{
    Array<nfc_ndef::Record> titles, icons, others;
    nfc_ndef::Record uri, size, type;
    uint32_t action = 0;
    const int8_t result = rtdlib_smart_poster_record_extract(&record, titles.out_count(), titles.out(), out(uri),
                                                             &action, icons.out_count(), icons.out(), out(size),
                                                             out(type), others.out_count(), others.out());
    if (result != 1)
        return std::nullopt;
    SmartPoster poster;
    poster.uri_record = nested(uri, nesting);
    poster.titles = nested(titles, nesting);
    poster.action = static_cast<uint8_t>(action);
    poster.icons = nested(icons, nesting);
    poster.size_record = nested(size, nesting);
    poster.type_record = nested(type, nesting);
    poster.other_records = nested(others, nesting);
    return poster;
}

nfc_ndef::Record Kind<SmartPoster>::make(const SmartPoster &poster)
{
    const LentRecords titles(poster.titles), icons(poster.icons), others(poster.other_records);
    const nfc_ndef::Record uri = to_handle(poster.uri_record), size = to_handle(poster.size_record),
                           type = to_handle(poster.type_record);
    if (!titles.ok() || !icons.ok() || !others.ok())
        return nullptr;
    return nfc_ndef::Record(rtdlib_smart_poster_record_create(titles.count(), titles.data(), uri.get(), poster.action,
                                                              icons.count(), icons.data(), size.get(), type.get(),
                                                              others.count(), others.data()));
}

void Kind<SmartPoster>::show(const SmartPoster &poster, View &view)
{
    show_uri(*poster.uri_record, view);
    for (const Record &title : poster.titles)
        show_title(title, view);
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
