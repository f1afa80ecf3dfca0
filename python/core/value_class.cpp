#include "value_class.h"

#include "naming.h"

#include <structmember.h>

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace python {

namespace {

// Never destroyed: Python ends before the static objects of its modules do.
auto &enums_made = *new std::vector<std::unique_ptr<EnumClass>>;
auto &classes_made = *new std::vector<const ValueClass *>;

bool same(const EnumClass &one, nfc_ndef::values::Names names)
{
    return std::ranges::equal(one.names, names,
                              [](const auto &a, const auto &b) { return a.value == b.value && a.name == b.name; });
}

size_t count_of(const ValueClass &type) { return type.fields.size(); }

py::object with(const ValueClass &type, std::vector<PyObject *> slots, PyObject *keywords)
{
    PyObject *key = nullptr, *value = nullptr;
    for (Py_ssize_t place = 0; keywords && PyDict_Next(keywords, &place, &key, &value) != 0;) {
        const auto name = borrowed(key).cast<std::string>();
        const size_t index = type.index_of(name);
        if (index == ValueClass::none)
            throw py::type_error(type.name + "() has no member '" + name + "'");
        if (index == type.positional && slots[index] && slots[index] != type.fields[index].initial.ptr())
            throw py::type_error(type.name + "() got two values for '" + name + "'");
        slots[index] = value;
    }
    for (size_t i = 0; i < slots.size(); ++i)
        if (!slots[i])
            throw py::type_error(type.name + "() needs '" + type.fields[i].name + "'");
    return type.make(slots.data());
}

std::vector<PyObject *> initial_slots(const ValueClass &type)
{
    std::vector<PyObject *> slots;
    for (const Field &field : type.fields)
        slots.push_back(field.initial.ptr());
    return slots;
}

const ValueClass &class_of_type(const PyTypeObject *type)
{
    return **std::ranges::find(classes_made, type, &ValueClass::type);
}

PyObject *create(PyTypeObject *python_type, PyObject *arguments, PyObject *keywords)
{
    return guarded([&] {
        const ValueClass &type = class_of_type(python_type);
        std::vector<PyObject *> slots = initial_slots(type);
        const Py_ssize_t given = PyTuple_GET_SIZE(arguments);
        const bool takes_one = type.positional != ValueClass::none;
        if (given > (takes_one ? 1 : 0))
            throw py::type_error(type.name + (takes_one ? "() takes one member without its name, '" +
                                                              type.fields[type.positional].name + "'"
                                                        : std::string("() takes members by their names")));
        if (given == 1)
            slots[type.positional] = PyTuple_GET_ITEM(arguments, 0);
        return with(type, slots, keywords).release().ptr();
    });
}

void destroy(PyObject *value)
{
    const size_t count = count_of(class_of_type(Py_TYPE(value)));
    for (size_t i = 0; i < count; ++i)
        Py_XDECREF(slots_of(value)[i]);
    free_object(value);
}

bool equal(PyObject *a, PyObject *b)
{
    const int result = PyObject_RichCompareBool(a, b, Py_EQ);
    if (result < 0)
        throw py::error_already_set();
    return result != 0;
}

bool all_equal(const ValueClass &type, PyObject *one, PyObject *other)
{
    for (size_t i = 0; i < count_of(type); ++i)
        if (!equal(slots_of(one)[i], slots_of(other)[i]))
            return false;
    return true;
}

PyObject *compare(PyObject *one, PyObject *other, int operation)
{
    if (Py_TYPE(one) != Py_TYPE(other) || (operation != Py_EQ && operation != Py_NE))
        Py_RETURN_NOTIMPLEMENTED;
    return guarded([&] { return PyBool_FromLong(all_equal(*class_of(one), one, other) == (operation == Py_EQ)); });
}

py::tuple tuple_of(PyObject *value)
{
    const size_t count = count_of(*class_of(value));
    py::tuple tuple(count);
    for (size_t i = 0; i < count; ++i)
        tuple[i] = borrowed(slots_of(value)[i]);
    return tuple;
}

Py_hash_t hash(PyObject *value)
{
    return guarded([&] { return py::hash(py::make_tuple(class_of(value)->name, tuple_of(value))); }, -1);
}

// Whether a value without this member, which is optional, is the same one.
bool follows_from_the_rest(const ValueClass &type, PyObject *value, size_t index)
{
    std::vector<PyObject *> slots(slots_of(value), slots_of(value) + count_of(type));
    slots[index] = type.fields[index].initial.ptr();
    try {
        return all_equal(type, type.make(slots.data()).ptr(), value);
    } catch (const py::builtin_exception &) { // no such value is made
        return false;
    } catch (const py::error_already_set &error) {
        if (!error.matches(PyExc_ValueError))
            throw;
        return false;
    }
}

// An expression that makes the value.
PyObject *represent(PyObject *value)
{
    return guarded([&] {
        const ValueClass &type = *class_of(value);
        std::string members;
        const auto add = [&](size_t index, bool named) {
            const Field &field = type.fields[index];
            PyObject *const slot = slots_of(value)[index];
            const bool left_out =
                field.initial && (equal(slot, field.initial.ptr()) ||
                                  (field.initial.is_none() && follows_from_the_rest(type, value, index)));
            if (!left_out)
                members.append(members.empty() ? "" : ", ")
                    .append(named ? field.name + "=" : "")
                    .append(py::repr(slot).cast<std::string>());
        };
        if (type.positional != ValueClass::none)
            add(type.positional, false);
        for (size_t i = 0; i < count_of(type); ++i)
            if (i != type.positional)
                add(i, true);
        return py::str(type.name + "(" + members + ")").release().ptr();
    });
}

// What was read need not be what can be made, so that a pickled value comes back slot by slot.
PyObject *reduce(PyObject *value, PyObject *)
{
    return guarded([&] {
        const py::object restore = py::module_::import("nfc_ndef._core").attr("_restore");
        return py::make_tuple(restore,
                              py::make_tuple(borrowed(reinterpret_cast<PyObject *>(Py_TYPE(value))), tuple_of(value)))
            .release()
            .ptr();
    });
}

PyObject *replace(PyObject *value, PyObject *arguments, PyObject *keywords)
{
    return guarded([&] {
        const ValueClass &type = *class_of(value);
        if (PyTuple_GET_SIZE(arguments) != 0)
            throw py::type_error("replace() takes members by their names");
        std::vector<PyObject *> slots(slots_of(value), slots_of(value) + count_of(type));
        // What follows from other members is found anew.
        for (size_t i = 0; i < slots.size(); ++i)
            if (type.fields[i].initial && type.fields[i].initial.is_none() && follows_from_the_rest(type, value, i))
                slots[i] = Py_None;
        if (type.positional != ValueClass::none && keywords &&
            PyDict_GetItemString(keywords, type.fields[type.positional].name.c_str()))
            slots[type.positional] = nullptr;
        return with(type, slots, keywords).release().ptr();
    });
}

PyCFunction method(PyCFunctionWithKeywords function)
{
    return reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(function));
}

PyMethodDef methods[] = {
    {"__reduce__", reduce, METH_NOARGS, nullptr},
    {"__replace__", method(replace), METH_VARARGS | METH_KEYWORDS, nullptr},
    {"replace", method(replace), METH_VARARGS | METH_KEYWORDS,
     "replace($self, /, **members)\n--\n\nThe same value with other members."},
    {nullptr, nullptr, 0, nullptr},
};

std::string signature_of(const ValueClass &type)
{
    std::string text;
    const auto add = [&](size_t index) {
        const Field &field = type.fields[index];
        text.append(", ").append(field.name);
        if (field.initial)
            text.append("=").append(py::repr(field.initial).cast<std::string>());
    };
    if (type.positional != ValueClass::none)
        add(type.positional);
    text.append(", *");
    for (size_t i = 0; i < count_of(type); ++i)
        if (i != type.positional)
            add(i);
    if (text.ends_with(", *"))
        text.resize(text.size() - 3);
    return text.substr(std::min<size_t>(2, text.size()));
}

} // namespace

