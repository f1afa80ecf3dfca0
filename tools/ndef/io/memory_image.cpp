#include "io/memory_image.h"

#include "io/failure.h"

#include <nfc_ndef/printable.h>
#include <nfc_ndef_view.h>

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

namespace tool {

namespace values = nfc_ndef::values;

namespace {

constexpr size_t unit = 8; // in which capability containers count
constexpr size_t length_field = 2;

size_t largest(const std::string &type)
{
    return type == "type2" ? 0xFF * unit : type == "type5" ? 0xFFFF * unit : 0xFFFF;
}

std::vector<uint8_t> container_of_type2(size_t size)
{
    // A serial number of a maker and its two check bytes, the internal byte, no lock bits, the capability container.
    constexpr uint8_t cascade = 0x88, maker = 0x04, internal = 0x48;
    const std::vector<uint8_t> serial{maker, 'N', 'D', 'E', 'F', 0, 1};
    return {serial[0],
            serial[1],
            serial[2],
            static_cast<uint8_t>(cascade ^ serial[0] ^ serial[1] ^ serial[2]),
            serial[3],
            serial[4],
            serial[5],
            serial[6],
            static_cast<uint8_t>(serial[3] ^ serial[4] ^ serial[5] ^ serial[6]),
            internal,
            0,
            0,
            0xE1,
            0x10,
            static_cast<uint8_t>(size / unit),
            0};
}

// Memory that blocks of four bytes with a number in one byte do not reach has another magic number.
std::vector<uint8_t> container_of_type5(size_t size)
{
    constexpr size_t reach = 1024;
    const size_t count = size / unit;
    const auto low = static_cast<uint8_t>(count), high = static_cast<uint8_t>(count >> 8);
    const uint8_t magic = size + 4 <= reach ? 0xE1 : 0xE2;
    if (high == 0)
        return {magic, 0x40, low, 0};
    return {magic, 0x40, 0, 0, 0, 0, high, low};
}

} // namespace

MemoryImage memory_image(const std::string &text)
{
    const size_t colon = std::min(text.find(':'), text.size());
    MemoryImage image{.type = text.substr(0, colon)};
    const bool is_known = image.type == "type2" || image.type == "type4" || image.type == "type5";
    const char *const end = text.data() + text.size();
    const auto [read_to, error] = colon < text.size() ? std::from_chars(text.data() + colon + 1, end, image.size)
                                                      : std::from_chars_result{end, std::errc()};
    if (!is_known || error != std::errc() || read_to != end || (colon < text.size() && image.size == 0))
        throw Failure(exit_unusable, fmt::format("\"{}\" is no memory such as type2:144, type4 or type5:112",
                                                 values::printable_utf8(text)));
    if (image.size > largest(image.type) || (image.type != "type4" && image.size % unit != 0))
        throw Failure(exit_unusable,
                      fmt::format("the data area of a {} has {}at most {} bytes", image.type,
                                  image.type == "type4" ? "" : "a multiple of 8 and ", largest(image.type)));
    return image;
}

std::vector<uint8_t> image_of(std::span<const uint8_t> message, const MemoryImage &image)
{
    const bool is_file = image.type == "type4";
    const nfc_ndef_bytes lent{message.data(), message.size()};
    // A terminator is left out where the area ends with the message.
    const size_t wrapped = is_file ? length_field + message.size() : nfc_ndef_tlv_wrap(lent, nullptr, 0);
    const size_t needed = is_file ? wrapped : wrapped - 1;
    const size_t size = image.size != 0 ? image.size : is_file ? needed : (needed + unit - 1) / unit * unit;
    if (wrapped == 0 || needed > largest(image.type))
        throw Failure(exit_unusable, fmt::format("the message is too long for the memory of a {}", image.type));
    if (needed > size)
        throw Failure(exit_unusable, fmt::format("the message takes {} bytes of the data area, {} more than there are",
                                                 needed, needed - size));
    std::vector<uint8_t> memory = is_file                 ? std::vector<uint8_t>()
                                  : image.type == "type2" ? container_of_type2(size)
                                                          : container_of_type5(size);
    const size_t data_at = memory.size();
    memory.resize(data_at + std::max(size, wrapped));
    if (is_file) {
        memory[0] = static_cast<uint8_t>(message.size() >> 8);
        memory[1] = static_cast<uint8_t>(message.size());
        std::ranges::copy(message, memory.begin() + length_field);
    } else {
        nfc_ndef_tlv_wrap(lent, memory.data() + data_at, static_cast<uint32_t>(memory.size() - data_at));
    }
    memory.resize(data_at + size);
    return memory;
}

} // namespace tool
