#include "agreement.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace agreement {
namespace {

using nfc_ndef::Block;
using nfc_ndef::out;
using nfc_ndef::Record;
using View = nfc_ndef_record_view;

bool equal(nfc_ndef_bytes view, const uint8_t *data, size_t length)
{
    return (view.data == nullptr) == (view.length == 0) && view.length == length &&
           (length == 0 || std::memcmp(view.data, data, length) == 0);
}

bool equal(const View &view, const nfc_ndef_record *record)
{
    if (!record)
        return view.format == 0 && view.flags == 0 && !view.type.data;
    std::vector<uint8_t> payload(record->payload_length + 1);
    const auto length = static_cast<uint32_t>(payload.size() - 1);
    const uint8_t flags[] = {record->mb, record->me, record->cf, record->sr, record->il};
    unsigned bits = 0;
    for (const uint8_t flag : flags)
        bits = bits << 1 | flag;
    return view.flags == bits << 3 && view.format == record->record_type.format &&
           equal(view.type, record->record_type.name, record->record_type.name_length) &&
           equal(view.id, record->id, record->id_length) && view.payload_length == length &&
           nfc_ndef_record_view_join(&view, payload.data(), length) == length &&
           (length == 0 || std::memcmp(payload.data(), record->payload, length) == 0);
}

// An array of records that an extractor handed out; what is found in place is compared one by one.
class Records {
public:
    Records() = default;
    Records(const Records &) = delete;
    Records &operator=(const Records &) = delete;
    ~Records()
    {
        for (uint8_t i = 0; i < count; ++i)
            nfc_ndef_record_delete(&records[i]);
        os_block_dealloc(records);
    }
    bool has_next(const View &view) { return next < count && equal(view, records[next++]); }
    bool is_done() const { return next == count; }

