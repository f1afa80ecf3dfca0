// What the targets of the record types share.
#pragma once

#include "fuzz.h"

#include <initializer_list>

namespace fuzz {

using nfc_ndef::Record;

// A record with this payload, as an extractor sees it; they do not look at its type.
inline Record with_payload(ByteView payload) { return make_record(NFC_NDEF_TNF_UNKNOWN, {}, {}, payload); }

inline void must_be_one_of(int result, std::initializer_list<int> allowed)
{
    must(std::count(allowed.begin(), allowed.end(), result) == 1, "the result is one that the extractor has");
}

// The input's first byte says which type. An odd one reads the rest as a payload, an even one builds a record of it.
template <size_t N> void run_type(ByteView input, void (*const (&types)[N])(Input &, bool building))
{
    Input in(input);
    const uint8_t choice = in.u8();
    types[choice / 2 % N](in, choice % 2 == 0);
}

// An extractor takes no more memory than the payload allows.
template <class Extract> auto within_memory(ByteView payload, Extract extract)
{
    const Memory memory;
    auto read = extract();
    must(memory.peak() <= most_memory(payload.size()), "memory stays in proportion to the payload");
    return read;
}

} // namespace fuzz
