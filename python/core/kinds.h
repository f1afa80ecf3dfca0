// The classes of what records hold, one for each type that the library knows.
#pragma once

#include "record.h"

namespace python {

void create_kinds(py::module_ &module);

// What a record holds, as a value; null when its type is not known or its payload refused, with the reason.
py::object content_of(const nfc_ndef_record_view &record, nfc_ndef_payload_report &report);
py::object content_of(nfc_ndef::values::Content &content, nfc_ndef_payload_report &report);

// Whether it is a value that a record can be made of, and that record. Throws ValueError.
bool is_content(PyObject *object);
bool is_content_class(const ValueClass &type);
nfc_ndef::Record record_made_of(PyObject *content);

} // namespace python
