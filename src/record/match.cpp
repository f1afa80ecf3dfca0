#include "record/match.h"

namespace {

using ndef::ByteView;

// Of ASCII letters.
uint8_t lower(uint8_t byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<uint8_t>(byte + ('a' - 'A')) : byte; }

// A loop, because the names of well-known types are shorter than a call of memcmp.
bool equal_bytes(ByteView a, ByteView b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (a[i] != b[i])
            return false;
    return true;
}

// How many letters two names have in common at their front, in any case.
[[gnu::noinline]] size_t common_length(ByteView a, ByteView b)
{
    size_t length = 0;
    while (length < a.size() && length < b.size() && (a[length] == b[length] || lower(a[length]) == lower(b[length])))
        ++length;
    return length;
}

bool equal_ignoring_case(ByteView a, ByteView b) { return a.size() == b.size() && common_length(a, b) == a.size(); }

// What ends the compared part of a media type: its parameters, or a wildcard.
bool is_mark(uint8_t c) { return c == ';' || c == '*'; }

[[gnu::noinline]] size_t find_mark(ByteView name)
{
    size_t mark = 0;
    while (mark < name.size() && !is_mark(name[mark]))
        ++mark;
    return mark;
}

// Whether a key's part and a candidate agree until one of them ends.
bool agree(ByteView part, ByteView candidate)
{
    const size_t common = common_length(part, candidate);
    return common == part.size() || common == candidate.size() || is_mark(candidate[common]);
}

// The two sides are read differently: only in the key does a wildcard take the character before it along.
bool media_type_equals(ByteView key, ByteView candidate)
{
    if (is_mark(candidate[0]))
        return true;
    // Most are told apart by their first letter, unless what ends the key takes it away.
    const bool has_letter = !is_mark(key[0]) && (key.size() == 1 || key[1] != '*');
    if (has_letter && lower(key[0]) != lower(candidate[0]))
        return false;
    const size_t mark = find_mark(key);
    if (mark == key.size())
        return find_mark(candidate) == candidate.size() ? equal_ignoring_case(key, candidate) : agree(key, candidate);
    if (key[mark] == ';')
        return agree(key.first(mark), candidate);
    return mark != 0 && agree(key.first(mark - 1), candidate); // '*' begins no candidate here
}

bool has_name(const nfc_ndef_record_type &type) { return type.name && type.name_length != 0; }

bool type_equals(const nfc_ndef_record_type &key, const nfc_ndef_record_type &candidate)
{
    if (key.format != candidate.format)
        return false;
    if (key.format == NFC_NDEF_TNF_EMPTY || key.format == NFC_NDEF_TNF_UNKNOWN)
        return !key.name && !candidate.name && key.name_length == 0 && candidate.name_length == 0;
    return has_name(key) && has_name(candidate) &&
           ndef::names_match(key.format, {key.name, key.name_length}, {candidate.name, candidate.name_length});
}

} // namespace

bool ndef::names_match(uint32_t format, ByteView key, ByteView candidate)
{
    switch (format) {
    case NFC_NDEF_TNF_WELL_KNOWN:
        return equal_bytes(key, candidate);
    case NFC_NDEF_TNF_MIME:
        return media_type_equals(key, candidate);
    case NFC_NDEF_TNF_ABSOLUTE_URI:
    case NFC_NDEF_TNF_EXTERNAL:
        return equal_ignoring_case(key, candidate);
    default:
        return false;
    }
}

uint8_t nfc_ndef_record_type_equals(const nfc_ndef_record_type *key, const nfc_ndef_record_type *candidate)
{
    if (key == candidate)
        return 1;
    return key && candidate && type_equals(*key, *candidate);
}
