#include "json.h"

#include "text/encoded_text.h"
#include "json_fields.h"
#include "json_text.h"
#include "text_encoding.h"
#include "uri_prefix.h"

#include <fmt/format.h>

#include <charconv>
#include <limits>
#include <set>

namespace tool {

namespace {

using Json = nlohmann::json;

constexpr size_t max_records = 254; // what the library reads

model::Record record_of(const Json &json, const std::string &path, unsigned nesting, bool with_flags = false);
model::Records records_of(const Json &json, const std::string &path, unsigned nesting);

// Members of an object. Throws JsonError for one that is missing, unknown or impossible.
class JsonReader {
public:
    template <class T> using Value = T;

    JsonReader(const Json &object, std::string path, unsigned nesting)
        : object_(object), path_(std::move(path)), nesting_(nesting)
    {
        if (!object.is_object())
            throw JsonError(path_, "must be an object");
    }

    // To be called after the last member.
    void refuse_other_members() const
    {
        for (const auto &[name, value] : object_.items())
            if (!known_.contains(name))
                throw JsonError(path_of(name), "is not a member of this kind of record");
    }

    void flag(std::string_view name, bool &value)
    {
        if (const Json *found = find(name)) {
            require(found->is_boolean(), name, "must be true or false");
            value = found->get<bool>();
        }
    }

    template <class Number> void number(std::string_view name, Number &value)
    {
        value = number_of<Number>(needed(name), name);
    }

    void version(std::string_view name, uint8_t &value)
    {
        const std::string text = string_of(needed(name), name);
        const size_t dot = text.find('.');
        const auto major = nibble_of(std::string_view(text).substr(0, dot));
        const auto minor = nibble_of(dot == std::string::npos ? "" : std::string_view(text).substr(dot + 1));
        require(major && minor, name, "must be a version such as \"1.2\", each number from 0 to 15");
        value = static_cast<uint8_t>(*major << 4 | *minor);
    }

    template <size_t N>
    void choice(std::string_view name, uint8_t &value, uint8_t first, const std::array<std::string_view, N> &names)
    {
        const std::string text = string_of(needed(name), name);
        const auto *found = std::ranges::find(names, text);
        require(found != names.end(), name, fmt::format("must be one of: {}", fmt::join(names, ", ")));
        value = static_cast<uint8_t>(first + (found - names.begin()));
    }

    void text(std::string_view name, std::string &value) { value = string_of(needed(name), name); }

    void texts(std::string_view name, std::vector<std::string> &values)
    {
        each(name,
             [&](const Json &entry, const std::string &entry_name) { values.push_back(string_of(entry, entry_name)); });
    }

    template <class Container> void text_or_hex(std::string_view name, Container &value)
    {
        const std::string hex_name = fmt::format("{}_hex", name);
        const Json *text = find(name), *hex = find(hex_name);
        require(!text || !hex, hex_name, fmt::format("must not be there along with {}", name));
        if (text) {
            const std::string bytes = string_of(*text, name);
            value = Container(bytes.begin(), bytes.end());
        } else if (hex) {
            const model::Bytes bytes = bytes_of(*hex, hex_name);
            value = Container(bytes.begin(), bytes.end());
        }
    }

    void bytes(std::string_view name, model::Bytes &value)
    {
        if (const Json *found = find(name))
            value = bytes_of(*found, name);
    }

    template <size_t N> void bytes(std::string_view name, std::array<uint8_t, N> &value)
    {
        const model::Bytes bytes = bytes_of(needed(name), name);
        require(bytes.size() == N, name, fmt::format("must be {} bytes", N));
        std::copy_n(bytes.begin(), N, value.begin());
    }

    void hex_list(std::string_view name, model::Bytes &value, size_t length)
    {
        each(name, [&](const Json &entry, const std::string &entry_name) {
            const model::Bytes bytes = bytes_of(entry, entry_name);
            require(bytes.size() == length, entry_name, fmt::format("must be {} bytes", length));
            value.insert(value.end(), bytes.begin(), bytes.end());
        });
    }

    void encoded_text(std::string_view name, model::Text &value)
    {
        ByteOrderMark mark = ByteOrderMark::none;
        if (const Json *found = find("byte_order_mark")) {
            const std::string order = string_of(*found, "byte_order_mark");
            require(order == "big" || order == "little", "byte_order_mark", "must be one of: big, little");
            require(value.utf16, "byte_order_mark", "is for UTF-16 only");
            mark = order == "big" ? ByteOrderMark::big : ByteOrderMark::little;
        }
        const std::string utf8 = string_of(needed(name), name);
        value.text = value.utf16 ? utf16_of(utf8, mark) : model::Bytes(utf8.begin(), utf8.end());
    }

