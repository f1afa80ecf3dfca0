#include "generic_control.h"

#include "../c_interface.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

namespace {

// The record behind the flag of an action record, which may itself have come in chunks.
void read_action_record(const nfc_ndef_record_view &action, GenericControl &control, const Nesting &nesting)
{
    const Bytes payload = joined_payload(action);
    nfc_ndef_record_view record;
    if (!nfc_ndef_record_view_read(bytes_view(ByteView(payload).subspan(1)), &record, nullptr))
        return;
    control.action_record = decode(record, nesting.inner());
    control.action_record_flags = {(record.flags & NFC_NDEF_FLAG_MB) != 0, (record.flags & NFC_NDEF_FLAG_ME) != 0,
                                   (record.flags & NFC_NDEF_FLAG_CF) != 0};
}

} // namespace

std::optional<GenericControl> Kind<GenericControl>::read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                         nfc_ndef_payload_report &report)
{
    nfc_ndef_generic_control read;
    if (!nfc_ndef_generic_control_read(record.payload, &read, &report))
        return std::nullopt;
    GenericControl control;
    control.config = read.config;
    if (read.has_action)
        control.action_flag = read.action_flag;
    control.action_code = read.action_code;
    nfc_ndef_record_view inner;
    while (const uint32_t part = nfc_ndef_generic_control_next(&read, &inner)) {
        if (part == NFC_NDEF_GENERIC_CONTROL_ACTION) {
            if (read.action_flag == 0)
                read_action_record(inner, control, nesting);
            continue;
        }
        Record decoded = decode(inner, nesting.inner());
        if (part == NFC_NDEF_GENERIC_CONTROL_TARGET)
            control.target_record = std::move(decoded);
        else if (part == NFC_NDEF_GENERIC_CONTROL_DATA)
            control.data_record = std::move(decoded);
        else if (part == NFC_NDEF_GENERIC_CONTROL_NESTED)
            control.gc_records.push_back(std::move(decoded));
        else
            control.other_records.push_back(std::move(decoded));
    }
    return control;
}

nfc_ndef::Record Kind<GenericControl>::make(const GenericControl &control)
{
    const LentRecord target(control.target_record), action(control.action_record), data(control.data_record);
    if (nfc_ndef_record *const record = action.get()) {
        record->mb = control.action_record_flags.mb;
        record->me = control.action_record_flags.me;
        record->cf = control.action_record_flags.cf;
    }
    // The builder writes its array from the last entry to the first.
    const LentRecords controls(control.gc_records, LentRecords::Order::reversed);
    if (!controls.ok() || !target.ok() || !action.ok() || !data.ok())
        return nullptr;
    return nfc_ndef::Record(rtdlib_generic_control_record_create(
        control.config, target.get(), control.action_flag.value_or(0), control.action_code, action.get(), data.get(),
        controls.count(), controls.data()));
}

void Kind<GenericControl>::show(const GenericControl &control, View &view)
{
    view.field("configuration", fmt::format("0x{:02X}", control.config));
    view.record("target", *control.target_record);
    if (control.action_record)
        view.record("action", *control.action_record);
    else if (control.action_flag)
        view.field("action", *control.action_flag == 0 ? "none" : fmt::format("code {}", control.action_code));
    if (control.data_record)
        view.record("data", *control.data_record);
    view.message("nested control", control.gc_records);
    view.message("other record", control.other_records);
}

} // namespace nfc_ndef::values
