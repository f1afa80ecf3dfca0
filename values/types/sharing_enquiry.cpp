#include "sharing_enquiry.h"

#include "../c_interface.h"
#include "../printable.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

constinit const Type Kind<SharingEnquiry>::type = external(VENDOR_DOMAIN ":she");

std::optional<SharingEnquiry> Kind<SharingEnquiry>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                         nfc_ndef_payload_report &report)
{
    nfc_ndef_sharing_enquiry enquiry;
    if (!nfc_ndef_sharing_enquiry_read(record.payload, &enquiry, &report))
        return std::nullopt;
    return SharingEnquiry{enquiry.version, enquiry.type, bytes_of(enquiry.data)};
}

nfc_ndef::Record Kind<SharingEnquiry>::make(const SharingEnquiry &enquiry)
{
    if (!fit_in_a_byte(enquiry.enquiry_data.size()))
        return nullptr;
    return nfc_ndef::Record(rtdlib_sharing_enquiry_record_create(enquiry.enquiry_type,
                                                                 static_cast<uint8_t>(enquiry.enquiry_data.size()),
                                                                 pointer_to(enquiry.enquiry_data), enquiry.version));
}

void Kind<SharingEnquiry>::show(const SharingEnquiry &enquiry, View &view)
{
    view.field("version", version_text(enquiry.version));
    view.field("enquiry type", fmt::format("0x{:02X}", enquiry.enquiry_type));
    if (!enquiry.enquiry_data.empty())
        view.bytes("enquiry data", enquiry.enquiry_data);
}

} // namespace nfc_ndef::values
