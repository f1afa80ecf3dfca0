// The Bluetooth structures: what is built reads back, and what reads builds a record that reads as the same fields.
#include "types.h"

using namespace fuzz;
using nfc_ndef::BluetoothLegacy;
using nfc_ndef::BluetoothOob;
using nfc_ndef::out;
using nfc_ndef::Record;

namespace {

using Oob = nfc_ndef_bt_rtd_2_1_str;
using Legacy = nfc_ndef_bt_rtd_2_0_str;

constexpr size_t longest_payload = 65535;

void set(uint8_t *&field, uint8_t &length, ByteView bytes)
{
    length = length8(bytes);
    field = const_cast<uint8_t *>(pointer(bytes)); // read only: the builders borrow it
}

template <size_t N> void set(uint8_t (&field)[N], ByteView bytes) { std::copy(bytes.begin(), bytes.end(), field); }

template <size_t N> bool equal_arrays(const uint8_t (&a)[N], const uint8_t (&b)[N]) { return fuzz::equal(a, b); }

bool same_fields(const Oob &a, const Oob &b)
{
    bool equal_entries =
        a.manufacturer_data_count == b.manufacturer_data_count && a.manufacturer_id_length == b.manufacturer_id_length;
    for (size_t i = 0; equal_entries && i < a.manufacturer_data_count; ++i)
        equal_entries = fuzz::equal({a.manufacturer_ids[i], 2}, {b.manufacturer_ids[i], 2}) &&
                        fuzz::equal({a.manufacturer_data[i], a.manufacturer_data_lengths[i]},
                                    {b.manufacturer_data[i], b.manufacturer_data_lengths[i]});
    return equal_entries && equal_arrays(a.device_address, b.device_address) &&
           equal_arrays(a.class_of_device, b.class_of_device) &&
           fuzz::equal({a.local_name, a.local_name_length}, {b.local_name, b.local_name_length}) &&
           fuzz::equal({a.hash_c, a.hash_c_length}, {b.hash_c, b.hash_c_length}) &&
           fuzz::equal({a.randomizer_r, a.randomizer_r_length}, {b.randomizer_r, b.randomizer_r_length}) &&
           fuzz::equal({a.uuid16_list, a.uuid16_list_length}, {b.uuid16_list, b.uuid16_list_length}) &&
           fuzz::equal({a.uuid32_list, a.uuid32_list_length}, {b.uuid32_list, b.uuid32_list_length}) &&
           fuzz::equal({a.uuid128_list, a.uuid128_list_length}, {b.uuid128_list, b.uuid128_list_length});
}

bool same_fields(const Legacy &a, const Legacy &b)
{
    return equal_arrays(a.device_address, b.device_address) && equal_arrays(a.class_of_device, b.class_of_device) &&
           a.pairing_type == b.pairing_type &&
           fuzz::equal({a.pairing_data, a.pairing_data_length}, {b.pairing_data, b.pairing_data_length}) &&
           fuzz::equal({a.local_name, a.local_name_length}, {b.local_name, b.local_name_length});
}

// A list's type only says whether it is complete.
uint8_t list_type(uint8_t length, uint8_t type, bool complete)
{
    return length == 0 ? uint8_t{0} : static_cast<uint8_t>(type + complete);
}

Record build(const Oob &fields, bool complete, ByteView id)
{
    return Record{rtdlib_bt_2_1_configuration_data_record_create(
        &fields, complete ? 9 : 8, list_type(fields.uuid16_list_length, 2, complete),
        list_type(fields.uuid32_list_length, 4, complete), list_type(fields.uuid128_list_length, 6, complete),
        pointer(id), length8(id), !id.empty())};
}

Record build(const Legacy &fields, bool, ByteView id)
{
    return Record{rtdlib_bt_configuration_data_record_create(&fields, pointer(id), length8(id), !id.empty())};
}

int8_t extract(const Record &record, BluetoothOob &fields)
{
    return rtdlib_bt_2_1_configuration_data_record_extract(record.get(), out(fields));
}

int8_t extract(const Record &record, BluetoothLegacy &fields)
{
    return rtdlib_bt_configuration_data_record_extract(record.get(), out(fields));
}

template <class Handle>
void must_read_back(const typename Handle::element_type &fields, const Record &built, ByteView id)
{
    Handle again;
    must(equal(id_of(*built), id), "the id is the record's");
    must(extract(built, again) == 1 && same_fields(fields, *again), "the fields read back");
}

template <class Handle> void read(Input &in, std::initializer_list<int> results)
{
    const ByteView payload = in.rest();
    const Record record = with_payload(payload);
    Handle fields;
    const int8_t result = within_memory(payload, [&] { return extract(record, fields); });
    must_be_one_of(result, results);
    must(fields != nullptr, "a structure is given whatever the result");
    if (result != 1)
        return;
    const Record built = build(*fields, payload.size() % 2 == 0, {});
    must(built || payload.size() > longest_payload, "what reads builds");
    if (built)
        must_read_back<Handle>(*fields, built, {});
}

void oob(Input &in, bool building)
{
    if (!building)
        return read<BluetoothOob>(in, {1, 2, 0});
    Oob fields{};
    set(fields.device_address, in.take(6));
    set(fields.class_of_device, in.take(3));
    const uint8_t shape = in.u8();
    set(fields.local_name, fields.local_name_length, in.field());
    set(fields.hash_c, fields.hash_c_length, in.take(shape & 1 ? 16 : 0));
    set(fields.randomizer_r, fields.randomizer_r_length, in.take(shape & 2 ? 16 : 0));
    set(fields.uuid16_list, fields.uuid16_list_length, in.take(in.u8() & 62));
    set(fields.uuid32_list, fields.uuid32_list_length, in.take(in.u8() & 60));
    set(fields.uuid128_list, fields.uuid128_list_length, in.take(in.u8() & 48));
    const ByteView id = in.take(in.u8() & 3);
    std::vector<uint8_t *> ids, data;
    Bytes lengths;
    bool fits = fields.local_name_length <= 254 && fields.hash_c_length % 16 == 0 &&
                fields.randomizer_r_length % 16 == 0 && (fields.hash_c || !fields.randomizer_r) &&
                fields.uuid16_list_length % 2 == 0 && fields.uuid32_list_length % 4 == 0 &&
                fields.uuid128_list_length % 16 == 0;
    while (lengths.size() < 255) {
        const ByteView company = in.take(2);
        if (company.size() < 2)
            break;
        ids.push_back(const_cast<uint8_t *>(company.data()));
        lengths.push_back(0);
        data.push_back(nullptr);
        set(data.back(), lengths.back(), in.field());
        fits = fits && lengths.back() <= 252;
    }
    fields.manufacturer_data_count = length8(lengths);
    if (!lengths.empty()) {
        fields.manufacturer_id_length = 2;
        fields.manufacturer_ids = ids.data();
        fields.manufacturer_data_lengths = lengths.data();
        fields.manufacturer_data = data.data();
    }
    const Record built = build(fields, shape & 4, id);
    must((built != nullptr) == fits, "fields that fit are built");
    if (built)
        must_read_back<BluetoothOob>(fields, built, id);
}

void legacy(Input &in, bool building)
{
    if (!building)
        return read<BluetoothLegacy>(in, {1, -1, 2, 0});
    Legacy fields{};
    set(fields.device_address, in.take(6));
    set(fields.class_of_device, in.take(3));
    fields.pairing_type = in.u8();
    const uint8_t type = fields.pairing_type;
    const size_t wanted = type <= 2 || type == 0x20 ? 16 : type > 0x20 && type < 0x30 ? type & 15 : 0;
    set(fields.pairing_data, fields.pairing_data_length, in.take(wanted));
    set(fields.local_name, fields.local_name_length, in.field());
    const ByteView id = in.take(in.u8() & 3);
    const bool known = wanted != 0 || type == 0x10;
    const Record built = build(fields, true, id);
    must((built != nullptr) == (known && fields.pairing_data_length == wanted && fields.local_name_length <= 248),
         "fields that fit are built");
    if (built)
        must_read_back<BluetoothLegacy>(fields, built, id);
}

} // namespace

void fuzz::run(ByteView input) { run_type(input, {oob, legacy}); }
