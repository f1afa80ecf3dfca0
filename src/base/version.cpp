#include "nfc_ndef_view.h"

uint32_t nfc_ndef_version(void) { return NFC_NDEF_VERSION; }
