// Classes of values in Python: frozen, with a slot for each member, made from what map() of a type names.
#pragma once

#include "guard.h"

#include <nfc_ndef/names.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace python {

// An enum.IntEnum or enum.IntFlag that keeps numbers without a name.
struct EnumClass {
    std::string name;
    bool is_flags;
    std::vector<nfc_ndef::values::Name> names;
    std::vector<py::object> members; // of the same order
    py::object type;

    py::object member(uint32_t value) const;
};

// Finds or makes the class for the numbers of a member.
const EnumClass &enum_class(const std::string &owner, std::string_view member, nfc_ndef::values::Names names,
                            bool is_flags);
const std::vector<std::unique_ptr<EnumClass>> &enum_classes();

struct ValueClass;

struct Field {
    std::string name;
    std::string annotation; // as in a stub
    py::object initial;     // null where it has to be given
    const EnumClass *enumeration = nullptr;
    std::shared_ptr<ValueClass> nested = nullptr;
};

struct ValueClass {
    static constexpr size_t none = SIZE_MAX;

    std::string name, title;
    std::vector<Field> fields;
    size_t positional = none; // the one member that is given without its name
    PyTypeObject *type = nullptr;
    std::string qualified_name{}; // of that
    // A new value of what is in the slots. Throws TypeError and ValueError.
    std::function<py::object(PyObject *const *slots)> make;

    size_t index_of(std::string_view field) const;
    [[noreturn]] void refuse(PyObject *error, std::string_view field, const std::string &reason) const;
};

// The layout of a value; as many slots as its class has fields.
struct ValueObject {
    PyObject_HEAD PyObject *slots[1];
};
inline PyObject **slots_of(PyObject *value) { return reinterpret_cast<ValueObject *>(value)->slots; }

// Makes the Python type of a class whose fields are known, and puts it into the module.
void create_type(ValueClass &type, py::module_ &module);

// A value whose slots are still empty.
py::object new_value(const ValueClass &type);

// The class of a value, or null of any other object.
const ValueClass *class_of(PyObject *object);
const std::vector<const ValueClass *> &value_classes();

// How Python writes a name: "rsassa-pss-1024" as RSASSA_PSS_1024, "byte_order_mark" as ByteOrderMark.
std::string constant_case(std::string_view name);
std::string camel_case(std::string_view name);

} // namespace python
