// The record types that the library knows by name.
#pragma once

#include "base/bytes.h"
#include "nfc_ndef_view.h"

#include <string_view>

namespace ndef {

// A name of one to three bytes as a number, so that short names are compared in one step; 0 for any other.
template <class Bytes> constexpr uint32_t short_name(const Bytes &name)
{
    if (name.size() > 3)
        return 0;
    auto number = static_cast<uint32_t>(name.size());
    for (const auto byte : name)
        number = number << 8 | static_cast<uint8_t>(byte);
    return number;
}

struct KnownType {
    uint32_t format;
    uint32_t short_name;   // of a well-known type, else 0
    std::string_view name; // of 255 bytes at most

    ByteView bytes() const { return {reinterpret_cast<const uint8_t *>(name.data()), name.size()}; }
};

constexpr KnownType well_known(std::string_view name) { return {NFC_NDEF_TNF_WELL_KNOWN, short_name(name), name}; }
constexpr KnownType media(std::string_view name) { return {NFC_NDEF_TNF_MIME, 0, name}; }
constexpr KnownType external(std::string_view name) { return {NFC_NDEF_TNF_EXTERNAL, 0, name}; }

namespace known {

inline constexpr KnownType text = well_known("T"), uri = well_known("U");

inline constexpr KnownType smart_poster = well_known("Sp"), poster_action = well_known("act"),
                           poster_size = well_known("s"), poster_type = well_known("t"), images = media("image*"),
                           videos = media("video*");

inline constexpr KnownType generic_control = well_known("Gc"), control_target = well_known("t"),
                           control_action = well_known("a"), control_data = well_known("d");

inline constexpr KnownType handover_request = well_known("Hr"), handover_select = well_known("Hs"),
                           handover_carrier = well_known("Hc"), alternative_carrier = well_known("ac"),
                           collision_resolution = well_known("cr"), handover_select_error = well_known("err");

inline constexpr KnownType handover_mediation = well_known("Hm"), handover_initiate = well_known("Hi");

inline constexpr KnownType service_parameter = well_known("Tp"), service_select = well_known("Ts"),
                           tnep_status = well_known("Te");

inline constexpr KnownType device_information = well_known("Di"), signature = well_known("Sig");

inline constexpr KnownType bluetooth_oob = media("application/vnd.bluetooth.ep.oob"),
                           bluetooth_le = media("application/vnd.bluetooth.le.oob"),
                           wifi = media("application/vnd.wfa.wsc");

inline constexpr KnownType android_application = external("android.com:pkg");

inline constexpr KnownType bluetooth_legacy = external(VENDOR_DOMAIN ":bt"),
                           sharing_enquiry = external(VENDOR_DOMAIN ":she");
static_assert(sharing_enquiry.name.size() <= UINT8_MAX, "a type name holds at most 255 bytes");

} // namespace known

// The types that have a kind, those with short names first.
inline constexpr struct TypeOfKind {
    KnownType type;
    nfc_ndef_kind kind;
} types_of_kinds[] = {
    {known::text, NFC_NDEF_KIND_TEXT},
    {known::uri, NFC_NDEF_KIND_URI},
    {known::smart_poster, NFC_NDEF_KIND_SMART_POSTER},
    {known::generic_control, NFC_NDEF_KIND_GENERIC_CONTROL},
    {known::handover_request, NFC_NDEF_KIND_HANDOVER_REQUEST},
    {known::handover_select, NFC_NDEF_KIND_HANDOVER_SELECT},
    {known::handover_carrier, NFC_NDEF_KIND_HANDOVER_CARRIER},
    {known::alternative_carrier, NFC_NDEF_KIND_ALTERNATIVE_CARRIER},
    {known::collision_resolution, NFC_NDEF_KIND_COLLISION_RESOLUTION},
    {known::handover_select_error, NFC_NDEF_KIND_HANDOVER_ERROR},
    {known::device_information, NFC_NDEF_KIND_DEVICE_INFORMATION},
    {known::handover_mediation, NFC_NDEF_KIND_HANDOVER_MEDIATION},
    {known::handover_initiate, NFC_NDEF_KIND_HANDOVER_INITIATE},
    {known::service_parameter, NFC_NDEF_KIND_SERVICE_PARAMETER},
    {known::service_select, NFC_NDEF_KIND_SERVICE_SELECT},
    {known::tnep_status, NFC_NDEF_KIND_TNEP_STATUS},
    {known::signature, NFC_NDEF_KIND_SIGNATURE},
    {known::bluetooth_oob, NFC_NDEF_KIND_BT_OOB},
    {known::bluetooth_le, NFC_NDEF_KIND_BT_LE},
    {known::wifi, NFC_NDEF_KIND_WIFI},
    {known::android_application, NFC_NDEF_KIND_ANDROID_APPLICATION},
    {known::bluetooth_legacy, NFC_NDEF_KIND_BT_LEGACY},
    {known::sharing_enquiry, NFC_NDEF_KIND_SHARING_ENQUIRY},
};

} // namespace ndef