py::object EnumClass::member(uint32_t value) const
{
    for (size_t i = 0; i < names.size(); ++i)
        if (names[i].value == value)
            return members[i];
    return type(value);
}

const EnumClass &enum_class(const std::string &owner, std::string_view member, nfc_ndef::values::Names names,
                            bool is_flags)
{
    std::string name(renamed(member, renamed_enums));
    if (name == member)
        name = camel_case(member);
    for (const auto &made : enums_made) {
        if (made->name != name)
            continue;
        if (same(*made, names))
            return *made;
        name = owner + name;
    }
    auto made = std::make_unique<EnumClass>(EnumClass{name, is_flags, {names.begin(), names.end()}, {}, {}});
    py::dict members;
    for (const auto &entry : made->names)
        members[py::str(constant_case(entry.name))] = entry.value;
    const py::module_ bases = py::module_::import("nfc_ndef._open_enum");
    made->type = bases.attr(is_flags ? "OpenFlag" : "OpenEnum")(name, members, py::arg("module") = "nfc_ndef");
    for (const auto &entry : made->names)
        made->members.push_back(made->type(entry.value));
    enums_made.push_back(std::move(made));
    return *enums_made.back();
}

const std::vector<std::unique_ptr<EnumClass>> &enum_classes() { return enums_made; }

