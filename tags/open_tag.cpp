#include "kinds.h"

namespace nfc_ndef::tags {
namespace {

// The historical bytes of a contactless storage card: PC/SC 2.
struct StorageCard {
    uint8_t standard;
    uint16_t name;
};

enum Standard : uint8_t { iso14443a_first = 0x01, iso14443a_last = 0x03, iso15693_first = 0x09, iso15693_last = 0x0C };

enum Name : uint16_t { classic_1k = 0x0001, classic_4k = 0x0002, classic_mini = 0x0026 };

bool read_storage_card(ByteView answer, StorageCard &card)
{
    constexpr uint8_t signs[] = {0x80, 0x4F, 0x0C, 0xA0, 0x00, 0x00, 0x03, 0x06};
    constexpr size_t signs_at = 4, standard_at = signs_at + sizeof signs;
    if (answer.size() < standard_at + 3)
        return false;
    for (size_t i = 0; i < sizeof signs; ++i)
        if (answer[signs_at + i] != signs[i])
            return false;
    card = {answer[standard_at], static_cast<uint16_t>(answer[standard_at + 1] << 8 | answer[standard_at + 2])};
    return true;
}

std::unique_ptr<Tag> make_tag(Card &card)
{
    StorageCard storage{};
    if (!read_storage_card(card.answer_to_reset(), storage)) {
        if (std::unique_ptr<Tag> type4 = make_type4(card))
            return type4;
        throw Refused("no NFC tag with NDEF data: there is no NDEF application on the card");
    }
    if (storage.name == classic_1k || storage.name == classic_4k || storage.name == classic_mini)
        return make_classic(card, storage.name == classic_4k);
    if (storage.standard >= iso14443a_first && storage.standard <= iso14443a_last)
        return make_type2(card);
    if (storage.standard >= iso15693_first && storage.standard <= iso15693_last)
        return make_type5(card);
    throw Refused("a kind of tag that is not supported");
}

} // namespace

void Tag::not_for_this_type(std::string_view what) const
{
    throw Refused("a " + std::string(type()) + " cannot be " + std::string(what));
}

void Tag::check_room(size_t length)
{
    const size_t most = size();
    if (length > most)
        throw Refused("too small by " + std::to_string(length - most) + (length - most == 1 ? " byte" : " bytes") +
                      ": the tag holds a message of " + std::to_string(most) + " at most");
}

std::unique_ptr<Tag> open_tag(Card &card)
{
    std::unique_ptr<Tag> tag = make_tag(card);
    constexpr uint8_t get_data = 0xCA;
    if (Response response = card.ask(0xFF, get_data, 0, 0, 256); response.ok())
        tag->serial_number_ = std::move(response.data);
    return tag;
}

} // namespace nfc_ndef::tags
