// Reading Bluetooth 2.1 out-of-band records.
#include "record/eir.h"
#include "record/payload_report.h"
#include "rtd/result.h"

#include <algorithm>

using namespace ndef;

namespace {

constexpr size_t length_field_size = 2;
constexpr size_t fixed_length = length_field_size + sizeof(nfc_ndef_bt_oob::device_address);
constexpr uint8_t most_manufacturer_entries = UINT8_MAX;

// A reason to refuse a structure, if any.
using Reason = nfc_ndef_payload_reason;

// A field that may come once: a name or a list of UUIDs. An empty one does not count.
Reason read_list(const Eir &eir, size_t unit, nfc_ndef_bytes &list, uint8_t &type)
{
    if (list.length != 0)
        return NFC_NDEF_PAYLOAD_FIELD_REPEATED;
    list = lent(eir.data);
    type = eir.type;
    return eir.data.size() % unit == 0 ? NFC_NDEF_PAYLOAD_VALID : NFC_NDEF_PAYLOAD_LIST_NOT_WHOLE;
}

Reason read_key(const Eir &eir, nfc_ndef_bytes &key)
{
    if (eir.data.size() != key_length)
        return NFC_NDEF_PAYLOAD_WRONG_LENGTH;
    uint8_t type;
    return read_list(eir, 1, key, type);
}

Reason read_class_of_device(const Eir &eir, nfc_ndef_bt_oob &oob)
{
    if (eir.data.size() != sizeof oob.class_of_device)
        return NFC_NDEF_PAYLOAD_WRONG_LENGTH;
    if (oob.has_class_of_device)
        return NFC_NDEF_PAYLOAD_FIELD_REPEATED;
    oob.has_class_of_device = 1;
    std::copy(eir.data.begin(), eir.data.end(), oob.class_of_device);
    return NFC_NDEF_PAYLOAD_VALID;
}

Reason count_manufacturer_entry(const Eir &eir, uint8_t &count)
{
    if (eir.data.size() < company_id_length)
        return NFC_NDEF_PAYLOAD_WRONG_LENGTH;
    if (count == most_manufacturer_entries)
        return NFC_NDEF_PAYLOAD_TOO_MANY;
    ++count;
    return NFC_NDEF_PAYLOAD_VALID;
}

Reason read_structure(const Eir &eir, nfc_ndef_bt_oob &oob)
{
    switch (eir.type) {
    case uuid16_incomplete:
    case uuid16_complete:
        return read_list(eir, uuid16_length, oob.uuid16_list, oob.uuid16_list_type);
    case uuid32_incomplete:
    case uuid32_complete:
        return read_list(eir, uuid32_length, oob.uuid32_list, oob.uuid32_list_type);
    case uuid128_incomplete:
    case uuid128_complete:
        return read_list(eir, uuid128_length, oob.uuid128_list, oob.uuid128_list_type);
    case name_shortened:
    case name_complete:
        return read_list(eir, 1, oob.local_name, oob.local_name_type);
    case class_of_device:
        return read_class_of_device(eir, oob);
    case hash_c:
        return read_key(eir, oob.hash_c);
    case randomizer_r:
        return read_key(eir, oob.randomizer_r);
    case manufacturer:
        return count_manufacturer_entry(eir, oob.manufacturer_count);
    default:
        return NFC_NDEF_PAYLOAD_VALID;
    }
}

// Where a field of the structure goes, if it is one of those that are a length and a block.
struct Slot {
    uint8_t *length;
    uint8_t **block;
};
Slot slot_of(uint8_t type, nfc_ndef_bt_rtd_2_1_str &out)
{
    switch (type) {
    case uuid16_incomplete:
    case uuid16_complete:
        return {&out.uuid16_list_length, &out.uuid16_list};
    case uuid32_incomplete:
    case uuid32_complete:
        return {&out.uuid32_list_length, &out.uuid32_list};
    case uuid128_incomplete:
    case uuid128_complete:
        return {&out.uuid128_list_length, &out.uuid128_list};
    case name_shortened:
    case name_complete:
        return {&out.local_name_length, &out.local_name};
    case hash_c:
        return {&out.hash_c_length, &out.hash_c};
    case randomizer_r:
        return {&out.randomizer_r_length, &out.randomizer_r};
    default:
        return {nullptr, nullptr};
    }
}

// Copies the fields of so many bytes of structures; false when memory runs out.
bool copy_fields(ByteView structures, nfc_ndef_bt_rtd_2_1_str &out)
{
    EirReader in(structures);
    for (Eir eir; in.next(eir);) {
        const Slot slot = slot_of(eir.type, out);
        if (slot.block) {
            *slot.length = 0;
            if (!copy_to(*slot.block, eir.data))
                return false;
            *slot.length = static_cast<uint8_t>(eir.data.size());
        } else if (eir.type == class_of_device) {
            std::copy(eir.data.begin(), eir.data.end(), out.class_of_device);
        } else if (eir.type == manufacturer) {
            ++out.manufacturer_data_count;
        }
    }
    return true;
}

bool copy_manufacturer_entries(nfc_ndef_bt_oob view, nfc_ndef_bt_rtd_2_1_str &out)
{
    const size_t count = view.manufacturer_count;
    out.manufacturer_ids = new_zeroed_block<uint8_t *>(count).release();
    out.manufacturer_data_lengths = new_zeroed_block<uint8_t>(count).release();
    out.manufacturer_data = new_zeroed_block<uint8_t *>(count).release();
    if (!out.manufacturer_ids || !out.manufacturer_data_lengths || !out.manufacturer_data)
        return false;
    out.manufacturer_id_length = company_id_length;

    size_t i = 0;
    for (nfc_ndef_eir eir; nfc_ndef_bt_oob_next(&view, &eir);) {
        if (eir.type != manufacturer)
            continue;
        const ByteView entry = bytes_of(eir.data), data = entry.subspan(company_id_length);
        if (!copy_to(out.manufacturer_ids[i], entry.first(company_id_length)) ||
            !copy_to(out.manufacturer_data[i], data))
            return false;
        out.manufacturer_data_lengths[i++] = static_cast<uint8_t>(data.size());
    }
    return true;
}

} // namespace

