// What the records of NFC Forum TNEP 1.0 share.
#pragma once

#include "nfc_ndef_types.h"
#include "record/view.h"

#include <algorithm>

namespace ndef {

// The first byte of a service name that is no visible ASCII character; null when all are.
inline const uint8_t *first_not_in_name(ByteView name)
{
    const auto is_visible = [](uint8_t c) { return c > ' ' && c < 0x7F; };
    const auto wrong = std::find_if_not(name.begin(), name.end(), is_visible);
    return wrong == name.end() ? nullptr : &*wrong;
}

} // namespace ndef
