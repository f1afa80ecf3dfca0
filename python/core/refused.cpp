#include "refused.h"

#include <string>

namespace python {

PyObject *json_error = nullptr;

namespace {

PyObject *refused_error = nullptr;

py::object error_of(PyObject *type, const std::string &text,
                    std::initializer_list<std::pair<const char *, py::object>> attributes)
{
    py::object error = borrowed(type)(text);
    for (const auto &[name, value] : attributes)
        error.attr(name) = value;
    return error;
}

py::object refusal(const std::string &reason, uint32_t record, uint32_t offset)
{
    const std::string text = reason + " (record " + std::to_string(record) + ", offset " + std::to_string(offset) + ")";
    return error_of(refused_error, text,
                    {{"reason", py::str(reason)}, {"record", py::int_(record)}, {"offset", py::int_(offset)}});
}

} // namespace

PyObject *new_error_class(py::module_ &module, const char *name, PyObject *base, const char *doc)
{
    const std::string qualified = std::string("nfc_ndef.") + name;
    py::object type = owned(PyErr_NewExceptionWithDoc(qualified.c_str(), doc, base, nullptr));
    module.add_object(name, type);
    return type.release().ptr();
}

void raise(PyObject *type, const std::string &text,
           std::initializer_list<std::pair<const char *, py::object>> attributes)
{
    PyErr_SetObject(type, error_of(type, text, attributes).ptr());
    throw py::error_already_set();
}

void create_errors(py::module_ &module)
{
    refused_error = new_error_class(module, "Refused", PyExc_ValueError, R"(Why bytes are not what they should be.

reason: what is wrong, in English; record: which record of the message, from 0; offset: at which byte.

>>> try:
...     nfc_ndef.parse(b"\xd1\x01\x05T")
... except nfc_ndef.Refused as refused:
...     print(refused.record, refused.offset, refused.reason)
0 4 the payload runs past the end
)");
    json_error = new_error_class(module, "JsonError", PyExc_ValueError, R"(Why a JSON text is not a message.

path: the member that is wrong, as a JSON pointer (RFC 6901).

>>> try:
...     nfc_ndef.from_json('{"records": [{"kind": "text"}]}')
... except nfc_ndef.JsonError as error:
...     print(error.path)
/records/0/language_code
)");
}

void refuse(const nfc_ndef_msg_report &report)
{
    const py::object error = refusal(nfc_ndef_msg_check_text(report.reason), report.record, report.offset);
    PyErr_SetObject(refused_error, error.ptr());
    throw py::error_already_set();
}

py::object refusal_of(const nfc_ndef_payload_report &report)
{
    std::string reason = nfc_ndef_payload_reason_text(report.reason);
    if (report.message_reason != 0)
        reason += std::string(": ") + nfc_ndef_msg_check_text(report.message_reason);
    return refusal(reason, report.record, report.offset);
}

} // namespace python
