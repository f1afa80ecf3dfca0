// The members of a value as Python gave them: checks each, and says which one is refused.
#pragma once

#include "fields.h"

#include <algorithm>
#include <charconv>

namespace python {

class FromPython {
public:
    template <class T> using Value = T;
    static constexpr bool reads = true;

    FromPython(const ValueClass &type, PyObject *const *slots) : type_(type), slots_(slots) {}

    void flag(std::string_view name, bool &value, Presence = {})
    {
        PyObject *const slot = next();
        check_type(PyBool_Check(slot), name, "must be True or False");
        value = slot == Py_True;
    }
    template <class Value> void number(std::string_view name, Value &value, Presence presence = {})
    {
        require(slots_[next_] != Py_None || presence == Presence::optional, name, "is missing");
        take_number(name, value);
    }
    void version(std::string_view name, uint8_t &value) { value = version_of(name, next()); }
    void version(std::string_view name, std::optional<uint8_t> &value)
    {
        if (PyObject *const slot = next(); slot != Py_None)
            value = version_of(name, slot);
    }
    void choice(std::string_view name, uint8_t &value, Names names, Presence presence = Presence::required)
    {
        std::optional<uint8_t> chosen;
        take_number(name, chosen);
        require(chosen || presence == Presence::optional, name, "is missing");
        require(!chosen || names.name_of(*chosen), name, "must be one of those that have a name");
        value = chosen.value_or(value);
    }
    template <class Value> void enumeration(std::string_view name, Value &value, Names, Presence presence = {})
    {
        number(name, value, presence);
    }
    template <class Value> void bit_set(std::string_view name, Value &value, Names) { take_number(name, value); }
    void boolean(std::string_view name, std::optional<uint8_t> &value) { take_number(name, value); }

    void text_or_hex(std::string_view name, TextOrBytes &value, Sizes sizes = {}, Presence presence = {})
    {
        PyObject *const slot = slots_[next_];
        text_or_hex(name, value.bytes, sizes, presence);
        value.is_text = PyUnicode_AsUTF8(slot) != nullptr;
        if (!value.is_text)
            PyErr_Clear();
        require(!value.is_text || value.bytes.find('\0') == std::string::npos, name, "must not hold a NUL");
    }
    void text_or_hex(std::string_view name, std::string &value, Sizes sizes = {}, Presence presence = {})
    {
        PyObject *const slot = next();
        check_type(PyUnicode_Check(slot), name, "must be a str");
        value = bytes_from(slot);
        if (!value.empty() || presence == Presence::required)
            check_size(value.size(), name, sizes, "bytes");
    }
    void text_or_hex(std::string_view name, std::optional<std::string> &value, Sizes sizes = {})
    {
        if (slots_[next_] == Py_None)
            return skip();
        text_or_hex(name, value.emplace(), sizes, Presence::required);
    }
    void texts(std::string_view name, std::vector<std::string> &values, Sizes sizes = {})
    {
        each(name, [&](PyObject *entry) {
            check_type(PyUnicode_Check(entry), name, "must hold nothing but str");
            values.push_back(bytes_from(entry));
            check_size(values.back().size(), name, sizes, "bytes each");
        });
    }

    void bytes(std::string_view name, Bytes &value, Sizes sizes = {})
    {
        value = bytes_of(name, next());
        if (!value.empty())
            check_size(value.size(), name, sizes, "bytes");
    }
    void bytes(std::string_view name, std::optional<Bytes> &value, Sizes sizes = {})
    {
        if (slots_[next_] == Py_None)
            return skip();
        value = bytes_of(name, next());
        check_size(value->size(), name, sizes, "bytes");
    }
    template <size_t N> void bytes(std::string_view name, std::array<uint8_t, N> &value)
    {
        const Bytes taken = bytes_of(name, next());
        check(taken.size() == N, name, sizes_text(nfc_ndef::values::exactly(N), "bytes"));
        std::ranges::copy(taken, value.begin());
    }
    void byte_strings(std::string_view name, std::vector<Bytes> &values, Sizes sizes, Sizes counts)
    {
        each(name, [&](PyObject *entry) {
            values.push_back(bytes_of(name, entry));
            check_size(values.back().size(), name, sizes, "bytes each");
        });
        check_size(values.size(), name, counts, "entries");
    }

