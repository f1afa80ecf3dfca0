// Between Python's C interface, which returns null for an error, and C++, which throws.
#pragma once

#include <nfc_ndef/json.h>

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <new>

namespace python {

namespace py = pybind11;

// Takes over a new reference; throws the error that Python set where there is none.
inline py::object owned(PyObject *object)
{
    if (!object)
        throw py::error_already_set();
    return py::reinterpret_steal<py::object>(object);
}

inline py::object borrowed(PyObject *object) { return py::reinterpret_borrow<py::object>(object); }

inline PyObject *new_reference(PyObject *object)
{
    Py_INCREF(object);
    return object;
}

// What the types of this module have in common, which are made from slots.
template <class Function> PyType_Slot slot(int number, Function *function)
{
    return {number, reinterpret_cast<void *>(function)};
}

// Ends a destructor: an object of such a type keeps the type.
inline void free_object(PyObject *object)
{
    PyTypeObject *const type = Py_TYPE(object);
    type->tp_free(object);
    Py_DECREF(type);
}

// Raises an error with attributes beside its text.
[[noreturn]] void raise(PyObject *type, const std::string &text,
                        std::initializer_list<std::pair<const char *, py::object>> attributes);

extern PyObject *json_error; // nfc_ndef.JsonError

// Calls, and turns what is thrown into the error that Python sets and the value that tells of one.
template <class Call, class Failed = PyObject *> auto guarded(Call call, Failed failed = nullptr) -> decltype(call())
{
    try {
        try {
            return call();
        } catch (const nfc_ndef::values::JsonError &error) {
            raise(json_error, error.path + ": " + error.what(), {{"path", py::str(error.path)}});
        }
    } catch (py::error_already_set &error) {
        error.restore();
    } catch (const py::builtin_exception &error) {
        error.set_error();
    } catch (const std::bad_alloc &) {
        PyErr_NoMemory();
    } catch (const std::length_error &) {
        PyErr_NoMemory();
    }
    return static_cast<decltype(call())>(failed);
}

} // namespace python
