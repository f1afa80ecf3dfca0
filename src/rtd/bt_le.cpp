// Bluetooth LE out-of-band record: NFC Forum Bluetooth Secure Simple Pairing Using NFC; Bluetooth Core, Supplement,
// Part A. Its payload is a list of structures.
#include "record/build.h"
#include "record/eir.h"
#include "record/elements.h"

#include <algorithm>
#include <array>

using namespace ndef;

namespace {

using Reason = nfc_ndef_payload_reason;

constexpr size_t address_length = 6; // and a byte for its type, which some leave out
constexpr uint8_t first_name_type = name_shortened;

// A list of UUIDs of one width.
struct List {
    nfc_ndef_bytes *uuids;
    uint8_t *type;
    uint8_t incomplete; // the type of such a list; that of a complete one is the next
    size_t unit;
};
std::array<List, 3> lists_of(nfc_ndef_bt_le &le)
{
    return {{{&le.uuid16_list, &le.uuid16_list_type, uuid16_incomplete, uuid16_length},
             {&le.uuid32_list, &le.uuid32_list_type, uuid32_incomplete, uuid32_length},
             {&le.uuid128_list, &le.uuid128_list_type, uuid128_incomplete, uuid128_length}}};
}

// The bytes of UUID that begin service data.
size_t uuid_length_of(uint8_t service_data_type)
{
    return service_data_type == service_data16   ? uuid16_length
           : service_data_type == service_data32 ? uuid32_length
                                                 : uuid128_length;
}

bool is_service_data(uint8_t type)
{
    return type == service_data16 || type == service_data32 || type == service_data128;
}

// What stands in the structure, rather than to be handed out one by one.
bool has_field(const Eir &eir)
{
    switch (eir.type) {
    case flags:
        return eir.data.size() == 1;
    case uuid16_incomplete:
    case uuid16_complete:
    case uuid32_incomplete:
    case uuid32_complete:
    case uuid128_incomplete:
    case uuid128_complete:
        return !eir.data.empty();
    case name_shortened:
    case name_complete:
    case le_address:
    case le_role:
    case security_manager_tk:
    case confirmation:
    case random_value:
    case appearance:
        return true;
    default:
        return false;
    }
}

Reason take_bytes(nfc_ndef_bytes &field, ByteView data, bool right_length)
{
    if (!right_length)
        return NFC_NDEF_PAYLOAD_WRONG_LENGTH;
    if (is_present(field))
        return NFC_NDEF_PAYLOAD_FIELD_REPEATED;
    field = present(data);
    return NFC_NDEF_PAYLOAD_VALID;
}

// A number, least significant byte first.
template <class Number> Reason take_number(Number &number, uint8_t &has, ByteView data)
{
    if (data.size() != sizeof number)
        return NFC_NDEF_PAYLOAD_WRONG_LENGTH;
    if (has)
        return NFC_NDEF_PAYLOAD_FIELD_REPEATED;
    has = 1;
    for (size_t i = data.size(); i-- > 0;)
        number = static_cast<Number>(uint32_t{number} << 8 | data[i]);
    return NFC_NDEF_PAYLOAD_VALID;
}

Reason take_address(const ByteView data, nfc_ndef_bt_le &le)
{
    const bool with_type = data.size() == address_length + 1;
    const Reason reason = take_bytes(le.device_address, data.first(std::min(data.size(), address_length)),
                                     with_type || data.size() == address_length);
    if (reason == NFC_NDEF_PAYLOAD_VALID && with_type) {
        le.has_address_type = 1;
        le.address_type = data[address_length];
    }
    return reason;
}

Reason take_structure(const Eir &eir, nfc_ndef_bt_le &le)
{
    switch (eir.type) {
    case le_address:
        return take_address(eir.data, le);
    case le_role:
        return take_number(le.le_role, le.has_le_role, eir.data);
    case security_manager_tk:
        return take_bytes(le.security_manager_tk, eir.data, eir.data.size() == key_length);
    case confirmation:
        return take_bytes(le.confirmation, eir.data, eir.data.size() == key_length);
    case random_value:
        return take_bytes(le.random_value, eir.data, eir.data.size() == key_length);
    case appearance:
        return take_number(le.appearance, le.has_appearance, eir.data);
    case flags:
        return take_number(le.flags, le.has_flags, eir.data);
    case name_shortened:
    case name_complete:
        le.local_name_type = eir.type;
        return take_bytes(le.local_name, eir.data, true);
    default:
        break;
    }
    const List list = lists_of(le)[(eir.type - uuid16_incomplete) / 2u];
    if (is_present(*list.uuids))
        return NFC_NDEF_PAYLOAD_FIELD_REPEATED;
    *list.type = eir.type;
    *list.uuids = present(eir.data);
    return eir.data.size() % list.unit == 0 ? NFC_NDEF_PAYLOAD_VALID : NFC_NDEF_PAYLOAD_LIST_NOT_WHOLE;
}

Reason read_structure(const Eir &eir, nfc_ndef_bt_le &le)
{
    if (has_field(eir))
        return take_structure(eir, le);
    const size_t least = is_service_data(eir.type)  ? uuid_length_of(eir.type)
                         : eir.type == manufacturer ? company_id_length
                                                    : 0;
    return eir.data.size() >= least ? NFC_NDEF_PAYLOAD_VALID : NFC_NDEF_PAYLOAD_WRONG_LENGTH;
}

template <class Out> void lay_out_eir(Out &out, uint8_t type, ByteView data, ByteView more = {})
{
    if (data.size() + more.size() > longest_eir_data)
        out.refuse();
    else
        out.u8(static_cast<uint8_t>(1 + data.size() + more.size())).u8(type).bytes(data).bytes(more);
}
template <class Out> void lay_out_present(Out &out, uint8_t type, const nfc_ndef_bytes &data, ByteView more = {})
{
    if (is_present(data))
        lay_out_eir(out, type, bytes_of(data), more);
}
template <class Out> void lay_out_byte(Out &out, uint8_t type, uint8_t has, uint8_t byte)
{
    if (has)
        lay_out_eir(out, type, {&byte, 1});
}

// Those that are handed out one by one, in the order of what they are: service data, manufacturers' data, the rest.
template <class Out> void lay_out_others(Out &out, const nfc_ndef_bt_le &le)
{
    const auto rank = [](uint8_t type) { return is_service_data(type) ? 0 : type == manufacturer ? 1 : 2; };
    for (int wanted = 0; wanted < 3; ++wanted) {
        nfc_ndef_bt_le left = le;
        for (nfc_ndef_eir eir; nfc_ndef_bt_le_next(&left, &eir);)
            if (rank(eir.type) == wanted)
                lay_out_eir(out, eir.type, bytes_of(eir.data));
    }
}

// Whether types go with what is there.
bool has_types(nfc_ndef_bt_le le)
{
    const auto fits = [](uint8_t type, uint8_t incomplete) { return type == incomplete || type == incomplete + 1; };
    for (const List &list : lists_of(le))
        if (is_present(*list.uuids) && (list.uuids->length == 0 || !fits(*list.type, list.incomplete)))
            return false;
    return !is_present(le.local_name) || fits(le.local_name_type, first_name_type);
}

} // namespace

