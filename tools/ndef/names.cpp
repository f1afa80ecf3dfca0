#include "names.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tool {
namespace {

// In the order of model::Content, whose first alternative has no name of its own.
constexpr std::string_view kinds[] = {
    "",
    "Text",
    "URI",
    "Smart Poster",
    "Generic Control",
    "Handover Request",
    "Handover Select",
    "Handover Carrier",
    "Alternative Carrier",
    "Collision Resolution",
    "Handover Select Error",
    "Bluetooth OOB",
    "legacy Bluetooth configuration",
    "Sharing Enquiry",
};
static_assert(std::size(kinds) == std::variant_size_v<model::Content>);

struct KnownType {
    uint32_t format;
    std::string_view type, kind;
};

constexpr KnownType known_types[] = {
    {NFC_NDEF_TNF_WELL_KNOWN, "T", "Text"},
    {NFC_NDEF_TNF_WELL_KNOWN, "U", "URI"},
    {NFC_NDEF_TNF_WELL_KNOWN, "Sp", "Smart Poster"},
    {NFC_NDEF_TNF_WELL_KNOWN, "Gc", "Generic Control"},
    {NFC_NDEF_TNF_WELL_KNOWN, "Hr", "Handover Request"},
    {NFC_NDEF_TNF_WELL_KNOWN, "Hs", "Handover Select"},
    {NFC_NDEF_TNF_WELL_KNOWN, "Hc", "Handover Carrier"},
    {NFC_NDEF_TNF_WELL_KNOWN, "ac", "Alternative Carrier"},
    {NFC_NDEF_TNF_WELL_KNOWN, "cr", "Collision Resolution"},
    {NFC_NDEF_TNF_WELL_KNOWN, "err", "Handover Select Error"},
    {NFC_NDEF_TNF_MIME, "application/vnd.bluetooth.ep.oob", "Bluetooth OOB"},
};

const KnownType *known_type(const model::Record &record)
{
    const auto *found = std::find_if(std::begin(known_types), std::end(known_types), [&](const KnownType &known) {
        return known.format == record.format && std::ranges::equal(known.type, record.type);
    });
    return found == std::end(known_types) ? nullptr : found;
}

template <size_t Count> std::string name_at(const std::string_view (&names)[Count], size_t index)
{
    return std::string(index < Count ? names[index] : "reserved");
}

} // namespace

std::string format_name(uint32_t type_name_format)
{
    constexpr std::string_view names[] = {"empty",    "well-known", "media type", "absolute URI",
                                          "external", "unknown",    "unchanged",  "reserved"};
    return name_at(names, type_name_format);
}

std::string kind_name(const model::Record &record)
{
    if (!std::holds_alternative<model::Generic>(record.content))
        return std::string(kinds[record.content.index()]);
    if (const KnownType *known = known_type(record))
        return std::string(known->kind);
    switch (record.format) {
    case NFC_NDEF_TNF_EMPTY:
        return "Empty";
    case NFC_NDEF_TNF_MIME:
        return "Media";
    case NFC_NDEF_TNF_ABSOLUTE_URI:
        return "Absolute URI";
    case NFC_NDEF_TNF_UNKNOWN:
        return "Payload of unknown type";
    default:
        return "Record";
    }
}

std::string action_name(uint8_t smart_poster_action)
{
    constexpr std::string_view names[] = {"do the action", "save for later", "open for editing"};
    return name_at(names, smart_poster_action);
}

std::string power_state_name(uint8_t carrier_power_state)
{
    constexpr std::string_view names[] = {"inactive", "active", "activating", "unknown"};
    return name_at(names, carrier_power_state);
}

std::string select_error_name(uint8_t reason)
{
    constexpr std::string_view names[] = {"reserved", "temporary memory constraints", "permanent memory constraints",
                                          "carrier-specific constraints"};
    return name_at(names, reason);
}

} // namespace tool