    void expanded_uri(std::string_view name, model::Uri &value)
    {
        const Json *code = find("identifier_code");
        const std::string uri = string_of(needed(name), name);
        value = abbreviate_uri(uri);
        if (!code)
            return;
        value.identifier_code = number_of<uint8_t>(*code, "identifier_code");
        const std::string_view prefix = uri_prefix(value.identifier_code);
        require(uri.starts_with(prefix), name,
                fmt::format("must begin with \"{}\", which the identifier_code stands for", prefix));
        value.uri_field = uri.substr(prefix.size());
    }

    void action(model::GenericControl &control)
    {
        uint8_t flag = 0;
        number("action_flag", flag);
        require(flag <= 1, "action_flag", "must be 0 or 1");
        control.action_flag = flag;
        if (flag == 1)
            number("action_code", control.action_code);
        else if (const Json *found = find("action_record"))
            control.action_record =
                std::make_unique<model::Record>(record_of(*found, path_of("action_record"), nesting_ + 1, true));
    }

    void record(std::string_view name, model::RecordPtr &value, std::string_view type,
                Presence presence = Presence::optional)
    {
        const Json *found = presence == Presence::required ? &needed(name) : find(name);
        if (!found)
            return;
        value = std::make_unique<model::Record>(record_of(*found, path_of(name), nesting_ + 1));
        require_type(*value, type, name);
    }

    void records(std::string_view name, model::Records &values, std::string_view type = {})
    {
        if (const Json *found = find(name))
            values = records_of(*found, path_of(name), nesting_ + 1);
        for (size_t i = 0; i < values.size() && !type.empty(); ++i)
            require_type(values[i], type, fmt::format("{}/{}", name, i));
    }

    template <class T> void objects(std::string_view name, std::vector<T> &values)
    {
        each(name, [&](const Json &entry, const std::string &entry_name) {
            JsonReader fields(entry, path_ + '/' + entry_name, nesting_);
            map(fields, values.emplace_back());
            fields.refuse_other_members();
        });
    }

    // Refuses a value; an empty name stands for the object itself.
    void require(bool possible, std::string_view name, const std::string &reason) const
    {
        if (!possible)
            throw JsonError(name.empty() ? path_ : path_ + '/' + std::string(name), reason);
    }

private:
    std::string path_of(std::string_view name) const { return member_path(path_, name); }

    const Json *find(std::string_view name)
    {
        const std::string &known = *known_.emplace(name).first;
        const auto found = object_.find(known);
        return found != object_.end() ? &*found : nullptr;
    }

    const Json &needed(std::string_view name)
    {
        const Json *found = find(name);
        require(found, name, "is missing");
        return *found;
    }

    template <class Visit> void each(std::string_view name, Visit visit)
    {
        const Json *found = find(name);
        if (!found)
            return;
        require(found->is_array(), name, "must be an array");
        for (size_t i = 0; i < found->size(); ++i)
            visit((*found)[i], fmt::format("{}/{}", name, i));
    }

    template <class Number> Number number_of(const Json &json, std::string_view name) const
    {
        constexpr unsigned max = std::numeric_limits<Number>::max();
        require(json.is_number_unsigned() && json.get<uint64_t>() <= max, name,
                fmt::format("must be a whole number from 0 to {}", max));
        return json.get<Number>();
    }

    std::string string_of(const Json &json, std::string_view name) const
    {
        require(json.is_string(), name, "must be a string");
        require(is_utf8(json.get_ref<const std::string &>()), name, "must not hold a NUL");
        return json.get<std::string>();
    }

    model::Bytes bytes_of(const Json &json, std::string_view name) const
    {
        constexpr std::string_view digits = "0123456789ABCDEFabcdef";
        require(json.is_string(), name, "must be a string of hex digits");
        const auto &hex = json.get_ref<const std::string &>();
        require(hex.size() % 2 == 0 && hex.find_first_not_of(digits) == std::string::npos, name,
                "must be pairs of hex digits");
        return hex.empty() ? model::Bytes() : decode_hex(hex).value();
    }

    static std::optional<unsigned> nibble_of(std::string_view text)
    {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const bool whole = error == std::errc() && end == text.data() + text.size();
        return whole && value <= 15 ? std::optional(value) : std::nullopt;
    }

