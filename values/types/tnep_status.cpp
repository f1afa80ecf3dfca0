#include "tnep_status.h"

#include "../c_interface.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

std::optional<TnepStatus> Kind<TnepStatus>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                 nfc_ndef_payload_report &report)
{
    nfc_ndef_tnep_status read;
    if (!nfc_ndef_tnep_status_read(record.payload, &read, &report))
        return std::nullopt;
    return TnepStatus{read.status};
}

nfc_ndef::Record Kind<TnepStatus>::make(const TnepStatus &status)
{
    const nfc_ndef_tnep_status lent{status.status};
    return nfc_ndef::Record(nfc_ndef_tnep_status_record_create(&lent, {}));
}

void Kind<TnepStatus>::show(const TnepStatus &status, View &view)
{
    const bool of_service = status.status >= 0x80 && status.status < 0xFF;
    view.field("status", fmt::format("{} ({})",
                                     of_service ? "error of the service" : Names(tnep_statuses).title_of(status.status),
                                     status.status));
}

} // namespace nfc_ndef::values
