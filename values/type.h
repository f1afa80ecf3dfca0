// What a record is found by: its type name format and its type name.
#pragma once

#include <nfc_ndef.h>

#include <string_view>

namespace nfc_ndef::values {

struct Type {
    // Well-known names are exact; media types end at a ';' and ignore ASCII case, as external types do.
    bool matches(uint32_t other_format, std::string_view other_name) const;

    uint32_t format; // an NFC_NDEF_TNF_ value
    std::string_view name;
};

constexpr Type well_known(std::string_view name) { return {NFC_NDEF_TNF_WELL_KNOWN, name}; }
constexpr Type media(std::string_view name) { return {NFC_NDEF_TNF_MIME, name}; }
constexpr Type external(std::string_view name) { return {NFC_NDEF_TNF_EXTERNAL, name}; }

} // namespace nfc_ndef::values
