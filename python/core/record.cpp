#include "record.h"

#include "kinds.h"
#include "refused.h"

#include <algorithm>

namespace python {

namespace {

namespace values = nfc_ndef::values;

PyTypeObject *record_type = nullptr;
const EnumClass *formats = nullptr, *flag_names = nullptr;

constexpr values::Name header_flags[] = {{NFC_NDEF_FLAG_MB, "mb"},
                                         {NFC_NDEF_FLAG_ME, "me"},
                                         {NFC_NDEF_FLAG_CF, "cf"},
                                         {NFC_NDEF_FLAG_SR, "sr"},
                                         {NFC_NDEF_FLAG_IL, "il"}};

// The payload in one piece, which is joined in `space` where it came in chunks.
std::string_view payload_of(const nfc_ndef_record_view &view, std::string &space)
{
    if (view.chunks.length == 0)
        return text_of(view.payload);
    space.resize(view.payload_length);
    nfc_ndef_record_view_join(&view, reinterpret_cast<uint8_t *>(space.data()), view.payload_length);
    return space;
}

bool same(const nfc_ndef_record_view &one, const nfc_ndef_record_view &other)
{
    if (one.format != other.format || one.payload_length != other.payload_length ||
        text_of(one.type) != text_of(other.type) || text_of(one.id) != text_of(other.id))
        return false;
    std::string one_space, other_space;
    return payload_of(one, one_space) == payload_of(other, other_space);
}

void destroy(PyObject *object)
{
    RecordObject *const record = record_of(object);
    Py_XDECREF(record->owner);
    Py_XDECREF(record->content);
    Py_XDECREF(record->refused);
    delete record->own;
    free_object(object);
}

// Looks into the payload, once.
void look_inside(RecordObject *record)
{
    if (record->content)
        return;
    nfc_ndef_payload_report report{};
    py::object content;
    const auto *const unread = record->own ? std::get_if<values::Generic>(&record->own->content) : nullptr;
    if (record->own && (!unread || unread->malformed() || unread->unopened))
        content = content_of(record->own->content, report);
    else {
        nfc_ndef_record_view view = record->view;
        if (record->alone)
            view.flags = NFC_NDEF_FLAG_MB | NFC_NDEF_FLAG_ME;
        content = content_of(view, report);
    }
    py::object refused;
    if (!content && report.reason != NFC_NDEF_PAYLOAD_VALID)
        refused = refusal_of(report);
    if (record->content) // another thread was as quick
        return;
    record->content = content ? content.release().ptr() : new_reference(Py_None);
    record->refused = refused ? refused.release().ptr() : nullptr;
}

PyObject *get_content(PyObject *object, void *)
{
    return guarded([&] {
        look_inside(record_of(object));
        return new_reference(record_of(object)->content);
    });
}
PyObject *get_refused(PyObject *object, void *)
{
    return guarded([&] {
        look_inside(record_of(object));
        PyObject *const refused = record_of(object)->refused;
        return new_reference(refused ? refused : Py_None);
    });
}
PyObject *get_type(PyObject *object, void *)
{
    return guarded([&] { return text_from(text_of(record_of(object)->view.type)).release().ptr(); });
}
PyObject *get_id(PyObject *object, void *)
{
    return guarded([&] { return text_from(text_of(record_of(object)->view.id)).release().ptr(); });
}
py::object payload_object(const nfc_ndef_record_view &view)
{
    if (view.chunks.length == 0)
        return bytes_object(text_of(view.payload));
    py::object bytes = owned(PyBytes_FromStringAndSize(nullptr, static_cast<Py_ssize_t>(view.payload_length)));
    nfc_ndef_record_view_join(&view, reinterpret_cast<uint8_t *>(PyBytes_AS_STRING(bytes.ptr())), view.payload_length);
    return bytes;
}
PyObject *get_payload(PyObject *object, void *)
{
    return guarded([&] { return payload_object(record_of(object)->view).release().ptr(); });
}
PyObject *get_format(PyObject *object, void *)
{
    return guarded([&] { return formats->member(record_of(object)->view.format).release().ptr(); });
}
PyObject *get_flags(PyObject *object, void *)
{
    return guarded([&] { return flag_names->member(record_of(object)->view.flags).release().ptr(); });
}

PyObject *compare(PyObject *one, PyObject *other, int operation)
{
    if (Py_TYPE(one) != record_type || Py_TYPE(other) != record_type || (operation != Py_EQ && operation != Py_NE))
        Py_RETURN_NOTIMPLEMENTED;
    return guarded(
        [&] { return PyBool_FromLong(same(record_of(one)->view, record_of(other)->view) == (operation == Py_EQ)); });
}

py::tuple fields_of(PyObject *object)
{
    const nfc_ndef_record_view &view = record_of(object)->view;
    return py::make_tuple(view.format, bytes_object(text_of(view.type)), bytes_object(text_of(view.id)),
                          payload_object(view));
}

Py_hash_t hash(PyObject *object)
{
    return guarded([&] { return py::hash(fields_of(object)); }, -1);
}

// The type name format that a type stands for, and its name.
uint32_t format_meant(std::string &type, bool has_payload)
{
    constexpr std::string_view well_known = "urn:nfc:wkt:", external = "urn:nfc:ext:";
    const auto without = [&](std::string_view prefix) {
        const bool begins = type.starts_with(prefix);
        type.erase(0, begins ? prefix.size() : 0);
        return begins;
    };
    if (type.empty())
        return has_payload ? NFC_NDEF_TNF_UNKNOWN : NFC_NDEF_TNF_EMPTY;
    if (without(well_known))
        return NFC_NDEF_TNF_WELL_KNOWN;
    if (without(external))
        return NFC_NDEF_TNF_EXTERNAL;
    if (type.find("://") != std::string::npos)
        return NFC_NDEF_TNF_ABSOLUTE_URI;
    if (type.find('/') != std::string::npos)
        return NFC_NDEF_TNF_MIME;
    return type.find(':') != std::string::npos ? NFC_NDEF_TNF_EXTERNAL : NFC_NDEF_TNF_WELL_KNOWN;
}

// Whether a record of this content would be the same one.
bool is_made_by(const nfc_ndef_record_view &view, PyObject *content)
{
    try {
        const nfc_ndef::Record made = record_made_of(content);
        nfc_ndef_record_view other = nfc_ndef_record_view_of(made.get());
        other.id = view.id;
        return same(view, other);
    } catch (py::error_already_set &error) {
        if (!error.matches(PyExc_ValueError))
            throw;
        return false;
    }
}

PyObject *represent(PyObject *object)
{
    return guarded([&] {
        const RecordObject *const record = record_of(object);
        look_inside(record_of(object));
        const auto shown = [](const py::object &value) { return py::repr(value).cast<std::string>(); };
        std::string text;
        if (record->content != Py_None && is_made_by(record->view, record->content))
            text = shown(borrowed(record->content));
        else {
            std::string type(text_of(record->view.type)), meant = type;
            const bool says_format =
                format_meant(meant, record->view.payload_length != 0) != record->view.format || meant != type;
            text = says_format ? "format=" + shown(formats->member(record->view.format)) : "";
            const auto add = [&](const char *name, const py::object &value) {
                if (py::len(value) != 0)
                    text.append(text.empty() ? "" : ", ").append(name).append("=").append(shown(value));
            };
            add("type", text_from(type));
            add("payload", payload_object(record->view));
        }
        if (record->view.id.length != 0)
            text.append(text.empty() ? "" : ", ").append("id=").append(shown(text_from(text_of(record->view.id))));
        return py::str("Record(" + text + ")").release().ptr();
    });
}

PyObject *heading(PyObject *object)
{
    return guarded([&] {
        nfc_ndef_record_view view = record_of(object)->view;
        if (record_of(object)->alone)
            view.flags = NFC_NDEF_FLAG_MB | NFC_NDEF_FLAG_ME;
        return py::str(values::heading_of(values::decode(view))).release().ptr();
    });
}

PyObject *reduce(PyObject *object, PyObject *)
{
    return guarded([&] {
        const py::object restore = py::module_::import("nfc_ndef._core").attr("_record");
        return py::make_tuple(restore, py::tuple(fields_of(object) + py::make_tuple(record_of(object)->view.flags)))
            .release()
            .ptr();
    });
}

std::string text_or_bytes(PyObject *given, const char *name)
{
    if (PyUnicode_Check(given))
        return bytes_from(given);
    if (!PyBytes_Check(given))
        throw py::type_error(std::string("Record.") + name + " must be a str or bytes");
    return std::string(borrowed(given).cast<std::string_view>());
}

void check(bool possible, const std::string &reason)
{
    if (!possible)
        throw py::value_error(reason);
}

uint32_t number_from(PyObject *given, const char *name, uint32_t most)
{
    if (!PyLong_Check(given))
        throw py::type_error(std::string("Record.") + name + " must be an int");
    int overflow = 0;
    const long number = PyLong_AsLongAndOverflow(given, &overflow);
    check(overflow == 0 && number >= 0 && number <= static_cast<long>(most),
          std::string("Record.") + name + " must be 0 to " + std::to_string(most));
    return static_cast<uint32_t>(number);
}

struct Given {
    PyObject *content = Py_None, *type = Py_None, *format = Py_None, *payload = Py_None, *id = Py_None,
             *flags = Py_None;
};

values::Record generic_of(const Given &given)
{
    std::string type = given.type != Py_None ? text_or_bytes(given.type, "type") : "";
    values::Record record;
    if (given.payload != Py_None) {
        if (PyUnicode_Check(given.payload) || PyObject_CheckBuffer(given.payload) == 0)
            throw py::type_error("Record.payload must be bytes");
        const py::object payload = owned(PyBytes_FromObject(given.payload));
        const auto bytes = payload.cast<std::string_view>();
        record.payload = values::bytes_of(bytes);
    }
    record.format = given.format != Py_None ? number_from(given.format, "format", NFC_NDEF_TNF_RESERVED)
                                            : format_meant(type, !record.payload.empty());
    const bool empty = record.format == NFC_NDEF_TNF_EMPTY;
    check(type.empty() || (!empty && record.format != NFC_NDEF_TNF_UNKNOWN && record.format != NFC_NDEF_TNF_RESERVED),
          "Record.type is not for this format");
    check(!empty || record.payload.empty(), "Record.payload is not for an empty record");
    check(type.size() <= UINT8_MAX, "Record.type must be at most 255 bytes");
    check(record.payload.size() <= INT32_MAX, "Record.payload must be at most 2147483647 bytes");
    record.type = values::bytes_of(type);
    return record;
}

py::object record_given(const Given &given)
{
    const uint32_t flags = given.flags != Py_None ? number_from(given.flags, "flags", UINT8_MAX) : 0;
    values::Record record;
    py::object content;
    if (given.content == Py_None)
        record = generic_of(given);
    else {
        if (given.type != Py_None || given.format != Py_None || given.payload != Py_None)
            throw py::type_error("Record: type, format and payload are those of the content");
        const py::object of_content = record_from(given.content);
        record = values_of(record_of(of_content.ptr())->view);
        if (!is_record(given.content))
            content = borrowed(given.content);
    }
    if (given.id != Py_None)
        record.id = values::bytes_of(text_or_bytes(given.id, "id"));
    check(record.id.size() <= UINT8_MAX, "Record.id must be at most 255 bytes");
    check(record.format != NFC_NDEF_TNF_EMPTY || record.id.empty(), "Record.id is not for an empty record");
    py::object made = new_record(std::move(record), static_cast<uint8_t>(flags));
    record_of(made.ptr())->content = content.release().ptr();
    return made;
}

PyObject *create(PyTypeObject *, PyObject *arguments, PyObject *keywords)
{
    return guarded([&] {
        static const char *const names[] = {"content", "type", "format", "payload", "id", "flags", nullptr};
        Given given;
        if (PyArg_ParseTupleAndKeywords(arguments, keywords, "|O$OOOOO:Record", const_cast<char **>(names),
                                        &given.content, &given.type, &given.format, &given.payload, &given.id,
                                        &given.flags) == 0)
            throw py::error_already_set();
        return record_given(given).release().ptr();
    });
}

PyGetSetDef attributes[] = {
    {"format", get_format, nullptr, "What kind of name the type is, the TNF field.", nullptr},
    {"type", get_type, nullptr, "The type name.", nullptr},
    {"id", get_id, nullptr, "The id; empty for none.", nullptr},
    {"payload", get_payload, nullptr, "The payload, chunks joined.", nullptr},
    {"content", get_content, nullptr, "What the payload reads as; None when its type is not known, or it is refused.",
     nullptr},
    {"refused", get_refused, nullptr, "Why the payload of a known type cannot be read, as a Refused; else None.",
     nullptr},
    {"flags", get_flags, nullptr, "The flags of its header, as it was read.", nullptr},
    {},
};

PyMethodDef methods[] = {{"__reduce__", reduce, METH_NOARGS, nullptr}, {}};

constexpr char doc[] = R"(Record(content=None, *, type=None, format=None, payload=None, id=None, flags=None)
--

One record: made of a content, or of a type and a payload. Where no format is given, the type says it: "text/vcard" is
a media type, "example.com:x" an external one, "https://example.com/x" an absolute URI, and "T" a well-known one.

>>> record = nfc_ndef.Record(nfc_ndef.Uri("https://example.com"), id="1")
>>> record.type, record.id, record.payload
('U', '1', b'\x04example.com')
>>> record.content.uri
'https://example.com'
>>> nfc_ndef.Record(type="text/vcard", payload=b"BEGIN:VCARD")
Record(type='text/vcard', payload=b'BEGIN:VCARD')
)";

} // namespace

