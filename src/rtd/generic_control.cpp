// Generic Control record: NFC Forum Generic Control RTD 1.0. Its payload is a configuration byte and a message.
#include "message/draft.h"
#include "message/nested.h"
#include "message/view.h"
#include "record/payload_report.h"
#include "rtd/result.h"

using namespace ndef;

namespace {

enum Part : uint8_t { target, action, data, control };
constexpr KnownType parts[] = {known::control_target, known::control_action, known::control_data,
                               known::generic_control};

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

// Copies the first bytes of a payload, which may be in chunks; returns how many there were to copy.
template <size_t n> size_t first_bytes(const nfc_ndef_record_view &record, uint8_t (&first)[n])
{
    size_t length = 0;
    uint32_t position = 0;
    for (nfc_ndef_bytes piece; length < n && nfc_ndef_record_view_next_piece(&record, &position, &piece);)
        for (size_t i = 0; i < piece.length && length < n; ++i)
            first[length++] = piece.data[i];
    return length;
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
    if (find_record_apart(in, described).reason != NFC_NDEF_MSG_VALID)
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

uint8_t nfc_ndef_generic_control_read(nfc_ndef_bytes payload, nfc_ndef_generic_control *control,
                                      nfc_ndef_payload_report *report)
{
    const ByteView bytes = bytes_of(payload);
    const Verdict verdict(bytes, report);
    *control = {};
    Reader in(bytes);
    const uint8_t config = in.u8();
    if (!in.ok())
        return verdict.refused(NFC_NDEF_PAYLOAD_EMPTY);
    control->config = config;
    const ByteView message = in.rest();
    const Sorted sorted(message, parts);
    if (!sorted.valid())
        return verdict.refused(sorted.report(), 1);
    control->message = opened(message, sorted.report());
    if (sorted.count(target) == 0)
        return verdict.refused(NFC_NDEF_PAYLOAD_RECORD_MISSING);
    for (const Part once : {target, action})
        if (sorted.count(once) > 1)
            return verdict.refused(NFC_NDEF_PAYLOAD_RECORD_REPEATED, sorted.second(once));
    control->target = sorted.record(target);
    if (sorted.count(action) != 0) {
        const nfc_ndef_record_view record = sorted.record(action);
        uint8_t head[2]; // the flag, and a code if one follows
        const size_t length = first_bytes(record, head);
        if (length == 0 || (head[0] != record_follows && length < 2))
            return verdict.refused(NFC_NDEF_PAYLOAD_WRONG_LENGTH, sorted.first(action));
        control->has_action = 1;
        control->action_flag = head[0];
        if (head[0] != record_follows)
            control->action_code = head[1];
        else if (record.payload.length > 1)
            nfc_ndef_record_view_read(lent(bytes_of(record.payload).subspan(1)), &control->action_record, nullptr);
    }
    if (sorted.count(data) > 1)
        return verdict.refused(NFC_NDEF_PAYLOAD_RECORD_REPEATED, sorted.second(data));
    control->has_data = sorted.count(data);
    control->nested_count = sorted.count(Part::control);
    return verdict.valid();
}

uint32_t nfc_ndef_generic_control_next(nfc_ndef_generic_control *control, nfc_ndef_record_view *record)
{
    if (!nfc_ndef_msg_view_next(&control->message, record))
        return 0;
    static constexpr uint8_t public_parts[] = {NFC_NDEF_GENERIC_CONTROL_TARGET, NFC_NDEF_GENERIC_CONTROL_ACTION,
                                               NFC_NDEF_GENERIC_CONTROL_DATA, NFC_NDEF_GENERIC_CONTROL_NESTED,
                                               NFC_NDEF_GENERIC_CONTROL_OTHER};
    return public_parts[position_of(CandidateType(record->format, bytes_of(record->type)), parts)];
}

int8_t rtdlib_generic_control_record_extract(const nfc_ndef_record *record, uint32_t *config,
                                             nfc_ndef_record **target_record, uint8_t *action_flag,
                                             uint32_t *action_code, nfc_ndef_record **action_record,
                                             nfc_ndef_record **data_record, uint8_t *gc_count,
                                             nfc_ndef_record ***gc_records)
{
    Reader payload(payload_of(record));
    const uint8_t config_byte = payload.u8();
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
