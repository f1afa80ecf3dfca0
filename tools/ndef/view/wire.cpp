#include "view/wire.h"

#include <iterator>
#include <string_view>
#include <utility>

namespace tool {
namespace {

// Takes from the front; remembers when there was too little.
struct Cursor {
    ByteView take(size_t length)
    {
        if (length > left.size()) {
            ok = false;
            left = {};
            return {};
        }
        const ByteView taken = left.first(length);
        left = left.subspan(length);
        return taken;
    }
    size_t number(size_t width)
    {
        size_t value = 0;
        for (const uint8_t byte : take(width))
            value = value << 8 | byte;
        return value;
    }

    ByteView left;
    bool ok = true;
};

} // namespace

std::vector<WireRecord> wire_records(ByteView message)
{
    std::vector<WireRecord> records;
    for (Cursor cursor{message}; !cursor.left.empty();) {
        WireRecord record;
        record.offset = message.size() - cursor.left.size();
        record.header = static_cast<uint8_t>(cursor.number(1));
        const size_t type_length = cursor.number(1);
        const size_t payload_length = cursor.number(record.has(WireRecord::sr) ? 1 : 4);
        const size_t id_length = record.has(WireRecord::il) ? cursor.number(1) : 0;
        record.type = cursor.take(type_length);
        record.id = cursor.take(id_length);
        record.payload = cursor.take(payload_length);
        if (!cursor.ok)
            break;
        record.bytes = message.subspan(record.offset, message.size() - cursor.left.size() - record.offset);
        records.push_back(record);
    }
    return records;
}

std::vector<std::span<const WireRecord>> joined(const std::vector<WireRecord> &records)
{
    std::vector<std::span<const WireRecord>> groups;
    for (size_t first = 0, i = 0; i < records.size(); ++i) {
        if (records[i].has(WireRecord::cf))
            continue;
        groups.push_back(std::span(records).subspan(first, i + 1 - first));
        first = i + 1;
    }
    return groups;
}

std::string flag_names(uint8_t header)
{
    constexpr std::pair<WireRecord::Flag, std::string_view> names[] = {{WireRecord::mb, "MB"},
                                                                       {WireRecord::me, "ME"},
                                                                       {WireRecord::cf, "CF"},
                                                                       {WireRecord::sr, "SR"},
                                                                       {WireRecord::il, "IL"}};
    std::string set;
    for (const auto &[flag, name] : names)
        if ((header & flag) != 0)
            set.append(set.empty() ? "" : " ").append(name);
    return set;
}

} // namespace tool
