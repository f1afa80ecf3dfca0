// What every builder of a record type shares.
#pragma once

#include "record/known_type.h"
#include "record/record.h"

namespace ndef {

// Whether an optional id, its length and the flag that announces it go together.
inline bool is_optional_id(const uint8_t *id, uint8_t id_length, uint8_t id_present)
{
    const bool present = id != nullptr;
    return present == (id_length != 0) && (id_present > 1 || present == (id_present == 1));
}

// A payload under construction: one block of its final size, which the record takes over once it is filled to the last
// byte. A size beyond 32 bits, and a lack of memory, show when the record is made.
class Payload {
public:
    explicit Payload(uint64_t size)
        : block_(size <= UINT32_MAX ? new_block<uint8_t>(static_cast<size_t>(size)) : nullptr),
          size_(block_ ? static_cast<uint32_t>(size) : 0), out_({block_.get(), size_})
    {
    }
    Payload &u8(uint8_t value)
    {
        out_.u8(value);
        return *this;
    }
    Payload &be16(uint16_t value)
    {
        out_.be(value);
        return *this;
    }
    Payload &bytes(ByteView source)
    {
        out_.bytes(source);
        return *this;
    }
    Payload &reversed(ByteView source)
    {
        for (size_t i = source.size(); i-- > 0;)
            out_.u8(source[i]);
        return *this;
    }
    Writer &writer() { return out_; }

    // One that never becomes ready.
    static Payload failed() { return Payload(UINT64_MAX); }
    bool ready() const { return block_ && size_ != 0 && out_.filled(); }

    uint32_t size() const { return size_; }
    uint8_t *release() { return block_.release(); }

private:
    Block<uint8_t> block_;
    uint32_t size_;
    Writer out_;
};

// A record of a type, an id and a finished payload, with the flags that nfc_ndef_record_create_from_param() gives; or
// null.
[[nodiscard]] RecordPtr record_of(const KnownType &type, Payload &payload, ByteView id = {});

// As above, for the types that are made as the only record of a message: with MB, ME and SR set.
[[nodiscard]] RecordPtr lone_record_of(const KnownType &type, Payload &payload);

} // namespace ndef
