/* The public header alone, as a strict C99 program sees it. */
#include "nfc_ndef.h"
