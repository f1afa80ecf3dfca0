// A Sharing Enquiry record of the vendor's domain.
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct SharingEnquiry {
    uint8_t version = 0; // major version in bits 4 to 7, minor version in bits 0 to 3
    uint8_t enquiry_type = 0;
    Bytes enquiry_data;
    bool operator==(const SharingEnquiry &) const = default;
};

template <> struct Kind<SharingEnquiry> : Leaf {
    static const Type type; // known when the library is built
    static constexpr std::string_view json = "sharing_enquiry", title = "Sharing Enquiry";
    static std::optional<SharingEnquiry> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                              nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const SharingEnquiry &enquiry);
    static void show(const SharingEnquiry &enquiry, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, SharingEnquiry> &enquiry)
    {
        fields.version("version", enquiry.version);
        fields.require(enquiry.version >> 4 == 1 || (enquiry.version & 0x0F) == 0, "version",
                       "must be \"1.x\" or \"x.0\"");
        fields.number("enquiry_type", enquiry.enquiry_type);
        fields.bytes("enquiry_data", enquiry.enquiry_data, at_most(255));
    }
};

} // namespace nfc_ndef::values
