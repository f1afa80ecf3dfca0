// What is known of a type of record, all in one place: the trait Kind.
#pragma once

#include "bytes.h"
#include "names.h"
#include "nesting.h"
#include "type.h"
#include "view.h"

#include <nfc_ndef.hpp>
#include <nfc_ndef_types.h>

#include <concepts>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace nfc_ndef::values {

/**
 * The trait of a type of record. Each is a specialisation in a header of types/ and holds:
 *
 *     static constexpr Type type;               the record type that it is found by
 *     static constexpr std::string_view json;   the "kind" of its JSON form
 *     static constexpr std::string_view title;  what people call it
 *     static std::optional<T> read(const nfc_ndef_record_view &, const Nesting &, nfc_ndef_payload_report &);
 *                                               none if the payload is refused, with the reason
 *     static nfc_ndef::Record make(const T &);  a record without an id; null for values that make none
 *     template <class Fields> static void map(Fields &, Value<Fields, T> &);  its members, in order
 *     static void show(const T &, View &);      what it tells people
 *     static std::string summary(const T &);    that in a heading; may be left out
 *
 * and inherits from Leaf or Nests<n>. A type that lacks one of them does not compile.
 */
template <class T> struct Kind;

// A type that nests no message, or one behind the first `Prefix` bytes of its payload.
struct Leaf {
    static constexpr std::optional<size_t> nested_at = std::nullopt;
};
template <size_t Prefix> struct Nests {
    static constexpr std::optional<size_t> nested_at = Prefix;
};

// Only the bytes of the record are known.
struct Generic {
    nfc_ndef_payload_report refused{}; // why the reader of a known type refuses the payload, if it does
    bool unopened = false;             // nested too deep, or behind too many others, to be looked into

    bool malformed() const { return refused.reason != NFC_NDEF_PAYLOAD_VALID; }
};

// A writer reads the value, a reader fills it in.
template <class Fields, class T> using Value = typename Fields::template Value<T>;

enum class Presence { optional, required };

// How many bytes or entries a member may have, where it is there.
struct Sizes {
    size_t least = 0, most = std::numeric_limits<size_t>::max();
};
constexpr Sizes exactly(size_t size) { return {size, size}; }
constexpr Sizes at_most(size_t size) { return {0, size}; }

// A text that may not be one: then its bytes take the place of it, under a name that ends in "_hex".
struct TextOrBytes {
    std::string bytes;
    bool is_text = true;
};

struct AnyFields {
    template <class T> using Value = T;
};

// Names what each Kind must have, so that the compiler names what one of them lacks.
template <class T> consteval bool is_complete()
{
    using K = Kind<T>;
    static_assert(std::same_as<std::remove_const_t<decltype(K::type)>, Type>);
    static_assert(std::same_as<decltype(K::json), const std::string_view>);
    static_assert(std::same_as<decltype(K::title), const std::string_view>);
    static_assert(std::same_as<decltype(K::nested_at), const std::optional<size_t>>);
    static_assert(std::same_as<decltype(&K::read), std::optional<T> (*)(const nfc_ndef_record_view &, const Nesting &,
                                                                        nfc_ndef_payload_report &)>);
    static_assert(std::same_as<decltype(&K::make), nfc_ndef::Record (*)(const T &)>);
    static_assert(std::same_as<decltype(&K::show), void (*)(const T &, View &)>);
    static_assert(sizeof(static_cast<void (*)(AnyFields &, T &)>(&K::template map<AnyFields>)) != 0);
    return true;
}

// A list of types and what follows from it alone: every loop over types is one over this list.
template <class... T> struct Kinds {
    static_assert((is_complete<T>() && ...));

    using Content = std::variant<Generic, T...>;

    // Calls with each type, as std::type_identity, until one call gives true; tells whether one did.
    template <class Visit> static bool any(Visit visit) { return (visit(std::type_identity<T>{}) || ...); }
    template <class Visit> static void each(Visit visit) { (visit(std::type_identity<T>{}), ...); }

    // Calls with the type that records of this format and name are of; tells whether there is one.
    template <class Visit> static bool of_type(uint32_t format, std::string_view name, Visit visit)
    {
        return any([&]<class K>(std::type_identity<K> kind) {
            const bool found = Kind<K>::type.matches(format, name);
            if (found)
                visit(kind);
            return found;
        });
    }
};

} // namespace nfc_ndef::values
