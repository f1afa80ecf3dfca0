// Handover Carrier record: NFC Forum Connection Handover 1.2.
#include "record/build.h"
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

int8_t rtdlib_handover_carrier_record_extract(const nfc_ndef_record *record, uint32_t *ctf,
                                              uint8_t *carrier_type_length, uint8_t **carrier_type,
                                              uint8_t *carrier_data_length, uint8_t **carrier_data)
{
    Reader payload(payload_of(record));
    const uint8_t format = payload.u8();
    const uint8_t type_length = payload.u8();
    const ByteView type = payload.take(type_length);
    if (!payload.ok() || payload.left() > longest_carrier_data)
        return failure;
    const ByteView data = payload.rest();

    *ctf = format & carrier_type_format_bits;
    *carrier_type_length = 0;
    *carrier_type = nullptr;
    Block<uint8_t> type_copy = copy_of(type);
    if (!type_copy)
        return failure;
    if (!data.empty()) {
        Block<uint8_t> data_copy = copy_of(data);
        if (!data_copy)
            return failure;
        *carrier_data = data_copy.release();
        *carrier_data_length = static_cast<uint8_t>(data.size());
    }
    *carrier_type = type_copy.release();
    *carrier_type_length = type_length;
    return success;
}