uint8_t nfc_ndef_bt_oob_read(nfc_ndef_bytes payload, nfc_ndef_bt_oob *oob, nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *oob = {};
    Reader in(bytes);
    const uint8_t low = in.u8();
    const uint8_t high = in.u8();
    const ByteView address = in.take(sizeof oob->device_address);
    if (!in.ok())
        return bytes.empty() ? verdict.refused(NFC_NDEF_PAYLOAD_EMPTY)
                             : verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END,
                                               bytes.size() < length_field_size ? 0 : length_field_size);
    oob->stated_length = static_cast<uint16_t>(high << 8 | low);
    std::copy(address.begin(), address.end(), oob->device_address);

    const ByteView structures = in.rest();
    oob->structures = lent(structures);
    EirReader eirs(structures);
    for (Eir eir; eirs.next(eir);)
        if (const Reason reason = read_structure(eir, *oob); reason != NFC_NDEF_PAYLOAD_VALID)
            return verdict.refused(reason, eir.data.data() - eir_header_length);
    if (!eirs.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, bytes.size() - eirs.left_before());
    if (oob->randomizer_r.length != 0 && oob->hash_c.length == 0)
        return verdict.refused(NFC_NDEF_PAYLOAD_RANDOMIZER_WITHOUT_HASH, oob->randomizer_r.data - eir_header_length);
    return verdict.valid();
}

uint8_t nfc_ndef_bt_oob_next(nfc_ndef_bt_oob *oob, nfc_ndef_eir *structure)
{
    EirReader in(bytes_of(oob->structures));
    Eir eir;
    if (!in.next(eir))
        return 0;
    *structure = {.data = lent(eir.data), .type = eir.type};
    oob->structures = lent(in.rest());
    return 1;
}

int8_t rtdlib_bt_2_1_configuration_data_record_extract(const nfc_ndef_record *record, nfc_ndef_bt_rtd_2_1_str **fields)
{
    if (!record || !fields || *fields)
        return failure;
    *fields = new_zeroed_block<nfc_ndef_bt_rtd_2_1_str>(1).release();
    if (!*fields)
        return decoding_failed;
    nfc_ndef_bt_rtd_2_1_str &out = **fields;

    nfc_ndef_bt_oob view;
    nfc_ndef_payload_report report;
    nfc_ndef_bt_oob_read(lent(payload_of(record)), &view, &report);
    std::copy(std::begin(view.device_address), std::end(view.device_address), out.device_address);
    const ByteView structures = bytes_of(view.structures);
    const bool complete =
        report.reason == NFC_NDEF_PAYLOAD_VALID || report.reason == NFC_NDEF_PAYLOAD_RANDOMIZER_WITHOUT_HASH;
    const size_t read = complete || report.offset < fixed_length ? structures.size() : report.offset - fixed_length;
    if (!copy_fields(structures.first(read), out))
        return decoding_failed;
    if (complete && out.manufacturer_data_count != 0 && !copy_manufacturer_entries(view, out))
        return decoding_failed;
    if (report.reason == NFC_NDEF_PAYLOAD_LIST_NOT_WHOLE) { // its length is kept all the same
        const uint8_t *const eir = structures.data() + read;
        *slot_of(eir[1], out).length = static_cast<uint8_t>(eir[0] - 1);
    }
    if (report.reason == NFC_NDEF_PAYLOAD_VALID)
        return success;
    const bool bad = report.reason == NFC_NDEF_PAYLOAD_RANDOMIZER_WITHOUT_HASH ||
                     report.reason == NFC_NDEF_PAYLOAD_LIST_NOT_WHOLE || report.offset < fixed_length;
    return bad ? bad_payload : decoding_failed;
}
