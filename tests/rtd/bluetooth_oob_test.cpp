#include "tables.h"

#include <functional>

using namespace test;

namespace {

using Structure = nfc_ndef_bt_rtd_2_1_str;

// What the builder's structure points to; two manufacturers take turns, with data from one row of bytes.
struct Fields {
    Bytes name = {}, c = {}, r = {}, uuid16 = {}, uuid32 = {}, uuid128 = {};
    Bytes lengths = {}, id = bytes("34127856"), data = bytes("A0A1A2A3") + filled(252, 0xAA);
    std::vector<uint8_t *> ids = {}, pointers = {};

    Structure structure()
    {
        Structure s = {.device_address = {1, 2, 3, 4, 5, 6}, .class_of_device = {10, 11, 12}};
        const auto set = [](Bytes &from, uint8_t &length, uint8_t *&to) {
            length = static_cast<uint8_t>(from.size());
            to = from.empty() ? nullptr : from.data();
        };
        set(name, s.local_name_length, s.local_name);
        set(c, s.hash_c_length, s.hash_c);
        set(r, s.randomizer_r_length, s.randomizer_r);
        set(uuid16, s.uuid16_list_length, s.uuid16_list);
        set(uuid32, s.uuid32_list_length, s.uuid32_list);
        set(uuid128, s.uuid128_list_length, s.uuid128_list);
        set(lengths, s.manufacturer_data_count, s.manufacturer_data_lengths);
        if (lengths.empty())
            return s;
        ids.clear(), pointers.clear();
        for (const uint8_t length : lengths) {
            ids.push_back(id.data() + ids.size() % 2 * 2);
            pointers.push_back(length == 0 ? nullptr : data.data() + pointers.size() % 4);
        }
        s.manufacturer_id_length = 2;
        s.manufacturer_ids = ids.data();
        s.manufacturer_data = pointers.data();
        return s;
    }
};

Fields everything()
{
    return {text("Nick"),      filled(16, 0xCC), filled(16, 0xDD), bytes("0B110E11"),
            bytes("01020304"), filled(16, 0x55), {3, 0, 2}};
}

struct Types {
    uint8_t name, uuid16, uuid32, uuid128;
};
constexpr Types all_types = {9, 3, 4, 7}, no_lists = {9, 0, 0, 0};

Record build(const Structure *fields, Types types = all_types, const uint8_t *id = nullptr, uint8_t length = 0,
             uint8_t present = 0)
{
    return Record(rtdlib_bt_2_1_configuration_data_record_create(fields, types.name, types.uuid16, types.uuid32,
                                                                 types.uuid128, id, length, present));
}

Record build(Fields fields, Types types = no_lists)
{
    const Structure structure = fields.structure();
    return build(&structure, types);
}

Fields large(size_t entries, uint8_t length, size_t name)
{
    return {.name = filled(name, 'n'), .lengths = filled(entries, length)};
}

const std::string kind = "2S application/vnd.bluetooth.ep.oob", head = " 010203040506 ", device_class = "040D0A0B0C ";
const std::string all = "6600" + head + "05094E69636B" + device_class +
                        "110E CC*16 110F DD*16 05030B110E11 "
                        "050401020304 1107 55*16 06FF3412A0A1A2 03FF7856 05FF3412A2A3";

} // namespace

TEST(BluetoothOob, Builds)
{
    Fields fields = everything();
    const Structure full = fields.structure();
    const uint8_t id[] = {'0'};
    const Built rows[] = {
        {build(Fields()), kind, "0D00" + head + device_class, "smallest"},
        {build({.name = text("N")}, {8, 0, 0, 0}), kind, "1000" + head + "02084E" + device_class, "shortened name"},
        {build({.c = filled(16, 1)}), kind, "1F00" + head + device_class + "110E 01*16", "hash alone"},
        {build(&full), kind, all, "order of the fields"},
        {build(&full, all_types, id, 1, 1), "2SI application/vnd.bluetooth.ep.oob#30", all, "id"},
        {build(&full, all_types, id, 1, 0), "id not announced"},
        {build(nullptr), "no structure"},
        {build(large(0, 0, 254)), "2 application/vnd.bluetooth.ep.oob", "0D01" + head + "FF09 6E*254 " + device_class,
         "name"},
        {build(large(0, 0, 255)), "a name's length byte wraps to 0"},
        {build(large(1, 253, 0)), "an entry's length byte wraps to 0"},
        {build(large(255, 252, 241)), "the payload's length wraps to 0"},
    };
    expect_built(rows);
    const Record largest = build(large(255, 252, 240));
    ASSERT_EQ(payload_of(largest.get()).size(), 65535U);
    EXPECT_EQ(hex(copy(largest->payload, 12)), "FFFF010203040506F1096E6E");
}

