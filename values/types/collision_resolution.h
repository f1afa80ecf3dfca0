// A Collision Resolution record (NFC Forum Connection Handover 1.2).
#pragma once

#include "../kind.h"

namespace nfc_ndef::values {

struct CollisionResolution {
    uint16_t random_number = 0;
    bool operator==(const CollisionResolution &) const = default;
};

template <> struct Kind<CollisionResolution> : Leaf {
    static constexpr Type type = well_known("cr");
    static constexpr std::string_view json = "collision_resolution", title = "Collision Resolution";
    static std::optional<CollisionResolution> read(const nfc_ndef_record_view &record, const Nesting &nesting,
                                                   nfc_ndef_payload_report &report);
    static nfc_ndef::Record make(const CollisionResolution &resolution);
    static void show(const CollisionResolution &resolution, View &view);

    template <class Fields> static void map(Fields &fields, Value<Fields, CollisionResolution> &resolution)
    {
        fields.number("random_number", resolution.random_number);
    }
};

} // namespace nfc_ndef::values
