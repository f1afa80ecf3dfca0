// What to_json() writes.
#include "../json.h"

#include "../printable.h"
#include "text.h"

#include <fmt/format.h>

#include <algorithm>

namespace nfc_ndef::values {

namespace {

using Json = nlohmann::ordered_json;

Json json_of(const Record &record, const Nesting &nesting, const GenericControl::Flags *flags = nullptr);

Json json_of(const Records &records, const Nesting &nesting)
{
    Json array = Json::array();
    for (const Record &record : records)
        array.push_back(json_of(record, nesting));
    return array;
}

// Members of an object. What is empty is left out, unless it is required.
class JsonWriter {
public:
    template <class T> using Value = const T;
    static constexpr bool reads = false;

    JsonWriter(Json &object, Nesting nesting) : object_(object), nesting_(std::move(nesting)) {}

    void flag(std::string_view name, bool value, Presence presence = Presence::required)
    {
        if (value || presence == Presence::required)
            set(name, value);
    }
    void number(std::string_view name, unsigned value) { set(name, value); }
    template <class Number>
    void number(std::string_view name, const std::optional<Number> &value, Presence = Presence::optional)
    {
        if (value)
            set(name, *value);
    }
    void version(std::string_view name, uint8_t value) { set(name, version_text(value)); }
    void version(std::string_view name, const std::optional<uint8_t> &value)
    {
        if (value)
            version(name, *value);
    }

    void choice(std::string_view name, uint8_t value, Names names, Presence = Presence::required)
    {
        if (const auto found = names.name_of(value))
            set(name, *found);
    }

    // The name of a number that has one.
    template <class Number> void enumeration(std::string_view name, const Number &value, Names names)
    {
        enumeration(name, std::optional<Number>(value), names);
    }
    template <class Number>
    void enumeration(std::string_view name, const std::optional<Number> &value, Names names, Presence = {})
    {
        if (!value)
            return;
        const auto found = names.name_of(*value);
        set(name, found ? Json(*found) : Json(*value));
    }

    // The names of the bits, if there are any and all have one.
    template <class Number> void bit_set(std::string_view name, const std::optional<Number> &value, Names names)
    {
        if (!value)
            return;
        Json set_bits = Json::array();
        uint32_t left = *value;
        for (const Name &entry : names)
            if ((left & entry.value) != 0) {
                set_bits.push_back(entry.name);
                left &= ~entry.value;
            }
        set(name, *value != 0 && left == 0 ? std::move(set_bits) : Json(*value));
    }

    void boolean(std::string_view name, const std::optional<uint8_t> &value)
    {
        if (value)
            set(name, *value <= 1 ? Json(*value == 1) : Json(*value));
    }

    void text_or_hex(std::string_view name, const TextOrBytes &value, Sizes = {}, Presence presence = {})
    {
        if (value.bytes.empty() && presence == Presence::optional)
            return;
        if (value.is_text && is_utf8(value.bytes))
            set(name, value.bytes);
        else
            set(hex_name(name), hex_of(view_of(value.bytes), ""));
    }
    void text_or_hex(std::string_view name, const std::string &value, Sizes sizes = {}, Presence presence = {})
    {
        text_or_hex(name, TextOrBytes{value}, sizes, presence);
    }

    void text_or_hex(std::string_view name, const std::optional<std::string> &value, Sizes sizes = {})
    {
        if (value)
            text_or_hex(name, *value, sizes, Presence::required);
    }

    void texts(std::string_view name, const std::vector<std::string> &values, Sizes = {})
    {
        if (values.empty())
            return;
        if (std::ranges::all_of(values, is_utf8))
            return set(name, values);
        Json list = Json::array();
        for (const std::string &value : values)
            list.push_back(hex_of(view_of(value), ""));
        set(hex_name(name), std::move(list));
    }

    void bytes(std::string_view name, ByteView value, Sizes = {})
    {
        if (!value.empty())
            set(name, hex_of(value, ""));
    }

    template <std::same_as<Bytes> Value>
    void bytes(std::string_view name, const std::optional<Value> &value, Sizes = {})
    {
        if (value)
            set(name, hex_of(*value, ""));
    }
    void byte_strings(std::string_view name, const std::vector<Bytes> &values, Sizes, Sizes)
    {
        Json list = Json::array();
        for (const Bytes &value : values)
            list.push_back(hex_of(value, ""));
        if (!list.empty())
            set(name, std::move(list));
    }

    template <size_t N>
    void spelled(std::string_view name, const std::array<uint8_t, N> &value, const Spelling &spelling)
    {
        set(name, spelling.text_of(value));
    }
    template <size_t N> void spelled(std::string_view name, const std::optional<std::array<uint8_t, N>> &value,
                                     const Spelling &spelling, Presence = Presence::optional)
    {
        if (value)
            spelled(name, *value, spelling);
    }
    void spelled_as_one_of(std::string_view name, const Bytes &value, std::span<const Spelling> spellings)
    {
        for (const Spelling &spelling : spellings)
            if (spelling.length == value.size())
                set(name, spelling.text_of(value));
    }
    void spelled_list(std::string_view name, const std::optional<Bytes> &value, const Spelling &spelling, Sizes)
    {
        Json list = Json::array();
        for (size_t i = 0; value && i < value->size(); i += spelling.length)
            list.push_back(spelling.text_of(ByteView(*value).subspan(i, spelling.length)));
        if (value)
            set(name, std::move(list));
    }
    void spelled_list(std::string_view name, const Bytes &value, const Spelling &spelling, Sizes counts)
    {
        if (!value.empty())
            spelled_list(name, std::optional(value), spelling, counts);
    }

