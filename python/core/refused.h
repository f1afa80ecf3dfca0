// nfc_ndef.Refused: why bytes are not a message, or a payload not one of its type.
#pragma once

#include "guard.h"

#include <nfc_ndef_types.h>

namespace python {

// Adds a class of errors, which is kept for as long as the process.
PyObject *new_error_class(py::module_ &module, const char *name, PyObject *base, const char *doc);

void create_errors(py::module_ &module);

[[noreturn]] void refuse(const nfc_ndef_msg_report &report);
py::object refusal_of(const nfc_ndef_payload_report &report);

} // namespace python
