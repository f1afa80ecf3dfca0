// The types of record as values: the input's first byte says which type, the second whether the rest is a payload to
// read or the members to make a record of. All goes over the one list of types, so that a new one takes part by itself.
#include "fuzz.h"
#include "printable.h"

#include <nfc_ndef/values.h>

#include <nlohmann/json.hpp>

#include <numeric>

using namespace fuzz;
namespace values = nfc_ndef::values;
using values::Kind;

namespace {

// Fills members with what the input holds, which may be far from what a record can be made of.
class Arbitrary {
public:
    template <class T> using Value = T;
    using Name = std::string_view;
    using Presence = values::Presence;
    using Sizes = values::Sizes;
    static constexpr bool reads = true;

    explicit Arbitrary(Input &in) : in_(in) {}

    void flag(Name, bool &value) { value = some(); }
    template <class Number> void number(Name, Number &value)
    {
        for (size_t i = 0; i < sizeof value; ++i)
            value = static_cast<Number>(value << 8 | in_.u8());
    }
    template <class Number> void number(Name name, std::optional<Number> &value, Presence = {})
    {
        if (some())
            number(name, value.emplace());
    }
    void version(Name name, uint8_t &value) { number(name, value); }
    void choice(Name, uint8_t &value, values::Names names, Presence = {})
    {
        const uint8_t any = in_.u8(), number = any & 31;
        const bool named = number < names.end() - names.begin();
        value = any >= 0xE0 ? any : named ? static_cast<uint8_t>(names.begin()[number].value) : uint8_t{0};
    }
    void text_or_hex(Name, values::TextOrBytes &value, Sizes sizes = {}, Presence = {})
    {
        take(value.bytes, sizes);
        value.is_text = values::is_utf8(value.bytes);
    }
    template <class Container> void text_or_hex(Name, Container &value, Sizes sizes = {}, Presence = {})
    {
        take(value, sizes);
    }
    void texts(Name, std::vector<std::string> &texts, Sizes sizes)
    {
        each(texts, [&](std::string &text) { take(text, sizes); });
    }
    void bytes(Name, Bytes &value, Sizes sizes = {}) { take(value, sizes); }
    template <size_t N> void bytes(Name, std::array<uint8_t, N> &value)
    {
        std::ranges::copy(in_.take(N), value.begin());
    }
    template <class... Rest> void spelled(Name name, auto &value, const values::Spelling &, Rest...)
    {
        if constexpr (requires { value.emplace(); })
            some() ? bytes(name, value.emplace()) : value.reset();
        else
            bytes(name, value);
    }
    void spelled_list(Name, Bytes &value, const values::Spelling &spelling, Sizes counts)
    {
        take(value, {0, counts.most * spelling.length});
        if (some())
            value.resize(value.size() / spelling.length * spelling.length);
    }
    void record(Name, values::OptionalRecord &value, std::string_view type, Presence = {})
    {
        if (some())
            value = nested(type);
    }
    void record_with_flags(Name name, values::OptionalRecord &value, auto &flags)
    {
        flags = {some(), some(), some()};
        record(name, value, "");
    }
    void records(Name, values::Records &records, std::string_view type = {})
    {
        each(records, [&](values::Record &record) { record = nested(type); });
    }
    void records_kept(Name, values::Records &) {}
    template <class T, class MapEntry> void objects(Name, std::vector<T> &values, MapEntry map_entry)
    {
        each(values, [&](T &value) { map_entry(*this, value); });
    }
    void makes(Name, std::initializer_list<std::string_view>) {}
    void makes(Name, std::initializer_list<unsigned>) {}
    void needs(Name, Name) {}
    void require(bool, Name, const std::string &) {}

private:
    bool some() { return (in_.u8() & 1) != 0; }

    // Any number of bytes, with one byte for each bound and what is just beyond.
    void take(auto &value, Sizes sizes)
    {
        const size_t most = std::min<size_t>(sizes.most, UINT8_MAX), any = in_.u8();
        const size_t length = any == 0xFF ? most + 1 : any == 0xFE ? most : any;
        const ByteView taken = in_.take(length);
        value.assign(taken.begin(), taken.end());
        value.resize(length, 'x');
    }
    void each(auto &list, auto fill)
    {
        const uint8_t count = in_.u8();
        list.resize(count == 0xFF ? 256 : count & 7);
        std::ranges::for_each(list, fill);
    }
    values::Record nested(std::string_view well_known)
    {
        static constexpr std::array types{values::media("image/png"), values::media("VIDEO/mp4"),
                                          values::external("a:b"), values::well_known("T")};
        const values::Type type = well_known.empty() ? types[in_.u8() % types.size()] : values::well_known(well_known);
        values::Record record = values::generic_record(type, {});
        take(record.payload, {});
        take(record.id, {});
        return record;
    }

