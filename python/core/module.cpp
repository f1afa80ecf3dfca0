// The extension module nfc_ndef._core.
#include "kinds.h"
#include "message.h"
#include "reader.h"
#include "refused.h"

#include <nfc_ndef/json.h>

#include <algorithm>

namespace python {

namespace {

PyObject *parse(PyObject *, PyObject *data)
{
    return guarded([&] { return message_in(data).release().ptr(); });
}

PyObject *encode(PyObject *, PyObject *records)
{
    return guarded([&] { return encoded(records).release().ptr(); });
}

PyObject *from_json(PyObject *, PyObject *text)
{
    return guarded([&] {
        if (!PyUnicode_Check(text))
            throw py::type_error("from_json() needs a str");
        const auto bytes = nfc_ndef::values::encode(nfc_ndef::values::from_json(bytes_from(text)));
        if (!bytes)
            throw py::value_error("the records cannot be encoded");
        return message_in(bytes_object(nfc_ndef::values::text_of(*bytes)).ptr()).release().ptr();
    });
}

// A pickled value, slot by slot: what was read need not be what can be made.
PyObject *restore(PyObject *, PyObject *arguments)
{
    return guarded([&] {
        PyObject *python_type = nullptr, *slots = nullptr;
        if (PyArg_ParseTuple(arguments, "OO!:_restore", &python_type, &PyTuple_Type, &slots) == 0)
            throw py::error_already_set();
        const auto is_that = [&](const ValueClass *type) {
            return reinterpret_cast<PyObject *>(type->type) == python_type;
        };
        const auto found = std::ranges::find_if(value_classes(), is_that);
        if (found == value_classes().end() || static_cast<size_t>(PyTuple_GET_SIZE(slots)) != (*found)->fields.size())
            throw py::type_error("not a value of nfc_ndef");
        py::object value = new_value(**found);
        for (size_t i = 0; i < (*found)->fields.size(); ++i)
            slots_of(value.ptr())[i] = new_reference(PyTuple_GET_ITEM(slots, static_cast<Py_ssize_t>(i)));
        return value.release().ptr();
    });
}

PyObject *restore_record(PyObject *, PyObject *fields)
{
    return guarded([&] { return record_restored(fields).release().ptr(); });
}

PyMethodDef functions[] = {
    {"parse", parse, METH_O, R"(parse(data, /)
--

Reads a message from bytes, or from anything that has some. What is not a message is Refused.

bytes are used as they are; of a bytearray, which may be changed later, a copy is kept.

>>> message = nfc_ndef.parse(bytes.fromhex("D101085402656E48656C6C6F"))
>>> for record in message:
...     print(record.type, record.content.text)
T Hello
)"},
    {"encode", encode, METH_O, R"(encode(records, /)
--

The bytes of a message of these records. A value such as Text stands for a record that is made of it.

>>> nfc_ndef.encode([nfc_ndef.Text("Hello", language="en"), nfc_ndef.Record(type="text/plain", payload=b"Hi")]).hex()
'9101085402656e48656c6c6f520a02746578742f706c61696e4869'
)"},
    {"from_json", from_json, METH_O, R"(from_json(text, /)
--

The message that a JSON text of the form of `ndef json` says.

>>> nfc_ndef.from_json('{"records": [{"kind": "uri", "uri": "https://example.com"}]}')
Message([Record(Uri('https://example.com'))])
)"},
    {"_restore", restore, METH_VARARGS, nullptr},
    {"_record", restore_record, METH_VARARGS, nullptr},
    {},
};

// What the classes of values and of numbers are, for those who write stubs.
py::list describe_classes()
{
    py::list all;
    for (const ValueClass *type : value_classes()) {
        py::list fields;
        for (const Field &field : type->fields)
            fields.append(py::make_tuple(field.name, field.annotation, field.initial ? field.initial : py::ellipsis()));
        const py::object positional =
            type->positional == ValueClass::none ? py::none() : py::object(py::int_(type->positional));
        all.append(py::make_tuple(type->name, type->title, fields, positional));
    }
    return all;
}

py::list content_names()
{
    py::list names;
    for (const ValueClass *type : value_classes())
        if (is_content_class(*type))
            names.append(type->name);
    return names;
}

} // namespace

} // namespace python

PYBIND11_MODULE(_core, module)
{
    using namespace python;
    create_errors(module);
    create_record_type(module);
    create_kinds(module);
    create_message_type(module);
    if (PyModule_AddFunctions(module.ptr(), functions) != 0)
        throw py::error_already_set();
    module.def("_describe_classes", describe_classes);
    module.def("_content_names", content_names);
    for (const auto &numbers : enum_classes())
        module.add_object(numbers->name.c_str(), numbers->type);
#ifdef NFC_NDEF_PCSC
    create_reader_types(module);
#endif
}
