// What from_json() takes.
#include "../json.h"

#include "../c_interface.h"
#include "../printable.h"
#include "text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <set>

namespace nfc_ndef::values {

namespace {

using Json = nlohmann::json;

Record record_of(const Json &json, const std::string &path, unsigned nesting, bool alone,
                 GenericControl::Flags *flags = nullptr);
Records records_of(const Json &json, const std::string &path, unsigned nesting);

std::string sizes_text(Sizes sizes, std::string_view unit)
{
    if (sizes.least == sizes.most)
        return fmt::format("must be {} {}", sizes.least, unit);
    if (sizes.least == 0)
        return fmt::format("must be at most {} {}", sizes.most, unit);
    if (sizes.most == Sizes().most)
        return "must not be empty";
    return fmt::format("must be {} to {} {}", sizes.least, sizes.most, unit);
}

// Members of an object. Throws JsonError for one that is missing, unknown or impossible. An object with a payload says
// what that payload reads as, which need not be what a record can be made of.
class JsonReader {
public:
    template <class T> using Value = T;
    static constexpr bool reads = true;

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

    // To be called before the first member: whether the object says what its payload reads as.
    bool takes_payload() { return has_payload_ = object_.contains("payload"); }

    void flag(std::string_view name, bool &value, Presence = Presence::required)
    {
        if (const Json *found = find(name)) {
            check(found->is_boolean(), name, "must be true or false");
            value = found->get<bool>();
        }
    }

    template <class Number> void number(std::string_view name, Number &value)
    {
        std::optional<Number> read;
        number(name, read, Presence::required);
        value = read.value_or(value);
    }
    template <class Number>
    void number(std::string_view name, std::optional<Number> &value, Presence presence = Presence::optional)
    {
        constexpr unsigned max = std::numeric_limits<Number>::max();
        if (const Json *found = find(name, presence)) {
            check(found->is_number_unsigned() && found->get<uint64_t>() <= max, name,
                  fmt::format("must be a whole number from 0 to {}", max));
            value = found->get<Number>();
        }
    }

    void version(std::string_view name, uint8_t &value)
    {
        std::optional<uint8_t> read;
        version(name, read, Presence::required);
        value = read.value_or(value);
    }
    void version(std::string_view name, std::optional<uint8_t> &value, Presence presence = Presence::optional)
    {
        const Json *found = find(name, presence);
        if (!found)
            return;
        const std::string text = string_of(*found, name);
        const size_t dot = text.find('.');
        const auto major = nibble_of(std::string_view(text).substr(0, dot));
        const auto minor = nibble_of(dot == std::string::npos ? "" : std::string_view(text).substr(dot + 1));
        check(major && minor, name, "must be a version such as \"1.2\", each number from 0 to 15");
        value = static_cast<uint8_t>(*major << 4 | *minor);
    }

    void choice(std::string_view name, uint8_t &value, Names names, Presence presence = Presence::required)
    {
        if (const Json *found = find(name, presence)) {
            const std::optional<uint32_t> chosen = names.value_of(string_of(*found, name));
            check(chosen.has_value(), name, fmt::format("must be one of: {}", all_of(names)));
            value = static_cast<uint8_t>(*chosen);
        }
    }

    template <class Number> void enumeration(std::string_view name, Number &value, Names names)
    {
        std::optional<Number> read;
        enumeration(name, read, names, Presence::required);
        value = read.value_or(value);
    }
    template <class Number> void enumeration(std::string_view name, std::optional<Number> &value, Names names,
                                             Presence presence = Presence::optional)
    {
        if (const Json *found = find(name, presence))
            value = number_or_name<Number>(*found, name, names);
    }

    template <class Number> void bit_set(std::string_view name, std::optional<Number> &value, Names names)
    {
        const Json *found = find(name);
        if (!found)
            return;
        if (!found->is_array())
            return number(name, value);
        Number bits = 0;
        for (size_t i = 0; i < found->size(); ++i) {
            const std::string entry_name = fmt::format("{}/{}", name, i);
            const std::optional<uint32_t> bit = names.value_of(string_of((*found)[i], entry_name));
            check(bit.has_value(), entry_name, fmt::format("must be one of: {}", all_of(names)));
            bits = static_cast<Number>(bits | *bit);
        }
        value = bits;
    }

