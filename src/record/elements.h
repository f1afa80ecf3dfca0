// Payloads that are lists of elements: a number, a length and the data, the two fields of one width.
#pragma once

#include "nfc_ndef_types.h"
#include "record/payload_report.h"

namespace ndef {

// A byte string that is there, although it may be empty.
inline nfc_ndef_bytes present(ByteView bytes) { return {bytes.data(), bytes.size()}; }
inline bool is_present(const nfc_ndef_bytes &bytes) { return bytes.data != nullptr; }

// Reads elements one after another. Fails at one that runs past the end.
template <std::unsigned_integral Field> class ElementReader {
public:
    explicit ElementReader(ByteView bytes) : in_(bytes) {}

    bool next(nfc_ndef_element &element)
    {
        left_ = in_.left();
        if (left_ == 0)
            return false;
        element.id = in_.be<Field>();
        element.data = present(in_.take(in_.be<Field>()));
        return in_.ok();
    }
    bool ok() const { return in_.ok(); }
    // What was left before the element that was read last.
    size_t left_before() const { return left_; }
    ByteView rest() { return in_.rest(); }

private:
    Reader in_;
    size_t left_ = 0;
};

// Hands out the next element that has no member of its own.
template <std::unsigned_integral Field, class HasMember>
bool next_other(nfc_ndef_bytes &elements, nfc_ndef_element &element, HasMember has_member)
{
    ElementReader<Field> in(bytes_of(elements));
    nfc_ndef_element found{};
    do {
        if (!in.next(found))
            return false;
    } while (has_member(found.id));
    element = {.data = lent(bytes_of(found.data)), .id = found.id};
    elements = lent(in.rest());
    return true;
}

// Says an element to a layout; one that is absent says nothing.
template <std::unsigned_integral Field, class Out> void lay_out(Out &out, Field id, const nfc_ndef_bytes &data)
{
    if (is_present(data))
        out.be(id).template sized<Field>(bytes_of(data));
}

// Writes what a layout says into the caller's buffer, if it has room; the bytes that are needed, or 0 if it says
// nothing that can be written.
template <class Layout> uint32_t written(const Layout &layout, uint8_t *buffer, uint32_t capacity)
{
    const uint64_t length = length_of(layout);
    if (length > UINT32_MAX)
        return 0;
    if (length <= capacity) {
        Writer out({buffer, static_cast<size_t>(length)});
        layout(out);
    }
    return static_cast<uint32_t>(length);
}

} // namespace ndef
