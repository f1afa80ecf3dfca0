// MIFARE Classic: NXP AN1304 and AN1305. Sectors of 4 blocks of 16 bytes, from the 33rd on of 16 blocks; the last block
// of each, its trailer, holds keys and access conditions. The MIFARE application directory in sector 0, and in sector
// 16 of large cards, says which sectors hold the data area of an NFC Forum tag.
#include "forms/all.h"
#include "forms/tlv_area.h"

#include <fmt/format.h>

namespace tool::forms {
namespace {

constexpr size_t block_size = 16, small_sector = 4 * block_size, large_sector = 16 * block_size;
constexpr size_t small_sectors = 32, sectors = 40, second_directory = 16;

struct Sector {
    size_t begin, end; // of its data; the trailer follows
};

// Where a sector lies in a memory that begins with the sector `first`, which is 0 or 1.
Sector sector(size_t number, size_t first)
{
    const bool is_small = number < small_sectors;
    const size_t begin =
        is_small ? number * small_sector : small_sectors * small_sector + (number - small_sectors) * large_sector;
    return {begin - first * small_sector,
            begin - first * small_sector + (is_small ? small_sector : large_sector) - block_size};
}

// Bytes 6 to 8 of a trailer hold each access bit twice, once inverted.
bool is_trailer(values::ByteView block)
{
    const uint8_t inverted1 = block[6] & 0x0F, inverted2 = block[6] >> 4, inverted3 = block[7] & 0x0F;
    const uint8_t bits1 = block[7] >> 4, bits2 = block[8] & 0x0F, bits3 = block[8] >> 4;
    return (inverted1 ^ bits1) == 0x0F && (inverted2 ^ bits2) == 0x0F && (inverted3 ^ bits3) == 0x0F;
}

// Of the directory: its first byte is the CRC of those that follow.
bool has_directory(values::ByteView entries)
{
    uint8_t crc = 0xC7;
    for (const uint8_t byte : entries.subspan(1)) {
        crc ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = static_cast<uint8_t>((crc & 0x80) != 0 ? crc << 1 ^ 0x1D : crc << 1);
    }
    return crc == entries[0];
}

// Adds the numbers of the sectors that a directory gives to NFC.
void add_sectors(values::ByteView entries, size_t first, std::vector<size_t> &numbers)
{
    for (size_t at = 2; at + 1 < entries.size(); at += 2)
        if (entries[at] == 0x03 && entries[at + 1] == 0xE1)
            numbers.push_back(first + at / 2 - 1);
}

// Whether every whole sector ends in a trailer, and there is one.
bool has_trailers(values::ByteView memory, size_t first)
{
    size_t number = first;
    for (; number < sectors && sector(number, first).end + block_size <= memory.size(); ++number)
        if (!is_trailer(memory.subspan(sector(number, first).end, block_size)))
            return false;
    return number != first;
}

Found found_in_sectors(const Memory &memory, const std::vector<size_t> &numbers, size_t first)
{
    TlvArea area(memory.bytes);
    for (const size_t number : numbers)
        area.add(sector(number, first).begin, sector(number, first).end);
    Found found = area.find();
    if (found.match != Match::whole)
        return found;
    size_t left = found.message.size();
    for (const size_t number : numbers) {
        const Sector place = sector(number, first);
        for (size_t at = std::max(place.begin, found.at); at < place.end && left != 0; ++at, --left)
            if (memory.unread_blocks.contains(at / block_size))
                return found_alike(fmt::format("block {} with bytes of the message was not read", at / block_size));
    }
    return found;
}

} // namespace

Found find_from_sector_1(const Memory &memory, bool asked)
{
    const bool is_area = !memory.bytes.empty() && (memory.bytes[0] <= ndef_message || memory.bytes[0] == proprietary);
    if (!asked && (!is_area || !has_trailers(memory.bytes, 1)))
        return {};
    std::vector<size_t> numbers;
    for (size_t number = 1; number < sectors; ++number)
        if (number != second_directory)
            numbers.push_back(number);
    return found_in_sectors(memory, numbers, 1);
}

Found find_classic(const Memory &memory, bool asked)
{
    constexpr size_t directory_length = 32, second_length = 48;
    const values::ByteView all = memory.bytes;
    std::vector<size_t> numbers;
    bool is_sound = false;
    if (all.size() >= small_sector) {
        const values::ByteView directory = all.subspan(block_size, directory_length);
        is_sound = has_directory(directory);
        add_sectors(directory, 1, numbers);
    }
    if (const size_t begin = sector(second_directory, 0).begin; all.size() >= begin + second_length && is_sound)
        if (const values::ByteView directory = all.subspan(begin, second_length); has_directory(directory))
            add_sectors(directory, second_directory + 1, numbers);
    if (!numbers.empty() && (is_sound || asked))
        return found_in_sectors(memory, numbers, 0);
    Found from_sector_1 = find_from_sector_1(memory, asked);
    const bool is_empty = all.size() > 1 && all[0] == ndef_message && all[1] == 0;
    if (asked || (from_sector_1.match == Match::whole && (is_empty || is_message(from_sector_1.message))))
        return from_sector_1;
    if (all.size() < 2 * small_sector || !has_trailers(all, 0)) // one trailer alone may be chance
        return {};
    if (all[0] == ndef_message)
        return from_sector_1.match == Match::alike ? from_sector_1 : found_alike("there is no message in it");
    return found_alike(numbers.empty() ? "no sector of it is marked as one with NDEF data"
                                       : "the checksum of its directory is wrong");
}

} // namespace tool::forms
