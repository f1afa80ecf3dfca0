// NFC Forum Type 5 Tag 1.0: blocks, the capability container in the first.
#include "kinds.h"
#include "tlv_tag.h"

namespace nfc_ndef::tags {
namespace {

constexpr uint8_t magic = 0xE1, magic_of_long_block_numbers = 0xE2, version = 0x40, never = 0x03;
constexpr size_t short_container = 4, long_container = 8, usual_block_size = 4, most_short_numbers = 256;
constexpr uint8_t empty_message[] = {0x03, 0x00, 0xFE};

// How long blocks are, nobody says: as long as what a reader gives for one.
size_t block_size_of(Card &card)
{
    constexpr uint8_t read_binary = 0xB0;
    constexpr size_t longest = 32;
    for (size_t size = usual_block_size; size <= longest; size *= 2)
        if (const Response first = card.ask(0xFF, read_binary, 0, 0, size); first.ok() && first.data.size() >= size)
            return first.data.size();
    return usual_block_size;
}

class Type5 : public TlvTag {
public:
    explicit Type5(Card &card) : Type5(card, block_size_of(card)) {}

    std::string_view type() const override { return "Type 5 tag"; }
    void format() override;
    std::string lock() override;

private:
    Type5(Card &card, size_t block_size) : TlvTag(card, Storage(card, "block", block_size, block_size)) {}

    std::optional<Container> container() override;
    bool is_blank()
    {
        for (size_t i = 0; i < short_container; ++i)
            if (storage().byte(i) != 0)
                return false;
        return true;
    }
};

// The size is that of the area behind the container, but some makers count the container in: what is not there as
// memory tells.
std::optional<TlvTag::Container> Type5::container()
{
    const uint8_t access = storage().byte(1);
    if ((storage().byte(0) != magic && storage().byte(0) != magic_of_long_block_numbers) || access >> 6 != version >> 6)
        return std::nullopt;
    const bool is_long = storage().byte(2) == 0;
    const size_t length = is_long ? long_container : short_container;
    const size_t size = 8 * (is_long ? size_t{storage().byte(6)} << 8 | storage().byte(7) : size_t{storage().byte(2)});
    if (size == 0)
        return std::nullopt;
    const bool is_behind = storage().has(storage().block_of(length + size - 1));
    return Container{.area = {length, is_behind ? length + size : size},
                     .readable = (access >> 2 & 3) == 0,
                     .writable = (access & 3) == 0,
                     .why = (access & 3) == never ? "the tag is read-only" : "the tag cannot be written without a key"};
}

// The container comes last, so that the tag is formatted wholly or not at all.
void Type5::format()
{
    if (is_formatted())
        return;
    if (!is_blank())
        throw Refused("the capability container is not blank, so the tag cannot be formatted");
    const Bytes all = storage().all();
    const size_t block_size = storage().block_size();
    if (all.size() < short_container + 8)
        throw Refused("the tag has no room for a data area");
    const size_t short_size = (all.size() - short_container) / 8, long_size = (all.size() - long_container) / 8;
    Bytes head{all.size() / block_size > most_short_numbers ? magic_of_long_block_numbers : magic, version,
               static_cast<uint8_t>(short_size), 0};
    if (short_size > UINT8_MAX) {
        head[2] = 0;
        head.insert(head.end(), {0, 0, static_cast<uint8_t>(long_size >> 8), static_cast<uint8_t>(long_size)});
    }
    head.insert(head.end(), std::begin(empty_message), std::end(empty_message));
    for (size_t number = (head.size() - 1) / block_size + 1; number-- > 0;) {
        Bytes block = storage().block(number);
        for (size_t i = 0; i < block_size && number * block_size + i < head.size(); ++i)
            block[i] = head[number * block_size + i];
        storage().update(number, block);
    }
    storage().forget();
    if (!read().empty() || !is_writable())
        throw Refused("the tag was formatted, but holds something else");
}

std::string Type5::lock()
{
    formatted();
    Bytes block = storage().block(0);
    if ((block[1] & never) != never) {
        block[1] |= never;
        storage().update(0, block);
        storage().forget();
        if (is_writable())
            throw Refused("the tag can still be written");
    }
    return "the capability container says that the tag is read-only; that is all, its blocks are not locked";
}

} // namespace

std::unique_ptr<Tag> make_type5(Card &card) { return std::make_unique<Type5>(card); }

} // namespace nfc_ndef::tags
