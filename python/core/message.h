// nfc_ndef.Message: the records of a message, each made when it is asked for.
#pragma once

#include "guard.h"

namespace python {

void create_message_type(py::module_ &module);

// Opens a message in anything that has bytes. Throws Refused.
py::object message_in(PyObject *data);
// The bytes of a message of these records: a Message, a Record, a value, or several of the last two.
py::object encoded(PyObject *records);

} // namespace python
