// Text, URI, Smart Poster and Generic Control.
#include "model_parts.h"

namespace model {

using nfc_ndef::Block;
using nfc_ndef::out;

Content read_text(const nfc_ndef_record &record, const Nesting &)
{
    uint8_t utf16 = 0, language_code_length = 0;
    uint32_t text_length = 0;
    Block<> language_code, text;
    const int8_t result =
        rtdlib_text_record_extract(&record, &utf16, &language_code_length, out(language_code), &text_length, out(text));
    if (result != 1)
        return malformed;
    return Text{utf16 != 0, copy_of<std::string>(language_code, language_code_length), copy_of(text, text_length)};
}

nfc_ndef::Record make(const Text &text)
{
    if (!fit_in_a_byte(text.language_code.size()))
        return nullptr;
    return nfc_ndef::Record(rtdlib_text_record_create(text.utf16, static_cast<uint8_t>(text.language_code.size()),
                                                      pointer_to(text.language_code), pointer_to(text.text),
                                                      static_cast<uint32_t>(text.text.size())));
}

Content read_uri(const nfc_ndef_record &record, const Nesting &)
{
    uint8_t identifier_code = 0;
    uint32_t length = 0;
    Block<> field;
    const int8_t result = rtdlib_uri_record_extract(&record, &identifier_code, out(field), &length);
    if (result != 1)
        return malformed;
    return Uri{identifier_code, copy_of<std::string>(field, length)};
}

nfc_ndef::Record make(const Uri &uri)
{
    return nfc_ndef::Record(rtdlib_uri_record_create(uri.identifier_code, static_cast<uint32_t>(uri.uri_field.size()),
                                                     pointer_to(uri.uri_field)));
}

Content read_smart_poster(const nfc_ndef_record &record, const Nesting &nesting)
{
    ExtractedRecords titles, icons, others;
    nfc_ndef::Record uri, size, type;
    uint32_t action = 0;
    const int8_t result =
        rtdlib_smart_poster_record_extract(&record, &titles.count, &titles.records, out(uri), &action, &icons.count,
                                           &icons.records, out(size), out(type), &others.count, &others.records);
    if (result != 1)
        return malformed;
    SmartPoster poster;
    poster.uri_record = decode_optional(uri, nesting);
    poster.titles = titles.decode(nesting);
    poster.action = static_cast<uint8_t>(action);
    poster.icons = icons.decode(nesting);
    poster.size_record = decode_optional(size, nesting);
    poster.type_record = decode_optional(type, nesting);
    poster.other_records = others.decode(nesting);
    return poster;
}

nfc_ndef::Record make(const SmartPoster &poster)
{
    const LentRecords titles(poster.titles), icons(poster.icons), others(poster.other_records);
    const nfc_ndef::Record uri = to_optional_handle(poster.uri_record), size = to_optional_handle(poster.size_record),
                           type = to_optional_handle(poster.type_record);
    if (!titles.ok() || !icons.ok() || !others.ok())
        return nullptr;
    return nfc_ndef::Record(rtdlib_smart_poster_record_create(titles.count(), titles.data(), uri.get(), poster.action,
                                                              icons.count(), icons.data(), size.get(), type.get(),
                                                              others.count(), others.data()));
}

Content read_generic_control(const nfc_ndef_record &record, const Nesting &nesting)
{
    // Of an absent action nothing is written; of a present one, either another flag or a code of 8 bits is.
    constexpr uint8_t no_flag = 0xFF;
    constexpr uint32_t no_code = UINT32_MAX;
    uint32_t config = 0, code = no_code;
    uint8_t flag = no_flag;
    nfc_ndef::Record target, action, data;
    ExtractedRecords controls;
    const int8_t result = rtdlib_generic_control_record_extract(
        &record, &config, out(target), &flag, &code, out(action), out(data), &controls.count, &controls.records);
    if (result != 1)
        return malformed;
    GenericControl control;
    control.config = static_cast<uint8_t>(config);
    control.target_record = decode_optional(target, nesting);
    if (flag != no_flag || code != no_code)
        control.action_flag = flag;
    if (code != no_code)
        control.action_code = static_cast<uint8_t>(code);
    control.action_record = decode_optional(action, nesting);
    control.data_record = decode_optional(data, nesting);
    control.gc_records = controls.decode(nesting);
    return control;
}

nfc_ndef::Record make(const GenericControl &control)
{
    const nfc_ndef::Record target = to_optional_handle(control.target_record),
                           action = to_optional_handle(control.action_record),
                           data = to_optional_handle(control.data_record);
    // The builder writes its array from the last entry to the first.
    const LentRecords controls(control.gc_records, LentRecords::Order::reversed);
    if (!controls.ok())
        return nullptr;
    return nfc_ndef::Record(rtdlib_generic_control_record_create(
        control.config, target.get(), control.action_flag.value_or(0), control.action_code, action.get(), data.get(),
        controls.count(), controls.data()));
}

} // namespace model
