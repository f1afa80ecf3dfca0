#include "kinds.h"

#include "shape.h"

#include <nfc_ndef/content.h>

#include <array>
#include <cerrno>

namespace python {

namespace {

using nfc_ndef::values::AllKinds;
using nfc_ndef::values::Generic;
using nfc_ndef::values::Kind;
using nfc_ndef::values::Nesting;

struct Ops {
    const ValueClass *type = nullptr;
    py::object (*read)(const nfc_ndef_record_view &, nfc_ndef_payload_report &) = nullptr;
    nfc_ndef::Record (*make)(PyObject *) = nullptr;
};

template <class T> ValueClass &class_for()
{
    static ValueClass &type = *new ValueClass; // never destroyed: Python ends first
    return type;
}

constexpr auto map_of = []<class T>(std::type_identity<T>) {
    return [](auto &fields, auto &value) { Kind<T>::map(fields, value); };
};

template <class T> py::object value_of(T &content)
{
    py::object made = new_value(class_for<T>());
    ToPython fields(class_for<T>(), slots_of(made.ptr()));
    Kind<T>::map(fields, content);
    return made;
}

template <class T> py::object read(const nfc_ndef_record_view &record, nfc_ndef_payload_report &report)
{
    const Nesting nesting;
    nesting.enter();
    std::optional<T> content = Kind<T>::read(record, nesting, report);
    return content ? value_of(*content) : py::object();
}

template <class T> nfc_ndef::Record make(PyObject *value)
{
    T content{};
    FromPython fields(class_for<T>(), slots_of(value));
    Kind<T>::map(fields, content);
    errno = 0; // which the heap sets when there is no memory
    nfc_ndef::Record record = Kind<T>::make(content);
    if (!record && errno == ENOMEM)
        throw std::bad_alloc();
    // Each member may be right, and the payload yet have more nested records than any reader takes.
    nfc_ndef_payload_report report{};
    nfc_ndef_record_view alone = nfc_ndef_record_view_of(record.get());
    alone.flags = NFC_NDEF_FLAG_MB | NFC_NDEF_FLAG_ME;
    if (!record || !Kind<T>::read(alone, Nesting(), report))
        class_for<T>().refuse(PyExc_ValueError, "", record ? "makes a record that nobody can read" : "makes no record");
    return record;
}

// By the number that the library gives a type.
std::array<Ops, UINT8_MAX + 1> kinds;

template <class T> uint32_t number_of()
{
    nfc_ndef_record_view record{};
    const nfc_ndef::values::Type &type = Kind<T>::type;
    record.format = static_cast<uint8_t>(type.format);
    record.type = {reinterpret_cast<const uint8_t *>(type.name.data()), type.name.size()};
    return nfc_ndef_record_view_kind(&record);
}

const Ops *ops_of(const PyTypeObject *type)
{
    const auto found =
        std::ranges::find_if(kinds, [&](const Ops &kind) { return kind.type && kind.type->type == type; });
    return found == kinds.end() ? nullptr : &*found;
}

} // namespace

void create_kinds(py::module_ &module)
{
    AllKinds::each([&]<class T>(std::type_identity<T>) {
        ValueClass &type = class_for<T>();
        type.name = type_name<T>();
        type.title = std::string(Kind<T>::title) + " record, as its payload reads";
        type.title[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(type.title[0])));
        Shape shape(type, module);
        T fresh{};
        Kind<T>::map(shape, fresh);
        shape.end(Kind<T>::json);
        type.make = [](PyObject *const *slots) {
            return normalised<T>(class_for<T>(), slots, map_of(std::type_identity<T>()));
        };
        create_type(type, module);
        kinds.at(number_of<T>()) = {&type, read<T>, make<T>};
    });
}

py::object content_of(const nfc_ndef_record_view &record, nfc_ndef_payload_report &report)
{
    const Ops &kind = kinds.at(nfc_ndef_record_view_kind(&record));
    if (!kind.read)
        return {};
    if (record.chunks.length == 0)
        return kind.read(record, report);
    const nfc_ndef::values::Record joined = values_of(record);
    nfc_ndef_record_view whole = record;
    whole.payload = {joined.payload.data(), joined.payload.size()};
    whole.chunks = {};
    return kind.read(whole, report);
}

py::object content_of(nfc_ndef::values::Content &content, nfc_ndef_payload_report &report)
{
    return std::visit(
        [&]<class T>(T &value) -> py::object {
            if constexpr (std::is_same_v<T, Generic>) {
                report = value.refused;
                return {};
            } else
                return value_of(value);
        },
        content);
}

bool is_content(PyObject *object) { return ops_of(Py_TYPE(object)) != nullptr; }
bool is_content_class(const ValueClass &type) { return ops_of(type.type) != nullptr; }

nfc_ndef::Record record_made_of(PyObject *content) { return ops_of(Py_TYPE(content))->make(content); }

} // namespace python