    template <size_t N>
    void spelled(std::string_view name, std::array<uint8_t, N> &value, const Spelling &spelling, Presence = {})
    {
        std::ranges::copy(spelled_bytes(name, next(), spelling), value.begin());
    }
    template <size_t N> void spelled(std::string_view name, std::optional<std::array<uint8_t, N>> &value,
                                     const Spelling &spelling, Presence presence = {})
    {
        require(slots_[next_] != Py_None || presence == Presence::optional, name, "is missing");
        if (slots_[next_] == Py_None)
            return skip();
        spelled(name, value.emplace(), spelling);
    }
    void spelled_as_one_of(std::string_view name, Bytes &value, std::span<const Spelling> spellings)
    {
        PyObject *const slot = next();
        const auto length = static_cast<size_t>(PyUnicode_Check(slot) ? PyUnicode_GET_LENGTH(slot) : 0);
        const auto fits = [&](const Spelling &spelling) { return spelling.example.size() == length; };
        const auto found = std::ranges::find_if(spellings, fits);
        value = spelled_bytes(name, slot, found != spellings.end() ? *found : spellings.front());
    }
    void spelled_list(std::string_view name, Bytes &value, const Spelling &spelling, Sizes counts)
    {
        each(name, [&](PyObject *entry) {
            const Bytes bytes = spelled_bytes(name, entry, spelling);
            value.insert(value.end(), bytes.begin(), bytes.end());
        });
        check_size(value.size() / spelling.length, name, counts, "entries");
    }
    void spelled_list(std::string_view name, std::optional<Bytes> &value, const Spelling &spelling, Sizes counts)
    {
        if (slots_[next_] == Py_None)
            return skip();
        spelled_list(name, value.emplace(), spelling, counts);
    }

    void record(std::string_view name, OptionalRecord &value, std::string_view type, Presence presence = {})
    {
        PyObject *const slot = next();
        require(slot != Py_None || presence == Presence::optional, name, "is missing");
        if (slot != Py_None)
            value = record_taken(name, slot, type);
    }
    void record_with_flags(std::string_view, OptionalRecord &value, GenericControl::Flags &flags)
    {
        PyObject *const slot = next();
        if (slot == Py_None)
            return;
        const py::object record = record_from(slot);
        const uint8_t bits = record_of(record.ptr())->view.flags;
        flags = {(bits & NFC_NDEF_FLAG_MB) != 0, (bits & NFC_NDEF_FLAG_ME) != 0, (bits & NFC_NDEF_FLAG_CF) != 0};
        value = values_of(record_of(record.ptr())->view);
    }
    void records(std::string_view name, Records &values, std::string_view type = {})
    {
        each(name, [&](PyObject *entry) { values.push_back(record_taken(name, entry, type)); });
        check_size(values.size(), name, nfc_ndef::values::at_most(nfc_ndef::values::max_records), "records");
    }
    void records_kept(std::string_view name, Records &values)
    {
        records(name, values);
        require(values.empty(), name, "is of records that were read; none are made with them");
    }

    template <class T, class MapEntry> void objects(std::string_view name, std::vector<T> &values, MapEntry map_entry)
    {
        const ValueClass &nested = *type_.fields[next_].nested;
        each(name, [&](PyObject *entry) { values.push_back(object_of<T>(name, entry, nested, map_entry)); });
    }
    template <class T, class MapMembers>
    void object(std::string_view name, std::optional<T> &value, MapMembers map_members)
    {
        const ValueClass &nested = *type_.fields[next_].nested;
        if (PyObject *const slot = next(); slot != Py_None)
            value = object_of<T>(name, slot, nested, map_members);
    }

    void makes(std::string_view name, std::initializer_list<std::string_view> values) const
    {
        const auto text = borrowed(slot_of(name)).cast<std::string>();
        check(std::ranges::find(values, text) != values.end(), name, "is not one that is made");
    }
    void makes(std::string_view name, std::initializer_list<unsigned> values) const
    {
        const auto number = borrowed(slot_of(name)).cast<unsigned>();
        check(std::ranges::find(values, number) != values.end(), name, "is not one that is made");
    }
    void needs(std::string_view name, std::string_view needed) const
    {
        check(!is_there(name) || is_there(needed), needed, "is needed with " + std::string(name));
    }
    // An empty name stands for the value itself.
    void require(bool possible, std::string_view name, const std::string &reason) const
    {
        check(possible, name, reason);
    }

private:
    PyObject *next() { return slots_[next_++]; }
    void skip() { ++next_; }
    PyObject *slot_of(std::string_view name) const { return slots_[type_.index_of(name)]; }
    bool is_there(std::string_view name) const
    {
        const int truth = PyObject_IsTrue(slot_of(name));
        if (truth < 0)
            throw py::error_already_set();
        // The number 0 says something; None, and what is empty, does not.
        return truth == 1 || PyLong_Check(slot_of(name));
    }

