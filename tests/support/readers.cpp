#include "readers.h"

namespace test {
namespace {

constexpr Output text_outputs[] = {{"utf16"}, {"code_length"}, {"code", 1}, {"length"}, {"text", 3}},
                 uri_outputs[] = {{"code"}, {"field", 2}, {"length"}},
                 poster_outputs[] = {{"titles"},  {"list", 0}, {"uri"},  {"action"}, {"icons"},
                                     {"list", 4}, {"size"},    {"type"}, {"others"}, {"list", 8}},
                 control_outputs[] = {{"config"}, {"target", -1, true}, {"flag"},   {"code"}, {"action", -1, true},
                                      {"data"},   {"nested"},           {"list", 6}},
                 carrier_outputs[] = {{"ctf"}, {"length"}, {"type", 1}, {"data_length"}, {"data", 3}},
                 alternative_outputs[] = {{"cps"}, {"length"},     {"ref", 1},
                                          {"aux"}, {"lengths", 3}, {"list", 3, false, 4}};

template <auto extract, const auto &outputs> std::string read(Record record)
{
    return outcome(extract, std::move(record), outputs);
}

} // namespace

const Read read_text = read<rtdlib_text_record_extract, text_outputs>,
           read_uri = read<rtdlib_uri_record_extract, uri_outputs>,
           read_poster = read<rtdlib_smart_poster_record_extract, poster_outputs>,
           read_control = read<rtdlib_generic_control_record_extract, control_outputs>,
           read_request = read<rtdlib_handover_request_record_extract, request_outputs>,
           read_select = read<rtdlib_handover_select_record_extract, select_outputs>,
           read_carrier = read<rtdlib_handover_carrier_record_extract, carrier_outputs>,
           read_alternative = read<rtdlib_alternative_carrier_record_extract, alternative_outputs>,
           read_collision = read<rtdlib_collision_resolution_record_extract, collision_outputs>,
           read_error = read<rtdlib_handover_select_error_record_extract, error_outputs>,
           read_enquiry = read<rtdlib_sharing_enquiry_record_extract, enquiry_outputs>;

std::string name_of(const nfc_ndef_record *record)
{
    const std::string id = hex(id_of(record));
    return type_of(record) + (id.empty() ? "" : "#" + id);
}

std::string field(const char *name, const uint8_t *data, size_t length)
{
    if (!data && length == 0)
        return "";
    EXPECT_NE(length, 0U) << name;
    return std::string(" ") + name + "=" + (data ? hex(copy(data, length)) : "missing " + std::to_string(length));
}

std::string read_oob(Record record)
{
    nfc_ndef_bt_rtd_2_1_str *oob = nullptr;
    const auto extract = [&] { return rtdlib_bt_2_1_configuration_data_record_extract(record.get(), &oob); };
    std::string line = std::to_string(under_test(extract));
    record.reset();
    if (!oob)
        return line;
    const Bytes address = copy(oob->device_address, 6);
    line += address == bytes("010203040506") ? "" : " address=" + hex(address);
    if (copy(oob->class_of_device, 3) != filled(3, 0))
        line += field("class", oob->class_of_device, 3);
    line += field("name", oob->local_name, oob->local_name_length) + field("c", oob->hash_c, oob->hash_c_length) +
            field("r", oob->randomizer_r, oob->randomizer_r_length) +
            field("uuid16", oob->uuid16_list, oob->uuid16_list_length) +
            field("uuid32", oob->uuid32_list, oob->uuid32_list_length) +
            field("uuid128", oob->uuid128_list, oob->uuid128_list_length);
    if (oob->manufacturer_data_count != 0)
        line += " makers=" + std::to_string(oob->manufacturer_data_count);
    const bool arrays = oob->manufacturer_ids && oob->manufacturer_data_lengths && oob->manufacturer_data;
    EXPECT_EQ(oob->manufacturer_id_length, arrays ? 2 : 0);
    for (uint8_t i = 0; arrays && i < oob->manufacturer_data_count; ++i)
        line += field("id", oob->manufacturer_ids[i], oob->manufacturer_ids[i] ? 2 : 0) +
                field("data", oob->manufacturer_data[i], oob->manufacturer_data_lengths[i]);
    nfc_ndef_bt_rtd_2_1_str_delete(&oob);
    EXPECT_EQ(oob, nullptr);
    return line;
}

std::string read_legacy(Record record)
{
    nfc_ndef_bt_rtd_2_0_str *fields = nullptr;
    const auto extract = [&] { return rtdlib_bt_configuration_data_record_extract(record.get(), &fields); };
    std::string line = std::to_string(under_test(extract));
    record.reset();
    if (!fields)
        return line;
    const Bytes fixed = copy(fields->device_address, 6) + copy(fields->class_of_device, 3);
    line += " " + hex({fields->pairing_type});
    line += fixed == bytes("0102030405060A0B0C") ? " @" : fixed == filled(9, 0) ? "" : " ?";
    line += field("pairing", fields->pairing_data, fields->pairing_data_length) +
            field("name", fields->local_name, fields->local_name_length);
    nfc_ndef_bt_rtd_2_0_str_delete(&fields);
    EXPECT_EQ(fields, nullptr);
    return line;
}

} // namespace test
