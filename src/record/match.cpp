#include "record/match.h"

#include <algorithm>
#include <array>

namespace {

using ndef::ByteView;

uint8_t lower(uint8_t byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<uint8_t>(byte + ('a' - 'A')) : byte; }

bool equal_ignoring_case(ByteView a, ByteView b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](uint8_t x, uint8_t y) { return lower(x) == lower(y); });
}

// Where the compared part of a media type ends: at its parameters or at a wildcard. Its length when it has neither.
size_t find_mark(ByteView name)
{
    constexpr std::array<uint8_t, 2> marks{';', '*'};
    return static_cast<size_t>(std::find_first_of(name.begin(), name.end(), marks.begin(), marks.end()) - name.begin());
}

// The two sides are read differently: only in the key does a wildcard take the character before it along.
bool media_type_equals(ByteView key, ByteView candidate)
{
    const size_t candidate_part = find_mark(candidate);
    if (candidate_part == 0)
        return true;
    size_t key_part = find_mark(key);
    if (key_part == key.size()) {
        if (candidate_part == candidate.size())
            return equal_ignoring_case(key, candidate);
    } else if (key[key_part] == '*') {
        if (key_part == 0)
            return false; // compared byte for byte, and '*' begins no candidate here
        --key_part;
    }
    const size_t compared = std::min(key_part, candidate_part);
    return equal_ignoring_case(key.first(compared), candidate.first(compared));
}

} // namespace

bool ndef::other_type_equals(const nfc_ndef_record_type &key, const nfc_ndef_record_type &candidate)
{
    if (key.format == NFC_NDEF_TNF_EMPTY || key.format == NFC_NDEF_TNF_UNKNOWN)
        return !key.name && !candidate.name && key.name_length == 0 && candidate.name_length == 0;
    if (!has_name(key) || !has_name(candidate))
        return false;
    const ByteView key_name{key.name, key.name_length};
    const ByteView candidate_name{candidate.name, candidate.name_length};
    switch (key.format) {
    case NFC_NDEF_TNF_MIME:
        return media_type_equals(key_name, candidate_name);
    case NFC_NDEF_TNF_ABSOLUTE_URI:
    case NFC_NDEF_TNF_EXTERNAL:
        return equal_ignoring_case(key_name, candidate_name);
    default:
        return false;
    }
}

uint8_t nfc_ndef_record_type_equals(const nfc_ndef_record_type *key, const nfc_ndef_record_type *candidate)
{
    if (key == candidate)
        return 1;
    return key && candidate && ndef::type_equals(*key, *candidate);
}
