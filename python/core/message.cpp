#include "message.h"

#include "record.h"
#include "refused.h"

#include <nfc_ndef/json.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace python {

namespace {

namespace values = nfc_ndef::values;

// The bytes are those of a bytes object, which nobody can change.
struct MessageObject {
    PyObject_HEAD PyObject *owner;
    nfc_ndef_bytes bytes;
    nfc_ndef_msg_view rest; // records that were not made yet
    PyObject **records;     // those that were, of `count`
    Py_ssize_t made, count;
};

PyTypeObject *message_type = nullptr;

MessageObject *message_of(PyObject *object) { return reinterpret_cast<MessageObject *>(object); }

constexpr size_t long_enough_to_let_others_run = size_t{256} * 1024;

// Calls without the interpreter's lock where that is worth it.
template <class Call> void unlocked(size_t bytes, Call call)
{
    if (bytes < long_enough_to_let_others_run)
        return call();
    const py::gil_scoped_release release;
    call();
}

void destroy(PyObject *object)
{
    MessageObject *const message = message_of(object);
    for (Py_ssize_t i = 0; i < message->made; ++i)
        Py_DECREF(message->records[i]);
    PyMem_Free(message->records);
    Py_XDECREF(message->owner);
    free_object(object);
}

// A record of the message, which keeps it. Making one may let another thread in, so that what it made is looked at
// last.
PyObject *record_at(MessageObject *message, Py_ssize_t index)
{
    if (!message->records) {
        auto *const records =
            static_cast<PyObject **>(PyMem_Calloc(static_cast<size_t>(message->count), sizeof(PyObject *)));
        if (!records)
            throw std::bad_alloc();
        message->records = records;
    }
    while (message->made <= index) {
        py::object record = new_record(message->owner);
        if (message->made > index)
            break;
        nfc_ndef_msg_view_next(&message->rest, &record_of(record.ptr())->view);
        record_of(record.ptr())->alone = false;
        message->records[message->made++] = record.release().ptr();
    }
    return message->records[index];
}

PyObject *item(PyObject *object, Py_ssize_t index)
{
    MessageObject *const message = message_of(object);
    if (index < 0 || index >= message->count) {
        PyErr_SetString(PyExc_IndexError, "the message has no such record");
        return nullptr;
    }
    return guarded([&] { return new_reference(record_at(message, index)); });
}

// One of its own, as that of any sequence learns of the end by an error, which costs more than a record.
struct IteratorObject {
    PyObject_HEAD PyObject *message; // null behind the last record
    Py_ssize_t next;
};

PyTypeObject *iterator_type = nullptr;

PyObject *iterate(PyObject *object)
{
    PyObject *const iterator = iterator_type->tp_alloc(iterator_type, 0);
    if (iterator)
        reinterpret_cast<IteratorObject *>(iterator)->message = new_reference(object);
    return iterator;
}

PyObject *next(PyObject *object)
{
    auto *const iterator = reinterpret_cast<IteratorObject *>(object);
    if (iterator->message && iterator->next < message_of(iterator->message)->count)
        return guarded([&] { return new_reference(record_at(message_of(iterator->message), iterator->next++)); });
    Py_CLEAR(iterator->message);
    return nullptr;
}

void destroy_iterator(PyObject *object)
{
    Py_XDECREF(reinterpret_cast<IteratorObject *>(object)->message);
    free_object(object);
}

PyObject *left(PyObject *object, PyObject *)
{
    const auto *const iterator = reinterpret_cast<IteratorObject *>(object);
    return PyLong_FromSsize_t(iterator->message ? message_of(iterator->message)->count - iterator->next : 0);
}

PyMethodDef iterator_methods[] = {{"__length_hint__", left, METH_NOARGS, nullptr}, {}};

Py_ssize_t length(PyObject *object) { return message_of(object)->count; }

PyObject *subscript(PyObject *object, PyObject *key)
{
    return guarded([&]() -> PyObject * {
        MessageObject *const message = message_of(object);
        if (!PySlice_Check(key)) {
            const Py_ssize_t index = PyNumber_AsSsize_t(key, PyExc_IndexError);
            if (index == -1 && PyErr_Occurred())
                throw py::error_already_set();
            return owned(item(object, index < 0 ? index + message->count : index)).release().ptr();
        }
        Py_ssize_t start = 0, stop = 0, step = 0;
        if (PySlice_Unpack(key, &start, &stop, &step) < 0)
            throw py::error_already_set();
        const Py_ssize_t count = PySlice_AdjustIndices(message->count, &start, &stop, step);
        py::tuple records(count);
        for (Py_ssize_t i = 0; i < count; ++i)
            records[static_cast<size_t>(i)] = borrowed(record_at(message, start + i * step));
        return records.release().ptr();
    });
}

py::tuple all_records(PyObject *object)
{
    return py::reinterpret_steal<py::tuple>(owned(PySequence_Tuple(object)).release());
}

PyObject *compare(PyObject *one, PyObject *other, int operation)
{
    if (Py_TYPE(one) != message_type || Py_TYPE(other) != message_type || (operation != Py_EQ && operation != Py_NE))
        Py_RETURN_NOTIMPLEMENTED;
    return guarded([&] { return PyBool_FromLong(all_records(one).equal(all_records(other)) == (operation == Py_EQ)); });
}

Py_hash_t hash(PyObject *object)
{
    return guarded([&] { return py::hash(all_records(object)); }, -1);
}

PyObject *represent(PyObject *object)
{
    return guarded([&] {
        const py::list records(all_records(object));
        return py::str("Message(" + py::repr(records).cast<std::string>() + ")").release().ptr();
    });
}

PyObject *headings(PyObject *object)
{
    return guarded([&] {
        std::string text;
        for (const py::handle record : all_records(object))
            text.append(text.empty() ? "" : "\n").append(py::str(record).cast<std::string>());
        return py::str(text).release().ptr();
    });
}

PyObject *bytes(PyObject *object, PyObject *)
{
    return guarded([&] {
        const MessageObject *const message = message_of(object);
        const bool is_all = static_cast<size_t>(PyBytes_GET_SIZE(message->owner)) == message->bytes.length;
        return (is_all ? borrowed(message->owner) : bytes_object(text_of(message->bytes))).release().ptr();
    });
}

PyObject *reduce(PyObject *object, PyObject *)
{
    return guarded([&] {
        const py::object parse = py::module_::import("nfc_ndef._core").attr("parse");
        return py::make_tuple(parse, py::make_tuple(owned(bytes(object, nullptr)))).release().ptr();
    });
}

PyObject *to_json(PyObject *object, PyObject *)
{
    return guarded([&] {
        const nfc_ndef_bytes all = message_of(object)->bytes;
        std::string text;
        unlocked(all.length, [&] { text = values::to_json(*values::decode(values::ByteView(all.data, all.length))); });
        return py::str(text).release().ptr();
    });
}

PyObject *to_dict(PyObject *object, PyObject *)
{
    return guarded(
        [&] { return py::module_::import("json").attr("loads")(owned(to_json(object, nullptr))).release().ptr(); });
}

PyObject *encode(PyObject *object, PyObject *)
{
    return guarded([&] { return encoded(object).release().ptr(); });
}

PyObject *index_of(PyObject *object, PyObject *record)
{
    return guarded([&] { return owned(PyLong_FromSsize_t(PySequence_Index(object, record))).release().ptr(); });
}
PyObject *count_of(PyObject *object, PyObject *record)
{
    return guarded([&] { return owned(PyLong_FromSsize_t(PySequence_Count(object, record))).release().ptr(); });
}

PyObject *create(PyTypeObject *, PyObject *arguments, PyObject *keywords)
{
    return guarded([&] {
        static const char *const names[] = {"records", nullptr};
        PyObject *records = nullptr;
        if (PyArg_ParseTupleAndKeywords(arguments, keywords, "O:Message", const_cast<char **>(names), &records) == 0)
            throw py::error_already_set();
        return message_in(encoded(records).ptr()).release().ptr();
    });
}

PyMethodDef methods[] = {
    {"__bytes__", bytes, METH_NOARGS, "The bytes that the message was read from."},
    {"__reduce__", reduce, METH_NOARGS, nullptr},
    {"encode", encode, METH_NOARGS, "encode($self, /)\n--\n\nThe bytes of the message, none of its records in chunks."},
    {"to_json", to_json, METH_NOARGS, R"(to_json($self, /)
--

The message as JSON, in the form that `ndef json` writes.

>>> message = nfc_ndef.Message([nfc_ndef.Text("Hello", language="en")])
>>> nfc_ndef.from_json(message.to_json()) == message
True
)"},
    {"to_dict", to_dict, METH_NOARGS, R"(to_dict($self, /)
--

The same as dict, list, str, int and bool.

>>> nfc_ndef.Message([nfc_ndef.Uri("https://example.com")]).to_dict()["records"][0]["uri"]
'https://example.com'
)"},
    {"index", index_of, METH_O, "index($self, record, /)\n--\n\nThe place of the first record that is equal."},
    {"count", count_of, METH_O, "count($self, record, /)\n--\n\nHow many records are equal to one."},
    {},
};

constexpr char doc[] = R"(Message(records)
--

A sequence of records, which never changes. Records, and values such as Text, make one; parse() reads one.

>>> message = nfc_ndef.Message([nfc_ndef.Uri("https://example.com"), nfc_ndef.Text("Hello", language="en")])
>>> len(message), message[0].content
(2, Uri('https://example.com'))
>>> print(message)
URI https://example.com
Text "Hello" (en)
>>> bytes(message).hex()
'91010c55046578616d706c652e636f6d5101085402656e48656c6c6f'
)";

