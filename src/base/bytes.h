// The bytes that all stand on: a view, the one reader, the one writer, and what counts before it writes.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>

namespace ndef {

using ByteView = std::span<const uint8_t>;

// How many bytes there are before the first that is not allowed.
template <class Allowed> size_t clean_length(ByteView bytes, Allowed allowed)
{
    size_t length = 0;
    while (length < bytes.size() && allowed(bytes[length]))
        ++length;
    return length;
}

// Reads big-endian fields from the front of a view. After an overrun it stays failed and yields zeros and empty views,
// so a decoder reads straight down and asks ok() once.
class Reader {
public:
    explicit Reader(ByteView bytes) : at_(bytes.data()), end_(bytes.data() + bytes.size()) {}

    ByteView take(size_t length)
    {
        if (length > left()) {
            fail();
            return {};
        }
        const uint8_t *const taken = at_;
        at_ += length;
        return {taken, length};
    }
    ByteView rest() { return take(left()); }
    uint8_t u8()
    {
        if (at_ == end_) {
            fail();
            return 0;
        }
        return *at_++;
    }
    template <std::unsigned_integral Field> Field be()
    {
        Field value = 0;
        for (const uint8_t byte : take(sizeof value))
            value = static_cast<Field>(value << 8 | byte);
        return value;
    }

    size_t left() const { return static_cast<size_t>(end_ - at_); }
    bool ok() const { return ok_; }

private:
    void fail()
    {
        at_ = end_;
        ok_ = false;
    }

    const uint8_t *at_;
    const uint8_t *end_;
    bool ok_ = true;
};

// The fields that a layout is said in, for an `Out` that takes bytes.
template <class Out> class Fields {
public:
    Out &u8(uint8_t value) { return out().bytes({&value, 1}); }
    template <std::unsigned_integral Field> Out &be(Field value)
    {
        uint8_t field[sizeof value];
        for (size_t i = sizeof value; i-- > 0; value = static_cast<Field>(uint64_t{value} >> 8))
            field[i] = static_cast<uint8_t>(value);
        return out().bytes(field);
    }
    // The length in a field, then the bytes. There is no layout of more than the field can say.
    template <std::unsigned_integral Field> Out &sized(ByteView source)
    {
        if (source.size() > std::numeric_limits<Field>::max())
            return out().refuse();
        return be(static_cast<Field>(source.size())).bytes(source);
    }
    Out &le16(uint16_t value) { return u8(static_cast<uint8_t>(value)).u8(static_cast<uint8_t>(value >> 8)); }
    Out &reversed(ByteView source)
    {
        for (size_t i = source.size(); i-- > 0;)
            u8(source[i]);
        return out();
    }

private:
    Out &out() { return static_cast<Out &>(*this); }
};

// Fills a region from the front. What does not fit is dropped and remembered: filled() tells whether the region was
// written to its last byte and no further. Two pointers, so that it travels in registers.
class Writer : public Fields<Writer> {
public:
    explicit Writer(std::span<uint8_t> out) : at_(out.data()), end_(out.data() + out.size()) {}

    Writer &bytes(ByteView source)
    {
        if (source.size() > static_cast<size_t>(end_ - at_)) {
            refuse();
        } else if (!source.empty()) {
            std::memcpy(at_, source.data(), source.size());
            at_ += source.size();
        }
        return *this;
    }
    Writer &refuse()
    {
        at_ = end_ = nullptr;
        return *this;
    }
    bool filled() const { return at_ && at_ == end_; }

private:
    uint8_t *at_; // null after a failure, and then nothing fits
    uint8_t *end_;
};

// Takes the same fields and only adds up their lengths; no byte is looked at.
class Counter : public Fields<Counter> {
public:
    Counter &bytes(ByteView source)
    {
        length_ += source.size();
        return *this;
    }
    Counter &refuse()
    {
        length_ += beyond_any_payload;
        return *this;
    }
    uint64_t length() const { return length_; }

private:
    static constexpr uint64_t beyond_any_payload = uint64_t{1} << 32;

    uint64_t length_ = 0;
};

} // namespace ndef
