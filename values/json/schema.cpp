// What json_schema() writes: the members as each Kind names them.
#include "../json.h"

#include "text.h"

#include <fmt/format.h>

#include <map>

namespace nfc_ndef::values {

namespace {

using Json = nlohmann::ordered_json;

Json reference(std::string_view definition) { return {{"$ref", fmt::format("#/$defs/{}", definition)}}; }

Json names_of(Names names)
{
    Json list = Json::array();
    for (const Name &name : names)
        list.push_back(name.name);
    return {{"enum", list}};
}

Json hex_pattern(Sizes sizes)
{
    if (sizes.least == 0 && sizes.most == Sizes().most)
        return reference("hex");
    const std::string count =
        sizes.least == sizes.most ? fmt::format("{}", sizes.least) : fmt::format("{},{}", sizes.least, sizes.most);
    return {{"type", "string"}, {"pattern", fmt::format("^([0-9A-Fa-f]{{2}}){{{}}}$", count)}};
}

Json pattern_of(const Spelling &spelling)
{
    std::string pattern = "^";
    for (size_t i = 0; i < spelling.example.size();) {
        const size_t digits = std::min(spelling.example.find_first_of(":-", i), spelling.example.size()) - i;
        pattern += digits == 0 ? std::string(1, spelling.example[i]) : fmt::format("[0-9A-Fa-f]{{{}}}", digits);
        i += digits == 0 ? 1 : digits;
    }
    return {{"type", "string"}, {"pattern", pattern + '$'}};
}

// The type of record that a definition such as is_ac is of.
std::string definition_of(std::string_view type) { return fmt::format("is_{}", type); }

// The members of an object. Those that the writer of a kind needs are not required beside a payload.
class JsonSchema {
public:
    template <class T> using Value = const T;
    static constexpr bool reads = false;

    explicit JsonSchema(std::map<std::string, Json> &definitions) : definitions_(definitions) {}

    void flag(std::string_view name, bool, Presence = Presence::required)
    {
        set(name, {{"type", "boolean"}, {"default", false}});
    }
    template <class Number> void number(std::string_view name, Number)
    {
        number(name, std::optional<Number>(), Presence::required);
    }
    template <class Number>
    void number(std::string_view name, const std::optional<Number> &, Presence presence = Presence::optional)
    {
        set(name, number_of<Number>(), presence);
    }
    void version(std::string_view name, uint8_t) { set(name, reference("version"), Presence::required); }
    void version(std::string_view name, const std::optional<uint8_t> &) { set(name, reference("version")); }
    void choice(std::string_view name, uint8_t, Names names, Presence presence = Presence::required)
    {
        set(name, names_of(names), presence);
    }

    template <class Number> void enumeration(std::string_view name, Number, Names names)
    {
        enumeration(name, std::optional<Number>(), names, Presence::required);
    }
    template <class Number> void enumeration(std::string_view name, const std::optional<Number> &, Names names,
                                             Presence presence = Presence::optional)
    {
        set(name, {{"anyOf", {names_of(names), number_of<Number>()}}}, presence);
    }
    template <class Number> void bit_set(std::string_view name, const std::optional<Number> &, Names names)
    {
        const Json list{{"type", "array"}, {"items", names_of(names)}};
        set(name, {{"anyOf", {list, number_of<Number>()}}});
    }
    void boolean(std::string_view name, const std::optional<uint8_t> &)
    {
        set(name, {{"anyOf", {{{"type", "boolean"}}, number_of<uint8_t>()}}});
    }

