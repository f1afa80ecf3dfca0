// Service Parameter record: NFC Forum TNEP 1.0. What a tag says of a service that it has.
#include "record/build.h"
#include "record/payload_report.h"
#include "rtd/tnep.h"

#include <algorithm>

using namespace ndef;

namespace {

constexpr uint8_t longest_waiting_time = 63, most_extensions = 15;
constexpr size_t name_at = 2, length_behind_name = 5, last_field = 3; // which is of two bytes, after three of one

} // namespace

uint8_t nfc_ndef_service_parameter_read(nfc_ndef_bytes payload, nfc_ndef_service_parameter *parameter,
                                        nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *parameter = {};
    Reader in(bytes);
    parameter->version = in.u8();
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    if (parameter->version >> 4 != 1)
        return verdict.refused(NFC_NDEF_PAYLOAD_VERSION_NOT_READ, size_t{0});
    const ByteView name = in.take(in.u8());
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, std::min(bytes.size(), name_at));
    if (name.empty())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_EMPTY, name_at - 1);
    const size_t visible = visible_length(name);
    if (visible != name.size())
        return verdict.refused(NFC_NDEF_PAYLOAD_CHARACTER_NOT_ALLOWED, name_at + visible);
    parameter->service_name = lent(name);
    const size_t behind_name = name_at + name.size();
    if (in.left() < length_behind_name)
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, behind_name + std::min(in.left(), last_field));
    parameter->communication_mode = in.u8();
    parameter->minimum_waiting_time = in.u8();
    parameter->maximum_waiting_time_extensions = in.u8();
    parameter->maximum_message_size = in.be<uint16_t>();
    return in.left() == 0 ? verdict.valid()
                          : verdict.refused(NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, behind_name + length_behind_name);
}

nfc_ndef_record *nfc_ndef_service_parameter_record_create(const nfc_ndef_service_parameter *parameter,
                                                          nfc_ndef_bytes id)
{
    if (parameter->minimum_waiting_time > longest_waiting_time ||
        parameter->maximum_waiting_time_extensions > most_extensions)
        return nullptr;
    const auto layout = [&](auto &out) {
        out.u8(parameter->version)
            .template sized<uint8_t>(bytes_of(parameter->service_name))
            .u8(parameter->communication_mode)
            .u8(parameter->minimum_waiting_time)
            .u8(parameter->maximum_waiting_time_extensions)
            .be(parameter->maximum_message_size);
    };
    return readable_record_of(known::service_parameter, layout, id, nfc_ndef_service_parameter_read);
}
