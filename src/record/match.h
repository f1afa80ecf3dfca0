// Whether a record's type matches a key: NFC Forum RTD 1.0.
#pragma once

#include "record/known_type.h"

namespace ndef {

// Whether two names of one format match; neither is empty.
bool names_match(uint32_t format, ByteView key, ByteView candidate);

// A type to be compared with several known ones.
class CandidateType {
public:
    CandidateType(uint32_t format, ByteView name)
        : format_(format), short_name_(format == NFC_NDEF_TNF_WELL_KNOWN ? short_name(name) : 0), name_(name)
    {
    }
    bool matches(const KnownType &key) const
    {
        if (short_name_ != 0)
            return key.short_name == short_name_;
        return key.format == format_ && !name_.empty() && names_match(format_, key.bytes(), name_);
    }

private:
    uint32_t format_;
    uint32_t short_name_; // of a well-known type, else 0
    ByteView name_;
};

// The position of the first of several keys that a type matches; their number when it matches none.
inline size_t position_of(const CandidateType &candidate, std::span<const KnownType> keys)
{
    size_t position = 0;
    while (position < keys.size() && !candidate.matches(keys[position]))
        ++position;
    return position;
}

} // namespace ndef
