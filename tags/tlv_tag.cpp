#include "tlv_tag.h"

#include <algorithm>
#include <map>

namespace nfc_ndef::tags {
namespace {

enum TlvTagByte : uint8_t {
    null_tlv = 0x00,
    lock_control_tlv = 0x01,
    memory_control_tlv = 0x02,
    ndef_message_tlv = 0x03,
    terminator_tlv = 0xFE
};

constexpr uint8_t long_length = 0xFF;
constexpr size_t control_length = 3;

size_t capacity_of(size_t bytes)
{
    constexpr size_t short_header = 2, long_header = 4;
    if (bytes < short_header)
        return 0;
    return bytes - short_header < long_length ? bytes - short_header
                                              : std::max<size_t>(long_length - 1, bytes - long_header);
}

} // namespace

// Goes through the bytes of an area, around those that are reserved.
class TlvTag::Walk {
public:
    Walk(Storage &storage, Area area, std::vector<Area> reserved = {})
        : storage_(storage), at_(area.begin), end_(area.end), reserved_(std::move(reserved))
    {
        step_over_reserved();
    }

    void reserve(Area area)
    {
        reserved_.push_back(area);
        step_over_reserved();
    }
    bool at_end() const { return at_ >= end_; }
    size_t at() const { return at_; }
    // The address of the byte that is stepped over.
    size_t step()
    {
        if (at_end())
            throw Refused("the data area ends within a TLV block, at byte " + std::to_string(at_));
        const size_t at = at_++;
        step_over_reserved();
        return at;
    }
    uint8_t u8() { return storage_.byte(step()); }
    const std::vector<Area> &reserved() const { return reserved_; }

private:
    void step_over_reserved()
    {
        for (bool stepped = true; stepped;) {
            stepped = false;
            for (const Area &area : reserved_)
                if (at_ >= area.begin && at_ < area.end)
                    at_ = area.end, stepped = true;
        }
    }

    Storage &storage_;
    size_t at_, end_;
    std::vector<Area> reserved_;
};

TlvTag::Container TlvTag::formatted()
{
    const std::optional<Container> found = container();
    if (!found)
        throw Refused("the " + std::string(type()) + " is not formatted for NDEF data");
    return *found;
}

TlvTag::Place TlvTag::find()
{
    const Container found = formatted();
    if (!found.readable)
        throw Refused("the tag cannot be read without a key");
    Walk walk(storage_, found.area);
    std::optional<LockBits> lock_bits;
    size_t free_at = walk.at(); // where nothing but null TLVs may follow
    while (!walk.at_end()) {
        const size_t tag_at = walk.at();
        const uint8_t tag = walk.u8();
        if (tag == null_tlv)
            continue;
        if (tag == terminator_tlv)
            return {false, tag_at, {}, walk.reserved(), lock_bits};
        size_t length = walk.u8();
        if (length == long_length) {
            length = size_t{walk.u8()} << 8;
            length |= walk.u8();
        }
        Bytes value;
        if (tag == ndef_message_tlv || (has_control_tlvs() && length == control_length)) {
            for (size_t i = 0; i < length; ++i)
                value.push_back(walk.u8());
        } else {
            for (size_t i = 0; i < length; ++i)
                walk.step();
        }
        if (tag == ndef_message_tlv)
            return {true, tag_at, std::move(value), walk.reserved(), lock_bits};
        free_at = walk.at();
        if (has_control_tlvs() && length == control_length && (tag == lock_control_tlv || tag == memory_control_tlv)) {
            const size_t bytes_per_page = size_t{1} << (value[2] & 0x0F);
            const size_t begin = (value[0] >> 4) * bytes_per_page + (value[0] & 0x0F);
            const size_t count = value[1] == 0 ? 256 : value[1];
            walk.reserve({begin, begin + (tag == lock_control_tlv ? (count + 7) / 8 : count)});
            if (tag == lock_control_tlv && !lock_bits)
                lock_bits = LockBits{begin, count};
            free_at = walk.at();
        }
    }
    return {false, free_at, {}, walk.reserved(), lock_bits};
}

std::optional<LockBits> TlvTag::lock_control() { return find().lock_bits; }

size_t TlvTag::size()
{
    const Place place = find();
    Walk walk(storage_, {place.tag_at, formatted().area.end}, place.reserved);
    size_t bytes = 0;
    for (; !walk.at_end(); ++bytes)
        walk.step();
    return capacity_of(bytes);
}

Bytes TlvTag::read() { return find().value; }

void TlvTag::write(ByteView message)
{
    const Container found = formatted();
    if (!found.writable)
        throw Refused(found.why);
    check_room(message.size());
    const Place place = find();
    Bytes bytes{ndef_message_tlv};
    if (message.size() < long_length)
        bytes.push_back(static_cast<uint8_t>(message.size()));
    else
        bytes.insert(bytes.end(),
                     {long_length, static_cast<uint8_t>(message.size() >> 8), static_cast<uint8_t>(message.size())});
    bytes.insert(bytes.end(), message.begin(), message.end());
    bytes.push_back(terminator_tlv);

    std::vector<std::pair<size_t, uint8_t>> placed;
    Walk walk(storage_, {place.tag_at, found.area.end}, place.reserved);
    for (size_t i = 0; i < bytes.size() && !walk.at_end(); ++i)
        placed.emplace_back(walk.step(), bytes[i]);
    if (placed.size() < 2)
        throw Refused("the data area has no room for a message");
    // What makes the block valid is one byte: the length of one that is there, else the tag, in place of the
    // terminator.
    if (place.found)
        update(placed, placed[1].first, 0);
    else
        update(placed, placed[0].first, terminator_tlv);

    storage_.forget();
    if (!std::ranges::equal(read(), message))
        throw Refused("what was read back is not what was written");
}

// Writes bytes at their addresses so that the one that commits them has its neutral value meanwhile, and comes last.
void TlvTag::update(const std::vector<std::pair<size_t, uint8_t>> &bytes, size_t commit, uint8_t neutral)
{
    const size_t block_size = storage_.block_size();
    std::map<size_t, Bytes> wanted;
    for (const auto &[at, byte] : bytes) {
        const size_t number = storage_.block_of(at);
        wanted.try_emplace(number, storage_.block(number)).first->second[at % block_size] = byte;
    }
    const auto differs = [&](const auto &block) { return block.second != storage_.block(block.first); };
    if (!std::ranges::any_of(wanted, differs))
        return;
    for (const auto &[number, block] : wanted)
        check_lock(number);
    const size_t commit_block = storage_.block_of(commit);
    const auto put = [&](size_t number, const Bytes &block) {
        if (block != storage_.block(number))
            storage_.update(number, block);
    };
    Bytes before = storage_.block(commit_block);
    before[commit % block_size] = neutral;
    put(commit_block, before);
    for (const auto &[number, block] : wanted)
        if (number != commit_block)
            put(number, block);
    put(commit_block, wanted.at(commit_block));
}

} // namespace nfc_ndef::tags
