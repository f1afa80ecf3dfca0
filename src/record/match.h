// Whether a record's type matches a key: NFC Forum RTD 1.0.
#pragma once

#include "host/block.h"

namespace ndef {

inline bool has_name(const nfc_ndef_record_type &type) { return type.name && type.name_length != 0; }

// The formats other than well-known.
bool other_type_equals(const nfc_ndef_record_type &key, const nfc_ndef_record_type &candidate);

// Well-known types, which a nested message is mostly made of, are compared without a call.
inline bool type_equals(const nfc_ndef_record_type &key, const nfc_ndef_record_type &candidate)
{
    if (key.format != candidate.format)
        return false;
    if (key.format != NFC_NDEF_TNF_WELL_KNOWN)
        return other_type_equals(key, candidate);
    if (key.name_length != candidate.name_length || !has_name(key) || !has_name(candidate))
        return false;
    for (size_t i = 0; i < key.name_length; ++i)
        if (key.name[i] != candidate.name[i])
            return false;
    return true;
}

} // namespace ndef
