// Device Information record: NFC Forum Device Information RTD 1.0. Its payload is a list of elements.
#include "record/build.h"
#include "record/elements.h"

using namespace ndef;

namespace {

enum ElementId : uint8_t { vendor_name, model_name, unique_name, uuid, version_string, first_other };

constexpr size_t uuid_length = 16;

// Where an element goes that has a field in the structure.
nfc_ndef_bytes *field_of(uint16_t id, nfc_ndef_device_information &information)
{
    nfc_ndef_bytes *const fields[] = {&information.vendor_name, &information.model_name, &information.unique_name,
                                      &information.uuid, &information.version_string};
    return id < first_other ? fields[id] : nullptr;
}

bool has_field(uint16_t id) { return id < first_other; }

nfc_ndef_payload_reason broken_rule(const nfc_ndef_element &element, const nfc_ndef_bytes &field)
{
    if (is_present(field))
        return NFC_NDEF_PAYLOAD_FIELD_REPEATED;
    if (element.id <= model_name && element.data.length == 0)
        return NFC_NDEF_PAYLOAD_FIELD_EMPTY;
    if (element.id == uuid && element.data.length != uuid_length)
        return NFC_NDEF_PAYLOAD_WRONG_LENGTH;
    return NFC_NDEF_PAYLOAD_VALID;
}

} // namespace

uint8_t nfc_ndef_device_information_read(nfc_ndef_bytes payload, nfc_ndef_device_information *information,
                                         nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *information = {};
    information->elements = lent(bytes);
    if (bytes.empty())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    ElementReader<uint8_t> in(bytes);
    for (nfc_ndef_element element; in.next(element);) {
        nfc_ndef_bytes *const field = field_of(element.id, *information);
        if (!field)
            continue;
        if (const auto reason = broken_rule(element, *field); reason != NFC_NDEF_PAYLOAD_VALID)
            return verdict.refused(reason, bytes.size() - in.left_before());
        *field = element.data;
    }
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, bytes.size() - in.left_before());
    if (!is_present(information->vendor_name) || !is_present(information->model_name))
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_MISSING);
    return verdict.valid();
}

uint8_t nfc_ndef_device_information_next(nfc_ndef_device_information *information, nfc_ndef_element *element)
{
    return next_other<uint8_t>(information->elements, *element, [](uint16_t id) { return has_field(id); });
}

uint32_t nfc_ndef_device_information_element_write(const nfc_ndef_element *element, uint8_t *buffer, uint32_t capacity)
{
    if (has_field(element->id) || element->id > UINT8_MAX)
        return 0;
    const auto layout = [&](auto &out) {
        out.u8(static_cast<uint8_t>(element->id)).template sized<uint8_t>(bytes_of(element->data));
    };
    return written(layout, buffer, capacity);
}

nfc_ndef_record *nfc_ndef_device_information_record_create(const nfc_ndef_device_information *information,
                                                           nfc_ndef_bytes id)
{
    const auto layout = [&](auto &out) {
        nfc_ndef_device_information left = *information;
        for (uint8_t i = 0; i < first_other; ++i)
            lay_out(out, i, *field_of(i, left));
        for (nfc_ndef_element element; nfc_ndef_device_information_next(&left, &element);)
            out.u8(static_cast<uint8_t>(element.id)).template sized<uint8_t>(bytes_of(element.data));
    };
    return readable_record_of(known::device_information, layout, id, nfc_ndef_device_information_read);
}