void create_record_type(py::module_ &module)
{
    formats = &enum_class("", "ctf", values::Names(values::type_name_formats), false);
    flag_names = &enum_class("", "record_flags", values::Names(header_flags), true);
    PyType_Slot slots[] = {slot(Py_tp_new, create),
                           slot(Py_tp_dealloc, destroy),
                           slot(Py_tp_richcompare, compare),
                           slot(Py_tp_hash, hash),
                           slot(Py_tp_repr, represent),
                           slot(Py_tp_str, heading),
                           {Py_tp_getset, attributes},
                           {Py_tp_methods, methods},
                           {Py_tp_doc, const_cast<char *>(doc)},
                           {0, nullptr}};
    PyType_Spec description{"nfc_ndef.Record", sizeof(RecordObject), 0, Py_TPFLAGS_DEFAULT, slots};
    py::object made = owned(PyType_FromSpec(&description));
    record_type = reinterpret_cast<PyTypeObject *>(made.ptr());
    made.attr("__match_args__") = py::make_tuple("content");
    module.add_object("Record", made);
    made.release(); // for as long as the process
}

py::object record_restored(PyObject *fields)
{
    unsigned format = 0, flags = 0;
    PyObject *type = nullptr, *id = nullptr, *payload = nullptr;
    if (PyArg_ParseTuple(fields, "ISSSI:_record", &format, &type, &id, &payload, &flags) == 0)
        throw py::error_already_set();
    const auto bytes = [](PyObject *object) { return values::bytes_of(borrowed(object).cast<std::string_view>()); };
    values::Record record{format, bytes(type), bytes(id), bytes(payload), {}};
    check(format <= NFC_NDEF_TNF_RESERVED && flags <= UINT8_MAX && record.type.size() <= UINT8_MAX &&
              record.id.size() <= UINT8_MAX && record.payload.size() <= INT32_MAX,
          "not the fields of a record");
    return new_record(std::move(record), static_cast<uint8_t>(flags));
}

