// Shows what a URI or an object of a media type holds.
#pragma once

#include "../printable.h"
#include "../view.h"
#include "uri_fields.h"

namespace nfc_ndef::values {

inline void show_fields(const NamedTexts &fields, View &view)
{
    for (const auto &[name, text, plain] : fields)
        if (plain)
            view.field(name, printable_utf8(text));
        else
            view.text(name, view_of(text));
}

} // namespace nfc_ndef::values
