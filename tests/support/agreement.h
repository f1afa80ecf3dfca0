// The property that what reads in place accepts, refuses and finds just what the owning calls do. The fuzz targets hold
// it against any input, the tests against every row of their tables.
#pragma once

#include <nfc_ndef.hpp>
#include <nfc_ndef_view.h>

namespace agreement {

// What differs, or null. The record is read as each type of the library.
const char *broken_by(const nfc_ndef_record &record);

// The bytes are read as a message.
const char *broken_by(nfc_ndef_bytes message);

} // namespace agreement
