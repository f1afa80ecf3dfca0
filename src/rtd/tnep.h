// What the records of NFC Forum TNEP 1.0 share.
#pragma once

#include "nfc_ndef_types.h"
#include "record/view.h"

namespace ndef {

// How many bytes of a service name there are before the first that is no visible ASCII character.
inline size_t visible_length(ByteView name)
{
    return clean_length(name, [](uint8_t byte) { return byte > ' ' && byte < 0x7F; });
}

} // namespace ndef
