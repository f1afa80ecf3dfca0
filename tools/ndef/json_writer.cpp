#include "json.h"

#include "json_fields.h"
#include "printable.h"
#include "text_encoding.h"
#include "uri_prefix.h"

#include <fmt/format.h>
#include <glib.h>
#include <nlohmann/json.hpp>

#include <iterator>

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

Json json_of(const model::Record &record, const model::Nesting &nesting, bool with_flags = false);

Json json_of(const model::Records &records, const model::Nesting &nesting)
{
    Json array = Json::array();
    for (const model::Record &record : records)
        array.push_back(json_of(record, nesting));
    return array;
}

// Members of an object. What a JSON text cannot hold makes it fail, and the record then takes its generic form.
class JsonWriter {
public:
    template <class T> using Value = const T;

    JsonWriter(Json &object, model::Nesting nesting) : object_(object), nesting_(std::move(nesting)) {}
    bool ok() const { return ok_; }

    void flag(std::string_view name, bool value) { set(name, value); }
    void number(std::string_view name, unsigned value) { set(name, value); }
    void version(std::string_view name, uint8_t value) { set(name, fmt::format("{}.{}", value >> 4, value & 0x0F)); }

    void choice(std::string_view name, uint8_t value, uint8_t first, std::span<const std::string_view> names)
    {
        set(name, names[value - first]);
    }

    void text(std::string_view name, const std::string &value)
    {
        ok_ = ok_ && is_utf8(value);
        set(name, value);
    }

    void texts(std::string_view name, const std::vector<std::string> &values)
    {
        for (const std::string &value : values)
            ok_ = ok_ && is_utf8(value);
        if (!values.empty())
            set(name, values);
    }

    template <class Container> void text_or_hex(std::string_view name, const Container &value)
    {
        const std::string bytes(value.begin(), value.end());
        if (bytes.empty())
            return;
        if (is_utf8(bytes))
            set(name, bytes);
        else
            set(fmt::format("{}_hex", name), hex(value));
    }

    template <class Container> void bytes(std::string_view name, const Container &value)
    {
        if (!value.empty())
            set(name, hex(value));
    }

    void hex_list(std::string_view name, const model::Bytes &value, size_t length)
    {
        Json list = Json::array();
        for (size_t i = 0; i < value.size(); i += length)
            list.push_back(hex(std::span(value).subspan(i, length)));
        if (!list.empty())
            set(name, std::move(list));
    }

    void encoded_text(std::string_view name, const model::Text &value)
    {
        const std::optional<std::string> utf8 = utf8_of(value);
        const ByteOrderMark mark = byte_order_mark_of(value);
        ok_ = ok_ && utf8;
        if (mark != ByteOrderMark::none)
            set("byte_order_mark", mark == ByteOrderMark::little ? "little" : "big");
        set(name, utf8.value_or(""));
    }

    void expanded_uri(std::string_view name, const model::Uri &value)
    {
        number("identifier_code", value.identifier_code);
        text(name, expand_uri(value));
    }

    void action(const model::GenericControl &control)
    {
        const uint8_t flag = control.action_flag.value_or(0);
        number("action_flag", flag);
        if (flag != 0)
            number("action_code", control.action_code);
        if (control.action_record)
            set("action_record", json_of(*control.action_record, nesting_.inner(), true));
    }

    void record(std::string_view name, const model::RecordPtr &value, std::string_view, Presence = Presence::optional)
    {
        if (value)
            set(name, json_of(*value, nesting_.inner()));
    }

    void records(std::string_view name, const model::Records &values, std::string_view = {})
    {
        if (!values.empty())
            set(name, json_of(values, nesting_.inner()));
    }

    template <class T> void objects(std::string_view name, const std::vector<T> &values)
    {
        Json array = Json::array();
        for (const T &value : values) {
            Json object = Json::object();
            JsonWriter fields(object, nesting_);
            map(fields, value);
            array.push_back(std::move(object));
        }
        if (!array.empty())
            set(name, std::move(array));
    }

    void require(bool, std::string_view, const std::string &) const {} // the library read these values

private:
    template <class Container> static std::string hex(const Container &bytes)
    {
        return hex_of(std::span(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size()), "");
    }

    void set(std::string_view name, Json value) { object_[std::string(name)] = std::move(value); }

    Json &object_;
    model::Nesting nesting_;
    bool ok_ = true;
};

void write_flags_and_id(Json &object, const model::Record &record, bool with_flags)
{
    JsonWriter fields(object, {});
    if (with_flags) {
        fields.flag("mb", record.mb);
        fields.flag("me", record.me);
        fields.flag("cf", record.cf);
    }
    fields.text_or_hex("id", record.id);
}

// The payload as the bytes before a nested message and the message, when the two give exactly the payload again.
void write_payload(Json &object, const model::Record &record, const model::Nesting &nesting)
{
    JsonWriter fields(object, nesting);
    if (const std::optional<size_t> prefix = nested_prefix_length(record)) {
        const std::optional<model::Records> nested = model::decode_nested(record.payload, *prefix, nesting.inner());
        model::Bytes again = record.payload;
        again.resize(nested ? *prefix : 0);
        const model::Bytes before = again;
        if (const std::optional<model::Bytes> bytes = nested ? encode(*nested) : std::nullopt)
            again.insert(again.end(), bytes->begin(), bytes->end());
        if (nested && again == record.payload) {
            fields.bytes("payload", before);
            fields.records("records", *nested);
            return;
        }
    }
    fields.bytes("payload", record.payload);
}

Json json_of(const model::Record &record, const model::Nesting &nesting, bool with_flags)
{
    if (record.exact) {
        Json object{{"kind", kinds[record.content.index()]}};
        write_flags_and_id(object, record, with_flags);
        JsonWriter fields(object, nesting);
        const auto write = [&](const auto &content) {
            if constexpr (!std::is_same_v<std::decay_t<decltype(content)>, model::Generic>)
                map(fields, content);
        };
        std::visit(write, record.content);
        if (fields.ok())
            return object;
    }
    Json object{{"kind", kinds.front()}, {"tnf", format_names[record.format & 7]}};
    JsonWriter(object, nesting).text_or_hex("type", record.type);
    write_flags_and_id(object, record, with_flags);
    write_payload(object, record, nesting);
    return object;
}

bool acts_on_a_terminal(gunichar character)
{
    switch (g_unichar_type(character)) {
    case G_UNICODE_CONTROL:
    case G_UNICODE_FORMAT:
    case G_UNICODE_LINE_SEPARATOR:
    case G_UNICODE_PARAGRAPH_SEPARATOR:
        return true;
    default:
        return false;
    }
}

// The library that writes JSON leaves characters as they are that a terminal obeys, all of them inside strings.
std::string escape_controls(const std::string &json)
{
    std::string escaped;
    escaped.reserve(json.size());
    for (const char *at = json.data(), *end = at + json.size(); at != end;) {
        const gunichar character = g_utf8_get_char(at);
        const char *next = g_utf8_next_char(at);
        if (character == '\n' || !acts_on_a_terminal(character))
            escaped.append(at, next);
        else if (character < 0x10000)
            fmt::format_to(std::back_inserter(escaped), "\\u{:04x}", character);
        else
            fmt::format_to(std::back_inserter(escaped), "\\u{:04x}\\u{:04x}", 0xD7C0 + (character >> 10),
                           0xDC00 + (character & 0x3FF));
        at = next;
    }
    return escaped;
}

} // namespace

std::string to_json(const model::Records &message)
{
    return escape_controls(Json{{"records", json_of(message, model::Nesting())}}.dump(2)) + '\n';
}

} // namespace tool