py::object message_of_owner(const py::object &owner, nfc_ndef_bytes bytes)
{
    if (bytes.length > UINT32_MAX)
        throw py::value_error("a message has at most 4294967295 bytes");
    nfc_ndef_msg_view view;
    nfc_ndef_msg_report report;
    bool valid = false;
    unlocked(bytes.length, [&] { valid = nfc_ndef_msg_view_open(bytes, &view, &report) == 1; });
    if (!valid)
        refuse(report);
    py::object made = owned(message_type->tp_alloc(message_type, 0));
    MessageObject *const message = message_of(made.ptr());
    message->owner = borrowed(owner.ptr()).release().ptr();
    message->bytes = bytes;
    message->rest = view;
    message->count = static_cast<Py_ssize_t>(view.record_count);
    return made;
}

nfc_ndef_bytes bytes_in(PyObject *object)
{
    return {reinterpret_cast<const uint8_t *>(PyBytes_AS_STRING(object)),
            static_cast<size_t>(PyBytes_GET_SIZE(object))};
}

// A buffer that somebody else lends; given back in the end.
class Lent {
public:
    explicit Lent(PyObject *object)
    {
        if (PyObject_GetBuffer(object, &buffer_, PyBUF_SIMPLE) != 0)
            throw py::error_already_set();
    }
    Lent(const Lent &) = delete;
    Lent &operator=(const Lent &) = delete;
    ~Lent() { PyBuffer_Release(&buffer_); }