    void check(bool possible, std::string_view name, const std::string &reason) const
    {
        if (!possible)
            type_.refuse(PyExc_ValueError, name, reason);
    }
    void check_type(bool fits, std::string_view name, const char *reason) const
    {
        if (!fits)
            type_.refuse(PyExc_TypeError, name, reason);
    }
    void check_size(size_t size, std::string_view name, Sizes sizes, const char *unit) const
    {
        if (size < sizes.least || size > sizes.most)
            check(false, name, sizes_text(sizes, unit));
    }
    static std::string sizes_text(Sizes sizes, const std::string &unit)
    {
        const std::string least = std::to_string(sizes.least), most = std::to_string(sizes.most) + ' ' + unit;
        return sizes.least == sizes.most    ? "must be " + most
               : sizes.least == 0           ? "must be at most " + most
               : sizes.most == Sizes().most ? "must not be empty"
                                            : "must be " + least + " to " + most;
    }

    template <std::unsigned_integral Number> void take_number(std::string_view name, Number &value)
    {
        std::optional<Number> taken;
        check(slots_[next_] != Py_None, name, "is missing");
        take_number(name, taken);
        value = taken.value_or(value);
    }
    template <class Number> void take_number(std::string_view name, std::optional<Number> &value)
    {
        PyObject *const slot = next();
        if (slot == Py_None)
            return;
        check_type(PyLong_Check(slot), name, "must be an int");
        int overflow = 0;
        const long long number = PyLong_AsLongLongAndOverflow(slot, &overflow);
        constexpr long long most = std::numeric_limits<Number>::max();
        if (overflow != 0 || number < 0 || number > most)
            check(false, name, "must be 0 to " + std::to_string(most));
        value = static_cast<Number>(number);
    }

    uint8_t version_of(std::string_view name, PyObject *slot) const
    {
        check_type(PyUnicode_Check(slot), name, "must be a str such as '1.2'");
        const std::string text = bytes_from(slot);
        unsigned numbers[2] = {16, 16};
        const char *at = text.data(), *const end = at + text.size();
        for (unsigned &number : numbers) {
            at = std::from_chars(at, end, number).ptr;
            at += &number == &numbers[0] && at != end && *at == '.' ? 1 : 0;
        }
        check(at == end && numbers[0] < 16 && numbers[1] < 16 &&
                  text == nfc_ndef::values::version_text(static_cast<uint8_t>(numbers[0] << 4 | numbers[1])),
              name, "must be a version such as '1.2', each number from 0 to 15");
        return static_cast<uint8_t>(numbers[0] << 4 | numbers[1]);
    }

    Bytes bytes_of(std::string_view name, PyObject *slot) const
    {
        check_type(PyObject_CheckBuffer(slot) != 0, name, "must be bytes");
        const py::object bytes = owned(PyBytes_FromObject(slot));
        const auto *data = reinterpret_cast<const uint8_t *>(PyBytes_AS_STRING(bytes.ptr()));
        return {data, data + PyBytes_GET_SIZE(bytes.ptr())};
    }

    Bytes spelled_bytes(std::string_view name, PyObject *slot, const Spelling &spelling) const
    {
        check_type(PyUnicode_Check(slot), name, "must be a str");
        std::optional<Bytes> bytes = spelling.bytes_of(bytes_from(slot));
        if (!bytes)
            check(false, name,
                  "must be " + std::to_string(spelling.length) + " bytes such as '" + std::string(spelling.example) +
                      "'");
        return *std::move(bytes);
    }

    template <class Visit> void each(std::string_view name, Visit visit)
    {
        PyObject *const slot = next();
        check_type(PyUnicode_Check(slot) == 0 && PyBytes_Check(slot) == 0, name, "must be a sequence");
        const py::object entries = owned(PySequence_Tuple(slot));
        for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(entries.ptr()); ++i)
            visit(PyTuple_GET_ITEM(entries.ptr(), i));
    }

    nfc_ndef::values::Record record_taken(std::string_view name, PyObject *slot, std::string_view type) const
    {
        const py::object record = record_from(slot);
        const nfc_ndef_record_view &view = record_of(record.ptr())->view;
        check(type.empty() || nfc_ndef::values::well_known(type).matches(view.format, text_of(view.type)), name,
              "must be of the well-known type \"" + std::string(type) + "\"");
        return values_of(view);
    }

    template <class T, class MapMembers>
    T object_of(std::string_view name, PyObject *slot, const ValueClass &nested, MapMembers map_members) const
    {
        if (Py_TYPE(slot) != nested.type)
            type_.refuse(PyExc_TypeError, name, "must be of the class " + nested.name);
        T value;
        FromPython fields(nested, slots_of(slot));
        map_members(fields, value);
        return value;
    }

    const ValueClass &type_;
    PyObject *const *slots_;
    size_t next_ = 0;
};

} // namespace python
