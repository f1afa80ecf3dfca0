// The types of record as values: the input's first byte says which type, the second whether the rest is a payload to
// read or members to make a record of. All goes over the one list of types, so that a new one takes part by itself.
#include "values.h"

#include <nfc_ndef/printable.h>

#include <nlohmann/json.hpp>

using namespace fuzz;
namespace values = nfc_ndef::values;
using values::Kind;

namespace {

// Fills members with what the input holds, which may be far from what a record can be made of.
class Arbitrary {
public:
    template <class T> using Value = T;
    using Name = std::string_view;
    static constexpr bool reads = true;

    explicit Arbitrary(Input &in) : in_(in) {}

    void flag(Name, auto &value, auto...) { fill(value); }
    void number(Name, auto &value, auto...) { fill(value); }
    void version(Name, auto &value) { fill(value); }
    void choice(Name, auto &value, auto...) { fill(value); }
    void enumeration(Name, auto &value, auto...) { fill(value); }
    void bit_set(Name, auto &value, values::Names) { fill(value); }
    void boolean(Name, auto &value) { fill(value); }
    void text_or_hex(Name, auto &value, values::Sizes = {}, values::Presence = {}) { fill(value); }
    void texts(Name, auto &value, values::Sizes = {}) { fill(value); }
    void bytes(Name, auto &value, values::Sizes = {}) { fill(value); }
    void byte_strings(Name, auto &value, auto...) { fill(value); }
    void spelled(Name, auto &value, auto...) { fill(value); }
    void spelled_as_one_of(Name, Bytes &value, const auto &spellings)
    {
        const ByteView bytes = in_.take(spellings[in_.u8() % std::size(spellings)].length);
        value.assign(bytes.begin(), bytes.end());
    }
    void spelled_list(Name, auto &value, auto...) { fill(value); }
    void record(Name, auto &value, Name type, auto...) { fill(value, type); }
    void record_with_flags(Name, auto &value, auto &flags)
    {
        fill(value), flags = {any<bool>(), any<bool>(), any<bool>()};
    }
    void records(Name, auto &value, Name type = {}) { fill(value, type); }
    void records_kept(Name, auto &) {}
    void objects(Name, auto &value, auto map_entry)
    {
        value.resize(in_.u8());
        for (auto &entry : value)
            map_entry(*this, entry);
    }
    template <class T> void object(Name, std::optional<T> &value, auto map_members)
    {
        if (any<bool>())
            map_members(*this, value.emplace());
    }
    template <class T> void makes(Name, std::initializer_list<T>) {}
    void needs(Name, Name) {}
    void require(bool, Name, const std::string &) {}

private:
    template <class T> T any()
    {
        T value{};
        fill(value);
        return value;
    }
    void fill(bool &value) { value = (in_.u8() & 1) != 0; }
    void fill(uint8_t &value) { value = in_.u8(); }
    void fill(uint16_t &value) { value = static_cast<uint16_t>(any<uint8_t>() << 8 | in_.u8()); }
    void fill(std::string &value) { value = values::text_of(any<Bytes>()); }
    void fill(values::TextOrBytes &value) { fill(value.bytes), value.is_text = values::is_utf8(value.bytes); }
    template <size_t N> void fill(std::array<uint8_t, N> &value) { std::ranges::copy(in_.take(N), value.begin()); }
    template <class T> void fill(std::vector<T> &values)
    {
        values.resize(any<uint8_t>() + any<bool>()); // up to more than a byte can say
        for (T &value : values)
            fill(value);
    }
    template <class T> void fill(std::optional<T> &value)
    {
        if (any<bool>())
            fill(value.emplace());
    }
    void fill(values::OptionalRecord &value, Name type = {})
    {
        if (any<bool>())
            value = any_record(type);
    }
    void fill(values::Records &values, Name type)
    {
        for (size_t count = in_.u8() & 63; count > 0; --count) // which can be read, whatever else is in the message
            values.push_back(any_record(type));
    }
    values::Record any_record(Name type)
    {
        const values::Type any_type = type.empty() ? values::media("image/png") : values::well_known(type);
        return values::generic_record(any_type, any<Bytes>(), any<Bytes>());
    }

    Input &in_;
};

std::optional<values::Record> accepted(const std::string &json)
{
    try {
        return values::from_json(json).at(0);
    } catch (const values::JsonError &) {
        return std::nullopt;
    }
}

// The message of this record alone, from its bytes.
values::Records reread(const values::Record &record) { return values::decode(*values::encode({record})).value(); }

template <class T> const T *read_as(const values::Records &message) { return std::get_if<T>(&message[0].content); }

template <class T> void read(ByteView payload, bool alone)
{
    const values::Type &type = Kind<T>::type;
    const nfc_ndef::Record record = make_record(type.format, values::view_of(type.name), {}, payload);
    record->mb = record->me = alone;
    const Memory memory;
    nfc_ndef_payload_report report;
    const std::optional<T> value = Kind<T>::read(nfc_ndef_record_view_of(record.get()), values::Nesting(), report);
    must(memory.allocations() == 0, "values are read in place");
    if (!value)
        return;
    const values::Records message = reread(values::decode(*record));
    must(read_as<T>(message) && *read_as<T>(message) == *value, "a record reads the same in a message");
    // Without the payload, which is there when what the members make has another one.
    nlohmann::json members = nlohmann::json::parse(check(message));
    if (members["records"][0].erase("payload") == 0)
        return;
    if (const auto made = accepted(members.dump())) {
        const values::Records again = reread(*made);
        must(read_as<T>(again) && *read_as<T>(again) == *value, "what the members make reads as these members");
    }
}

template <class T> void make(Input &in)
{
    T value;
    Arbitrary fields(in);
    Kind<T>::map(fields, value);
    const std::optional<values::Record> made = values::build(value);
    if (!made)
        return;
    const values::Records message = reread(*made);
    if (read_as<T>(message))
        check(message);
    else
        must(!accepted(values::to_json({*made})), "what JSON accepts reads");
}

} // namespace

void fuzz::run(ByteView input)
{
    Input in(input);
    const size_t choice = in.u8() % (std::variant_size_v<values::Content> - 1);
    const uint8_t how = in.u8();
    size_t number = 0;
    values::AllKinds::any([&]<class T>(std::type_identity<T>) {
        if (number++ != choice)
            return false;
        (how & 1) != 0 ? read<T>(in.rest(), (how & 2) != 0) : make<T>(in);
        return true;
    });
}
