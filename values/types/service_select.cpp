#include "service_select.h"

#include "../c_interface.h"
#include "../printable.h"

namespace nfc_ndef::values {

std::optional<ServiceSelect> Kind<ServiceSelect>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                       nfc_ndef_payload_report &report)
{
    nfc_ndef_service_select read;
    if (!nfc_ndef_service_select_read(record.payload, &read, &report))
        return std::nullopt;
    return ServiceSelect{string_of(read.service_name)};
}

nfc_ndef::Record Kind<ServiceSelect>::make(const ServiceSelect &select)
{
    const nfc_ndef_service_select lent{bytes_view(select.service_name)};
    return nfc_ndef::Record(nfc_ndef_service_select_record_create(&lent, {}));
}

std::string Kind<ServiceSelect>::summary(const ServiceSelect &select) { return shortened(select.service_name); }

void Kind<ServiceSelect>::show(const ServiceSelect &select, View &view)
{
    if (select.service_name.empty())
        view.field("service", "none: the one that was selected is left");
    else
        view.text("service", view_of(select.service_name));
}

} // namespace nfc_ndef::values
