#include "record/match.h"
#include "record/view.h"

#include <algorithm>
#include <utility>

using namespace ndef;

namespace {

constexpr auto *first_with_a_long_name = std::find_if(std::begin(types_of_kinds), std::end(types_of_kinds),
                                                      [](const TypeOfKind &one) { return one.type.short_name == 0; });
constexpr size_t short_names = first_with_a_long_name - std::begin(types_of_kinds);

// All numbers are constants here, so that the compiler finds the right one by a few comparisons.
template <size_t... i> nfc_ndef_kind kind_of_short(uint32_t name, std::index_sequence<i...>)
{
    nfc_ndef_kind kind = NFC_NDEF_KIND_OTHER;
    static_cast<void>(((name == types_of_kinds[i].type.short_name && (kind = types_of_kinds[i].kind, true)) || ...));
    return kind;
}

// Whether a media type may match one of another length: it has parameters, or a wildcard.
bool has_mark(uint32_t format, ByteView name)
{
    const auto holds = [&](char mark) { return std::memchr(name.data(), mark, name.size()) != nullptr; };
    return format == NFC_NDEF_TNF_MIME && (holds(';') || holds('*'));
}

// Apart, so that the usual way saves no registers.
[[gnu::noinline]] nfc_ndef_kind kind_of_long(uint32_t format, ByteView name)
{
    if (name.empty())
        return NFC_NDEF_KIND_OTHER;
    const bool any_length = has_mark(format, name);
#pragma GCC unroll 1
    for (const auto &[type, kind] : std::span(first_with_a_long_name, std::end(types_of_kinds)))
        if (type.format == format && (any_length || type.name.size() == name.size()) &&
            // Most spell a type as it is written down.
            ((!any_length && std::memcmp(type.name.data(), name.data(), name.size()) == 0) ||
             names_match(format, type.bytes(), name)))
            return kind;
    return NFC_NDEF_KIND_OTHER;
}

} // namespace

uint32_t nfc_ndef_record_view_kind(const nfc_ndef_record_view *record)
{
    const ByteView name = bytes_of(record->type);
    return record->format == NFC_NDEF_TNF_WELL_KNOWN
               ? kind_of_short(short_name(name), std::make_index_sequence<short_names>())
               : kind_of_long(record->format, name);
}
