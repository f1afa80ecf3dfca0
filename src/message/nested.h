// Taking records out of a message that is another record's payload.
#pragma once

#include "message/scan.h"

#include <initializer_list>

namespace ndef {

// The records of a nested message, sorted by type: each belongs to the first of the given types that it matches, or to
// none. Types are referred to by their position in that list. Only what is taken is copied; what was taken is gone.
class Nested {
public:
    using Type = uint8_t;
    static constexpr size_t most_types = 8;
    static constexpr Type any = most_types; // whatever has not been taken

    template <size_t n> Nested(ByteView message, const nfc_ndef_record_type (&types)[n]) : scan_(message)
    {
        static_assert(n <= most_types);
        sort(types);
    }

    bool valid() const { return scan_.valid(); }
    size_t count(Type type) const { return count_[type]; }

    // The first record of a type, which must have one: to look at, and to take without a copy.
    WholeRecord first(Type type) const { return scan_.at(find(type)); }
    void drop_first(Type type) { mark_taken(find(type)); }

    // Takes the first record of a type, if any; false when memory runs out. The output is written only with a record.
    bool take_first(Type type, nfc_ndef_record **record);

    // Takes all records of the types, type after type; false when memory runs out, with the count 0 and the array null.
    // When there are none the outputs are not written.
    bool take_all(std::initializer_list<Type> types, uint8_t *count, nfc_ndef_record ***records);

private:
    static constexpr Type no_type = most_types + 1;
    static constexpr Type taken = most_types + 2;

    bool is(size_t position, Type type) const
    {
        return type == any ? type_[position] != taken : type_[position] == type;
    }
    void sort(std::span<const nfc_ndef_record_type> types);
    size_t find(Type type) const;
    void mark_taken(size_t position);

    Scan scan_;
    std::array<Type, Scan::most_read> type_;      // of each whole record, where it begins
    std::array<uint8_t, most_types + 2> count_{}; // left, of each type, of any and of none
};

} // namespace ndef
