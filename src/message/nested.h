// Taking records out of a message that is another record's payload.
#pragma once

#include "message/scan.h"
#include "record/match.h"

#include <initializer_list>

namespace ndef {

// The records of a nested message, sorted by type: each belongs to the first of the given types that it matches, or to
// none. Types are referred to by their position in that list. Only what is taken is copied; what was taken is gone.
class Nested {
public:
    using Type = uint8_t;
    static constexpr size_t most_types = 8;

    template <size_t n> Nested(ByteView message, const KnownType (&types)[n]) : scan_(message)
    {
        static_assert(n <= most_types);
        if (scan_.valid())
            scan_.each([&](const WholeRecord &record) { return add(record, type_of(record, types)); });
    }

    bool valid() const { return scan_.valid(); }
    size_t count(Type type) const { return count_[type]; }

    // The first record of a type, which must have one: to look at, and to take without a copy.
    WholeRecord first(Type type) { return scan_.at(find(type).position); }
    void drop_first(Type type) { mark_taken(find(type)); }

    // Takes the first record of a type, if any; false when memory runs out. The output is written only with a record.
    bool take_first(Type type, nfc_ndef_record **record);

    // Takes all records of the types, type after type; false when memory runs out, with the count 0 and the array null.
    // When there are none the outputs are not written.
    bool take_all(std::initializer_list<Type> types, uint8_t *count, nfc_ndef_record ***records);

    // In the same way, whatever has not been taken.
    bool take_rest(uint8_t *count, nfc_ndef_record ***records);

private:
    static constexpr Type rest = most_types; // of no type that was given
    static constexpr Type taken = most_types + 1;

    struct Part {
        uint8_t position; // in the scan
        Type type;
    };

    template <size_t n> static Type type_of(const WholeRecord &record, const KnownType (&types)[n])
    {
        const CandidateType candidate(record.first()->format(), record.first()->type());
        constexpr Type end = n;
        for (Type type = 0; type < end; ++type)
            if (candidate.matches(types[type]))
                return type;
        return rest;
    }
    bool add(const WholeRecord &record, Type type)
    {
        parts_[size_++] = {static_cast<uint8_t>(scan_.position(record)), type};
        ++count_[type];
        ++left_;
        return true;
    }
    Part &find(Type type);
    void mark_taken(Part &part);

    Scan scan_;
    std::array<Part, most_read> parts_; // the first size_ are set
    uint8_t size_ = 0;
    uint8_t left_ = 0;                            // not taken
    std::array<uint8_t, most_types + 1> count_{}; // of the parts not taken, by type
};

} // namespace ndef
