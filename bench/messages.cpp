#include "messages.h"

#include <initializer_list>
#include <string>
#include <string_view>

namespace bench {
namespace {

constexpr uint8_t mb = 0x80, me = 0x40, cf = 0x20, sr = 0x10, il = 0x08;
enum Format : uint8_t { well_known = 1, media = 2, external = 4, unchanged = 6 };

Bytes bytes(std::string_view characters) { return {characters.begin(), characters.end()}; }

// Bytes without a pattern, the same in every run.
Bytes noise(size_t length)
{
    Bytes result(length);
    uint32_t state = 1;
    for (uint8_t &byte : result) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<uint8_t>(state >> 24);
    }
    return result;
}

Bytes operator+(Bytes left, const Bytes &right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes record(Format format, std::string_view type, const Bytes &payload, std::string_view id = {})
{
    const size_t length = payload.size();
    const bool is_short = length < 256;
    Bytes result{static_cast<uint8_t>(format | (is_short ? sr : 0) | (id.empty() ? 0 : il)),
                 static_cast<uint8_t>(type.size())};
    for (int shift = is_short ? 0 : 24; shift >= 0; shift -= 8)
        result.push_back(static_cast<uint8_t>(length >> shift));
    if (!id.empty())
        result.push_back(static_cast<uint8_t>(id.size()));
    return result + bytes(type) + bytes(id) + payload;
}

Bytes text(std::string_view language, std::string_view characters)
{
    return record(well_known, "T", Bytes{static_cast<uint8_t>(language.size())} + bytes(language) + bytes(characters));
}

Bytes uri(uint8_t prefix, std::string_view rest) { return record(well_known, "U", Bytes{prefix} + bytes(rest)); }

Bytes message(const std::vector<Bytes> &records)
{
    Bytes result;
    size_t last = 0;
    for (const Bytes &each : records) {
        last = result.size();
        result = std::move(result) + each;
    }
    result[0] |= mb;
    result[last] |= me;
    return result;
}

Bytes alternative_carrier(std::string_view reference)
{
    constexpr uint8_t active = 1, no_auxiliary_data = 0;
    return record(well_known, "ac",
                  Bytes{active, static_cast<uint8_t>(reference.size())} + bytes(reference) + Bytes{no_auxiliary_data});
}

size_t first_payload(const Bytes &message)
{
    const uint8_t flags = message[0];
    const size_t id_length_at = flags & sr ? 3 : 6;
    const size_t id_length = flags & il ? 1U + message[id_length_at] : 0U;
    return id_length_at + id_length + message[1];
}

} // namespace

Bytes text_message() { return message({text("en", "Hello, tag reader")}); }

Bytes smart_poster_message()
{
    return message({record(
        well_known, "Sp",
        message({uri(4, "example.org/museum/hall-7"), text("en", "Museum hall seven"), text("de", "Museumssaal sieben"),
                 record(well_known, "act", {0}), record(media, "image/png", noise(2048))}))});
}

Bytes short_records_message(size_t count)
{
    std::vector<Bytes> records;
    for (size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        if (i % 3 == 0)
            records.push_back(text("en", "note number " + number + " of this tag"));
        else if (i % 3 == 1)
            records.push_back(uri(3, "example.org/item/" + std::to_string(1000 + i)));
        else
            records.push_back(record(media, "text/plain", bytes("plain body " + number + std::string(i % 17, '.'))));
    }
    return message(records);
}

Bytes one_payload_message(size_t length) { return message({record(media, "application/octet-stream", noise(length))}); }

Bytes chunked_message(size_t chunk_count)
{
    constexpr size_t chunk_length = 200;
    std::vector<Bytes> chunks;
    for (size_t i = 0; i < chunk_count; ++i) {
        chunks.push_back(i == 0 ? record(media, "application/octet-stream", noise(chunk_length))
                                : record(unchanged, "", noise(chunk_length)));
        if (i + 1 < chunk_count)
            chunks.back()[0] |= cf;
    }
    return message(chunks);
}

Bytes handover_message()
{
    const Bytes request = Bytes{0x12} + message({record(well_known, "cr", {0x4D, 0x2A}), alternative_carrier("b"),
                                                 alternative_carrier("w")});
    const Bytes address_and_name = Bytes{27, 0, 6, 5, 4, 3, 2, 1, 13, 9} + bytes("Desk Speaker");
    const Bytes class_of_device{4, 13, 0x14, 0x04, 0x24};
    return message({record(well_known, "Hr", request),
                    record(media, "application/vnd.bluetooth.ep.oob", address_and_name + class_of_device, "b"),
                    record(media, "application/vnd.wfa.wsc", noise(66), "w")});
}

Bytes mixed_poster_message(size_t count)
{
    std::vector<Bytes> records{uri(4, "example.org/museum/hall-7")};
    while (records.size() < count)
        switch (records.size() % 5) {
        case 0:
            records.push_back(text("en", "Museum hall seven"));
            break;
        case 1:
            records.push_back(record(media, "image/png", noise(32)));
            break;
        case 2:
            records.push_back(record(external, "example.com:x", noise(16)));
            break;
        case 3:
            records.push_back(record(media, "video/mp4", noise(32)));
            break;
        default:
            records.push_back(record(media, "text/plain", noise(20)));
            break;
        }
    return message({record(well_known, "Sp", message(records))});
}

Input::Input(const Bytes &message) : storage_(message.size() + 64), length_(static_cast<uint32_t>(message.size()))
{
    constexpr size_t cache_line = 64;
    const auto payload = reinterpret_cast<uintptr_t>(storage_.data()) + first_payload(message);
    data_ = storage_.data() + (cache_line - payload % cache_line) % cache_line;
    std::memcpy(data_, message.data(), message.size());
}

} // namespace bench