    nfc_ndef_bytes bytes() const
    {
        return {static_cast<const uint8_t *>(buffer_.buf), static_cast<size_t>(buffer_.len)};
    }

private:
    Py_buffer buffer_{};
};

// Records to write, kept as long as their views are used.
struct ToWrite {
    std::vector<py::object> kept{};
    std::vector<nfc_ndef_record_view> views{};
    size_t length = 0; // of all payloads

    void add(PyObject *record_or_content)
    {
        if (views.size() == values::max_records)
            throw py::value_error("a message has at most " + std::to_string(values::max_records) + " records");
        kept.push_back(record_from(record_or_content));
        views.push_back(record_of(kept.back().ptr())->view);
        length += views.back().payload_length;
    }

    uint32_t write(uint8_t *buffer, uint32_t capacity) const
    {
        // Readers take a "Gc" record only as a message of its own.
        const bool each_alone = !views.empty() && text_of(views.front().type) == "Gc";
        if (!each_alone) {
            nfc_ndef_msg_writer writer;
            nfc_ndef_msg_writer_begin(&writer, buffer, capacity);
            for (const nfc_ndef_record_view &view : views)
                nfc_ndef_msg_writer_add(&writer, &view);
            return nfc_ndef_msg_writer_end(&writer);
        }
        uint32_t written = 0;
        for (nfc_ndef_record_view view : views) {
            view.flags = NFC_NDEF_FLAG_MB | NFC_NDEF_FLAG_ME;
            const uint32_t needed =
                nfc_ndef_record_view_write(&view, buffer ? buffer + written : nullptr, buffer ? capacity - written : 0);
            if (needed == 0 || needed > INT32_MAX - written)
                return 0;
            written += needed;
        }
        return written;
    }
};

} // namespace

