// Names that people know numbers by: one table for an enumeration, which serves both directions.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace nfc_ndef::values {

struct Name {
    uint32_t value;
    std::string_view name;       // as JSON says it
    std::string_view title = {}; // as people say it, where that differs
};

// A table of names; the table must outlive it.
class Names {
public:
    template <size_t N> constexpr Names(const Name (&table)[N]) : table_(table) {}

    constexpr std::optional<std::string_view> name_of(uint32_t value) const
    {
        const Name *found = find(value);
        return found ? std::optional(found->name) : std::nullopt;
    }
    // "reserved" for a number without a name.
    constexpr std::string_view title_of(uint32_t value) const
    {
        const Name *found = find(value);
        return !found ? "reserved" : found->title.empty() ? found->name : found->title;
    }
    constexpr std::optional<uint32_t> value_of(std::string_view name) const
    {
        for (const Name &entry : table_)
            if (entry.name == name)
                return entry.value;
        return std::nullopt;
    }
    constexpr auto begin() const { return table_.begin(); }
    constexpr auto end() const { return table_.end(); }

private:
    constexpr const Name *find(uint32_t value) const
    {
        for (const Name &entry : table_)
            if (entry.value == value)
                return &entry;
        return nullptr;
    }

    std::span<const Name> table_;
};

// Type name formats, the TNF field of NFC Forum NDEF 1.0.
inline constexpr Name type_name_formats[] = {
    {0, "empty"},    {1, "well-known"}, {2, "media", "media type"}, {3, "absolute-uri", "absolute URI"},
    {4, "external"}, {5, "unknown"},    {6, "unchanged"},           {7, "reserved"},
};

} // namespace nfc_ndef::values
