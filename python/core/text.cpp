#include "record.h"

#include <string>

namespace python {

namespace {

constexpr Py_UCS4 first_escape = 0xDC00, last_escape = 0xDCFF, first_surrogate = 0xD800, last_surrogate = 0xDFFF;

void append_utf8(std::string &bytes, Py_UCS4 character)
{
    const auto add = [&](Py_UCS4 byte) { bytes += static_cast<char>(byte); };
    const auto add_rest = [&](int shift) { add(0x80 | (character >> shift & 0x3F)); };
    if (character < 0x80)
        return add(character);
    if (character < 0x800)
        add(0xC0 | character >> 6);
    else if (character < 0x10000) {
        add(0xE0 | character >> 12);
        add_rest(6);
    } else {
        add(0xF0 | character >> 18);
        add_rest(12);
        add_rest(6);
    }
    add_rest(0);
}

} // namespace

py::object text_from(std::string_view bytes)
{
    return owned(PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "surrogateescape"));
}

std::string bytes_from(PyObject *text)
{
    Py_ssize_t length = 0;
    if (const char *const utf8 = PyUnicode_AsUTF8AndSize(text, &length))
        return {utf8, static_cast<size_t>(length)};
    if (PyErr_ExceptionMatches(PyExc_UnicodeEncodeError) == 0)
        throw py::error_already_set();
    PyErr_Clear();
    std::string bytes;
    for (Py_ssize_t i = 0; i < PyUnicode_GET_LENGTH(text); ++i) {
        const Py_UCS4 character = PyUnicode_READ_CHAR(text, i);
        if (character >= first_escape && character <= last_escape)
            bytes += static_cast<char>(character - first_escape);
        else if (character >= first_surrogate && character <= last_surrogate)
            throw py::value_error("a str must not hold half a surrogate pair");
        else
            append_utf8(bytes, character);
    }
    return bytes;
}

py::object bytes_object(std::string_view bytes)
{
    return owned(PyBytes_FromStringAndSize(bytes.data(), static_cast<Py_ssize_t>(bytes.size())));
}

} // namespace python
