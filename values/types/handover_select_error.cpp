#include "handover_select_error.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

namespace {

constexpr Name reasons[] = {
    {1, "temporary memory constraints"}, {2, "permanent memory constraints"}, {3, "carrier-specific constraints"}};

} // namespace

std::optional<HandoverSelectError> Kind<HandoverSelectError>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                                   nfc_ndef_payload_report &report)
{
    nfc_ndef_handover_error error;
    if (!nfc_ndef_handover_error_read(record.payload, &error, &report))
        return std::nullopt;
    return HandoverSelectError{error.reason, error.data};
}

nfc_ndef::Record Kind<HandoverSelectError>::make(const HandoverSelectError &error)
{
    return nfc_ndef::Record(rtdlib_handover_select_error_record_create(error.error_reason, error.error_data));
}

void Kind<HandoverSelectError>::show(const HandoverSelectError &error, View &view)
{
    view.field("reason", fmt::format("{} ({})", Names(reasons).title_of(error.error_reason), error.error_reason));
    view.field("error data", fmt::format("0x{:02X}", error.error_data));
}

} // namespace nfc_ndef::values
