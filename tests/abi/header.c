/* The public headers alone, as a strict C99 program sees them. */
#include "nfc_ndef_types.h"
