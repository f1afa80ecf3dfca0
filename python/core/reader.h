// nfc_ndef.Reader and nfc_ndef.Tag.
#pragma once

#include "guard.h"

namespace python {

void create_reader_types(py::module_ &module);

} // namespace python