    void require_type(const model::Record &record, std::string_view type, std::string_view name) const
    {
        require(record.format == NFC_NDEF_TNF_WELL_KNOWN && std::ranges::equal(record.type, type), name,
                fmt::format("must be a record of the well-known type \"{}\"", type));
    }

    const Json &object_;
    std::string path_;
    unsigned nesting_;
    std::set<std::string, std::less<>> known_;
};

model::Record generic_of(JsonReader &fields)
{
    model::Record record;
    uint8_t format = 0;
    fields.choice("tnf", format, 0, format_names);
    record.format = format;
    fields.text_or_hex("type", record.type);
    fields.text_or_hex("id", record.id);
    fields.bytes("payload", record.payload);
    model::Records nested;
    fields.records("records", nested);
    if (!nested.empty()) {
        const std::optional<model::Bytes> bytes = encode(nested);
        fields.require(bytes.has_value(), "records", "cannot be encoded");
        record.payload.insert(record.payload.end(), bytes->begin(), bytes->end());
    }
    const bool empty = format == NFC_NDEF_TNF_EMPTY;
    const bool nameless = empty || format == NFC_NDEF_TNF_UNKNOWN || format == NFC_NDEF_TNF_RESERVED;
    fields.require(!nameless || record.type.empty(), "type", fmt::format("is not for \"{}\"", format_names[format]));
    fields.require(record.type.size() <= 255, "type", "must be at most 255 bytes");
    fields.require(!empty || record.id.empty(), "id", "is not for \"empty\"");
    fields.require(!empty || record.payload.empty(), "payload", "is not for \"empty\"");
    return record;
}

// A record of the kind that is the alternative `Index` of the content, or of a later one.
template <size_t Index = 1> model::Record typed_of(size_t kind, JsonReader &fields)
{
    if constexpr (Index < std::variant_size_v<model::Content>) {
        if (kind != Index)
            return typed_of<Index + 1>(kind, fields);
        std::variant_alternative_t<Index, model::Content> content;
        model::Bytes id;
        fields.text_or_hex("id", id);
        map(fields, content);
        std::optional<model::Record> record = build(std::move(content), std::move(id));
        fields.require(record.has_value(), "", "holds values that do not make a record");
        return *std::move(record);
    }
    return {};
}

model::Record record_of(const Json &json, const std::string &path, unsigned nesting, bool with_flags)
{
    JsonReader fields(json, path, nesting);
    fields.require(nesting <= model::max_nesting, "", "is nested too deep");
    std::string kind;
    fields.text("kind", kind);
    const auto *found = std::ranges::find(kinds, kind);
    fields.require(found != kinds.end(), "kind", fmt::format("must be one of: {}", fmt::join(kinds, ", ")));
    const auto index = static_cast<size_t>(found - kinds.begin());
    model::Record record = index == 0 ? generic_of(fields) : typed_of(index, fields);
    fields.require(record.id.size() <= 255, "id", "must be at most 255 bytes");
    if (with_flags) {
        fields.flag("mb", record.mb);
        fields.flag("me", record.me);
        fields.flag("cf", record.cf);
    }
    fields.refuse_other_members();
    return record;
}

model::Records records_of(const Json &json, const std::string &path, unsigned nesting)
{
    if (!json.is_array())
        throw JsonError(path, "must be an array");
    if (json.size() > max_records)
        throw JsonError(path, fmt::format("must hold at most {} records", max_records));
    model::Records records;
    for (size_t i = 0; i < json.size(); ++i)
        records.push_back(record_of(json[i], fmt::format("{}/{}", path, i), nesting));
    return records;
}

} // namespace

model::Bytes from_json(std::string_view text)
{
    const Json json = parse_json(text);
    if (!json.is_object() || !json.contains("records") || json.size() != 1)
        throw JsonError("", "must be an object with the member records alone");
    const model::Records records = records_of(json["records"], "/records", 0);
    if (records.empty())
        throw JsonError("/records", "must not be empty");
    const std::optional<model::Bytes> bytes = encode(records);
    if (!bytes)
        throw JsonError("/records", "cannot be encoded");
    nfc_ndef_msg_report report{};
    if (nfc_ndef_msg_check(bytes->data(), 0, static_cast<uint32_t>(bytes->size()), &report) != 1)
        throw JsonError(fmt::format("/records/{}", report.record), nfc_ndef_msg_check_text(report.reason));
    return *bytes;
}

} // namespace tool
