// What people are shown is safe to look at.
#pragma once

#include "fuzz.h"

#include <nfc_ndef/printable.h>

#include <glib.h>

namespace fuzz {

inline void must_be_printable(std::string_view text)
{
    must(g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != 0, "what is shown is UTF-8");
    for (const char *at = text.data(); at != text.data() + text.size(); at = g_utf8_next_char(at))
        must(*at == '\n' || !nfc_ndef::values::acts_on_a_terminal(g_utf8_get_char(at)), "what is shown is harmless");
}

} // namespace fuzz