bool is_record(PyObject *object) { return Py_TYPE(object) == record_type; }

py::object new_record(PyObject *owner)
{
    py::object made = owned(record_type->tp_alloc(record_type, 0));
    record_of(made.ptr())->owner = new_reference(owner);
    return made;
}

py::object new_record(values::Record record, uint8_t flags)
{
    py::object made = owned(record_type->tp_alloc(record_type, 0));
    RecordObject *const object = record_of(made.ptr());
    object->own = new values::Record(std::move(record));
    const auto bytes = [](const values::Bytes &own) { return nfc_ndef_bytes{own.data(), own.size()}; };
    object->view.format = static_cast<uint8_t>(object->own->format);
    object->view.flags = flags;
    object->view.type = bytes(object->own->type);
    object->view.id = bytes(object->own->id);
    object->view.payload = bytes(object->own->payload);
    object->view.payload_length = static_cast<uint32_t>(object->own->payload.size());
    object->alone = true;
    return made;
}

py::object record_from(PyObject *record_or_content)
{
    if (is_record(record_or_content))
        return borrowed(record_or_content);
    if (!is_content(record_or_content))
        throw py::type_error("a Record, or a value such as Text that one is made of, is needed, not " +
                             std::string(Py_TYPE(record_or_content)->tp_name));
    const nfc_ndef::Record made = record_made_of(record_or_content);
    return new_record(values_of(nfc_ndef_record_view_of(made.get())));
}

values::Record values_of(const nfc_ndef_record_view &view)
{
    std::string space;
    return {view.format,
            values::bytes_of(text_of(view.type)),
            values::bytes_of(text_of(view.id)),
            values::bytes_of(payload_of(view, space)),
            {}};
}

} // namespace python
