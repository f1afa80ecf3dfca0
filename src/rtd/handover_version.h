// What the Handover Request and Select records share: NFC Forum Connection Handover 1.2.
#pragma once

#include "nfc_ndef.h"

namespace ndef {

// A version byte. Records of the two known versions are made; those of any minor version are read.
struct HandoverVersion {
    uint8_t byte;
    unsigned major() const { return byte >> 4; }
    unsigned minor() const { return byte & 0x0F; }
    bool is_read() const { return major() == 1; }
    bool has_1_2_records() const { return minor() == 2; }
};
constexpr uint8_t version_1_0 = 0x10;
constexpr uint8_t version_1_2 = 0x12;

// A count and an array that go together.
inline bool agree(uint8_t count, nfc_ndef_record *const *records) { return (count != 0) == (records != nullptr); }

} // namespace ndef
