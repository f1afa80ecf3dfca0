// The members of a type: their names, what they are in Python, and what they are when nobody says.
#pragma once

#include "from_python.h"
#include "to_python.h"

namespace python {

// What is in the slots, checked, as a new value.
template <class T, class Map> py::object normalised(const ValueClass &type, PyObject *const *slots, Map map)
{
    T value{};
    FromPython in(type, slots);
    map(in, value);
    py::object made = new_value(type);
    ToPython out(type, slots_of(made.ptr()));
    map(out, value);
    return made;
}

class Shape {
public:
    template <class T> using Value = T;
    static constexpr bool reads = false;

    Shape(ValueClass &type, py::module_ &module) : type_(type), module_(module) {}

    // To be called after the last member: the one that a value is about, the only one without an initial value or the
    // one named like the kind, can be given without its name.
    void end(std::string_view kind)
    {
        size_t needed = 0;
        for (size_t i = 0; i < type_.fields.size(); ++i) {
            if (type_.fields[i].initial)
                continue;
            type_.positional = needed++ == 0 ? i : ValueClass::none;
        }
        if (const size_t named = type_.index_of(kind); named != ValueClass::none)
            type_.positional = named;
    }

    void flag(std::string_view name, bool, Presence = {}) { add(name, "bool", py::bool_(false)); }
    template <class Number> void number(std::string_view name, Number value, Presence presence = {})
    {
        add_number(name, "int", value, presence);
    }
    void version(std::string_view name, uint8_t value)
    {
        add(name, "str", value == 0 ? py::object() : py::str(nfc_ndef::values::version_text(value)));
    }
    void version(std::string_view name, const std::optional<uint8_t> &) { add_optional(name, "str"); }
    void choice(std::string_view name, uint8_t, Names names, Presence presence = Presence::required)
    {
        const EnumClass &numbers = enum_class(type_.name, name, names, false);
        presence == Presence::required ? add(name, numbers.name, {}) : add_optional(name, numbers.name);
        type_.fields.back().enumeration = &numbers;
    }
    template <class Number> void enumeration(std::string_view name, Number value, Names names, Presence presence = {})
    {
        const EnumClass &numbers = enum_class(type_.name, name, names, false);
        add_number(name, numbers.name, value, presence);
        type_.fields.back().enumeration = &numbers;
    }
    template <class Number> void bit_set(std::string_view name, const std::optional<Number> &, Names names)
    {
        const EnumClass &bits = enum_class(type_.name, name, names, true);
        add_optional(name, bits.name);
        type_.fields.back().enumeration = &bits;
    }
    void boolean(std::string_view name, const std::optional<uint8_t> &) { add_optional(name, "bool | int"); }

    void text_or_hex(std::string_view name, const TextOrBytes &, Sizes = {}, Presence presence = {})
    {
        add(name, "str", presence == Presence::required ? py::object() : py::str());
    }
    void text_or_hex(std::string_view name, const std::string &, Sizes = {}, Presence presence = {})
    {
        text_or_hex(name, TextOrBytes(), {}, presence);
    }
    void text_or_hex(std::string_view name, const std::optional<std::string> &, Sizes = {})
    {
        add_optional(name, "str");
    }
    void texts(std::string_view name, const std::vector<std::string> &, Sizes = {}) { add_tuple(name, "str"); }

    void bytes(std::string_view name, const Bytes &, Sizes = {}) { add(name, "bytes", py::bytes()); }
    void bytes(std::string_view name, const std::optional<Bytes> &, Sizes = {}) { add_optional(name, "bytes"); }
    template <size_t N> void bytes(std::string_view name, const std::array<uint8_t, N> &) { add(name, "bytes", {}); }
    void byte_strings(std::string_view name, const std::vector<Bytes> &, Sizes, Sizes) { add_tuple(name, "bytes"); }

    template <class Value>
    void spelled(std::string_view name, const Value &, const Spelling &, Presence presence = Presence::optional)
    {
        is_optional<Value> &&presence == Presence::optional ? add_optional(name, "str") : add(name, "str", {});
    }
    void spelled_as_one_of(std::string_view name, const Bytes &, std::span<const Spelling>) { add(name, "str", {}); }
    template <class Value> void spelled_list(std::string_view name, const Value &, const Spelling &, Sizes)
    {
        is_optional<Value> ? add_optional(name, "tuple[str, ...]") : add_tuple(name, "str");
    }

    void record(std::string_view name, const OptionalRecord &, std::string_view, Presence presence = {})
    {
        presence == Presence::required ? add(name, "Record", {}) : add_optional(name, "Record");
    }
    void record_with_flags(std::string_view name, const OptionalRecord &, const GenericControl::Flags &)
    {
        add_optional(name, "Record");
    }
    void records(std::string_view name, const Records &, std::string_view = {}) { add_tuple(name, "Record"); }
    void records_kept(std::string_view name, const Records &values) { records(name, values); }

    template <class T, class MapEntry> void objects(std::string_view name, const std::vector<T> &, MapEntry map_entry)
    {
        auto nested = nested_class<T>(map_entry);
        add_tuple(name, nested->name);
        type_.fields.back().nested = std::move(nested);
    }
    template <class T, class MapMembers>
    void object(std::string_view name, const std::optional<T> &, MapMembers map_members)
    {
        auto nested = nested_class<T>(map_members);
        add_optional(name, nested->name);
        type_.fields.back().nested = std::move(nested);
    }

    void makes(std::string_view, std::initializer_list<std::string_view>) const {}
    void makes(std::string_view, std::initializer_list<unsigned>) const {}
    void needs(std::string_view, std::string_view) const {}
    void require(bool, std::string_view, const std::string &) const {}

private:
    // A number that is 0 in a fresh value has to be given.
    template <class Number>
    void add_number(std::string_view name, const std::string &annotation, const Number &value, Presence presence)
    {
        if constexpr (!is_optional<Number>)
            add(name, annotation, value == 0 ? py::object() : py::object(py::int_(value)));
        else
            presence == Presence::required ? add(name, annotation, {}) : add_optional(name, annotation);
    }
    void add_optional(std::string_view name, const std::string &annotation)
    {
        add(name, annotation + " | None", py::none());
    }
    void add_tuple(std::string_view name, const std::string &annotation)
    {
        add(name, "tuple[" + annotation + ", ...]", py::tuple());
    }
    void add(std::string_view name, const std::string &annotation, py::object initial)
    {
        type_.fields.push_back({std::string(renamed(name, renamed_members)), annotation, std::move(initial)});
    }

    template <class T, class Map> std::shared_ptr<ValueClass> nested_class(Map map)
    {
        const std::string_view name = type_name<T>();
        auto nested = std::make_shared<ValueClass>();
        nested->name = name == "Element" ? type_.name + "Element" : std::string(renamed(name, renamed_classes));
        const ValueClass *known = nullptr;
        for (const ValueClass *made : value_classes())
            known = made->name == nested->name ? made : known;
        if (known) // the same members in another place
            return {std::shared_ptr<ValueClass>(), const_cast<ValueClass *>(known)};
        nested->title = "One of what a " + type_.name + " holds";
        Shape inner(*nested, module_);
        T value{};
        map(inner, value);
        inner.end({});
        nested->make = [type = nested.get(), map](PyObject *const *slots) { return normalised<T>(*type, slots, map); };
        create_type(*nested, module_);
        return nested;
    }

    ValueClass &type_;
    py::module_ &module_;
};

} // namespace python