    Input &in_;
};

class Watched final : public values::View {
public:
    explicit Watched(const values::Record &record) : payload_(record.payload) {}
    void field(std::string_view, std::string_view printable) override { must_be_printable(printable); }
    void text(std::string_view, ByteView, Encoding, std::string_view remark) override { must_be_printable(remark); }
    void bytes(std::string_view, ByteView) override {}
    void warning(std::string_view printable) override { must_be_printable(printable); }
    void record(std::string_view, const values::Record &) override {}
    void records(std::string_view, const values::Records &) override {}
    void message(std::string_view, const values::Records &) override {}
    void reference(std::string_view, ByteView) override {}
    ByteView payload() const override { return payload_; }

private:
    ByteView payload_;
};

// A record by itself, from its bytes.
values::Record reread(const values::Record &record) { return values::decode(*values::encode({record})).value().at(0); }

std::optional<values::Record> accepted(const std::string &json)
{
    try {
        return values::from_json(json).at(0);
    } catch (const values::JsonError &) {
        return std::nullopt;
    }
}

template <class T> void check(const values::Record &record, const T &value)
{
    Watched view(record);
    Kind<T>::show(value, view);
    const std::string json = values::to_json({record});
    must_be_printable(json);
    std::optional<values::Record> made = accepted(json);
    must(made == record, "the JSON of a record makes its bytes");

    // Without the payload, which is there when other bytes than what the members make were read.
    nlohmann::json members = nlohmann::json::parse(json);
    if (members["records"][0].erase("payload") != 0)
        made = accepted(members.dump());
    if (!made)
        return;
    const values::Record again = reread(*made);
    const T *const same = std::get_if<T>(&again.content);
    must(same && *same == value, "what the members make reads as these members");
}

template <class T> void read(ByteView payload, bool alone)
{
    const values::Type &type = Kind<T>::type;
    const nfc_ndef::Record record = make_record(type.format, values::view_of(type.name), {}, payload);
    record->mb = record->me = alone;
    const Memory memory;
    const std::optional<T> value = Kind<T>::read(nfc_ndef_record_view_of(record.get()), values::Nesting());
    must(memory.allocations() == 0, "values are read in place");
    if (!value)
        return;
    const values::Record again = reread(values::decode(*record));
    const T *const same = std::get_if<T>(&again.content);
    must(same && *same == *value, "a record reads the same in a message");
    check(again, *value);
}

template <class T> void make(Input &in)
{
    T value;
    Arbitrary fields(in);
    Kind<T>::map(fields, value);
    const std::optional<values::Record> made = values::build(value);
    if (!made)
        return;
    const values::Record again = reread(*made);
    if (const T *const read = std::get_if<T>(&again.content))
        check(again, *read);
    else
        must(!accepted(values::to_json({*made})), "what JSON accepts reads");
}

} // namespace

void fuzz::run(ByteView input)
{
    Input in(input);
    const uint8_t choice = in.u8(), how = in.u8();
    // The sum of the letters of its type, by which seeds name it, or its number in the list.
    const auto by_name = [&](const values::Type &type, size_t) {
        return choice == static_cast<uint8_t>(std::accumulate(type.name.begin(), type.name.end(), 0));
    };
    const auto by_number = [&](const values::Type &, size_t number) {
        return choice % (std::variant_size_v<values::Content> - 1) == number;
    };
    const auto run_first = [&](auto is_chosen) {
        size_t number = 0;
        return values::AllKinds::any([&]<class T>(std::type_identity<T>) {
            if (!is_chosen(Kind<T>::type, number++))
                return false;
            (how & 1) != 0 ? read<T>(in.rest(), (how & 2) != 0) : make<T>(in);
            return true;
        });
    };
    run_first(by_name) || run_first(by_number);
}
