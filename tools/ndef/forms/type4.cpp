// NFC Forum Type 4 Tag 2.0 and 3.0: a file with the length of the message in front, in two bytes or, from version 3 on,
// in four. The capability container, which is a file of its own, may stand before it.
#include "forms/all.h"

#include <fmt/format.h>

namespace tool::forms {
namespace {

size_t number_at(values::ByteView bytes, size_t at, size_t width)
{
    size_t number = 0;
    for (const uint8_t byte : bytes.subspan(at, width))
        number = number << 8 | byte;
    return number;
}

struct Container {
    size_t length = 0; // 0: there is none
    size_t width = 2;  // of the length in front of the message
    size_t file_size = 0;
};

// Length, mapping version, two sizes, and the TLV that names the file: 4 with two bytes for its size, 6 with four.
Container container_of(values::ByteView bytes)
{
    constexpr size_t least = 15, control_at = 7, file_size_at = 11;
    if (bytes.size() < least)
        return {};
    const size_t length = number_at(bytes, 0, 2);
    const uint8_t version = bytes[2] >> 4, tag = bytes[control_at], control_length = bytes[control_at + 1];
    const bool is_short = tag == 4 && control_length == 6, is_long = tag == 6 && control_length == 8;
    if (length < least || length > bytes.size() || version < 1 || version > 3 || !(is_short || is_long))
        return {};
    return {length, is_long ? size_t{4} : size_t{2}, number_at(bytes, file_size_at, is_long ? 4 : 2)};
}

Found found_in_file(values::ByteView bytes, size_t at, size_t width, size_t file_size)
{
    if (bytes.size() - at < width)
        return found_alike(fmt::format("its file is cut short at byte {}", bytes.size()));
    const size_t length = number_at(bytes, at, width);
    const size_t begin = at + width;
    if (length > file_size - std::min(file_size, width))
        return found_alike(fmt::format("the message of {} bytes is longer than its file of {}", length, file_size));
    if (length > bytes.size() - begin)
        return found_alike(fmt::format("the message in it is cut short at byte {}", bytes.size()));
    const values::ByteView message = bytes.subspan(begin, length);
    return {.match = Match::whole, .message = {message.begin(), message.end()}, .at = begin};
}

} // namespace

Found find_type4(const Memory &memory, bool asked)
{
    const values::ByteView all = memory.bytes;
    if (const Container container = container_of(all); container.length != 0)
        return found_in_file(all, container.length, container.width, container.file_size);
    // Any two bytes are a length, so that alone only a message says that it is one, or that there is nothing else.
    Found unlikely{};
    for (const size_t width : {size_t{2}, size_t{4}}) {
        if (all.size() < width)
            continue;
        Found found = found_in_file(all, 0, width, SIZE_MAX);
        const bool is_empty = found.match == Match::whole && found.message.empty() && all.size() == width;
        if (is_empty || (found.match == Match::whole && is_message(found.message)))
            return found;
        if (asked && unlikely.match != Match::whole)
            unlikely = std::move(found);
    }
    return unlikely;
}

} // namespace tool::forms
