// What map() of a type is called with: to learn its members, to give them to Python, and to take them from there. Each
// call is for the next slot of the value, so that no name is ever looked up.
#pragma once

#include "naming.h"
#include "record.h"
#include "value_class.h"

#include <nfc_ndef/kind.h>
#include <nfc_ndef/optional_record.h>
#include <nfc_ndef/printable.h>
#include <nfc_ndef/spelling.h>

#include <array>

namespace python {

using nfc_ndef::values::Bytes;
using nfc_ndef::values::ByteView;
using nfc_ndef::values::GenericControl;
using nfc_ndef::values::Names;
using nfc_ndef::values::OptionalRecord;
using nfc_ndef::values::Presence;
using nfc_ndef::values::Records;
using nfc_ndef::values::Sizes;
using nfc_ndef::values::Spelling;
using nfc_ndef::values::TextOrBytes;

template <class T> inline constexpr bool is_optional = false;
template <class T> inline constexpr bool is_optional<std::optional<T>> = true;

} // namespace python
