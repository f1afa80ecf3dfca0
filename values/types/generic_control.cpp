#include "generic_control.h"

#include "../extract.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

std::optional<GenericControl> Kind<GenericControl>::read(const nfc_ndef_record &record, const Nesting &nesting)
{
    // Of an absent action nothing is written; of a present one, either another flag or a code of 8 bits is.
    constexpr uint8_t no_flag = 0xFF;
    constexpr uint32_t no_code = UINT32_MAX;
    uint32_t config = 0, code = no_code;
    uint8_t flag = no_flag;
    nfc_ndef::Record target, action, data;
    Array<nfc_ndef::Record> controls;
    const int8_t result = rtdlib_generic_control_record_extract(
        &record, &config, out(target), &flag, &code, out(action), out(data), controls.out_count(), controls.out());
    if (result != 1)
        return std::nullopt;
    GenericControl control;
    control.config = static_cast<uint8_t>(config);
    control.target_record = nested(target, nesting);
    if (flag != no_flag || code != no_code)
        control.action_flag = flag;
    if (code != no_code)
        control.action_code = static_cast<uint8_t>(code);
    control.action_record = nested(action, nesting);
    if (action)
        control.action_record_flags = {action->mb != 0, action->me != 0, action->cf != 0};
    control.data_record = nested(data, nesting);
    control.gc_records = nested(controls, nesting);
    control.other_records = others_in(record, *nested_at, {"t", "a", "d", "Gc"}, nesting);
    return control;
}

nfc_ndef::Record Kind<GenericControl>::make(const GenericControl &control)
{
    const nfc_ndef::Record target = to_handle(control.target_record), action = to_handle(control.action_record),
                           data = to_handle(control.data_record);
    if (action) {
        action->mb = control.action_record_flags.mb;
        action->me = control.action_record_flags.me;
        action->cf = control.action_record_flags.cf;
    }
    // The builder writes its array from the last entry to the first.
    const LentRecords controls(control.gc_records, LentRecords::Order::reversed);
    if (!controls.ok())
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
