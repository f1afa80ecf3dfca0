// Smart Poster record: NFC Forum Smart Poster RTD 1.0. Its payload is a message of its parts.
#include "message/draft.h"
#include "message/nested.h"
#include "message/view.h"
#include "record/payload_report.h"
#include "rtd/result.h"

using namespace ndef;

constexpr uint8_t no_action = 255;
constexpr uint32_t size_payload_length = 4;
constexpr uint32_t action_payload_length = 1;

namespace {

enum Part : uint8_t { uri, title, type, size, act, image, video };
constexpr KnownType parts[] = {known::uri,           known::text,   known::poster_type, known::poster_size,
                               known::poster_action, known::images, known::videos};

// The payload of a record that must have exactly so many bytes, most significant first; none with another length.
template <std::unsigned_integral Number> bool read_number(const nfc_ndef_record_view &record, Number &number)
{
    uint8_t bytes[sizeof number];
    if (nfc_ndef_record_view_join(&record, bytes, sizeof bytes) != sizeof bytes)
        return false;
    number = Reader(bytes).be<Number>();
    return true;
}

} // namespace

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

uint8_t nfc_ndef_smart_poster_read(nfc_ndef_bytes payload, nfc_ndef_smart_poster *poster,
                                   nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *poster = {};
    poster->action = no_action;
    if (bytes.empty())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    const Sorted sorted(bytes, parts);
    if (!sorted.valid())
        return verdict.refused(sorted.report(), 0);
    if (sorted.count(uri) != 1)
        return sorted.count(uri) == 0 ? verdict.refused(NFC_NDEF_PAYLOAD_RECORD_MISSING)
                                      : verdict.refused(NFC_NDEF_PAYLOAD_RECORD_REPEATED, sorted.second(uri));
    poster->message = opened(bytes, sorted.report());
    poster->uri = sorted.record(uri);
    poster->title_count = sorted.count(title);
    if (sorted.count(size) != 0) {
        if (!read_number(sorted.record(size), poster->size))
            return verdict.refused(NFC_NDEF_PAYLOAD_WRONG_LENGTH, sorted.first(size));
        poster->has_size = 1;
    }
    if (sorted.count(act) != 0) {
        if (!read_number(sorted.record(act), poster->action))
            return verdict.refused(NFC_NDEF_PAYLOAD_WRONG_LENGTH, sorted.first(act));
        poster->has_action = 1;
    }
    poster->icon_count = static_cast<uint8_t>(sorted.count(image) + sorted.count(video));
    const auto taken = static_cast<uint32_t>(1 + poster->title_count + (sorted.count(type) != 0) + poster->has_size +
                                             poster->has_action + poster->icon_count);
    poster->other_count = static_cast<uint8_t>(poster->message.record_count - taken);
    return verdict.valid();
}

uint32_t nfc_ndef_smart_poster_next(nfc_ndef_smart_poster *poster, nfc_ndef_record_view *record)
{
    if (!nfc_ndef_msg_view_next(&poster->message, record))
        return 0;
    static constexpr uint8_t public_parts[] = {NFC_NDEF_SMART_POSTER_URI,    NFC_NDEF_SMART_POSTER_TITLE,
                                               NFC_NDEF_SMART_POSTER_TYPE,   NFC_NDEF_SMART_POSTER_SIZE,
                                               NFC_NDEF_SMART_POSTER_ACTION, NFC_NDEF_SMART_POSTER_IMAGE,
                                               NFC_NDEF_SMART_POSTER_VIDEO,  NFC_NDEF_SMART_POSTER_OTHER};
    constexpr unsigned once = 1 << type | 1 << size | 1 << act; // a second one is another record
    const size_t part = position_of(CandidateType(record->format, bytes_of(record->type)), parts);
    const auto bit = static_cast<unsigned>(1 << part & once);
    if ((poster->handed_out & bit) != 0)
        return NFC_NDEF_SMART_POSTER_OTHER;
    poster->handed_out = static_cast<uint8_t>(poster->handed_out | bit);
    return public_parts[part];
}

int8_t rtdlib_smart_poster_record_extract(const nfc_ndef_record *record, uint8_t *title_count,
                                          nfc_ndef_record ***titles, nfc_ndef_record **uri_record, uint32_t *action,
                                          uint8_t *icon_count, nfc_ndef_record ***icons, nfc_ndef_record **size_record,
                                          nfc_ndef_record **type_record, uint8_t *other_count,
                                          nfc_ndef_record ***other_records)
{
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
