#include "bluetooth_view.h"

#include "printable.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

namespace tool {
namespace {

uint32_t little_endian(ByteView bytes)
{
    uint32_t value = 0;
    for (size_t i = bytes.size(); i-- > 0;)
        value = value << 8 | bytes[i];
    return value;
}

std::vector<uint8_t> reversed(ByteView bytes) { return {bytes.rbegin(), bytes.rend()}; }

std::string service_name(uint32_t uuid)
{
    constexpr std::pair<uint32_t, std::string_view> names[] = {
        {0x1101, "Serial Port"},
        {0x1105, "OBEX Object Push"},
        {0x1106, "OBEX File Transfer"},
        {0x1108, "Headset"},
        {0x110A, "Audio Source"},
        {0x110B, "Audio Sink"},
        {0x110C, "A/V Remote Control Target"},
        {0x110E, "A/V Remote Control"},
        {0x1112, "Headset Audio Gateway"},
        {0x1115, "PANU"},
        {0x1116, "NAP"},
        {0x111E, "Hands-Free"},
        {0x111F, "Hands-Free Audio Gateway"},
        {0x1124, "Human Interface Device"},
        {0x112F, "Phonebook Access Server"},
        {0x1132, "Message Access Server"},
        {0x1200, "PnP Information"},
    };
    const auto *found = std::ranges::find(names, uuid, &std::pair<uint32_t, std::string_view>::first);
    return found == std::end(names) ? "" : fmt::format(" {}", found->second);
}

std::string uuid_of(ByteView bytes)
{
    const auto first = reversed(bytes);
    if (bytes.size() != 16) {
        const uint32_t uuid = little_endian(bytes);
        return fmt::format("0x{:0{}X}{}", uuid, bytes.size() * 2, service_name(uuid));
    }
    std::string text = fmt::format("{:02x}", fmt::join(first, ""));
    for (const int dash : {20, 16, 12, 8})
        text.insert(static_cast<size_t>(dash), 1, '-');
    return text;
}

std::string uuids_of(ByteView list, size_t width)
{
    std::string text;
    size_t at = 0;
    for (; list.size() - at >= width; at += width)
        text += (at == 0 ? "" : ", ") + uuid_of(list.subspan(at, width));
    return at == list.size() ? text : fmt::format("{} (malformed: {} left over)", text, hex_of(list.subspan(at)));
}

std::string le_address(ByteView data)
{
    return fmt::format("{} ({})", address_of(data.first(6)), (data[6] & 1) != 0 ? "random" : "public");
}

std::string le_role(ByteView data)
{
    constexpr std::string_view roles[] = {"only peripheral", "only central", "peripheral preferred",
                                          "central preferred"};
    return std::string(data[0] < std::size(roles) ? roles[data[0]] : "reserved");
}

std::string manufacturer(ByteView data)
{
    return fmt::format("company 0x{:04X}, data {}", little_endian(data.first(2)),
                       data.size() == 2 ? "none" : hex_of(data.subspan(2)));
}

struct Structure {
    uint8_t type;
    std::string_view name;
    std::string (*show)(ByteView data);
    size_t least; // fewest bytes of data that `show` can take
};

std::string show_hex(ByteView data) { return hex_of(data); }
std::string show_text(ByteView data) { return in_quotes(printable_utf8(data)); }
template <size_t Width> std::string show_uuids(ByteView data) { return uuids_of(data, Width); }
std::string show_power(ByteView data) { return fmt::format("{} dBm", static_cast<int8_t>(data[0])); }
std::string show_class(ByteView data) { return class_of_device_name(little_endian(data.first(3))); }

constexpr Structure structures_known[] = {
    {0x01, "flags", show_hex, 0},
    {0x02, "16-bit service UUIDs (incomplete)", show_uuids<2>, 0},
    {0x03, "16-bit service UUIDs", show_uuids<2>, 0},
    {0x04, "32-bit service UUIDs (incomplete)", show_uuids<4>, 0},
    {0x05, "32-bit service UUIDs", show_uuids<4>, 0},
    {0x06, "128-bit service UUIDs (incomplete)", show_uuids<16>, 0},
    {0x07, "128-bit service UUIDs", show_uuids<16>, 0},
    {0x08, "local name (shortened)", show_text, 0},
    {0x09, "local name", show_text, 0},
    {0x0A, "transmit power", show_power, 1},
    {0x0D, "class of device", show_class, 3},
    {0x0E, "hash C", show_hex, 0},
    {0x0F, "randomizer R", show_hex, 0},
    {0x10, "security manager TK value", show_hex, 0},
    {0x11, "security manager flags", show_hex, 0},
    {0x16, "service data", show_hex, 0},
    {0x19, "appearance", show_hex, 0},
    {0x1B, "LE device address", le_address, 7},
    {0x1C, "LE role", le_role, 1},
    {0x1D, "hash C-256", show_hex, 0},
    {0x1E, "randomizer R-256", show_hex, 0},
    {0x22, "LE secure connections confirmation", show_hex, 0},
    {0x23, "LE secure connections random", show_hex, 0},
    {0xFF, "manufacturer data", manufacturer, 2},
};

void view_structure(Tree &tree, uint8_t type, ByteView data)
{
    const auto *known = std::ranges::find(structures_known, type, &Structure::type);
    if (known == std::end(structures_known))
        tree.field(fmt::format("field 0x{:02X}", type), hex_of(data));
    else if (data.size() < known->least)
        tree.field(known->name, fmt::format("{} (too short)", hex_of(data)));
    else
        tree.field(known->name, known->show(data));
}

} // namespace

std::string address_of(ByteView little_endian) { return hex_of(reversed(little_endian), ":"); }

std::string class_of_device_name(uint32_t class_of_device)
{
    constexpr std::string_view majors[] = {"Miscellaneous", "Computer",   "Phone",   "LAN/Network Access Point",
                                           "Audio/Video",   "Peripheral", "Imaging", "Wearable",
                                           "Toy",           "Health"};
    constexpr std::string_view services[] = {
        "Limited Discoverable Mode", "LE Audio", "",          "Positioning", "Networking", "Rendering", "Capturing",
        "Object Transfer",           "Audio",    "Telephony", "Information"}; // from bit 13 up
    const uint32_t major = class_of_device >> 8 & 0x1F;
    std::string text = fmt::format("0x{:06X}, {}", class_of_device,
                                   major < std::size(majors) ? majors[major]
                                   : major == 31             ? "Uncategorized"
                                                             : "reserved");
    std::string_view separator = "; services: ";
    for (size_t i = 0; i < std::size(services); ++i)
        if ((class_of_device >> (13 + i) & 1) != 0 && !services[i].empty()) {
            text.append(separator).append(services[i]);
            separator = ", ";
        }
    return text;
}

void view_structures(Tree &tree, ByteView structures)
{
    while (!structures.empty()) {
        const size_t length = structures[0];
        structures = structures.subspan(1);
        if (length > structures.size()) {
            tree.warning(fmt::format("a field of {} runs past the end", count_of(length, "byte")));
            return;
        }
        if (length > 0) // else padding
            view_structure(tree, structures[0], structures.subspan(1, length - 1));
        structures = structures.subspan(length);
    }
}

} // namespace tool
