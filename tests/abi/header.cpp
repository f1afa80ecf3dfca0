// The handles, and with them the C header, as a strict C++17 program sees them.
#include "nfc_ndef.hpp"
#include "nfc_ndef_view.hpp"

#include "nfc_ndef.h"
