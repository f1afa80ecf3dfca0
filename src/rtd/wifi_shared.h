// What Wi-Fi configuration records and their vendor extensions share: Wi-Fi Simple Configuration 2.0.
#pragma once

#include "record/build.h"
#include "record/elements.h"

namespace ndef {

using Reason = nfc_ndef_payload_reason;

constexpr uint16_t vendor_extension_id = 0x1049;

// Why the value of a vendor extension is refused, if it is.
Reason broken_by_extension(ByteView value);

} // namespace ndef
