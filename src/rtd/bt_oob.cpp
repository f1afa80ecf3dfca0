// Building Bluetooth 2.1 out-of-band records, and freeing what was read from them.
#include "host/release.h"
#include "record/build.h"
#include "record/eir.h"

#include <algorithm>

using namespace ndef;

namespace {

constexpr uint64_t longest_payload = UINT16_MAX;

// A length and a pointer of the structure, as the bytes they stand for.
struct Field {
    ByteView bytes;
    bool paired;

    Field(const uint8_t *pointer, uint8_t length)
        : bytes(bytes_of(pointer, length)), paired((pointer != nullptr) == (length != 0))
    {
    }
    bool is_list_of(size_t unit) const { return paired && bytes.size() % unit == 0; }
    bool is_key() const { return paired && (bytes.empty() || bytes.size() == key_length); }

    // A list's type says whether it is complete; an absent list has none.
    bool has_type(uint8_t type, EirType incomplete, EirType complete) const
    {
        return bytes.empty() ? type == 0 : type == incomplete || type == complete;
    }
};

bool has_manufacturer_entries(const nfc_ndef_bt_rtd_2_1_str &fields)
{
    return fields.manufacturer_data_count != 0 || fields.manufacturer_id_length != 0 || fields.manufacturer_ids ||
           fields.manufacturer_data_lengths || fields.manufacturer_data;
}

bool are_manufacturer_entries(const nfc_ndef_bt_rtd_2_1_str &fields)
{
    if (fields.manufacturer_data_count == 0 || fields.manufacturer_id_length != company_id_length ||
        !fields.manufacturer_ids || !fields.manufacturer_data_lengths || !fields.manufacturer_data)
        return false;
    for (size_t i = 0; i < fields.manufacturer_data_count; ++i) {
        const Field data(fields.manufacturer_data[i], fields.manufacturer_data_lengths[i]);
        if (!fields.manufacturer_ids[i] || !data.paired || company_id_length + data.bytes.size() > longest_eir_data)
            return false;
    }
    return true;
}

template <class Out> void write_eir(Out &out, uint8_t type, ByteView data, ByteView more = {})
{
    out.u8(static_cast<uint8_t>(1 + data.size() + more.size())).u8(type).bytes(data).bytes(more);
}

// Without a count the arrays, and without a length an entry's data, are not the structure's. After a failure any of the
// arrays may be missing.
void free_manufacturer_entries(const nfc_ndef_bt_rtd_2_1_str &fields)
{
    if (fields.manufacturer_data_count == 0)
        return;
    for (size_t i = 0; i < fields.manufacturer_data_count; ++i) {
        if (fields.manufacturer_ids)
            release_present(fields.manufacturer_ids[i]);
        if (fields.manufacturer_data && fields.manufacturer_data_lengths && fields.manufacturer_data_lengths[i] != 0)
            release_present(fields.manufacturer_data[i]);
    }
    release_present(fields.manufacturer_data_lengths);
    release_present(fields.manufacturer_ids);
    release_present(fields.manufacturer_data);
}

} // namespace

nfc_ndef_record *rtdlib_bt_2_1_configuration_data_record_create(const nfc_ndef_bt_rtd_2_1_str *fields,
                                                                uint8_t local_name_type, uint8_t uuid16_list_type,
                                                                uint8_t uuid32_list_type, uint8_t uuid128_list_type,
                                                                const uint8_t *id, uint8_t id_length,
                                                                uint8_t id_present)
{
    if (!fields || (local_name_type != name_shortened && local_name_type != name_complete))
        return nullptr;
    const Field name(fields->local_name, fields->local_name_length);
    const Field hash(fields->hash_c, fields->hash_c_length);
    const Field randomizer(fields->randomizer_r, fields->randomizer_r_length);
    const Field uuid16(fields->uuid16_list, fields->uuid16_list_length);
    const Field uuid32(fields->uuid32_list, fields->uuid32_list_length);
    const Field uuid128(fields->uuid128_list, fields->uuid128_list_length);
    if (!name.paired || name.bytes.size() > longest_eir_data || !hash.is_key() || !randomizer.is_key() ||
        (hash.bytes.empty() && !randomizer.bytes.empty()) || !uuid16.is_list_of(2) || !uuid32.is_list_of(4) ||
        !uuid128.is_list_of(16) || !uuid16.has_type(uuid16_list_type, uuid16_incomplete, uuid16_complete) ||
        !uuid32.has_type(uuid32_list_type, uuid32_incomplete, uuid32_complete) ||
        !uuid128.has_type(uuid128_list_type, uuid128_incomplete, uuid128_complete) ||
        !is_optional_id(id, id_length, id_present))
        return nullptr;
    const bool has_entries = has_manufacturer_entries(*fields);
    if (has_entries && !are_manufacturer_entries(*fields))
        return nullptr;

    const Eir structures[] = {
        {local_name_type, name.bytes},     {class_of_device, fields->class_of_device}, {hash_c, hash.bytes},
        {randomizer_r, randomizer.bytes},  {uuid16_list_type, uuid16.bytes},           {uuid32_list_type, uuid32.bytes},
        {uuid128_list_type, uuid128.bytes}};
    uint64_t length = 0; // not known before the layout has been counted
    const auto layout = [&](auto &out) {
        out.le16(static_cast<uint16_t>(length)).bytes(fields->device_address);
        for (const Eir &eir : structures)
            if (!eir.data.empty())
                write_eir(out, eir.type, eir.data);
        for (size_t i = 0; i < fields->manufacturer_data_count; ++i)
            write_eir(out, manufacturer, {fields->manufacturer_ids[i], company_id_length},
                      {fields->manufacturer_data[i], fields->manufacturer_data_lengths[i]});
    };
    length = length_of(layout);
    if (length > longest_payload)
        return nullptr;
    return record_of(known::bluetooth_oob, laid_out(layout, length), {id, id_length}).release();
}

void nfc_ndef_bt_rtd_2_1_str_delete(nfc_ndef_bt_rtd_2_1_str **fields)
{
    if (!fields || !*fields)
        return;
    const nfc_ndef_bt_rtd_2_1_str &freed = **fields;
    for (uint8_t *field :
         {freed.local_name, freed.hash_c, freed.randomizer_r, freed.uuid16_list, freed.uuid32_list, freed.uuid128_list})
        release_present(field);
    free_manufacturer_entries(freed);
    release_present(*fields);
    *fields = nullptr;
}