uint8_t nfc_ndef_bt_le_read(nfc_ndef_bytes payload, nfc_ndef_bt_le *le, nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *le = {};
    le->structures = lent(bytes);
    EirReader in(bytes);
    bool any = false;
    for (Eir eir; in.next(eir); any = true)
        if (const Reason reason = read_structure(eir, *le); reason != NFC_NDEF_PAYLOAD_VALID)
            return verdict.refused(reason, eir.data.data() - eir_header_length);
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, bytes.size() - in.left_before());
    return any ? verdict.valid()
               : verdict.refused(bytes.empty() ? NFC_NDEF_PAYLOAD_EMPTY : NFC_NDEF_PAYLOAD_FIELD_MISSING);
}

uint8_t nfc_ndef_bt_le_next(nfc_ndef_bt_le *le, nfc_ndef_eir *structure)
{
    EirReader in(bytes_of(le->structures));
    Eir eir;
    do {
        if (!in.next(eir))
            return 0;
    } while (has_field(eir));
    *structure = {.data = lent(eir.data), .type = eir.type};
    le->structures = lent(in.rest());
    return 1;
}

uint32_t nfc_ndef_eir_write(const nfc_ndef_eir *structure, uint8_t *buffer, uint32_t capacity)
{
    return written([&](auto &out) { lay_out_eir(out, structure->type, bytes_of(structure->data)); }, buffer, capacity);
}

nfc_ndef_record *nfc_ndef_bt_le_record_create(const nfc_ndef_bt_le *le, nfc_ndef_bytes id)
{
    if (!has_types(*le) || (is_present(le->device_address) && le->device_address.length != address_length))
        return nullptr;
    const auto layout = [&](auto &out) {
        nfc_ndef_bt_le fields = *le;
        lay_out_present(out, le_address, le->device_address, {&le->address_type, size_t{le->has_address_type != 0}});
        lay_out_byte(out, le_role, le->has_le_role, le->le_role);
        lay_out_present(out, security_manager_tk, le->security_manager_tk);
        lay_out_present(out, confirmation, le->confirmation);
        lay_out_present(out, random_value, le->random_value);
        if (le->has_appearance)
            out.u8(3).u8(appearance).le16(le->appearance);
        lay_out_byte(out, flags, le->has_flags, le->flags);
        lay_out_present(out, le->local_name_type, le->local_name);
        for (const List &list : lists_of(fields))
            lay_out_present(out, *list.type, *list.uuids);
        lay_out_others(out, *le);
    };
    return readable_record_of(known::bluetooth_le, layout, id, nfc_ndef_bt_le_read);
}
