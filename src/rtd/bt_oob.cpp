// Bluetooth 2.1 out-of-band record: NFC Forum Bluetooth Secure Simple Pairing Using NFC. Its payload is a total length,
// an address and Extended Inquiry Response structures: Bluetooth Core, Supplement, Part A.
#include "record/build.h"
#include "rtd/result.h"

#include <algorithm>
#include <glib.h>

using namespace ndef;

namespace {

enum EirType : uint8_t {
    uuid16_incomplete = 0x02,
    uuid16_complete = 0x03,
    uuid32_incomplete = 0x04,
    uuid32_complete = 0x05,
    uuid128_incomplete = 0x06,
    uuid128_complete = 0x07,
    name_shortened = 0x08,
    name_complete = 0x09,
    class_of_device = 0x0D,
    hash_c = 0x0E,
    randomizer_r = 0x0F,
    manufacturer = 0xFF,
};

constexpr size_t length_field_size = 2;
constexpr size_t key_length = 16;
constexpr size_t company_id_length = 2;
constexpr size_t longest_eir_data = UINT8_MAX - 1; // the length byte counts the type too
constexpr uint64_t longest_payload = UINT16_MAX;
constexpr uint8_t most_manufacturer_entries = UINT8_MAX;

// One EIR structure.
struct Eir {
    uint8_t type;
    ByteView data;
};

// Reads structures one after another, stepping over padding. Fails at one that runs past the end.
class EirReader {
public:
    explicit EirReader(ByteView bytes) : in_(bytes) {}

