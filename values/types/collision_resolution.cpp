#include "collision_resolution.h"

#include <fmt/format.h>

namespace nfc_ndef::values {

std::optional<CollisionResolution> Kind<CollisionResolution>::read(const nfc_ndef_record &record, const Nesting &)
{
    CollisionResolution resolution;
    const int8_t result = rtdlib_collision_resolution_record_extract(&record, &resolution.random_number);
    return result == 1 ? std::optional(resolution) : std::nullopt;
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
