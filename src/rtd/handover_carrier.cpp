// Handover Carrier record: NFC Forum Connection Handover 1.2.
#include "record/build.h"
#include "record/payload_report.h"
#include "rtd/result.h"

using namespace ndef;

constexpr uint8_t carrier_type_format_bits = 0x07;
constexpr size_t longest_carrier_data = 255;

nfc_ndef_record *rtdlib_handover_carrier_record_create(uint32_t ctf, uint8_t carrier_type_length,
                                                       const uint8_t *carrier_type, uint8_t carrier_data_length,
                                                       const uint8_t *carrier_data)
{
    if (!carrier_type)
        return nullptr;
    constexpr uint8_t zeros[longest_carrier_data]{};
    const auto layout = [&](auto &out) {
        out.u8(static_cast<uint8_t>(ctf))
            .u8(carrier_type_length)
            .bytes({carrier_type, carrier_type_length})
            .bytes({carrier_data ? carrier_data : zeros, carrier_data_length});
    };
    return lone_record_of(known::handover_carrier, laid_out(layout)).release();
}

uint8_t nfc_ndef_handover_carrier_read(nfc_ndef_bytes payload, nfc_ndef_handover_carrier *carrier,
                                       nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *carrier = {};
    Reader in(bytes);
    carrier->format = in.u8() & carrier_type_format_bits;
    const uint8_t type_length = in.u8();
    if (!in.ok())
        return verdict.refused(bytes.empty() ? NFC_NDEF_PAYLOAD_EMPTY : NFC_NDEF_PAYLOAD_FIELD_PAST_END);
    const ByteView type = in.take(type_length);
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_PAST_END, 2);
    carrier->type = lent(type);
    const ByteView data = in.rest();
    if (data.size() > longest_carrier_data)
        return verdict.refused(NFC_NDEF_PAYLOAD_FIELD_TOO_LONG, data.data());
    carrier->data = lent(data);
    return verdict.valid();
}

int8_t rtdlib_handover_carrier_record_extract(const nfc_ndef_record *record, uint32_t *ctf,
                                              uint8_t *carrier_type_length, uint8_t **carrier_type,
                                              uint8_t *carrier_data_length, uint8_t **carrier_data)
{
    nfc_ndef_handover_carrier view;
    if (!nfc_ndef_handover_carrier_read(lent(payload_of(record)), &view, nullptr))
        return failure;
    *ctf = view.format;
    *carrier_type_length = 0;
    *carrier_type = nullptr;
    Block<uint8_t> type_copy = copy_of(bytes_of(view.type));
    if (!type_copy)
        return failure;
    if (view.data.length != 0) {
        Block<uint8_t> data_copy = copy_of(bytes_of(view.data));
        if (!data_copy)
            return failure;
        *carrier_data = data_copy.release();
        *carrier_data_length = static_cast<uint8_t>(view.data.length);
    }
    *carrier_type = type_copy.release();
    *carrier_type_length = static_cast<uint8_t>(view.type.length);
    return success;
}