    void boolean(std::string_view name, std::optional<uint8_t> &value)
    {
        const Json *found = find(name);
        if (found && found->is_boolean())
            value = found->get<bool>();
        else
            number(name, value);
    }

    void text_or_hex(std::string_view name, TextOrBytes &value, Sizes sizes = {},
                     Presence presence = Presence::optional)
    {
        const std::string hex_name = fmt::format("{}_hex", name);
        const Json *hex = find(hex_name);
        const Json *text = find(name, hex ? Presence::optional : presence);
        check(!text || !hex, hex_name, fmt::format("must not be there along with {}", name));
        if (text)
            value = {string_of(*text, name), true};
        else if (hex)
            value = {std::string(text_of(bytes_of(*hex, hex_name))), false};
        else
            return;
        if (!value.bytes.empty() || presence == Presence::required)
            require_size(value.bytes.size(), hex ? hex_name : name, sizes, "bytes");
    }
    template <class Container>
    void text_or_hex(std::string_view name, Container &value, Sizes sizes = {}, Presence presence = Presence::optional)
    {
        TextOrBytes read;
        text_or_hex(name, read, sizes, presence);
        value = Container(read.bytes.begin(), read.bytes.end());
    }

    void text_or_hex(std::string_view name, std::optional<std::string> &value, Sizes sizes = {})
    {
        TextOrBytes read;
        const bool is_there = find(name) || find(fmt::format("{}_hex", name));
        if (is_there) {
            text_or_hex(name, read, sizes, Presence::required);
            value = std::move(read.bytes);
        }
    }

    void texts(std::string_view name, std::vector<std::string> &values, Sizes sizes = {})
    {
        const std::string hex_name = fmt::format("{}_hex", name);
        each(name, [&](const Json &entry, const std::string &entry_name) {
            values.push_back(string_of(entry, entry_name));
            require_size(values.back().size(), entry_name, sizes, "bytes");
        });
        check(values.empty() || !find(hex_name), hex_name, fmt::format("must not be there along with {}", name));
        each(hex_name, [&](const Json &entry, const std::string &entry_name) {
            values.emplace_back(text_of(bytes_of(entry, entry_name)));
            require_size(values.back().size(), entry_name, sizes, "bytes");
        });
    }

    void bytes(std::string_view name, Bytes &value, Sizes sizes = {})
    {
        if (const Json *found = find(name)) {
            value = bytes_of(*found, name);
            if (!value.empty())
                require_size(value.size(), name, sizes, "bytes");
        }
    }
    void bytes(std::string_view name, std::optional<Bytes> &value, Sizes sizes = {})
    {
        if (const Json *found = find(name)) {
            value = bytes_of(*found, name);
            require_size(value->size(), name, sizes, "bytes");
        }
    }
    void byte_strings(std::string_view name, std::vector<Bytes> &values, Sizes sizes, Sizes counts)
    {
        each(name, [&](const Json &entry, const std::string &entry_name) {
            values.push_back(bytes_of(entry, entry_name));
            require_size(values.back().size(), entry_name, sizes, "bytes");
        });
        require_size(values.size(), name, counts, "entries");
    }
    template <size_t N> void bytes(std::string_view name, std::array<uint8_t, N> &value)
    {
        if (const Json *found = find(name, Presence::required)) {
            const Bytes bytes = bytes_of(*found, name);
            check(bytes.size() == N, name, sizes_text(exactly(N), "bytes"));
            std::copy_n(bytes.begin(), N, value.begin());
        }
    }

    template <size_t N> void spelled(std::string_view name, std::array<uint8_t, N> &value, const Spelling &spelling)
    {
        std::optional<std::array<uint8_t, N>> read;
        spelled(name, read, spelling, Presence::required);
        value = read.value_or(value);
    }
    template <size_t N> void spelled(std::string_view name, std::optional<std::array<uint8_t, N>> &value,
                                     const Spelling &spelling, Presence presence = Presence::optional)
    {
        if (const Json *found = find(name, presence))
            std::ranges::copy(spelled_bytes(*found, name, spelling), value.emplace().begin());
    }
    // Bytes in one of several spellings, which differ in length.
    void spelled_as_one_of(std::string_view name, Bytes &value, std::span<const Spelling> spellings)
    {
        const Json *found = find(name, Presence::required);
        if (!found)
            return;
        const std::string text = string_of(*found, name);
        const auto fits = [&](const Spelling &spelling) { return spelling.example.size() == text.size(); };
        const auto spelling = std::ranges::find_if(spellings, fits);
        value = spelled_bytes(*found, name, spelling != spellings.end() ? *spelling : spellings.front());
    }
    void spelled_list(std::string_view name, std::optional<Bytes> &value, const Spelling &spelling, Sizes counts)
    {
        if (find(name))
            spelled_list(name, value.emplace(), spelling, counts);
    }
    void spelled_list(std::string_view name, Bytes &value, const Spelling &spelling, Sizes counts)
    {
        size_t count = 0;
        each(name, [&](const Json &entry, const std::string &entry_name) {
            const Bytes bytes = spelled_bytes(entry, entry_name, spelling);
            value.insert(value.end(), bytes.begin(), bytes.end());
            ++count;
        });
        require_size(count, name, counts, "entries");
    }