size_t ValueClass::index_of(std::string_view field) const
{
    const auto found = std::ranges::find(fields, renamed(field, renamed_members), &Field::name);
    return found == fields.end() ? none : static_cast<size_t>(found - fields.begin());
}

void ValueClass::refuse(PyObject *error, std::string_view field, const std::string &reason) const
{
    const std::string place = field.empty() ? name : name + "." + std::string(renamed(field, renamed_members));
    PyErr_SetString(error, (place + " " + reason).c_str());
    throw py::error_already_set();
}

void create_type(ValueClass &type, py::module_ &module)
{
    std::vector<PyMemberDef> slots_of_type;
    for (size_t i = 0; i < count_of(type); ++i)
        slots_of_type.push_back({type.fields[i].name.c_str(), T_OBJECT_EX,
                                 static_cast<Py_ssize_t>(offsetof(ValueObject, slots) + i * sizeof(PyObject *)),
                                 READONLY, nullptr});
    slots_of_type.push_back({});
    const std::string doc = type.name + "(" + signature_of(type) + ")\n--\n\n" + type.title + ".";
    PyType_Slot slots[] = {slot(Py_tp_new, create),
                           slot(Py_tp_dealloc, destroy),
                           slot(Py_tp_richcompare, compare),
                           slot(Py_tp_hash, hash),
                           slot(Py_tp_repr, represent),
                           {Py_tp_methods, methods},
                           {Py_tp_members, slots_of_type.data()},
                           {Py_tp_doc, const_cast<char *>(doc.c_str())},
                           {0, nullptr}};
    type.qualified_name = "nfc_ndef." + type.name;
    const size_t size = offsetof(ValueObject, slots) + count_of(type) * sizeof(PyObject *);
    PyType_Spec description{type.qualified_name.c_str(), static_cast<int>(size), 0, Py_TPFLAGS_DEFAULT, slots};
    py::object made = owned(PyType_FromSpec(&description));
    if (type.positional != ValueClass::none)
        made.attr("__match_args__") = py::make_tuple(type.fields[type.positional].name);
    type.type = reinterpret_cast<PyTypeObject *>(made.ptr());
    classes_made.push_back(&type);
    module.add_object(type.name.c_str(), made);
    made.release(); // for as long as the process
}

py::object new_value(const ValueClass &type) { return owned(type.type->tp_alloc(type.type, 0)); }

const ValueClass *class_of(PyObject *object)
{
    const auto found = std::ranges::find(classes_made, Py_TYPE(object), &ValueClass::type);
    return found == classes_made.end() ? nullptr : *found;
}

const std::vector<const ValueClass *> &value_classes() { return classes_made; }

std::string constant_case(std::string_view name)
{
    std::string text = name.empty() || std::isdigit(static_cast<unsigned char>(name[0])) == 0 ? "" : "_";
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        text += std::isalnum(byte) == 0 ? '_' : static_cast<char>(std::toupper(byte));
    }
    return text;
}

std::string camel_case(std::string_view name)
{
    std::string text;
    bool upper = true;
    for (const char c : name) {
        if (c != '_')
            text += upper ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
        upper = c == '_';
    }
    return text;
}

} // namespace python