    // A schema counts characters of a text, so that its bytes are bounded below only.
    void text_or_hex(std::string_view name, const TextOrBytes &, Sizes sizes = {}, Presence presence = {})
    {
        const std::string hex_name = fmt::format("{}_hex", name);
        Json text = reference("string");
        if (sizes.most != Sizes().most)
            text["maxLength"] = sizes.most;
        set(name, std::move(text));
        set(hex_name, reference("hex"));
        conditions_.push_back({{"not", {{"required", {name, hex_name}}}}});
        if (presence == Presence::required)
            when_made_.push_back({{"anyOf", {{{"required", {name}}}, {{"required", {hex_name}}}}}});
        if (sizes.least > 0)
            when_made_.push_back({{"properties", {{name, {{"minLength", sizes.least}}}}}});
    }
    void text_or_hex(std::string_view name, const std::string &, Sizes sizes = {}, Presence presence = {})
    {
        text_or_hex(name, TextOrBytes(), sizes, presence);
    }
    void text_or_hex(std::string_view name, const std::optional<std::string> &, Sizes sizes = {})
    {
        text_or_hex(name, TextOrBytes(), sizes);
    }
    void texts(std::string_view name, const std::vector<std::string> &, Sizes = {})
    {
        const std::string hex_name = fmt::format("{}_hex", name);
        set(name, {{"type", "array"}, {"items", reference("string")}});
        set(hex_name, {{"type", "array"}, {"items", reference("hex")}});
        conditions_.push_back({{"not", {{"required", {name, hex_name}}}}});
    }
    void bytes(std::string_view name, const Bytes &, Sizes sizes = {})
    {
        set(name,
            sizes.least == 0 ? hex_pattern(sizes) : Json{{"anyOf", {hex_pattern(exactly(0)), hex_pattern(sizes)}}});
    }
    void bytes(std::string_view name, const std::optional<Bytes> &, Sizes sizes = {}) { set(name, hex_pattern(sizes)); }
    void byte_strings(std::string_view name, const std::vector<Bytes> &, Sizes sizes, Sizes counts)
    {
        set(name, {{"type", "array"}, {"items", hex_pattern(sizes)}, {"maxItems", counts.most}});
    }
    template <size_t N> void bytes(std::string_view name, const std::array<uint8_t, N> &)
    {
        set(name, hex_pattern(exactly(N)), Presence::required);
    }
    template <size_t N> void spelled(std::string_view name, const std::array<uint8_t, N> &, const Spelling &spelling)
    {
        set(name, pattern_of(spelling), Presence::required);
    }
    template <size_t N> void spelled(std::string_view name, const std::optional<std::array<uint8_t, N>> &,
                                     const Spelling &spelling, Presence presence = Presence::optional)
    {
        set(name, pattern_of(spelling), presence);
    }
    void spelled_as_one_of(std::string_view name, const Bytes &, std::span<const Spelling> spellings)
    {
        Json patterns = Json::array();
        for (const Spelling &spelling : spellings)
            patterns.push_back(pattern_of(spelling));
        set(name, {{"anyOf", patterns}}, Presence::required);
    }
    template <class List> void spelled_list(std::string_view name, const List &, const Spelling &spelling, Sizes counts)
    {
        set(name, {{"type", "array"}, {"items", pattern_of(spelling)}, {"maxItems", counts.most}});
    }

    void record(std::string_view name, const OptionalRecord &, std::string_view type,
                Presence presence = Presence::optional)
    {
        set(name, typed("record", type), presence);
    }
    void record_with_flags(std::string_view name, const OptionalRecord &, const GenericControl::Flags &)
    {
        set(name, reference("record_with_flags"));
    }
    void records(std::string_view name, const Records &, std::string_view type = {})
    {
        set(name, {{"type", "array"}, {"items", typed("record", type)}, {"maxItems", max_records}});
    }
    void records_kept(std::string_view name, const Records &values)
    {
        records(name, values);
        when_made_.push_back({{"properties", {{name, {{"maxItems", 0}}}}}});
    }
    template <class T, class MapEntry> void objects(std::string_view name, const std::vector<T> &, MapEntry map_entry)
    {
        JsonSchema inner(definitions_);
        map_entry(inner, T());
        set(name, {{"type", "array"}, {"items", std::move(inner).whole()}});
    }

    template <class T, class MapMembers>
    void object(std::string_view name, const std::optional<T> &, MapMembers map_members)
    {
        JsonSchema inner(definitions_);
        map_members(inner, T());
        set(name, std::move(inner).whole());
    }

    void makes(std::string_view name, std::initializer_list<std::string_view> values) { restrict(name, values); }
    void makes(std::string_view name, std::initializer_list<unsigned> values) { restrict(name, values); }
    void needs(std::string_view name, std::string_view needed)
    {
        when_made_.push_back({{"dependentRequired", {{name, {needed}}, {fmt::format("{}_hex", name), {needed}}}}});
    }
    void require(bool, std::string_view, const std::string &) const {} // beyond a schema

    // An object that has these members and no others.
    Json whole() &&
    {
        Json object{{"type", "object"}, {"properties", properties_}, {"required", required_}};
        object["additionalProperties"] = false;
        if (!conditions_.empty())
            object["allOf"] = conditions_;
        return object;
    }

    // A kind of record.
    Json of_kind(std::string_view kind) &&
    {
        Json properties{{"kind", {{"const", kind}}}};
        properties.update(properties_);
        for (const char *name : {"type_hex", "payload"})
            properties[name] = reference("hex");
        properties["type"] = reference("string");
        Json object{{"type", "object"}, {"properties", properties}, {"required", {"kind"}}};
        if (!conditions_.empty())
            object["allOf"] = conditions_;
        if (!required_.empty())
            when_made_.push_back({{"required", required_}});
        if (!when_made_.empty()) {
            object["if"] = {{"not", {{"required", {"payload"}}}}};
            object["then"] = {{"allOf", when_made_}};
        }
        return object;
    }

private:
    template <class Number> static Json number_of()
    {
        return {{"type", "integer"}, {"minimum", 0}, {"maximum", std::numeric_limits<Number>::max()}};
    }