    void record(std::string_view name, OptionalRecord &value, std::string_view type,
                Presence presence = Presence::optional)
    {
        if (const Json *found = find(name, presence)) {
            value = OptionalRecord(record_of(*found, path_of(name), nesting_ + 1, true));
            check_type(*value, type, name);
        }
    }
    void record_with_flags(std::string_view name, OptionalRecord &value, GenericControl::Flags &flags)
    {
        if (const Json *found = find(name))
            value = OptionalRecord(record_of(*found, path_of(name), nesting_ + 1, true, &flags));
    }
    void records(std::string_view name, Records &values, std::string_view type = {})
    {
        if (const Json *found = find(name))
            values = records_of(*found, path_of(name), nesting_ + 1);
        for (size_t i = 0; i < values.size() && !type.empty(); ++i)
            check_type(values[i], type, fmt::format("{}/{}", name, i));
    }
    void records_kept(std::string_view name, Records &values)
    {
        records(name, values);
        require(values.empty(), name, "can only be kept, along with a payload");
    }

    template <class T, class MapEntry> void objects(std::string_view name, std::vector<T> &values, MapEntry map_entry)
    {
        each(name, [&](const Json &entry, const std::string &entry_name) {
            JsonReader inner(entry, path_ + '/' + entry_name, nesting_);
            map_entry(inner, values.emplace_back());
            inner.refuse_other_members();
        });
    }

    template <class T, class MapMembers>
    void object(std::string_view name, std::optional<T> &value, MapMembers map_members)
    {
        if (const Json *found = find(name)) {
            JsonReader inner(*found, path_of(name), nesting_);
            map_members(inner, value.emplace());
            inner.refuse_other_members();
        }
    }

    void makes(std::string_view name, std::initializer_list<std::string_view> values)
    {
        const Json *found = find(name);
        require(!found || std::ranges::find(values, found->get<std::string>()) != values.end(), name,
                fmt::format("must be \"{}\"", fmt::join(values, "\" or \"")));
    }
    void makes(std::string_view name, std::initializer_list<unsigned> values)
    {
        const Json *found = find(name);
        require(!found || std::ranges::find(values, found->get<unsigned>()) != values.end(), name,
                fmt::format("must be {}", fmt::join(values, " or ")));
    }
    void needs(std::string_view name, std::string_view needed)
    {
        const bool is_there = find(name) || find(fmt::format("{}_hex", name));
        require(!is_there || find(needed), needed, fmt::format("is needed with {}", name));
    }

    // Refuses what no record is made of; an empty name stands for the object itself.
    void require(bool possible, std::string_view name, const std::string &reason) const
    {
        check(possible || has_payload_, name, reason);
    }

    // Refuses what nothing reads as.
    void check(bool possible, std::string_view name, const std::string &reason) const
    {
        if (!possible)
            throw JsonError(name.empty() ? path_ : path_ + '/' + std::string(name), reason);
    }

private:
    std::string path_of(std::string_view name) const { return member_path(path_, name); }

    const Json *find(std::string_view name, Presence presence = Presence::optional)
    {
        const std::string &known = *known_.emplace(name).first;
        const auto found = object_.find(known);
        require(found != object_.end() || presence == Presence::optional, name, "is missing");
        return found != object_.end() ? &*found : nullptr;
    }

    template <class Visit> void each(std::string_view name, Visit visit)
    {
        const Json *found = find(name);
        if (!found)
            return;
        check(found->is_array(), name, "must be an array");
        for (size_t i = 0; i < found->size(); ++i)
            visit((*found)[i], fmt::format("{}/{}", name, i));
    }

