// Smart Poster record: NFC Forum Smart Poster RTD 1.0. Its payload is a message of its parts.
#include "message/draft.h"
#include "message/nested.h"
#include "rtd/result.h"

using namespace ndef;

constexpr uint32_t no_action = 255;
constexpr uint32_t size_payload_length = 4;
constexpr uint32_t action_payload_length = 1;

nfc_ndef_record *rtdlib_smart_poster_record_create(uint8_t title_count, nfc_ndef_record *const *titles,
                                                   const nfc_ndef_record *uri_record, uint8_t action,
                                                   uint8_t icon_count, nfc_ndef_record *const *icons,
                                                   const nfc_ndef_record *size_record,
                                                   const nfc_ndef_record *type_record, uint8_t other_count,
                                                   nfc_ndef_record *const *other_records)
{
    if (!uri_record)
        return nullptr;
    const RecordPtr action_record = record_of(known::poster_action, laid_out([&](auto &out) { out.u8(action); }));

    Draft poster;
    poster.add(uri_record)
        .add_each(title_count, titles)
        .add(action_record.get())
        .add_each(icon_count, icons)
        .add_if(type_record)
        .add_if(size_record)
        .add_each(other_count, other_records);
    return record_of(known::smart_poster, poster.pack({})).release();
}

int8_t rtdlib_smart_poster_record_extract(const nfc_ndef_record *record, uint8_t *title_count,
                                          nfc_ndef_record ***titles, nfc_ndef_record **uri_record, uint32_t *action,
                                          uint8_t *icon_count, nfc_ndef_record ***icons, nfc_ndef_record **size_record,
                                          nfc_ndef_record **type_record, uint8_t *other_count,
                                          nfc_ndef_record ***other_records)
{
    enum : Nested::Type { uri, title, type, size, act, image, video };
    static constexpr KnownType parts[] = {known::uri,           known::text,   known::poster_type, known::poster_size,
                                          known::poster_action, known::images, known::videos};
    Nested poster(payload_of(record), parts);

    if (!poster.valid() || poster.count(uri) != 1 || !poster.take_first(uri, uri_record))
        return failure;

    *title_count = 0;
    if (!poster.take_all({title}, title_count, titles) || !poster.take_first(type, type_record))
        return failure;

    if (poster.count(size) != 0 && poster.first(size).payload_length() != size_payload_length)
        return failure;
    if (!poster.take_first(size, size_record))
        return failure;

    *action = no_action;
    if (poster.count(act) != 0) {
        if (poster.first(act).payload_length() != action_payload_length)
            return failure;
        *action = poster.first(act).first_payload_byte();
        poster.drop_first(act);
    }

    if (!poster.take_all({image, video}, icon_count, icons))
        return failure;

    *other_count = 0;
    if (!poster.take_rest(other_count, other_records))
        return failure;
    return success;
}