    bool next(Eir &eir)
    {
        uint8_t length = 0;
        while (in_.left() != 0 && length == 0)
            length = in_.u8();
        if (length == 0)
            return false;
        Reader structure(in_.take(length));
        eir.type = structure.u8();
        eir.data = structure.rest();
        return in_.ok();
    }
    bool ok() const { return in_.ok(); }

private:
    Reader in_;
};

// --- reading ---

// A field that may come once: a name or a list of UUIDs.
int8_t read_list(ByteView data, size_t unit, uint8_t &length, uint8_t *&list)
{
    if (list)
        return decoding_failed;
    length = static_cast<uint8_t>(data.size());
    if (data.size() % unit != 0)
        return bad_payload;
    if (!copy_to(list, data)) {
        length = 0;
        return decoding_failed;
    }
    return success;
}

int8_t read_key(ByteView data, uint8_t &length, uint8_t *&key)
{
    return data.size() == key_length ? read_list(data, 1, length, key) : decoding_failed;
}

int8_t read_class_of_device(ByteView data, bool &seen, uint8_t (&device_class)[3])
{
    if (seen || data.size() != sizeof device_class)
        return decoding_failed;
    seen = true;
    std::copy(data.begin(), data.end(), device_class);
    return success;
}

int8_t count_manufacturer_entry(ByteView data, uint8_t &count)
{
    if (data.size() < company_id_length || count == most_manufacturer_entries)
        return decoding_failed;
    ++count;
    return success;
}

// The first walk: every field but the manufacturer entries, which are counted.
int8_t read_fields(ByteView structures, nfc_ndef_bt_rtd_2_1_str &out)
{
    bool class_seen = false;
    const auto read = [&](const Eir &eir) {
        switch (eir.type) {
        case uuid16_incomplete:
        case uuid16_complete:
            return read_list(eir.data, 2, out.uuid16_list_length, out.uuid16_list);
        case uuid32_incomplete:
        case uuid32_complete:
            return read_list(eir.data, 4, out.uuid32_list_length, out.uuid32_list);
        case uuid128_incomplete:
        case uuid128_complete:
            return read_list(eir.data, 16, out.uuid128_list_length, out.uuid128_list);
        case name_shortened:
        case name_complete:
            return read_list(eir.data, 1, out.local_name_length, out.local_name);
        case class_of_device:
            return read_class_of_device(eir.data, class_seen, out.class_of_device);
        case hash_c:
            return read_key(eir.data, out.hash_c_length, out.hash_c);
        case randomizer_r:
            return read_key(eir.data, out.randomizer_r_length, out.randomizer_r);
        case manufacturer:
            return count_manufacturer_entry(eir.data, out.manufacturer_data_count);
        default:
            return success;
        }
    };
    EirReader in(structures);
    for (Eir eir; in.next(eir);)
        if (const int8_t result = read(eir); result != success)
            return result;
    return in.ok() ? success : decoding_failed;
}

// The second walk: the manufacturer entries, now that their number is known.
int8_t read_manufacturer_entries(ByteView structures, nfc_ndef_bt_rtd_2_1_str &out)
{
    const size_t count = out.manufacturer_data_count;
    out.manufacturer_ids = new_zeroed_block<uint8_t *>(count).release();
    out.manufacturer_data_lengths = new_zeroed_block<uint8_t>(count).release();
    out.manufacturer_data = new_zeroed_block<uint8_t *>(count).release();
    if (!out.manufacturer_ids || !out.manufacturer_data_lengths || !out.manufacturer_data)
        return decoding_failed;
    out.manufacturer_id_length = company_id_length;

    EirReader in(structures);
    size_t i = 0;
    for (Eir eir; in.next(eir);) {
        if (eir.type != manufacturer)
            continue;
        const ByteView data = eir.data.subspan(company_id_length);
        if (!copy_to(out.manufacturer_ids[i], eir.data.first(company_id_length)) ||
            !copy_to(out.manufacturer_data[i], data))
            return decoding_failed;
        out.manufacturer_data_lengths[i++] = static_cast<uint8_t>(data.size());
    }
    return success;
}

// --- building ---

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

void free_present(void *block)
{
    if (block)
        g_free(block);
}

// Without a count the arrays, and without a length an entry's data, are not the structure's. After a failure any of the
// arrays may be missing.
void free_manufacturer_entries(const nfc_ndef_bt_rtd_2_1_str &fields)
{
    if (fields.manufacturer_data_count == 0)
        return;
    for (size_t i = 0; i < fields.manufacturer_data_count; ++i) {
        if (fields.manufacturer_ids)
            free_present(fields.manufacturer_ids[i]);
        if (fields.manufacturer_data && fields.manufacturer_data_lengths && fields.manufacturer_data_lengths[i] != 0)
            free_present(fields.manufacturer_data[i]);
    }
    free_present(fields.manufacturer_data_lengths);
    free_present(fields.manufacturer_ids);
    free_present(fields.manufacturer_data);
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

int8_t rtdlib_bt_2_1_configuration_data_record_extract(const nfc_ndef_record *record, nfc_ndef_bt_rtd_2_1_str **fields)
{
    if (!record || !fields || *fields)
        return failure;
    *fields = new_zeroed_block<nfc_ndef_bt_rtd_2_1_str>(1).release();
    if (!*fields)
        return decoding_failed;
    nfc_ndef_bt_rtd_2_1_str &out = **fields;

    Reader in(payload_of(record));
    in.take(length_field_size); // says what the record's own length says
    const ByteView address = in.take(sizeof out.device_address);
    if (!in.ok())
        return bad_payload;
    std::copy(address.begin(), address.end(), out.device_address);

    const ByteView structures = in.rest();
    if (const int8_t result = read_fields(structures, out); result != success)
        return result;
    if (out.manufacturer_data_count != 0)
        if (const int8_t result = read_manufacturer_entries(structures, out); result != success)
            return result;
    return out.randomizer_r && !out.hash_c ? bad_payload : success;
}

void nfc_ndef_bt_rtd_2_1_str_delete(nfc_ndef_bt_rtd_2_1_str **fields)
{
    if (!fields || !*fields)
        return;
    const nfc_ndef_bt_rtd_2_1_str &freed = **fields;
    for (uint8_t *field :
         {freed.local_name, freed.hash_c, freed.randomizer_r, freed.uuid16_list, freed.uuid32_list, freed.uuid128_list})
        free_present(field);
    free_manufacturer_entries(freed);
    g_free(*fields);
    *fields = nullptr;
}