    void require_size(size_t size, std::string_view name, Sizes sizes, std::string_view unit) const
    {
        require(size >= sizes.least && size <= sizes.most, name, sizes_text(sizes, unit));
    }

    std::string string_of(const Json &json, std::string_view name) const
    {
        check(json.is_string(), name, "must be a string");
        check(is_utf8(json.get_ref<const std::string &>()), name, "must not hold a NUL");
        return json.get<std::string>();
    }

    Bytes bytes_of(const Json &json, std::string_view name) const
    {
        Bytes bytes;
        check(json.is_string(), name, "must be a string of hex digits");
        check(bytes_of_hex(json.get_ref<const std::string &>(), bytes), name, "must be pairs of hex digits");
        return bytes;
    }

    Bytes spelled_bytes(const Json &json, std::string_view name, const Spelling &spelling) const
    {
        const std::optional<Bytes> bytes = spelling.bytes_of(string_of(json, name));
        check(bytes.has_value(), name,
              fmt::format("must be {} bytes such as \"{}\"", spelling.length, spelling.example));
        return *bytes;
    }

    static std::optional<unsigned> nibble_of(std::string_view text)
    {
        unsigned value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const bool whole = error == std::errc() && end == text.data() + text.size();
        return whole && value <= 15 ? std::optional(value) : std::nullopt;
    }

    static std::string all_of(Names names)
    {
        std::vector<std::string_view> all;
        for (const Name &entry : names)
            all.push_back(entry.name);
        return fmt::format("{}", fmt::join(all, ", "));
    }

    template <class Number> Number number_or_name(const Json &json, std::string_view name, Names names) const
    {
        constexpr unsigned max = std::numeric_limits<Number>::max();
        if (json.is_number_unsigned() && json.get<uint64_t>() <= max)
            return json.get<Number>();
        const std::optional<uint32_t> chosen = json.is_string() ? names.value_of(string_of(json, name)) : std::nullopt;
        check(chosen.has_value(), name, fmt::format("must be one of: {}; or a number up to {}", all_of(names), max));
        return static_cast<Number>(*chosen);
    }

    void check_type(const Record &record, std::string_view type, std::string_view name) const
    {
        check(well_known(type).matches(record.format, text_of(record.type)), name,
              fmt::format("must be a record of the well-known type \"{}\"", type));
    }

