// Legacy Bluetooth configuration record, an external type of the vendor.
#include "host/release.h"
#include "record/build.h"
#include "record/payload_report.h"
#include "rtd/result.h"

#include <algorithm>
#include <optional>

using namespace ndef;

namespace {

constexpr uint8_t longest_name = 248;
constexpr size_t address_offset = 1, class_offset = 7, pairing_data_offset = 10;

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

uint8_t nfc_ndef_bt_legacy_read(nfc_ndef_bytes payload, nfc_ndef_bt_legacy *legacy, nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *legacy = {};
    Reader in(bytes);
    const uint8_t pairing_type = in.u8();
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    legacy->pairing_type = pairing_type;
    const std::optional<uint8_t> pairing_data_length = pairing_data_length_of(pairing_type);
    if (!pairing_data_length)
        return verdict.refused(NFC_NDEF_PAYLOAD_PAIRING_TYPE, size_t{0});

    const ByteView address = in.take(sizeof legacy->device_address);
    const ByteView device_class = in.take(sizeof legacy->class_of_device);
    const ByteView pairing_data = in.take(*pairing_data_length);
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, address.empty()        ? address_offset
                                                                : device_class.empty() ? class_offset
                                                                                       : pairing_data_offset);
    std::reverse_copy(address.begin(), address.end(), legacy->device_address);
    std::reverse_copy(device_class.begin(), device_class.end(), legacy->class_of_device);
    legacy->pairing_data = lent(pairing_data);

    const size_t name_offset = bytes.size() - in.left();
    const uint8_t name_length = in.u8();
    if (name_length > longest_name)
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_TOO_LONG, name_offset);
    const ByteView name = in.take(name_length);
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, name_offset + (name_length != 0));
    legacy->local_name = lent(name);
    return verdict.valid();
}

int8_t rtdlib_bt_configuration_data_record_extract(const nfc_ndef_record *record, nfc_ndef_bt_rtd_2_0_str **fields)
{
    if (!record || !fields || *fields)
        return failure;
    *fields = new_zeroed_block<nfc_ndef_bt_rtd_2_0_str>(1).release();
    if (!*fields)
        return decoding_failed;
    nfc_ndef_bt_rtd_2_0_str &out = **fields;

    const ByteView payload = payload_of(record);
    nfc_ndef_bt_legacy view;
    nfc_ndef_payload_report report;
    nfc_ndef_bt_legacy_read(lent(payload), &view, &report);
    if (report.reason == NFC_NDEF_PAYLOAD_EMPTY)
        return failure;
    out.pairing_type = view.pairing_type;
    if (report.reason == NFC_NDEF_PAYLOAD_PAIRING_TYPE)
        return bad_payload;
    out.pairing_data_length = pairing_data_length_of(view.pairing_type).value_or(0);
    const size_t name_offset = pairing_data_offset + out.pairing_data_length;
    if (payload.size() < name_offset)
        return decoding_failed;
    if (!copy_to(out.pairing_data, bytes_of(view.pairing_data))) {
        out.pairing_data_length = 0;
        return decoding_failed;
    }
    std::copy(std::begin(view.device_address), std::end(view.device_address), out.device_address);
    std::copy(std::begin(view.class_of_device), std::end(view.class_of_device), out.class_of_device);
    if (payload.size() == name_offset)
        return decoding_failed;
    out.local_name_length = payload[name_offset];
    if (report.reason != NFC_NDEF_PAYLOAD_VALID)
        return decoding_failed;
    if (!copy_to(out.local_name, bytes_of(view.local_name))) {
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
        release_present(field);
    release_present(*fields);
    *fields = nullptr;
}