    void record(std::string_view name, const OptionalRecord &value, std::string_view, Presence = Presence::optional)
    {
        if (value)
            set(name, json_of(*value, nesting_.inner()));
    }
    void record_with_flags(std::string_view name, const OptionalRecord &value, const GenericControl::Flags &flags)
    {
        if (value)
            set(name, json_of(*value, nesting_.inner(), &flags));
    }
    void records(std::string_view name, const Records &values, std::string_view = {})
    {
        if (!values.empty())
            set(name, json_of(values, nesting_.inner()));
    }
    void records_kept(std::string_view name, const Records &values) { records(name, values); }

    template <class T, class MapEntry>
    void objects(std::string_view name, const std::vector<T> &values, MapEntry map_entry)
    {
        Json array = Json::array();
        for (const T &value : values)
            array.push_back(members_of(value, map_entry));
        if (!array.empty())
            set(name, std::move(array));
    }
    template <class T, class MapMembers>
    void object(std::string_view name, const std::optional<T> &value, MapMembers map_members)
    {
        if (value)
            set(name, members_of(*value, map_members));
    }

    // What a value must be to be made.
    void makes(std::string_view, std::initializer_list<std::string_view>) const {}
    void makes(std::string_view, std::initializer_list<unsigned>) const {}
    void needs(std::string_view, std::string_view) const {}
    void require(bool, std::string_view, const std::string &) const {}

private:
    template <class T, class MapMembers> Json members_of(const T &value, MapMembers map_members) const
    {
        Json object = Json::object();
        JsonWriter inner(object, nesting_);
        map_members(inner, value);
        return object;
    }

    static std::string hex_name(std::string_view name) { return fmt::format("{}_hex", name); }
    void set(std::string_view name, Json value) { object_[std::string(name)] = std::move(value); }

    Json &object_;
    Nesting nesting_;
};

void write_flags_and_id(JsonWriter &fields, const Record &record, const GenericControl::Flags *flags)
{
    if (flags) {
        fields.flag("mb", flags->mb);
        fields.flag("me", flags->me);
        fields.flag("cf", flags->cf);
    }
    fields.text_or_hex("id", std::string(text_of(record.id)));
}

// The payload as text, as the bytes before a nested message and the message when the two give exactly the payload
// again, or as it is.
void write_payload(JsonWriter &fields, const Record &record, const Nesting &nesting)
{
    if (is_text(record))
        return fields.text_or_hex("text", std::string(text_of(record.payload)));
    const std::optional<size_t> prefix = nested_at(record.format, record.type);
    if (prefix && *prefix < record.payload.size()) {
        const ByteView payload(record.payload);
        const std::optional<Records> nested = decode(payload.subspan(*prefix), nesting.inner());
        const std::optional<Bytes> again = nested ? encode(*nested) : std::nullopt;
        if (again && std::ranges::equal(*again, payload.subspan(*prefix))) {
            fields.bytes("payload", payload.first(*prefix));
            return fields.records("records", *nested);
        }
    }
    fields.bytes("payload", record.payload);
}

// A record of a kind, with its type and its payload where they are not those of the record that its members make.
template <class T>
Json typed(const Record &record, const T &content, const Nesting &nesting, const GenericControl::Flags *flags)
{
    Json object{{"kind", Kind<T>::json}};
    JsonWriter fields(object, nesting);
    const nfc_ndef::Record made = Kind<T>::make(content);
    const Type &type = Kind<T>::type;
    const bool same_type = text_of(record.type) == type.name;
    if (!same_type)
        fields.text_or_hex("type", std::string(text_of(record.type)));
    write_flags_and_id(fields, record, flags);
    Kind<T>::map(fields, content);
    if (!same_type || !made || !std::ranges::equal(record.payload, ByteView(made->payload, made->payload_length)))
        fields.bytes("payload", record.payload);
    return object;
}

Json json_of(const Record &record, const Nesting &nesting, const GenericControl::Flags *flags)
{
    const auto json_of_content = [&]<class T>(const T &content) -> Json {
        if constexpr (!std::is_same_v<T, Generic>)
            return typed(record, content, nesting, flags);
        Json object{{"kind", "generic"}, {"tnf", *Names(type_name_formats).name_of(record.format & 7)}};
        JsonWriter fields(object, nesting);
        fields.text_or_hex("type", std::string(text_of(record.type)));
        write_flags_and_id(fields, record, flags);
        write_payload(fields, record, nesting);
        return object;
    };
    return std::visit(json_of_content, record.content);
}

} // namespace

std::string to_json(const Records &message) { return written(Json{{"records", json_of(message, Nesting())}}); }

void write_json(nfc_ndef_msg_view message, const std::function<void(std::string_view text)> &write)
{
    const Nesting decoding, writing;
    std::string before = "{\n  \"records\": [\n";
    for (nfc_ndef_record_view record; nfc_ndef_msg_view_next(&message, &record) == 1; before = ",\n") {
        write(before);
        write(written_as_entry(json_of(decode(record, decoding), writing), 4));
    }
    write("\n  ]\n}\n");
}

std::string to_json_line(const Records &message)
{
    return written_in_a_line(Json{{"records", json_of(message, Nesting())}});
}

} // namespace nfc_ndef::values
