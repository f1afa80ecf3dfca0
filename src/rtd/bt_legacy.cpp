// Legacy Bluetooth configuration record, an external type of the vendor.
#include "record/build.h"
#include "rtd/result.h"

#include <algorithm>
#include <glib.h>
#include <optional>

using namespace ndef;

namespace {

constexpr uint8_t longest_name = 248;

// How many bytes of pairing data a pairing type announces; none for an unknown type.
std::optional<uint8_t> pairing_data_length_of(uint8_t pairing_type)
{
    if (pairing_type <= 0x02 || pairing_type == 0x20)
        return uint8_t{16};
    if (pairing_type == 0x10)
        return uint8_t{0};
    if (pairing_type > 0x20 && pairing_type <= 0x2F)
        return static_cast<uint8_t>(pairing_type & 0x0F);
    return std::nullopt;
}

} // namespace

nfc_ndef_record *rtdlib_bt_configuration_data_record_create(const nfc_ndef_bt_rtd_2_0_str *fields, const uint8_t *id,
                                                            uint8_t id_length, uint8_t id_present)
{
    if (!fields || !is_optional_id(id, id_length, id_present))
        return nullptr;
    const ByteView pairing_data = bytes_of(fields->pairing_data, fields->pairing_data_length);
    const ByteView name = bytes_of(fields->local_name, fields->local_name_length);
    if (pairing_data.size() != fields->pairing_data_length || name.size() != fields->local_name_length ||
        (pairing_data.empty() && fields->pairing_data) || (name.empty() && fields->local_name) ||
        pairing_data_length_of(fields->pairing_type) != fields->pairing_data_length || name.size() > longest_name)
        return nullptr;

    const auto layout = [&](auto &out) {
        out.u8(fields->pairing_type)
            .reversed(fields->device_address)
            .reversed(fields->class_of_device)
            .bytes(pairing_data)
            .u8(fields->local_name_length)
            .bytes(name);
    };
    return record_of(known::bluetooth_legacy, laid_out(layout), {id, id_length}).release();
}

int8_t rtdlib_bt_configuration_data_record_extract(const nfc_ndef_record *record, nfc_ndef_bt_rtd_2_0_str **fields)
{
    if (!record || !fields || *fields)
        return failure;
    *fields = new_zeroed_block<nfc_ndef_bt_rtd_2_0_str>(1).release();
    if (!*fields)
        return decoding_failed;
    nfc_ndef_bt_rtd_2_0_str &out = **fields;

    Reader in(payload_of(record));
    const uint8_t pairing_type = in.u8();
    if (!in.ok())
        return failure;
    out.pairing_type = pairing_type;
    const std::optional<uint8_t> pairing_data_length = pairing_data_length_of(pairing_type);
    if (!pairing_data_length)
        return bad_payload;
    out.pairing_data_length = *pairing_data_length;

    const ByteView address = in.take(sizeof out.device_address);
    const ByteView device_class = in.take(sizeof out.class_of_device);
    const ByteView pairing_data = in.take(*pairing_data_length);
    if (!in.ok())
        return decoding_failed;
    if (!copy_to(out.pairing_data, pairing_data)) {
        out.pairing_data_length = 0;
        return decoding_failed;
    }
    std::reverse_copy(address.begin(), address.end(), out.device_address);
    std::reverse_copy(device_class.begin(), device_class.end(), out.class_of_device);

    out.local_name_length = in.u8();
    const ByteView name = in.take(out.local_name_length);
    if (!in.ok() || out.local_name_length > longest_name)
        return decoding_failed;
    if (!copy_to(out.local_name, name)) {
        out.local_name_length = 0;
        return decoding_failed;
    }
    return success;
}

void nfc_ndef_bt_rtd_2_0_str_delete(nfc_ndef_bt_rtd_2_0_str **fields)
{
    if (!fields || !*fields)
        return;
    for (uint8_t *field : {(*fields)->pairing_data, (*fields)->local_name})
        if (field)
            g_free(field);
    g_free(*fields);
    *fields = nullptr;
}
