// What every builder of a record type shares.
#pragma once

#include "record/known_type.h"
#include "record/record.h"
#include "record/view.h"

namespace ndef {

// Whether an optional id, its length and the flag that announces it go together.
inline bool is_optional_id(const uint8_t *id, uint8_t id_length, uint8_t id_present)
{
    const bool present = id != nullptr;
    return present == (id_length != 0) && (id_present > 1 || present == (id_present == 1));
}

// A payload in a block of its own, which the record takes over. A length beyond 32 bits, and a lack of memory, show
// when the record is made.
class Payload {
public:
    Payload() = default; // one that no record is made of
    explicit Payload(uint64_t length)
        : block_(length <= UINT32_MAX ? new_block<uint8_t>(static_cast<size_t>(length)) : nullptr),
          length_(block_ ? static_cast<uint32_t>(length) : 0)
    {
    }
    std::span<uint8_t> region() { return {block_.get(), length_}; }
    uint32_t length() const { return length_; }
    uint8_t *release() { return block_.release(); }

private:
    Block<uint8_t> block_;
    uint32_t length_ = 0; // 0 without a block
};

// A layout is a function that says its fields to whatever takes them: first they are counted, then written.
template <class Layout> uint64_t length_of(const Layout &layout)
{
    Counter counter;
    layout(counter);
    return counter.length();
}

// The payload that a layout describes, filled to its last byte and no further, or none.
template <class Layout> Payload laid_out(const Layout &layout, uint64_t length)
{
    Payload payload(length);
    Writer out(payload.region());
    layout(out);
    return out.filled() ? std::move(payload) : Payload();
}
template <class Layout> Payload laid_out(const Layout &layout) { return laid_out(layout, length_of(layout)); }

// A record of a type, an id and a payload, with the flags that nfc_ndef_record_create_from_param() gives; or null.
[[nodiscard]] RecordPtr record_of(const KnownType &type, Payload payload, ByteView id = {});

// A record of what a layout says, if the reader of its type accepts that; or null.
template <class Layout, class Structure>
nfc_ndef_record *readable_record_of(const KnownType &type, const Layout &layout, nfc_ndef_bytes id,
                                    uint8_t (*read)(nfc_ndef_bytes, Structure *, nfc_ndef_payload_report *))
{
    Payload payload = laid_out(layout);
    Structure structure;
    if (id.length > UINT8_MAX || !read(lent(payload.region()), &structure, nullptr))
        return nullptr;
    return record_of(type, std::move(payload), bytes_of(id)).release();
}

// As above, for the types that are made as the only record of a message: with MB, ME and SR set.
[[nodiscard]] RecordPtr lone_record_of(const KnownType &type, Payload payload);

} // namespace ndef
