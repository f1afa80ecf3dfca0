#include "record/match.h"
#include "record/view.h"

using namespace ndef;

namespace {

nfc_ndef_kind well_known_kind(uint32_t name)
{
    switch (name) {
    case known::text.short_name:
        return NFC_NDEF_KIND_TEXT;
    case known::uri.short_name:
        return NFC_NDEF_KIND_URI;
    case known::smart_poster.short_name:
        return NFC_NDEF_KIND_SMART_POSTER;
    case known::generic_control.short_name:
        return NFC_NDEF_KIND_GENERIC_CONTROL;
    case known::handover_request.short_name:
        return NFC_NDEF_KIND_HANDOVER_REQUEST;
    case known::handover_select.short_name:
        return NFC_NDEF_KIND_HANDOVER_SELECT;
    case known::handover_carrier.short_name:
        return NFC_NDEF_KIND_HANDOVER_CARRIER;
    case known::alternative_carrier.short_name:
        return NFC_NDEF_KIND_ALTERNATIVE_CARRIER;
    case known::collision_resolution.short_name:
        return NFC_NDEF_KIND_COLLISION_RESOLUTION;
    case known::handover_select_error.short_name:
        return NFC_NDEF_KIND_HANDOVER_ERROR;
    case known::device_information.short_name:
        return NFC_NDEF_KIND_DEVICE_INFORMATION;
    case known::handover_mediation.short_name:
        return NFC_NDEF_KIND_HANDOVER_MEDIATION;
    case known::handover_initiate.short_name:
        return NFC_NDEF_KIND_HANDOVER_INITIATE;
    case known::service_parameter.short_name:
        return NFC_NDEF_KIND_SERVICE_PARAMETER;
    case known::service_select.short_name:
        return NFC_NDEF_KIND_SERVICE_SELECT;
    case known::tnep_status.short_name:
        return NFC_NDEF_KIND_TNEP_STATUS;
    case known::signature.short_name:
        return NFC_NDEF_KIND_SIGNATURE;
    default:
        return NFC_NDEF_KIND_OTHER;
    }
}

constexpr struct Named {
    KnownType type;
    nfc_ndef_kind kind;
} named[] = {
    {known::bluetooth_oob, NFC_NDEF_KIND_BT_OOB},
    {known::bluetooth_le, NFC_NDEF_KIND_BT_LE},
    {known::wifi, NFC_NDEF_KIND_WIFI},
    {known::android_application, NFC_NDEF_KIND_ANDROID_APPLICATION},
    {known::bluetooth_legacy, NFC_NDEF_KIND_BT_LEGACY},
    {known::sharing_enquiry, NFC_NDEF_KIND_SHARING_ENQUIRY},
};

nfc_ndef_kind kind_of_named(uint32_t format, ByteView name)
{
    // Most spell a type as it is written down, so that no letter needs a closer look.
#pragma GCC unroll 1
    for (const auto &[type, kind] : named)
        if (type.format == format && type.name.size() == name.size() &&
            std::memcmp(type.name.data(), name.data(), name.size()) == 0)
            return kind;
#pragma GCC unroll 1
    for (const auto &[type, kind] : named)
        if (type.format == format && !name.empty() && names_match(format, type.bytes(), name))
            return kind;
    return NFC_NDEF_KIND_OTHER;
}

} // namespace

uint32_t nfc_ndef_record_view_kind(const nfc_ndef_record_view *record)
{
    const ByteView name = bytes_of(record->type);
    return record->format == NFC_NDEF_TNF_WELL_KNOWN ? well_known_kind(short_name(name))
                                                     : kind_of_named(record->format, name);
}
