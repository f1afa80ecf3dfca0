#include "collision_resolution.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

std::optional<CollisionResolution> Kind<CollisionResolution>::read(const nfc_ndef_record_view &record, const Nesting &,
                                                                   nfc_ndef_payload_report &report)
{
    nfc_ndef_collision_resolution read;
    if (!nfc_ndef_collision_resolution_read(record.payload, &read, &report))
        return std::nullopt;
    return CollisionResolution{read.random_number};
}

nfc_ndef::Record Kind<CollisionResolution>::make(const CollisionResolution &resolution)
{
    return nfc_ndef::Record(rtdlib_collision_resolution_record_create(resolution.random_number));
}

void Kind<CollisionResolution>::show(const CollisionResolution &resolution, View &view)
{
    view.field("random number", fmt::format("0x{:04X}", resolution.random_number));
}

} // namespace nfc_ndef::values
