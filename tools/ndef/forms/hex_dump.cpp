// What "xxd" and "hexdump -C" print: in each line an offset, the bytes in hex, and the same bytes as characters.
#include "forms/all.h"
#include "text/encoded_text.h"
#include "text/plain_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>

namespace tool::forms {
namespace {

constexpr size_t limit = 16 << 20; // of the bytes that a "*" stands for
constexpr size_t fewest_offset_digits = 7;

struct Line {
    uint64_t offset = 0;
    values::Bytes bytes{};
    std::string_view characters{};
};

std::optional<uint64_t> take_offset(std::string_view &line)
{
    uint64_t offset = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), offset, 16);
    const auto digits = static_cast<size_t>(end - line.data());
    if (error != std::errc() || digits < fewest_offset_digits)
        return std::nullopt;
    line.remove_prefix(digits);
    return offset;
}

std::optional<Line> with_bytes(uint64_t offset, std::string_view digits, std::string_view characters)
{
    auto bytes = decode_hex(digits);
    const bool digits_alone = digits.find_first_not_of("0123456789abcdefABCDEF ") == std::string_view::npos;
    return bytes && digits_alone ? std::optional(Line{offset, *std::move(bytes), characters}) : std::nullopt;
}

// "00000010: 6f6d 2f61  om/a": two blanks end the bytes.
std::optional<Line> xxd_line(std::string_view line)
{
    const auto offset = take_offset(line);
    if (!offset || !line.starts_with(": "))
        return std::nullopt;
    line.remove_prefix(2);
    const size_t end = std::min(line.find("  "), line.size());
    return with_bytes(*offset, line.substr(0, end), trimmed(line.substr(end)));
}

// "00000010  6f 6d 2f 61  00 00 00 00  |om/a....|"; the last line is an offset alone.
std::optional<Line> hexdump_line(std::string_view line)
{
    const auto offset = take_offset(line);
    if (!offset)
        return std::nullopt;
    if (trimmed(line).empty())
        return Line{*offset};
    if (!line.starts_with("  "))
        return std::nullopt;
    const size_t bar = std::min(line.find('|'), line.size());
    std::string_view characters = trimmed(line.substr(bar));
    if (characters.size() < 2 ? !characters.empty() : !characters.ends_with('|'))
        return std::nullopt;
    if (!characters.empty())
        characters = characters.substr(1, characters.size() - 2);
    return with_bytes(*offset, line.substr(0, bar), characters);
}

// The characters may have lost the blanks around them, or be missing.
bool fits(std::string_view characters, const values::Bytes &bytes)
{
    std::string all;
    for (const uint8_t byte : bytes)
        all += byte >= 0x20 && byte < 0x7F ? static_cast<char>(byte) : '.';
    return characters.empty() || trimmed(characters) == trimmed(all);
}

class Dump {
public:
    // What is wrong with a line; nothing when it fits.
    std::string add(const Line &line)
    {
        if (empty())
            first_ = line.offset;
        values::Bytes &bytes = memory_.bytes;
        if (repeats_ && line.offset > due() && line.offset - first_ <= limit)
            while (due() < line.offset)
                bytes.insert(bytes.end(), last_.begin(), last_.end());
        repeats_ = false;
        if (line.offset != due())
            return fmt::format("has the offset {:X} where {:X} is due", line.offset, due());
        if (!fits(line.characters, line.bytes))
            return "has characters that are not those of its bytes";
        bytes.insert(bytes.end(), line.bytes.begin(), line.bytes.end());
        last_ = line.bytes;
        return "";
    }
    void repeat() { repeats_ = true; }
    bool empty() const { return memory_.bytes.empty(); }
    bool ends_in_repetition() const { return repeats_; }
    Memory take() { return std::move(memory_); }

private:
    uint64_t due() const { return first_ + memory_.bytes.size(); }

    Memory memory_;
    values::Bytes last_; // the bytes of a line, never none when they are repeated
    uint64_t first_ = 0;
    bool repeats_ = false;
};

Written read_dump(std::string_view text, std::optional<Line> (*read_line)(std::string_view))
{
    Dump dump;
    for (size_t number = 1; !text.empty(); ++number) {
        const std::string_view line = trimmed(take_line(text));
        if (line.empty())
            continue;
        if (!dump.empty() && line == "*") {
            dump.repeat();
            continue;
        }
        const auto read = read_line(line);
        // Without characters or an offset of 0 at its beginning it may be other digits as well.
        const bool begins = read && !read->bytes.empty() && (read->offset == 0 || !read->characters.empty());
        if (dump.empty() && !begins)
            return {};
        const std::string wrong = read ? dump.add(*read) : "is not like those before";
        if (!wrong.empty())
            return alike(fmt::format("line {} {}", number, wrong));
    }
    if (dump.ends_in_repetition())
        return alike("nothing follows its last line, which is a *");
    return dump.empty() ? Written{} : Written{.match = Match::whole, .memory = dump.take()};
}

} // namespace

Written read_xxd(std::string_view text) { return read_dump(text, xxd_line); }
Written read_hexdump(std::string_view text) { return read_dump(text, hexdump_line); }

} // namespace tool::forms