    uint8_t count = 0;
    nfc_ndef_record **records = nullptr;

private:
    uint8_t next = 0;
};

bool text(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    uint8_t utf16 = 0, language_length = 0;
    uint32_t length = 0;
    Block<> language, characters;
    const int8_t result =
        rtdlib_text_record_extract(&record, &utf16, &language_length, out(language), &length, out(characters));
    nfc_ndef_text view;
    if (nfc_ndef_text_read(payload, &view, report) != (result == NFC_NDEF_OK))
        return false;
    return result != NFC_NDEF_OK || (view.utf16 == utf16 && equal(view.language, language.get(), language_length) &&
                                     equal(view.text, characters.get(), length));
}

bool uri(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    uint8_t code = 0;
    uint32_t length = 0;
    Block<> field;
    const int8_t result = rtdlib_uri_record_extract(&record, &code, out(field), &length);
    nfc_ndef_uri view;
    return nfc_ndef_uri_read(payload, &view, report) == (result == NFC_NDEF_OK) && view.identifier_code == code &&
           equal(view.field, field.get(), length);
}

bool poster(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    Records titles, icons, others;
    Record uri_record, size, type;
    uint32_t action = 0;
    const int8_t result = rtdlib_smart_poster_record_extract(&record, &titles.count, &titles.records, out(uri_record),
                                                             &action, &icons.count, &icons.records, out(size),
                                                             out(type), &others.count, &others.records);
    nfc_ndef_smart_poster view;
    if (nfc_ndef_smart_poster_read(payload, &view, report) != (result == NFC_NDEF_OK))
        return false;
    if (result != NFC_NDEF_OK)
        return true;
    if (!equal(view.uri, uri_record.get()) || view.action != action || view.has_size != (size != nullptr) ||
        view.title_count != titles.count || view.icon_count != icons.count || view.other_count != others.count)
        return false;
    View size_view{}, type_view{}, part;
    std::vector<View> videos;
    while (const uint32_t role = nfc_ndef_smart_poster_next(&view, &part)) {
        if ((role == NFC_NDEF_SMART_POSTER_TITLE && !titles.has_next(part)) ||
            (role == NFC_NDEF_SMART_POSTER_IMAGE && !icons.has_next(part)) ||
            (role == NFC_NDEF_SMART_POSTER_OTHER && !others.has_next(part)))
            return false;
        if (role == NFC_NDEF_SMART_POSTER_VIDEO)
            videos.push_back(part);
        if (role == NFC_NDEF_SMART_POSTER_SIZE)
            size_view = part;
        if (role == NFC_NDEF_SMART_POSTER_TYPE)
            type_view = part;
    }
    for (const View &video : videos)
        if (!icons.has_next(video))
            return false;
    return titles.is_done() && icons.is_done() && others.is_done() && equal(size_view, size.get()) &&
           equal(type_view, type.get()) &&
           (!size || view.size == (uint32_t{size->payload[0]} << 24 | uint32_t{size->payload[1]} << 16 |
                                   uint32_t{size->payload[2]} << 8 | size->payload[3]));
}

bool control(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    uint32_t config = 0, code = 0;
    uint8_t flag = 0;
    Record target, action, data;
    Records nested;
    const int8_t result = rtdlib_generic_control_record_extract(&record, &config, out(target), &flag, &code,
                                                                out(action), out(data), &nested.count, &nested.records);
    nfc_ndef_generic_control view;
    if (nfc_ndef_generic_control_read(payload, &view, report) != (result == NFC_NDEF_OK))
        return false;
    if (result != NFC_NDEF_OK)
        return true;
    if (view.config != config || !equal(view.target, target.get()) || view.action_flag != flag ||
        view.action_code != code || view.has_data != (data != nullptr) || view.nested_count != nested.count)
        return false;
    View part;
    bool in_chunks = false;
    while (const uint32_t role = nfc_ndef_generic_control_next(&view, &part)) {
        in_chunks |= role == NFC_NDEF_GENERIC_CONTROL_ACTION && part.chunks.length != 0;
        if ((role == NFC_NDEF_GENERIC_CONTROL_DATA && !equal(part, data.get())) ||
            (role == NFC_NDEF_GENERIC_CONTROL_NESTED && !nested.has_next(part)))
            return false;
    }
    return nested.is_done() && equal(view.action_record, in_chunks ? nullptr : action.get());
}

bool handover(nfc_ndef_handover view, bool accepted, int8_t result, uint8_t version, Records &carriers,
              const View &extra, const nfc_ndef_record *extra_record)
{
    if (accepted != (result == NFC_NDEF_OK))
        return false;
    if (!accepted)
        return true;
    if (view.version != version || view.carrier_count != carriers.count || !equal(extra, extra_record))
        return false;
    for (View carrier; nfc_ndef_handover_next_carrier(&view, &carrier);)
        if (!carriers.has_next(carrier))
            return false;
    return carriers.is_done();
}

bool request(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    Records carriers;
    Record collision;
    uint8_t version = 0;
    const int8_t result =
        rtdlib_handover_request_record_extract(&record, out(collision), &carriers.count, &carriers.records, &version);
    nfc_ndef_handover view;
    const bool accepted = nfc_ndef_handover_request_read(payload, &view, report);
    return handover(view, accepted, result, version, carriers, view.collision, collision.get());
}

bool select(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    Records carriers;
    Record error;
    uint8_t version = 0;
    const int8_t result =
        rtdlib_handover_select_record_extract(&record, &carriers.count, &carriers.records, out(error), &version);
    nfc_ndef_handover view;
    const bool accepted = nfc_ndef_handover_select_read(payload, nfc_ndef_record_view_of(&record).flags, &view, report);
    return handover(view, accepted, result, version, carriers, view.error, error.get());
}

bool carrier(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    uint32_t format = 0;
    uint8_t type_length = 0, data_length = 0;
    Block<> type, data;
    const int8_t result =
        rtdlib_handover_carrier_record_extract(&record, &format, &type_length, out(type), &data_length, out(data));
    nfc_ndef_handover_carrier view;
    if (nfc_ndef_handover_carrier_read(payload, &view, report) != (result == NFC_NDEF_OK))
        return false;
    return result != NFC_NDEF_OK || (view.format == format && equal(view.type, type.get(), type_length) &&
                                     equal(view.data, data.get(), data_length));
}

bool alternative(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    uint32_t power_state = 0;
    uint8_t length = 0, count = 0;
    uint8_t **blocks = nullptr;
    Block<> reference, lengths;
    const int8_t result = rtdlib_alternative_carrier_record_extract(&record, &power_state, &length, out(reference),
                                                                    &count, out(lengths), &blocks);
    nfc_ndef_alternative_carrier view;
    bool same = nfc_ndef_alternative_carrier_read(payload, &view, report) == (result == NFC_NDEF_OK);
    if (result == NFC_NDEF_OK) {
        same = same && view.power_state == power_state && equal(view.reference, reference.get(), length) &&
               view.auxiliary_count == count;
        nfc_ndef_bytes auxiliary;
        for (uint8_t i = 0; i < count; ++i) {
            same =
                same && nfc_ndef_alternative_carrier_next(&view, &auxiliary) && equal(auxiliary, blocks[i], lengths[i]);
            os_block_dealloc(blocks[i]);
        }
        same = same && !nfc_ndef_alternative_carrier_next(&view, &auxiliary) && view.auxiliary_count == 0;
    }
    os_block_dealloc(blocks);
    return same;
}

bool two_bytes(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    uint16_t number = 0;
    uint8_t reason = 0, data = 0;
    const bool accepted = rtdlib_collision_resolution_record_extract(&record, &number) == NFC_NDEF_OK;
    nfc_ndef_collision_resolution collision;
    nfc_ndef_handover_error error;
    return nfc_ndef_collision_resolution_read(payload, &collision, report) == accepted &&
           (rtdlib_handover_select_error_record_extract(&record, &reason, &data) == NFC_NDEF_OK) == accepted &&
           nfc_ndef_handover_error_read(payload, &error, nullptr) == accepted &&
           (!accepted || (collision.random_number == number && error.reason == reason && error.data == data));
}

bool oob(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    nfc_ndef::BluetoothOob fields;
    const int8_t result = rtdlib_bt_2_1_configuration_data_record_extract(&record, out(fields));
    nfc_ndef_bt_oob view;
    if (nfc_ndef_bt_oob_read(payload, &view, report) != (result == NFC_NDEF_OK))
        return false;
    if (result != NFC_NDEF_OK)
        return true;
    if (!equal({view.device_address, 6}, fields->device_address, 6) ||
        !equal({view.class_of_device, 3}, fields->class_of_device, 3) ||
        !equal(view.local_name, fields->local_name, fields->local_name_length) ||
        !equal(view.hash_c, fields->hash_c, fields->hash_c_length) ||
        !equal(view.randomizer_r, fields->randomizer_r, fields->randomizer_r_length) ||
        !equal(view.uuid16_list, fields->uuid16_list, fields->uuid16_list_length) ||
        !equal(view.uuid32_list, fields->uuid32_list, fields->uuid32_list_length) ||
        !equal(view.uuid128_list, fields->uuid128_list, fields->uuid128_list_length) ||
        view.manufacturer_count != fields->manufacturer_data_count)
        return false;
    uint8_t i = 0;
    for (nfc_ndef_eir eir; nfc_ndef_bt_oob_next(&view, &eir);) {
        if (eir.type != 0xFF)
            continue;
        const auto length = static_cast<uint32_t>(fields->manufacturer_data_lengths[i]);
        if (!equal({eir.data.data, 2}, fields->manufacturer_ids[i], 2) || eir.data.length != 2 + length ||
            (length != 0 && std::memcmp(eir.data.data + 2, fields->manufacturer_data[i], length) != 0))
            return false;
        ++i;
    }
    return i == view.manufacturer_count;
}

bool legacy(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    nfc_ndef::BluetoothLegacy fields;
    const int8_t result = rtdlib_bt_configuration_data_record_extract(&record, out(fields));
    nfc_ndef_bt_legacy view;
    if (nfc_ndef_bt_legacy_read(payload, &view, report) != (result == NFC_NDEF_OK))
        return false;
    return result != NFC_NDEF_OK ||
           (view.pairing_type == fields->pairing_type && equal({view.device_address, 6}, fields->device_address, 6) &&
            equal({view.class_of_device, 3}, fields->class_of_device, 3) &&
            equal(view.pairing_data, fields->pairing_data, fields->pairing_data_length) &&
            equal(view.local_name, fields->local_name, fields->local_name_length));
}

bool enquiry(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report)
{
    uint8_t type = 0, length = 0, version = 0;
    Block<> data;
    const int8_t result = rtdlib_sharing_enquiry_record_extract(&record, &type, &length, out(data), &version);
    nfc_ndef_sharing_enquiry view;
    if (nfc_ndef_sharing_enquiry_read(payload, &view, report) != (result == NFC_NDEF_OK))
        return false;
    return result != NFC_NDEF_OK ||
           (view.type == type && view.version == version && equal(view.data, data.get(), length));
}

struct Type {
    const char *name;
    bool (*agrees)(const nfc_ndef_record &record, nfc_ndef_bytes payload, nfc_ndef_payload_report *report);
};
constexpr Type types[] = {
    {"text", text},           {"uri", uri},       {"poster", poster},   {"control", control},
    {"request", request},     {"select", select}, {"carrier", carrier}, {"alternative carrier", alternative},
    {"two bytes", two_bytes}, {"oob", oob},       {"legacy", legacy},   {"enquiry", enquiry},
};

} // namespace