TEST(BluetoothOob, RefusesToBuild)
{
    Fields fields = everything();
    const Structure full = fields.structure(), plain = Fields().structure();
    uint8_t **const array = full.manufacturer_data;
    const struct {
        const char *fault;
        std::function<void(Structure &)> spoil;
    } faults[] = {
        {"name missing", [](Structure &s) { s.local_name = nullptr; }},
        {"name without length", [](Structure &s) { s.local_name_length = 0; }},
        {"hash missing", [](Structure &s) { s.hash_c = nullptr; }},
        {"hash of 15 bytes", [](Structure &s) { s.hash_c_length = 15; }},
        {"randomizer missing", [](Structure &s) { s.randomizer_r = nullptr; }},
        {"randomizer of 17 bytes", [](Structure &s) { s.randomizer_r_length = 17; }},
        {"randomizer without hash", [](Structure &s) { s.hash_c_length = 0, s.hash_c = nullptr; }},
        {"16-bit list missing", [](Structure &s) { s.uuid16_list = nullptr; }},
        {"32-bit list missing", [](Structure &s) { s.uuid32_list = nullptr; }},
        {"128-bit list missing", [](Structure &s) { s.uuid128_list = nullptr; }},
        {"entries without count", [](Structure &s) { s.manufacturer_data_count = 0; }},
        {"identifiers of 3 bytes", [](Structure &s) { s.manufacturer_id_length = 3; }},
        {"no identifiers", [](Structure &s) { s.manufacturer_ids = nullptr; }},
        {"no lengths", [](Structure &s) { s.manufacturer_data_lengths = nullptr; }},
        {"no data array", [](Structure &s) { s.manufacturer_data = nullptr; }},
        {"identifier missing", [](Structure &s) { s.manufacturer_ids[1] = nullptr; }},
        {"data missing", [](Structure &s) { s.manufacturer_data[0] = nullptr; }},
        {"data without length", [&](Structure &s) { s.manufacturer_data[1] = fields.data.data(); }},
        {"no entries but their identifiers' length", [&](Structure &s) { s = plain, s.manufacturer_id_length = 2; }},
        {"no entries but their data array", [&](Structure &s) { s = plain, s.manufacturer_data = array; }},
    };
    for (const auto &[fault, spoil] : faults) {
        Structure structure = fields.structure();
        spoil(structure);
        EXPECT_EQ(build(&structure, structure.hash_c || structure.local_name ? all_types : no_lists), nullptr) << fault;
    }
    const struct {
        Fields fields;
        Types types;
        const char *fault;
    } refused[] = {
        {{.uuid16 = filled(3, 1)}, {9, 2, 0, 0}, "list of 16 bits of 3 bytes"},
        {{.uuid32 = filled(6, 1)}, {9, 0, 4, 0}, "list of 32 bits of 6 bytes"},
        {{.uuid128 = filled(24, 1)}, {9, 0, 0, 6}, "list of 128 bits of 24 bytes"},
        {everything(), {0, 2, 5, 6}, "name type 0"},
        {everything(), {7, 2, 5, 6}, "name type 7"},
        {everything(), {10, 2, 5, 6}, "name type 10"},
        {everything(), {9, 0, 5, 6}, "list of 16 bits without type"},
        {everything(), {9, 1, 5, 6}, "type 1 for 16 bits"},
        {everything(), {9, 4, 5, 6}, "type 4 for 16 bits"},
        {everything(), {9, 2, 3, 6}, "type 3 for 32 bits"},
        {everything(), {9, 2, 6, 6}, "type 6 for 32 bits"},
        {everything(), {9, 2, 5, 5}, "type 5 for 128 bits"},
        {everything(), {9, 2, 5, 8}, "type 8 for 128 bits"},
        {{}, {9, 2, 0, 0}, "type without list of 16 bits"},
        {{}, {9, 0, 4, 0}, "type without list of 32 bits"},
        {{}, {9, 0, 0, 6}, "type without list of 128 bits"},
    };
    for (const auto &[built_of, types, fault] : refused)
        EXPECT_EQ(build(built_of, types), nullptr) << fault;
    EXPECT_TRUE(build(everything(), {8, 2, 5, 6}));
}