py::object message_in(PyObject *data)
{
    if (PyBytes_CheckExact(data))
        return message_of_owner(borrowed(data), bytes_in(data));
    const Lent lent(data);
    PyObject *const base = PyMemoryView_Check(data) ? PyMemoryView_GET_BASE(data) : nullptr;
    if (base && PyBytes_CheckExact(base))
        return message_of_owner(borrowed(base), lent.bytes());
    // Whoever lent them may change them later.
    const nfc_ndef_bytes bytes = lent.bytes();
    const py::object copy = bytes_object(text_of(bytes));
    return message_of_owner(copy, bytes_in(copy.ptr()));
}

py::object encoded(PyObject *records)
{
    ToWrite message;
    const bool one = is_record(records) || class_of(records);
    if (one)
        message.add(records);
    else {
        const py::object all = owned(PySequence_Tuple(records));
        for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(all.ptr()); ++i)
            message.add(PyTuple_GET_ITEM(all.ptr(), i));
    }
    if (message.views.empty())
        throw py::value_error("a message has at least one record");
    const uint32_t length = message.write(nullptr, 0);
    if (length == 0)
        throw py::value_error("the records cannot be encoded: the message would have more than 2147483647 bytes");
    py::object bytes = owned(PyBytes_FromStringAndSize(nullptr, static_cast<Py_ssize_t>(length)));
    unlocked(length, [&] { message.write(reinterpret_cast<uint8_t *>(PyBytes_AS_STRING(bytes.ptr())), length); });
    return bytes;
}

void create_message_type(py::module_ &module)
{
    PyType_Slot iterator_slots[] = {slot(Py_tp_dealloc, destroy_iterator),
                                    slot(Py_tp_iter, PyObject_SelfIter),
                                    slot(Py_tp_iternext, next),
                                    {Py_tp_methods, iterator_methods},
                                    {0, nullptr}};
    PyType_Spec of_iterator{"nfc_ndef._MessageIterator", sizeof(IteratorObject), 0, Py_TPFLAGS_DEFAULT, iterator_slots};
    iterator_type = reinterpret_cast<PyTypeObject *>(owned(PyType_FromSpec(&of_iterator)).release().ptr());
    PyType_Slot slots[] = {slot(Py_tp_new, create),
                           slot(Py_tp_dealloc, destroy),
                           slot(Py_tp_richcompare, compare),
                           slot(Py_tp_hash, hash),
                           slot(Py_tp_repr, represent),
                           slot(Py_tp_str, headings),
                           slot(Py_tp_iter, iterate),
                           slot(Py_sq_item, item),
                           slot(Py_sq_length, length),
                           slot(Py_mp_length, length),
                           slot(Py_mp_subscript, subscript),
                           {Py_tp_methods, methods},
                           {Py_tp_doc, const_cast<char *>(doc)},
                           {0, nullptr}};
    PyType_Spec description{"nfc_ndef.Message", sizeof(MessageObject), 0, Py_TPFLAGS_DEFAULT, slots};
    py::object made = owned(PyType_FromSpec(&description));
    message_type = reinterpret_cast<PyTypeObject *>(made.ptr());
    module.add_object("Message", made);
    made.release(); // for as long as the process
}

} // namespace python