const char *broken_by(const nfc_ndef_record &record)
{
    const View view = nfc_ndef_record_view_of(&record);
    for (const Type &type : types) {
        nfc_ndef_payload_report report{};
        if (!type.agrees(record, view.payload, &report))
            return type.name;
        const bool nested = report.reason == NFC_NDEF_PAYLOAD_NOT_A_MESSAGE;
        if (report.offset > view.payload.length || nested != (report.message_reason != NFC_NDEF_MSG_VALID) ||
            std::strcmp(nfc_ndef_payload_reason_text(report.reason), "unknown reason") == 0)
            return "report";
    }
    return nullptr;
}

const char *broken_by(nfc_ndef_bytes message)
{
    nfc_ndef_msg_report checked, opened;
    const bool valid = nfc_ndef_msg_check(message.data, 0, static_cast<uint32_t>(message.length), &checked);
    nfc_ndef_msg_view view;
    if (nfc_ndef_msg_view_open(message, &view, &opened) != valid || checked.reason != opened.reason ||
        checked.record != opened.record || checked.offset != opened.offset)
        return "opening";
    const nfc_ndef::Message parsed(
        nfc_ndef_msg_create_by_msg_offset(message.data, 0, static_cast<uint32_t>(message.length)));
    if (view.record_count != nfc_ndef_msg_get_number_of_records(parsed.get()))
        return "count";

    std::vector<uint8_t> written(message.length + 4 * view.record_count), encoded(written.size());
    nfc_ndef_msg_writer writer;
    nfc_ndef_msg_writer_begin(&writer, written.data(), static_cast<uint32_t>(written.size()));
    View record;
    for (uint8_t i = 0; nfc_ndef_msg_view_next(&view, &record); ++i) {
        if (!equal(record, nfc_ndef_msg_get_record_by_index(parsed.get(), i)))
            return "record";
        nfc_ndef_msg_writer_add(&writer, &record);
    }
    const uint32_t length = nfc_ndef_msg_writer_end(&writer);
    Block<> block;
    const int32_t block_length = nfc_ndef_msg_to_byte_array(parsed.get(), out(block));
    if (view.record_count != 0 || block_length != static_cast<int32_t>(length) ||
        nfc_ndef_msg_write(parsed.get(), encoded.data(), static_cast<uint32_t>(encoded.size())) != length ||
        (length != 0 && (std::memcmp(block.get(), written.data(), length) != 0 ||
                         std::memcmp(block.get(), encoded.data(), length) != 0)))
        return "writing";
    return nullptr;
}

} // namespace agreement
