// Frees what the Bluetooth structures own: with GLib's function, which they were given to, where the library has GLib.
#pragma once

#ifdef NFC_NDEF_GLIB
#include <glib.h>
#else
#include "nfc_ndef.h"
#endif

namespace ndef {

inline void release_present(void *block)
{
    if (!block)
        return;
#ifdef NFC_NDEF_GLIB
    g_free(block);
#else
    os_block_dealloc(block);
#endif
}

} // namespace ndef