    const Json &object_;
    std::string path_;
    unsigned nesting_;
    bool has_payload_ = false;
    std::set<std::string, std::less<>> known_;
};

Record generic_of(JsonReader &fields)
{
    Record record;
    uint8_t format = 0;
    fields.choice("tnf", format, type_name_formats);
    record.format = format;
    fields.text_or_hex("type", record.type);
    fields.bytes("payload", record.payload);
    TextOrBytes text;
    fields.text_or_hex("text", text);
    fields.check(text.bytes.empty() || record.payload.empty(), "text", "must not be there along with payload");
    record.payload.insert(record.payload.end(), text.bytes.begin(), text.bytes.end());
    Records nested;
    fields.records("records", nested);
    fields.check(text.bytes.empty() || nested.empty(), "text", "must not be there along with records");
    if (!nested.empty()) {
        const std::optional<Bytes> bytes = encode(nested);
        fields.check(bytes.has_value(), "records", "cannot be encoded");
        record.payload.insert(record.payload.end(), bytes->begin(), bytes->end());
    }
    const bool empty = format == NFC_NDEF_TNF_EMPTY;
    const bool nameless = empty || format == NFC_NDEF_TNF_UNKNOWN || format == NFC_NDEF_TNF_RESERVED;
    const std::string not_for = fmt::format("is not for \"{}\"", *Names(type_name_formats).name_of(format));
    fields.check(!nameless || record.type.empty(), "type", not_for);
    fields.check(record.type.size() <= 255, "type", "must be at most 255 bytes");
    fields.check(!empty || record.payload.empty(), "payload", not_for);
    return record;
}

// What a payload reads as; none when its reader refuses it. `alone` is a record that is a message of its own.
template <class T> std::optional<T> read(const Record &record, bool alone)
{
    nfc_ndef_record_view view{};
    view.payload = bytes_view(record.payload);
    view.payload_length = static_cast<uint32_t>(view.payload.length);
    view.flags = alone ? NFC_NDEF_FLAG_MB | NFC_NDEF_FLAG_ME : 0;
    nfc_ndef_payload_report report;
    return Kind<T>::read(view, Nesting(), report);
}

template <class T> Record typed_of(JsonReader &fields, bool alone)
{
    T content;
    const bool has_payload = fields.takes_payload();
    Kind<T>::map(fields, content);
    Bytes type, payload;
    fields.text_or_hex("type", type);
    fields.bytes("payload", payload);
    const Type &known = Kind<T>::type;
    fields.check(type.empty() || known.matches(known.format, text_of(type)), "type",
                 fmt::format("must be a spelling of \"{}\"", known.name));
    if (!has_payload) {
        std::optional<Record> record = build(std::move(content));
        fields.check(record.has_value(), "", "holds values that do not make a record");
        // Each member may be right, and the payload yet have more nested records than any reader takes.
        fields.check(read<T>(*record, true).has_value(), "", "holds values that make a record that nobody can read");
        if (!type.empty())
            record->type = std::move(type);
        return *std::move(record);
    }
    Record record = generic_record({known.format, type.empty() ? known.name : text_of(type)}, std::move(payload));
    const std::optional<T> again = read<T>(record, alone);
    fields.check(again.has_value(), "payload", "is not one of this kind of record");
    fields.check(*again == content, "payload", "does not read as the other members say: leave it out to change them");
    record.content = std::move(content);
    return record;
}

Record record_of(const Json &json, const std::string &path, unsigned nesting, bool alone, GenericControl::Flags *flags)
{
    JsonReader fields(json, path, nesting);
    fields.check(nesting <= max_nesting, "", "is nested too deep");
    std::string kind;
    const auto kind_member = json.find("kind");
    fields.check(kind_member != json.end(), "kind", "is missing");
    fields.text_or_hex("kind", kind);
    Record record;
    std::string kinds = "generic";
    const auto read_kind = [&]<class T>(std::type_identity<T>) {
        kinds.append(", ").append(Kind<T>::json);
        if (kind != Kind<T>::json)
            return false;
        record = typed_of<T>(fields, alone);
        return true;
    };
    if (kind == "generic")
        record = generic_of(fields);
    else if (!AllKinds::any(read_kind))
        fields.check(false, "kind", "must be one of: " + kinds);
    fields.text_or_hex("id", record.id);
    fields.check(record.id.size() <= 255, "id", "must be at most 255 bytes");
    fields.check(record.format != NFC_NDEF_TNF_EMPTY || record.id.empty(), "id", "is not for \"empty\"");
    if (flags) {
        fields.flag("mb", flags->mb);
        fields.flag("me", flags->me);
        fields.flag("cf", flags->cf);
    }
    fields.refuse_other_members();
    return record;
}

Records records_of(const Json &json, const std::string &path, unsigned nesting)
{
    if (!json.is_array())
        throw JsonError(path, "must be an array");
    if (json.size() > max_records)
        throw JsonError(path, fmt::format("must hold at most {} records", max_records));
    Records records;
    for (size_t i = 0; i < json.size(); ++i) {
        const bool alone = nesting > 0 || json.size() == 1 || is_sequence(records);
        records.push_back(record_of(json[i], fmt::format("{}/{}", path, i), nesting, alone));
    }
    return records;
}

Records message_of(const Json &json, std::string_view ignored)
{
    const size_t members = json.is_object() ? json.size() - json.count(std::string(ignored)) : 0;
    if (!json.is_object() || !json.contains("records") || members != 1)
        throw JsonError("", "must be an object with the member records alone");
    Records records = records_of(json["records"], "/records", 0);
    if (records.empty())
        throw JsonError("/records", "must not be empty");
    const std::optional<Bytes> bytes = encode(records);
    if (!bytes)
        throw JsonError("/records", "cannot be encoded");
    nfc_ndef_msg_report report{};
    if (nfc_ndef_msg_check(bytes->data(), 0, static_cast<uint32_t>(bytes->size()), &report) != 1)
        throw JsonError(fmt::format("/records/{}", report.record), nfc_ndef_msg_check_text(report.reason));
    return records;
}

} // namespace

Records from_json(std::string_view text) { return message_of(parse_json(text), "$schema"); }
Records from_json_line(std::string_view text) { return message_of(parse_json(text), "line"); }

} // namespace nfc_ndef::values
