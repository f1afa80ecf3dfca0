#include "android_application.h"

#include "../c_interface.h"
#include "../printable.h"

namespace nfc_ndef::values {

std::optional<AndroidApplication> Kind<AndroidApplication>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                                 nfc_ndef_payload_report &report)
{
    nfc_ndef_android_application application;
    if (!nfc_ndef_android_application_read(record.payload, &application, &report))
        return std::nullopt;
    return AndroidApplication{string_of(application.package)};
}

nfc_ndef::Record Kind<AndroidApplication>::make(const AndroidApplication &application)
{
    const nfc_ndef_android_application lent{bytes_view(application.package)};
    return nfc_ndef::Record(nfc_ndef_android_application_record_create(&lent, {}));
}

std::string Kind<AndroidApplication>::summary(const AndroidApplication &application)
{
    return shortened(application.package);
}

void Kind<AndroidApplication>::show(const AndroidApplication &application, View &view)
{
    view.field("package", application.package);
}

} // namespace nfc_ndef::values
