// What the URIs that phones act on hold: places, telephone numbers, messages.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nfc_ndef::values {

struct NamedText {
    std::string_view name;
    std::string text; // as it was written, which need not be safe to look at
    bool plain;       // a number or the like, which needs no quotes
};
using NamedTexts = std::vector<NamedText>;

// The fields of a geo, tel, sms, smsto or mailto URI (RFC 5870, 3966, 5724, 6068), by name and decoded; none of any
// other URI, and of one that is malformed.
NamedTexts uri_fields(std::string_view uri);

} // namespace nfc_ndef::values
