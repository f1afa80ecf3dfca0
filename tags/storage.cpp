#include "storage.h"

namespace nfc_ndef::tags {
namespace {

constexpr uint8_t pseudo_class = 0xFF, read_binary = 0xB0, update_binary = 0xD6;
constexpr uint16_t wrong_parameters = 0x6B00, incorrect_parameters = 0x6A86, not_found = 0x6A82;
constexpr size_t most_blocks = 0x10000, blocks_in_a_byte = 0x100;

uint8_t high(size_t number) { return static_cast<uint8_t>(number >> 8); }
uint8_t low(size_t number) { return static_cast<uint8_t>(number); }

} // namespace

Response Storage::read(size_t number, size_t size)
{
    return card_.ask(pseudo_class, read_binary, high(number), low(number), size);
}

bool Storage::load(size_t number, uint16_t &status)
{
    Response response = read(number, read_size_);
    if ((!response.ok() || response.data.size() < block_size_) && read_size_ != block_size_)
        response = read(number, block_size_); // of the last blocks a tag may not give as many
    status = response.status;
    if (!response.ok() || response.data.size() < block_size_)
        return false;
    const size_t count = response.data.size() / block_size_;
    for (size_t i = 0; i < count; ++i) {
        const auto begin = response.data.begin() + static_cast<std::ptrdiff_t>(i * block_size_);
        Bytes read_block(begin, begin + static_cast<std::ptrdiff_t>(block_size_));
        // Behind their last block some tags go on with the first one, and so do readers that take only the low byte of
        // a block's number: those show it where such numbers begin.
        const bool begins_long_numbers = (number + i) % blocks_in_a_byte == 0;
        if (number + i != 0 && (read_block == block(0) || (i != 0 && begins_long_numbers))) {
            if (i == 0 && begins_long_numbers) {
                status = wrong_parameters;
                return false;
            }
            if (i != 0)
                break;
        }
        blocks_.insert_or_assign(number + i, std::move(read_block));
    }
    return true;
}

const Bytes &Storage::block(size_t number)
{
    if (number >= blocks_in_a_byte && number % blocks_in_a_byte != 0)
        block(number - number % blocks_in_a_byte); // where the reader shows what numbers it takes
    uint16_t status = 0;
    if (!blocks_.contains(number) && !load(number, status))
        refuse("read", number, status);
    return blocks_.at(number);
}

bool Storage::has(size_t number)
{
    uint16_t status = 0;
    return blocks_.contains(number) || load(number, status);
}

void Storage::update(size_t number, ByteView bytes)
{
    const Response response = card_.command(pseudo_class, update_binary, high(number), low(number), bytes);
    blocks_.erase(number);
    if (!response.ok())
        refuse("written", number, response.status);
}

Bytes Storage::all()
{
    forget();
    size_t end = 0;
    while (end < most_blocks && has(end))
        ++end;
    Bytes bytes;
    for (size_t number = 0; number < end; ++number)
        bytes.insert(bytes.end(), blocks_.at(number).begin(), blocks_.at(number).end());
    return bytes;
}

void Storage::refuse(const char *what, size_t number, uint16_t status) const
{
    if (number >= blocks_in_a_byte &&
        (status == wrong_parameters || status == incorrect_parameters || status == not_found))
        throw Refused("the reader does not take " + block_name_ + " numbers above 255");
    throw Refused(block_name_ + " " + std::to_string(number) + " cannot be " + what + " (status " +
                  status_text(status) + ")");
}

} // namespace nfc_ndef::tags
