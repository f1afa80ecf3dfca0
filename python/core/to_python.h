// The members of a value as Python has them.
#pragma once

#include "fields.h"

namespace python {

class ToPython {
public:
    template <class T> using Value = T; // which is used up
    static constexpr bool reads = false;

    ToPython(const ValueClass &type, PyObject **slots) : type_(type), slots_(slots) {}

    void flag(std::string_view, bool value, Presence = {}) { put(boolean_of(value)); }
    template <class Value> void number(std::string_view, const Value &value, Presence = {}) { put(number_of(value)); }
    void version(std::string_view, uint8_t value) { put(py::str(nfc_ndef::values::version_text(value))); }
    void version(std::string_view name, const std::optional<uint8_t> &value)
    {
        value ? version(name, *value) : put(py::none());
    }
    void choice(std::string_view, uint8_t value, Names names, Presence = {})
    {
        put(names.name_of(value) ? enumeration_of(value) : py::none());
    }
    template <class Value> void enumeration(std::string_view, const Value &value, Names, Presence = {})
    {
        put(enumeration_of(value));
    }
    template <class Value> void bit_set(std::string_view, const Value &value, Names) { put(enumeration_of(value)); }
    void boolean(std::string_view, const std::optional<uint8_t> &value)
    {
        put(value && *value <= 1 ? boolean_of(*value == 1) : number_of(value));
    }

    void text_or_hex(std::string_view, const TextOrBytes &value, Sizes = {}, Presence = {})
    {
        put(value.is_text ? text_from(value.bytes) : escaped(value.bytes));
    }
    void text_or_hex(std::string_view, const std::string &value, Sizes = {}, Presence = {}) { put(text_from(value)); }
    void text_or_hex(std::string_view, const std::optional<std::string> &value, Sizes = {})
    {
        put(value ? text_from(*value) : py::none());
    }
    void texts(std::string_view, const std::vector<std::string> &values, Sizes = {})
    {
        put(tuple_of(values, [](const std::string &value) { return text_from(value); }));
    }

    template <class Value> void bytes(std::string_view, const Value &value, Sizes = {}) { put(bytes_of(value)); }
    void byte_strings(std::string_view, const std::vector<Bytes> &values, Sizes, Sizes)
    {
        put(tuple_of(values, [](const Bytes &value) { return bytes_of(value); }));
    }

    template <size_t N>
    void spelled(std::string_view, const std::array<uint8_t, N> &value, const Spelling &spelling, Presence = {})
    {
        put(py::str(spelling.text_of(value)));
    }
    template <size_t N> void spelled(std::string_view name, const std::optional<std::array<uint8_t, N>> &value,
                                     const Spelling &spelling, Presence = {})
    {
        value ? spelled(name, *value, spelling) : put(py::none());
    }
    void spelled_as_one_of(std::string_view, const Bytes &value, std::span<const Spelling> spellings)
    {
        for (const Spelling &spelling : spellings)
            if (spelling.length == value.size())
                return put(py::str(spelling.text_of(value)));
        put(py::str());
    }
    void spelled_list(std::string_view, const Bytes &value, const Spelling &spelling, Sizes)
    {
        py::tuple list(value.size() / spelling.length);
        for (size_t i = 0; i < list.size(); ++i)
            list[i] = py::str(spelling.text_of(ByteView(value).subspan(i * spelling.length, spelling.length)));
        put(std::move(list));
    }
    void spelled_list(std::string_view name, const std::optional<Bytes> &value, const Spelling &spelling, Sizes counts)
    {
        value ? spelled_list(name, *value, spelling, counts) : put(py::none());
    }

    void record(std::string_view, OptionalRecord &value, std::string_view, Presence = {})
    {
        put(value ? new_record(std::move(*value)) : py::none());
    }
    void record_with_flags(std::string_view, OptionalRecord &value, const GenericControl::Flags &flags)
    {
        const int bits =
            (flags.mb ? NFC_NDEF_FLAG_MB : 0) | (flags.me ? NFC_NDEF_FLAG_ME : 0) | (flags.cf ? NFC_NDEF_FLAG_CF : 0);
        put(value ? new_record(std::move(*value), static_cast<uint8_t>(bits)) : py::none());
    }
    void records(std::string_view, Records &values, std::string_view = {})
    {
        put(tuple_of(values, [](nfc_ndef::values::Record &record) { return new_record(std::move(record)); }));
    }
    void records_kept(std::string_view name, Records &values) { records(name, values); }

    template <class T, class MapEntry> void objects(std::string_view, std::vector<T> &values, MapEntry map_entry)
    {
        put(tuple_of(values, [&](T &value) { return object_of(value, map_entry); }));
    }
    template <class T, class MapMembers> void object(std::string_view, std::optional<T> &value, MapMembers map_members)
    {
        put(value ? object_of(*value, map_members) : py::none());
    }

    void makes(std::string_view, std::initializer_list<std::string_view>) const {}
    void makes(std::string_view, std::initializer_list<unsigned>) const {}
    void needs(std::string_view, std::string_view) const {}
    void require(bool, std::string_view, const std::string &) const {}

private:
    static py::object boolean_of(bool value) { return borrowed(value ? Py_True : Py_False); }
    template <std::unsigned_integral Number> static py::object number_of(Number value)
    {
        return owned(PyLong_FromUnsignedLong(value));
    }
    template <class Number> static py::object number_of(const std::optional<Number> &value)
    {
        return value ? number_of(*value) : py::none();
    }
    template <std::unsigned_integral Number> py::object enumeration_of(Number value) const
    {
        return type_.fields[next_].enumeration->member(value);
    }
    template <class Number> py::object enumeration_of(const std::optional<Number> &value) const
    {
        return value ? enumeration_of(*value) : py::none();
    }
    static py::object bytes_of(ByteView value)
    {
        return owned(PyBytes_FromStringAndSize(reinterpret_cast<const char *>(value.data()),
                                               static_cast<Py_ssize_t>(value.size())));
    }
    template <std::same_as<Bytes> T> static py::object bytes_of(const std::optional<T> &value)
    {
        return value ? bytes_of(*value) : py::none();
    }
    // Bytes that are no text, each as a lone surrogate, though some of them might pass for ASCII.
    static py::object escaped(const std::string &bytes)
    {
        std::u16string text;
        for (const char byte : bytes)
            text += static_cast<char16_t>(0xDC00 + static_cast<unsigned char>(byte));
        return owned(
            PyUnicode_FromKindAndData(PyUnicode_2BYTE_KIND, text.data(), static_cast<Py_ssize_t>(text.size())));
    }
    template <class Entries, class Convert> static py::object tuple_of(Entries &entries, Convert convert)
    {
        py::tuple tuple(entries.size());
        for (size_t i = 0; i < entries.size(); ++i)
            PyTuple_SET_ITEM(tuple.ptr(), static_cast<Py_ssize_t>(i), convert(entries[i]).release().ptr());
        return tuple;
    }
    template <class T, class MapMembers> py::object object_of(T &value, MapMembers map_members) const
    {
        const ValueClass &nested = *type_.fields[next_].nested;
        py::object made = new_value(nested);
        ToPython fields(nested, slots_of(made.ptr()));
        map_members(fields, value);
        return made;
    }

    void put(py::object value) { slots_[next_++] = value.release().ptr(); }

    const ValueClass &type_;
    PyObject **slots_;
    size_t next_ = 0;
};

} // namespace python
