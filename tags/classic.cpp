// MIFARE Classic with NDEF sectors (NXP AN1304 and AN1305): read with the public keys, never written.
#include "kinds.h"

#include <nfc_ndef_view.h>

#include <algorithm>
#include <array>

namespace nfc_ndef::tags {
namespace {

using Key = std::array<uint8_t, 6>;
constexpr Key directory_key{0xA0, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5}, ndef_key{0xD3, 0xF7, 0xD3, 0xF7, 0xD3, 0xF7};

constexpr uint8_t load_keys = 0x82, authenticate = 0x86, read_binary = 0xB0;
constexpr uint8_t key_a = 0x60;
constexpr size_t block_size = 16, small_sectors = 32, second_directory = 16;
constexpr uint16_t ndef_application = 0xE103;

class Classic : public Tag {
public:
    Classic(Card &card, bool is_big) : Tag(card), sectors_(is_big ? 40 : 16) {}

    std::string_view type() const override { return "MIFARE Classic card"; }
    bool is_formatted() override { return !ndef_sectors().empty(); }
    size_t size() override;
    bool is_writable() override { return false; }
    Bytes read() override;
    void write(ByteView) override { not_for_this_type("written, only read"); }
    void format() override { not_for_this_type("formatted, only read"); }
    std::string lock() override { not_for_this_type("locked, only read"); }
    Bytes memory() override;

private:
    static size_t first_block(size_t sector)
    {
        return sector < small_sectors ? sector * 4 : small_sectors * 4 + (sector - small_sectors) * 16;
    }
    static size_t data_blocks(size_t sector) { return sector < small_sectors ? 3 : 15; }

    bool open(size_t sector, const Key &key);
    Bytes read_block(size_t number);
    Bytes data_of(size_t sector, const Key &key);
    std::vector<size_t> ndef_sectors();
    Bytes area();

    size_t sectors_;
};

// Into the reader's memory for a while, or for good where it has only that.
bool Classic::open(size_t sector, const Key &key)
{
    constexpr uint8_t volatile_memory = 0x00, lasting_memory = 0x20;
    if (!card().command(0xFF, load_keys, volatile_memory, 0, key).ok() &&
        !card().command(0xFF, load_keys, lasting_memory, 0, key).ok())
        throw Refused("the reader takes no keys of MIFARE Classic cards");
    const uint8_t which[] = {1, 0, static_cast<uint8_t>(first_block(sector)), key_a, 0};
    return card().command(0xFF, authenticate, 0, 0, which).ok();
}

Bytes Classic::read_block(size_t number)
{
    Response response = card().ask(0xFF, read_binary, 0, static_cast<uint8_t>(number), block_size);
    if (!response.ok() || response.data.size() < block_size)
        throw Refused("block " + std::to_string(number) + " cannot be read (status " + status_text(response.status) +
                      ")");
    response.data.resize(block_size);
    return response.data;
}

Bytes Classic::data_of(size_t sector, const Key &key)
{
    if (!open(sector, key))
        throw Refused("sector " + std::to_string(sector) + " cannot be read with the public key");
    Bytes bytes;
    for (size_t i = 0; i < data_blocks(sector); ++i) {
        const Bytes block = read_block(first_block(sector) + i);
        bytes.insert(bytes.end(), block.begin(), block.end());
    }
    return bytes;
}

// Each sector has two bytes in a directory, the first sector one for itself and those up to 15, the 17th one for the
// rest.
std::vector<size_t> Classic::ndef_sectors()
{
    std::vector<size_t> found;
    const auto look = [&](const Bytes &entries, size_t first, size_t last) {
        for (size_t sector = first, at = 2; sector <= last && at + 1 < entries.size(); ++sector, at += 2)
            if ((entries[at] | entries[at + 1] << 8) == ndef_application)
                found.push_back(sector);
    };
    if (!open(0, directory_key))
        return {};
    Bytes entries = read_block(1);
    const Bytes more = read_block(2);
    entries.insert(entries.end(), more.begin(), more.end());
    look(entries, 1, second_directory - 1);
    if (sectors_ > second_directory && open(second_directory, directory_key))
        look(data_of(second_directory, directory_key), second_directory + 1, sectors_ - 1);
    return found;
}

Bytes Classic::area()
{
    const std::vector<size_t> sectors = ndef_sectors();
    if (sectors.empty())
        throw Refused("the MIFARE Classic card is not formatted for NDEF data");
    Bytes bytes;
    for (const size_t sector : sectors) {
        const Bytes data = data_of(sector, ndef_key);
        bytes.insert(bytes.end(), data.begin(), data.end());
    }
    return bytes;
}

size_t Classic::size()
{
    size_t bytes = 0;
    for (const size_t sector : ndef_sectors())
        bytes += data_blocks(sector) * block_size;
    return bytes < 4 ? 0 : bytes - (bytes - 2 < 0xFF ? 2 : 4);
}

Bytes Classic::read()
{
    const Bytes bytes = area();
    nfc_ndef_tlv tlv;
    nfc_ndef_tlv_report report;
    if (nfc_ndef_tlv_find({bytes.data(), bytes.size()}, &tlv, &report)) {
        Bytes message(tlv.length);
        nfc_ndef_tlv_join(&tlv, message.data(), tlv.length);
        return message;
    }
    if (report.reason == NFC_NDEF_TLV_NO_MESSAGE)
        return {};
    throw Refused(std::string(nfc_ndef_tlv_reason_text(report.reason)) + ", at byte " + std::to_string(report.offset));
}

// What the public keys open; the rest, and the keys in the trailers, are zeros.
Bytes Classic::memory()
{
    Bytes bytes;
    for (size_t sector = 0; sector < sectors_; ++sector) {
        const bool is_open = open(sector, ndef_key) || open(sector, directory_key);
        for (size_t i = 0; i <= data_blocks(sector); ++i) {
            const Bytes block = is_open ? read_block(first_block(sector) + i) : Bytes(block_size);
            bytes.insert(bytes.end(), block.begin(), block.end());
        }
    }
    return bytes;
}

} // namespace

std::unique_ptr<Tag> make_classic(Card &card, bool is_big) { return std::make_unique<Classic>(card, is_big); }

} // namespace nfc_ndef::tags