    void set(std::string_view name, Json schema, Presence presence = Presence::optional)
    {
        properties_[std::string(name)] = std::move(schema);
        if (presence == Presence::required)
            required_.push_back(name);
    }

    template <class Values> void restrict(std::string_view name, const Values &values)
    {
        when_made_.push_back({{"properties", {{name, {{"enum", values}}}}}});
    }

    // A definition that also wants the record to be of a well-known type.
    Json typed(std::string_view definition, std::string_view type)
    {
        if (type.empty())
            return reference(definition);
        Json alternatives = Json::array();
        AllKinds::of_type(NFC_NDEF_TNF_WELL_KNOWN, type, [&]<class T>(std::type_identity<T>) {
            alternatives.push_back({{"properties", {{"kind", {{"const", Kind<T>::json}}}}}});
        });
        alternatives.push_back(
            {{"properties",
              {{"kind", {{"const", "generic"}}}, {"tnf", {{"const", "well-known"}}}, {"type", {{"const", type}}}}},
             {"required", {"kind", "type"}}});
        definitions_[definition_of(type)] = {{"anyOf", alternatives}};
        return {{"allOf", {reference(definition), reference(definition_of(type))}}};
    }

    std::map<std::string, Json> &definitions_;
    Json properties_ = Json::object(), required_ = Json::array(), conditions_ = Json::array(),
         when_made_ = Json::array();
};

Json generic()
{
    const auto not_both = [](const char *one, const char *other) {
        return Json{{"not", {{"required", {one, other}}}}};
    };
    return {{"type", "object"},
            {"properties",
             {{"kind", {{"const", "generic"}}},
              {"tnf", names_of(type_name_formats)},
              {"type", reference("string")},
              {"type_hex", reference("hex")},
              {"payload", reference("hex")},
              {"text", reference("string")},
              {"text_hex", reference("hex")},
              {"records", reference("records")}}},
            {"required", {"kind", "tnf"}},
            {"allOf", {not_both("type", "type_hex"), not_both("text", "text_hex")}}};
}

} // namespace

std::string json_schema()
{
    std::map<std::string, Json> types; // is_T and the like, in order
    Json kinds{{"generic", generic()}};
    AllKinds::each([&]<class T>(std::type_identity<T>) {
        JsonSchema fields(types);
        Kind<T>::map(fields, T());
        kinds[std::string(Kind<T>::json)] = std::move(fields).of_kind(Kind<T>::json);
    });
    Json alternatives = Json::array();
    for (const auto &[name, schema] : kinds.items())
        alternatives.push_back(reference(name));

    Json definitions{
        {"hex",
         {{"description", "Bytes, each as two hex digits"}, {"type", "string"}, {"pattern", "^([0-9A-Fa-f]{2})*$"}}},
        {"string", {{"description", "Text without a NUL"}, {"type", "string"}, {"pattern", "^[^\\u0000]*$"}}},
        {"version",
         {{"description", "Major and minor version"},
          {"type", "string"},
          {"pattern", "^([0-9]|1[0-5])\\.([0-9]|1[0-5])$"}}},
        {"records", {{"type", "array"}, {"items", reference("record")}, {"maxItems", max_records}}},
        {"members",
         {{"properties", {{"id", reference("string")}, {"id_hex", reference("hex")}}},
          {"not", {{"required", {"id", "id_hex"}}}},
          {"oneOf", alternatives}}},
        {"record", {{"$ref", "#/$defs/members"}, {"unevaluatedProperties", false}}},
        {"record_with_flags",
         {{"$ref", "#/$defs/members"},
          {"properties", {{"mb", {{"type", "boolean"}}}, {"me", {{"type", "boolean"}}}, {"cf", {{"type", "boolean"}}}}},
          {"unevaluatedProperties", false}}},
    };
    for (auto &[name, schema] : types)
        definitions[name] = std::move(schema);
    definitions.update(kinds);
    return written({{"$schema", "https://json-schema.org/draft/2020-12/schema"},
                    {"title", "An NDEF message, as the ndef command writes and reads it"},
                    {"type", "object"},
                    {"properties",
                     {{"$schema", {{"type", "string"}}}, {"records", {{"$ref", "#/$defs/records"}, {"minItems", 1}}}}},
                    {"required", {"records"}},
                    {"additionalProperties", false},
                    {"$defs", definitions}});
}

} // namespace nfc_ndef::values
