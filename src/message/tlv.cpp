// The data area of a tag: NFC Forum Type 2 Tag 1.1.
#include "record/view.h"

#include <algorithm>

using namespace ndef;

namespace {

enum Tag : uint8_t { null_tlv = 0, lock_control = 1, memory_control = 2, ndef_message = 3, terminator = 0xFE };

constexpr uint8_t long_length = 0xFF; // two bytes with the length follow
constexpr uint32_t longest_value = 0xFFFE;
constexpr uint32_t header_length = 16; // UID, internal and static lock bytes, capability container

// The memory may also begin with the TLVs. What stands where a capability container would be is then data, so all of it
// has to look like one: the magic number, version 1 of the mapping and a size, which is in units of 8 bytes.
bool begins_with_header(ByteView memory)
{
    return memory.size() > header_length && memory[12] == 0xE1 && memory[13] >> 4 == 1 && memory[14] != 0;
}

// Walks the data area, never onto a reserved byte. Its place and the reserved areas are kept in the public structure.
class Area {
public:
    explicit Area(nfc_ndef_tlv &tlv) : tlv_(tlv) {}

    void begin(ByteView memory)
    {
        size_t end = memory.size();
        if (begins_with_header(memory)) {
            tlv_.position = base_ = header_length;
            end = std::min(end, header_length + size_t{memory[14]} * 8);
        }
        tlv_.memory = lent(memory.first(end));
    }
    bool at_end()
    {
        for (uint32_t i = 0; i < tlv_.reserved_count;) {
            if (tlv_.reserved_begin[i] <= tlv_.position && tlv_.position < tlv_.reserved_end[i]) {
                tlv_.position = tlv_.reserved_end[i];
                i = 0;
            } else {
                ++i;
            }
        }
        return tlv_.position >= tlv_.memory.length;
    }
    // So many bytes, or as many of them as come before a reserved area; none at the end.
    ByteView take(uint32_t most)
    {
        if (at_end())
            return {};
        auto end = static_cast<uint32_t>(tlv_.memory.length);
        for (uint32_t i = 0; i < tlv_.reserved_count; ++i)
            if (tlv_.reserved_begin[i] >= tlv_.position)
                end = std::min(end, tlv_.reserved_begin[i]);
        const uint32_t length = std::min(most, end - tlv_.position);
        const ByteView taken = bytes_of(tlv_.memory).subspan(tlv_.position, length);
        tlv_.position += length;
        return taken;
    }
    // At the end a zero, and ok() no more.
    uint8_t u8()
    {
        const ByteView byte = take(1);
        ok_ &= !byte.empty();
        return byte.empty() ? uint8_t{0} : byte[0];
    }
    // Steps over so many bytes and tells whether they lay side by side.
    bool skip(uint32_t length)
    {
        if (length == 0)
            return true;
        const size_t first = take(length).size();
        for (length -= static_cast<uint32_t>(first); length != 0;) {
            const size_t more = take(length).size();
            if (more == 0) {
                ok_ = false;
                break;
            }
            length -= static_cast<uint32_t>(more);
            if (length == 0)
                return false;
        }
        return ok_;
    }
    // The value of a lock or memory control TLV: where the bytes are, how many bits or bytes, and the size of a page.
    // False when there are too many of them.
    bool reserve(const uint8_t (&control)[3], bool counts_bits)
    {
        const uint32_t count = control[1] == 0 ? 256 : control[1];
        const uint32_t page_size = uint32_t{1} << (control[2] & 0x0F);
        const uint32_t start = (control[0] >> 4) * page_size + (control[0] & 0x0F);
        if (start + base_ < header_length) // counted from the start of the memory, which may not be there
            return true;
        const uint32_t first = start + base_ - header_length;
        const uint32_t end = first + (counts_bits ? (count + 7) / 8 : count);
        if (end <= tlv_.position || first >= tlv_.memory.length)
            return true;
        if (tlv_.reserved_count == NFC_NDEF_TLV_MOST_RESERVED)
            return false;
        tlv_.reserved_begin[tlv_.reserved_count] = first;
        tlv_.reserved_end[tlv_.reserved_count++] = std::min(end, static_cast<uint32_t>(tlv_.memory.length));
        return true;
    }
    bool ok() const { return ok_; }

private:
    nfc_ndef_tlv &tlv_;
    uint32_t base_ = 0; // where the TLVs begin in the memory
    bool ok_ = true;
};

nfc_ndef_tlv_report search(Area &area, nfc_ndef_tlv &tlv)
{
    while (!area.at_end()) {
        const uint32_t block = tlv.position;
        const uint8_t tag = area.u8();
        if (tag == null_tlv)
            continue;
        if (tag == terminator)
            return {NFC_NDEF_TLV_NO_MESSAGE, block};
        uint32_t length = area.u8();
        if (length == long_length) {
            length = uint32_t{area.u8()} << 8;
            length |= area.u8();
        }
        if (tag == ndef_message && area.ok()) {
            area.at_end(); // steps onto the value
            const uint32_t value = tlv.position;
            const bool side_by_side = area.skip(length);
            if (!area.ok())
                return {NFC_NDEF_TLV_CUT_SHORT, tlv.position};
            if (side_by_side)
                tlv.message = lent(bytes_of(tlv.memory).subspan(value, length));
            tlv.length = tlv.left = length;
            tlv.position = value;
            return {NFC_NDEF_TLV_FOUND, block};
        }
        if ((tag == lock_control || tag == memory_control) && length == 3) {
            const uint8_t control[]{area.u8(), area.u8(), area.u8()};
            if (area.ok() && !area.reserve(control, tag == lock_control))
                return {NFC_NDEF_TLV_TOO_MANY_AREAS, block};
        } else {
            area.skip(length);
        }
        if (!area.ok())
            return {NFC_NDEF_TLV_CUT_SHORT, tlv.position};
    }
    return {NFC_NDEF_TLV_NO_MESSAGE, tlv.position};
}

} // namespace

