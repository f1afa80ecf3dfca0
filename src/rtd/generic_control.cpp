// Generic Control record: NFC Forum Generic Control RTD 1.0. Its payload is a configuration byte and a message.
#include "message/draft.h"
#include "message/nested.h"
#include "record/codec.h"
#include "rtd/result.h"

using namespace ndef;

namespace {

constexpr uint8_t code_follows = 0x01;
constexpr uint8_t record_follows = 0x00;

RecordPtr make_action(uint8_t action_flag, uint8_t action_code, const nfc_ndef_record *action_record)
{
    const auto layout = [&](auto &out) {
        if (action_flag != 0)
            out.u8(code_follows).u8(action_code);
        else
            out.u8(record_follows);
        if (action_flag == 0 && action_record && nfc_ndef_record_get_byte_array_length(*action_record) != 0)
            nfc_ndef_record_write_to_byte_array(*action_record, out, framing_bits(*action_record));
    };
    return lone_record_of(known::control_action, laid_out(layout));
}

bool is_action(ByteView payload) { return !payload.empty() && (payload[0] == record_follows || payload.size() >= 2); }

// Reads an action; false when memory runs out. A record that does not decode is none.
bool read_action(ByteView payload, uint8_t *action_flag, uint32_t *action_code, nfc_ndef_record **action_record)
{
    Reader in(payload);
    *action_flag = in.u8();
    if (*action_flag != record_follows) {
        *action_code = in.u8();
        return true;
    }
    *action_record = nullptr;
    RecordView described;
    if (find_record(in, described).reason != NFC_NDEF_MSG_VALID)
        return true;
    *action_record = described.make().release();
    return *action_record != nullptr;
}

} // namespace

nfc_ndef_record *rtdlib_generic_control_record_create(uint8_t config, const nfc_ndef_record *target_record,
                                                      uint8_t action_flag, uint8_t action_code,
                                                      const nfc_ndef_record *action_record,
                                                      const nfc_ndef_record *data_record, uint8_t gc_count,
                                                      nfc_ndef_record *const *gc_records)
{
    if (!target_record || (gc_count != 0 && !gc_records))
        return nullptr;
    const RecordPtr action = make_action(action_flag, action_code, action_record);

    Draft control;
    control.add(target_record).add(action.get()).add_if(data_record);
    for (uint8_t i = gc_count; i-- > 0;)
        control.add(gc_records[i]);
    return lone_record_of(known::generic_control, control.pack({&config, 1})).release();
}

int8_t rtdlib_generic_control_record_extract(const nfc_ndef_record *record, uint32_t *config,
                                             nfc_ndef_record **target_record, uint8_t *action_flag,
                                             uint32_t *action_code, nfc_ndef_record **action_record,
                                             nfc_ndef_record **data_record, uint8_t *gc_count,
                                             nfc_ndef_record ***gc_records)
{
    enum : Nested::Type { target, action, data, control };
    Reader payload(payload_of(record));
    const uint8_t config_byte = payload.u8();
    static constexpr KnownType parts[] = {known::control_target, known::control_action, known::control_data,
                                          known::generic_control};
    Nested nested(payload.rest(), parts);
    if (!nested.valid())
        return failure;

    *config = config_byte;
    if (nested.count(target) != 1 || !nested.take_first(target, target_record))
        return failure;

    if (nested.count(action) > 1) {
        nfc_ndef_record_delete(target_record);
        return failure;
    }
    if (nested.count(action) == 1) {
        const WholeRecord found = nested.first(action);
        const RecordPtr joined = found.is_chunked() ? found.make() : nullptr;
        if (found.is_chunked() && !joined)
            return failure;
        const ByteView described = joined ? payload_of(joined.get()) : found.first()->payload();
        if (!is_action(described)) {
            nfc_ndef_record_delete(target_record);
            return failure;
        }
        if (!read_action(described, action_flag, action_code, action_record))
            return failure;
    }

    if (nested.count(data) > 1) {
        nfc_ndef_record_delete(target_record);
        nfc_ndef_record_delete(action_record);
        return failure;
    }
    if (!nested.take_first(data, data_record))
        return failure;

    *gc_count = 0;
    if (!nested.take_all({control}, gc_count, gc_records))
        return failure;
    return success;
}