TEST(BluetoothOob, Reads)
{
    std::string entries, ids;
    for (int i = 0; i < 255; ++i) {
        entries += "03FF3412 ";
        ids += " id=3412";
    }
    const Payload rows[] = {
        {"0000 040D0A0B0C 000000 020941 00", "1 class=0A0B0C name=41", "padding"},
        {"020841 03022A1A 05050A0B0C0D 1106 01*16", "1 name=41 uuid16=2A1A uuid32=0A0B0C0D uuid128=01*16",
         "other types"},
        {"020A04 01AA 0200FF 020941", "1 name=41", "unknown types not skipped"},
        {"040D0A0B0C 030941", "0 class=0A0B0C", "name one byte past the end"},
        {"FF0A00", "0", "unknown structure past the end"},
        {"020941 020842", "0 name=41", "second name"},
        {"0109 0108 020941", "1 name=41", "empty names before the name"},
        {"020941 0108", "0 name=41", "empty name behind the name"},
        {"0102 0103 0104 0107 03020B11", "1 uuid16=0B11", "empty lists"},
        {"03020B11 03030C11", "0 uuid16=0B11", "two types, one list of 16 bits"},
        {"050401020304 0105", "0 uuid32=01020304", "two lists of 32 bits"},
        {"1106 01*16 0107", "0 uuid128=01*16", "two lists of 128 bits"},
        {"040D000000 040D010203", "0", "a class of device of zeros forgotten"},
        {"110E 01*16 110E 02*16", "0 c=01*16", "second hash"},
        {"110E 01*16 110F 02*16 110F 03*16", "0 c=01*16 r=02*16", "second randomizer"},
        {"030D0A0B", "0", "class of device of 2 bytes"},
        {"050D0A0B0C0D", "0", "class of device of 4 bytes"},
        {"100E 01*15", "0", "hash of 15 bytes"},
        {"110E 01*16 010F", "0 c=01*16", "empty randomizer"},
        {"04020B110E 020941", "2 uuid16=missing 3", "list of 16 bits of 3 bytes ends the walk"},
        {"0705 01*6", "2 uuid32=missing 6", "list of 32 bits of 6 bytes"},
        {"0906 01*8", "2 uuid128=missing 8", "list of 128 bits of 8 bytes"},
        {"110F 01*16 110E 02*16", "1 c=02*16 r=01*16", "randomizer in front of its hash"},
        {"110F 01*16 020941 04FF341255", "2 name=41 r=01*16 makers=1 id=3412 data=55", "randomizer without hash"},
        {"04FF341201 00 020A04 03FF7856 020941 05FFBC9A0203",
         "1 name=41 makers=3 id=3412 data=01 id=7856 id=BC9A data=0203", "second walk"},
        {"FEFF3412 AA*251", "1 makers=1 id=3412 data=AA*251", "long entry"},
        {"02FF34 020941", "0", "identifier of 1 byte"},
        {"03FF3412 090941", "0 makers=1", "entries counted, arrays never made"},
        {entries, "1 makers=255" + ids, "most entries"},
        {entries + "03FF3412", "0 makers=255", "count wraps to 0"},
    };
    for (const auto &[payload, expected, fault] : rows) // behind a length field that nothing compares, and the address
        EXPECT_EQ(read_oob(with_payload(bytes("FFFF" + head + payload))), expanded(expected))
            << fault << ": " << payload;
    EXPECT_EQ(read_oob(nullptr), "-1");
    expect_checked(rtdlib_bt_2_1_configuration_data_record_extract, with_payload(bytes("0D00" + head)),
                   structure_outputs);
}

TEST(BluetoothOob, FreesNoEntriesWithoutACountAndNoDataWithoutALength)
{
    nfc_ndef_bt_rtd_2_1_str_delete(nullptr);
    Structure *fields = nullptr;
    nfc_ndef_bt_rtd_2_1_str_delete(&fields);
    uint8_t borrowed[] = {0}, *entries[] = {borrowed};
    const auto one = [](auto content) { // an array of one entry
        auto *const array = static_cast<decltype(content) *>(os_block_alloc(sizeof content));
        return *array = content, array;
    };
    for (const uint8_t count : {uint8_t{0}, uint8_t{1}}) {
        fields = static_cast<Structure *>(os_block_alloc_and_clear(sizeof(Structure)));
        fields->manufacturer_data_count = count;
        fields->manufacturer_ids = count ? one(owned(text("id"))) : entries;
        fields->manufacturer_data_lengths = count ? one(uint8_t{0}) : borrowed;
        fields->manufacturer_data = count ? one(&borrowed[0]) : entries;
        nfc_ndef_bt_rtd_2_1_str_delete(&fields);
        EXPECT_EQ(fields, nullptr);
    }
}

TEST(BluetoothOob, ReadsBackWhatItBuilt)
{
    const std::string fields = expanded("1 class=0A0B0C name=4E69636B c=CC*16 r=DD*16 uuid16=0B110E11 uuid32=01020304 "
                                        "uuid128=55*16 makers=3 id=3412 data=A0A1A2 id=7856 id=3412 data=A2A3");
    EXPECT_EQ(read_oob(build(everything(), all_types)), fields);
    EXPECT_EQ(read_oob(build(large(255, 252, 240))).substr(0, 20), "1 class=0A0B0C name=");
    EXPECT_EQ(
        read_oob(build({.uuid16 = filled(254, 2), .uuid32 = filled(252, 4), .uuid128 = filled(240, 8)}, {9, 3, 5, 7})),
        expanded("1 class=0A0B0C uuid16=02*254 uuid32=04*252 uuid128=08*240"));
    // Cut before the address ends, nothing is kept; cut behind a structure, what is left is good; cut within one, not.
    const Read result_of = [](Record record) {
        const std::string line = read_oob(std::move(record));
        return line.substr(0, line[0] == '2' ? line.npos : 1);
    };
    const Bytes payload = bytes(all);
    expect_cut(result_of, payload, [&payload, end = size_t{8}](size_t length) mutable {
        if (length != end)
            return length < 8 ? "2 address=000000000000" : "0";
        end += 1U + payload[end];
        return "1";
    });
}