uint8_t nfc_ndef_tlv_find(nfc_ndef_bytes memory, nfc_ndef_tlv *tlv, nfc_ndef_tlv_report *report)
{
    *tlv = {};
    Area area(*tlv);
    area.begin(bytes_of(memory));
    const nfc_ndef_tlv_report result = search(area, *tlv);
    const bool found = result.reason == NFC_NDEF_TLV_FOUND;
    if (!found)
        *tlv = {};
    if (report)
        *report = result;
    return found;
}

uint8_t nfc_ndef_tlv_next_piece(nfc_ndef_tlv *tlv, nfc_ndef_bytes *piece)
{
    const ByteView taken = tlv->left != 0 ? Area(*tlv).take(tlv->left) : ByteView{};
    if (taken.empty())
        return 0;
    tlv->left -= static_cast<uint32_t>(taken.size());
    *piece = lent(taken);
    return 1;
}

uint32_t nfc_ndef_tlv_join(const nfc_ndef_tlv *tlv, uint8_t *buffer, uint32_t capacity)
{
    if (tlv->length <= capacity) {
        nfc_ndef_tlv rest = *tlv;
        Writer out({buffer, capacity});
        for (nfc_ndef_bytes piece; nfc_ndef_tlv_next_piece(&rest, &piece);)
            out.bytes(bytes_of(piece));
    }
    return tlv->length;
}

uint32_t nfc_ndef_tlv_wrap(nfc_ndef_bytes message, uint8_t *buffer, uint32_t capacity)
{
    const ByteView value = bytes_of(message);
    if (value.size() > longest_value)
        return 0;
    const auto length = static_cast<uint16_t>(value.size());
    const uint32_t value_at = length < long_length ? 2 : 4;
    const uint32_t needed = value_at + length + 1;
    if (needed > capacity)
        return needed;
    if (length != 0)
        std::memmove(buffer + value_at, value.data(), length);
    Writer header({buffer, value_at});
    header.u8(ndef_message);
    if (length < long_length)
        header.u8(static_cast<uint8_t>(length));
    else
        header.u8(long_length).be(length);
    buffer[needed - 1] = terminator;
    return needed;
}

const char *nfc_ndef_tlv_reason_text(uint32_t reason)
{
    switch (reason) {
    case NFC_NDEF_TLV_FOUND:
        return "there is a message";
    case NFC_NDEF_TLV_CUT_SHORT:
        return "the data area ends within a TLV";
    case NFC_NDEF_TLV_NO_MESSAGE:
        return "the data area holds no NDEF message TLV";
    case NFC_NDEF_TLV_TOO_MANY_AREAS:
        return "too many areas are reserved";
    default:
        return "unknown reason";
    }
}
