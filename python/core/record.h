// nfc_ndef.Record: a record in the bytes of a message, or in bytes of its own.
#pragma once

#include "value_class.h"

#include <nfc_ndef/record.h>

namespace python {

// Where the fields of a record are; the text of messages about one.
struct RecordObject {
    PyObject_HEAD PyObject *owner; // of the bytes, unless they are in `own`
    nfc_ndef_record_view view;
    nfc_ndef::values::Record *own; // a nested record, read along with the one around it
    PyObject *content;             // null until somebody asks
    PyObject *refused;             // why there is none; null for no reason
    bool alone;                    // made by itself, or nested, and not one of the records of a message
};

void create_record_type(py::module_ &module);
// The enumeration of type name formats.
const EnumClass &format_class();
bool is_record(PyObject *object);
inline RecordObject *record_of(PyObject *object) { return reinterpret_cast<RecordObject *>(object); }

// A record of a message whose bytes have this owner; its view is still to be filled in.
py::object new_record(PyObject *owner);
py::object new_record(nfc_ndef::values::Record record, uint8_t flags = 0);

// One of the fields that a pickled record keeps, a tuple.
py::object record_restored(PyObject *fields);

// The record that is meant by a Record, or by a value that one can be made of. Throws TypeError.
py::object record_from(PyObject *record_or_content);
nfc_ndef::values::Record values_of(const nfc_ndef_record_view &view);
py::object bytes_object(std::string_view bytes);

// Text whose bytes that are not UTF-8 are lone surrogates, as in os.fsdecode(); the way back is exact.
py::object text_from(std::string_view bytes);
std::string bytes_from(PyObject *text);

inline std::string_view text_of(const nfc_ndef_bytes &bytes)
{
    return {reinterpret_cast<const char *>(bytes.data), bytes.length};
}

} // namespace python
