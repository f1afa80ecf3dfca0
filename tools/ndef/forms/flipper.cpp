// The ".nfc" files of a Flipper: lines of "Key: value", with the memory in pages, blocks or one line.
#include "forms/all.h"
#include "text/encoded_text.h"
#include "text/plain_text.h"

#include <fmt/format.h>

#include <charconv>
#include <map>
#include <optional>

namespace tool::forms {
namespace {

constexpr size_t page_size = 4, block_size = 16;
constexpr size_t felica_status_size = 2; // in front of each block of a Type 3 tag

std::optional<size_t> decimal(std::string_view text)
{
    size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

// The value of the file's key; empty when it has none.
class Entries {
public:
    explicit Entries(std::string_view text)
    {
        while (!text.empty()) {
            const std::string_view line = take_line(text);
            const size_t colon = line.find(':');
            if (!line.starts_with('#') && colon != std::string_view::npos)
                entries_.emplace(trimmed(line.substr(0, colon)), trimmed(line.substr(colon + 1)));
        }
    }
    std::string_view operator[](std::string_view key) const
    {
        const auto found = entries_.find(key);
        return found != entries_.end() ? found->second : std::string_view();
    }
    bool has(std::string_view key) const { return entries_.contains(key); }

private:
    std::map<std::string_view, std::string_view> entries_;
};

// "04 ?? 00": what nobody knows is "??".
std::optional<values::Bytes> bytes_of(std::string_view digits, bool &unknown)
{
    std::string known(digits);
    unknown = known.find("??") != std::string::npos;
    for (size_t at = known.find("??"); at != std::string::npos; at = known.find("??", at))
        known.replace(at, 2, "00");
    return decode_hex(known);
}

// "Page 0", "Page 1" and so on, of so many bytes each and `status_size` in front of them.
Written in_pieces(const Entries &entries, const std::string &key, size_t size, size_t status_size, size_t least,
                  std::string_view layout)
{
    Memory memory{.layout = layout};
    size_t count = 0;
    for (std::string name = key + " 0"; entries.has(name); name = fmt::format("{} {}", key, ++count)) {
        bool unknown = false;
        const auto bytes = bytes_of(entries[name], unknown);
        if (!bytes || bytes->size() != status_size + size)
            return alike(fmt::format("'{}' has not {} bytes", name, status_size + size));
        memory.bytes.insert(memory.bytes.end(), bytes->begin() + static_cast<std::ptrdiff_t>(status_size),
                            bytes->end());
        if (unknown)
            memory.unread_blocks.insert((memory.bytes.size() - 1) / block_size);
    }
    if (count < least)
        return alike(fmt::format("'{} {}' is missing", key, count));
    return {.match = Match::whole, .memory = std::move(memory)};
}

size_t blocks_of_classic(std::string_view type)
{
    return type == "MINI" ? 20 : type == "1K" ? 64 : type == "4K" ? 256 : 0;
}

} // namespace

Written read_flipper(std::string_view text)
{
    if (!trimmed(text).starts_with("Filetype: Flipper NFC"))
        return {};
    const Entries entries(text);
    if (entries.has("Data Content")) {
        bool unknown = false;
        auto bytes = bytes_of(entries["Data Content"], unknown);
        const auto count = decimal(entries["Block Count"]);
        const auto size = decode_hex(entries["Block Size"]);
        if (!bytes || unknown || (count && size && size->size() == 1 && bytes->size() != *count * size->front()))
            return alike("'Data Content' is not the bytes of all blocks");
        return {.match = Match::whole, .memory = {.bytes = *std::move(bytes), .layout = "type5"}};
    }
    if (entries.has("Page 0")) {
        const std::string_view count = entries[entries.has("Pages read") ? "Pages read" : "Pages total"];
        return in_pieces(entries, "Page", page_size, 0, decimal(count).value_or(0), "type2");
    }
    const std::string_view classic = entries["Mifare Classic type"];
    if (entries.has("Block 0") && !classic.empty())
        return in_pieces(entries, "Block", block_size, 0, blocks_of_classic(classic), "classic");
    if (entries.has("Block 0"))
        return in_pieces(entries, "Block", block_size, felica_status_size, decimal(entries["Blocks read"]).value_or(0),
                         "type3");
    return alike("it has no memory of a tag");
}

} // namespace tool::forms
