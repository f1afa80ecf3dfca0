#include "structures.h"

#include "../c_interface.h"
#include "../names.h"
#include "../printable.h"
#include "../spelling.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

namespace nfc_ndef::values {

namespace {

constexpr Name services[] = {
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

constexpr Name major_classes[] = {
    {0, "Miscellaneous"}, {1, "Computer"},   {2, "Phone"},         {3, "LAN/Network Access Point"},
    {4, "Audio/Video"},   {5, "Peripheral"}, {6, "Imaging"},       {7, "Wearable"},
    {8, "Toy"},           {9, "Health"},     {31, "Uncategorized"}};

// By bit of the class of device.
constexpr Name major_services[] = {{13, "Limited Discoverable Mode"},
                                   {14, "LE Audio"},
                                   {16, "Positioning"},
                                   {17, "Networking"},
                                   {18, "Rendering"},
                                   {19, "Capturing"},
                                   {20, "Object Transfer"},
                                   {21, "Audio"},
                                   {22, "Telephony"},
                                   {23, "Information"}};

constexpr Name le_roles[] = {
    {0, "only peripheral"}, {1, "only central"}, {2, "peripheral preferred"}, {3, "central preferred"}};

constexpr Name flag_bits[] = {{0x01, "limited discoverable"},
                              {0x02, "general discoverable"},
                              {0x04, "LE only"},
                              {0x08, "LE and BR/EDR at once (controller)"},
                              {0x10, "LE and BR/EDR at once (host)"}};
constexpr Name oob_flag_bits[] = {
    {0x01, "out-of-band data"}, {0x02, "LE"}, {0x04, "LE and BR/EDR at once"}, {0x08, "random address"}};

constexpr Name appearance_categories[] = {
    {0, "unknown"},
    {1, "phone"},
    {2, "computer"},
    {3, "watch"},
    {4, "clock"},
    {5, "display"},
    {6, "remote control"},
    {7, "eye-glasses"},
    {8, "tag"},
    {9, "keyring"},
    {10, "media player"},
    {11, "barcode scanner"},
    {12, "thermometer"},
    {13, "heart rate sensor"},
    {14, "blood pressure meter"},
    {15, "human interface device"},
    {16, "glucose meter"},
    {17, "running sensor"},
    {18, "cycling sensor"},
    {49, "pulse oximeter"},
    {50, "weight scale"},
    {81, "outdoor sports"},
};
constexpr uint32_t human_interface = 15;
constexpr Name input_devices[] = {{1, "keyboard"}, {2, "mouse"},       {3, "joystick"},    {4, "gamepad"},
                                  {5, "tablet"},   {6, "card reader"}, {7, "digital pen"}, {8, "barcode scanner"}};

uint32_t little_endian(ByteView bytes)
{
    uint32_t value = 0;
    for (size_t i = bytes.size(); i-- > 0;)
        value = value << 8 | bytes[i];
    return value;
}

template <size_t Width> std::string uuids(ByteView list)
{
    std::string text;
    for (; list.size() >= Width; list = list.subspan(Width)) {
        text += (text.empty() ? "" : ", ") + uuid(Width).text_of(list.first(Width));
        const auto service = Width == 16 ? std::nullopt : Names(services).name_of(little_endian(list.first(Width)));
        if (service)
            text.append(" ").append(*service);
    }
    return list.empty() ? text : fmt::format("{} (malformed: {} left over)", text, hex_of(list));
}

std::string hex(ByteView data) { return hex_of(data); }
std::string text(ByteView data) { return quoted_utf8(data); }
std::string power(ByteView data) { return fmt::format("{} dBm", static_cast<int8_t>(data[0])); }
std::string device_class(ByteView data) { return class_of_device_text(little_endian(data.first(3))); }
std::string le_role(ByteView data) { return std::string(Names(le_roles).title_of(data[0])); }
std::string le_address(ByteView data)
{
    const std::string text = address(Spelling::Order::reversed).text_of(data.first(6));
    return data.size() == 6 ? text : fmt::format("{} ({})", text, (data[6] & 1) != 0 ? "random" : "public");
}
std::string bits_text(uint8_t bits, Names names)
{
    std::string text = fmt::format("0x{:02X}", bits);
    for (const Name &name : names)
        if ((bits & name.value) != 0)
            text.append(", ").append(name.name);
    return text;
}
std::string flags_text(ByteView data) { return bits_text(data[0], flag_bits); }
std::string oob_flags_text(ByteView data) { return bits_text(data[0], oob_flag_bits); }
std::string appearance(ByteView data)
{
    const uint32_t value = little_endian(data.first(2)), category = value >> 6, kind = value & 0x3F;
    std::string text = fmt::format("{}, {}", value, Names(appearance_categories).title_of(category));
    if (category == human_interface && kind != 0)
        text.append(", ").append(Names(input_devices).title_of(kind));
    return text;
}
template <size_t Width> std::string service_data(ByteView data)
{
    return fmt::format("{}, data {}", uuids<Width>(data.first(Width)),
                       data.size() == Width ? "none" : hex_of(data.subspan(Width)));
}
std::string manufacturer(ByteView data)
{
    return fmt::format("company 0x{:04X}, data {}", little_endian(data.first(2)),
                       data.size() == 2 ? "none" : hex_of(data.subspan(2)));
}

struct Shown {
    uint8_t type;
    std::string_view name;
    std::string (*show)(ByteView data);
    size_t least; // fewest bytes of data that `show` can take
};
constexpr Shown known[] = {
    {0x01, "flags", flags_text, 1},
    {0x02, "16-bit service UUIDs (incomplete)", uuids<2>, 0},
    {0x03, "16-bit service UUIDs", uuids<2>, 0},
    {0x04, "32-bit service UUIDs (incomplete)", uuids<4>, 0},
    {0x05, "32-bit service UUIDs", uuids<4>, 0},
    {0x06, "128-bit service UUIDs (incomplete)", uuids<16>, 0},
    {0x07, "128-bit service UUIDs", uuids<16>, 0},
    {0x08, "local name (shortened)", text, 0},
    {0x09, "local name", text, 0},
    {0x0A, "transmit power", power, 1},
    {0x0D, "class of device", device_class, 3},
    {0x0E, "hash C", hex, 0},
    {0x0F, "randomizer R", hex, 0},
    {0x10, "security manager TK value", hex, 0},
    {0x11, "security manager flags", oob_flags_text, 1},
    {0x12, "connection interval range", hex, 0},
    {0x14, "16-bit service solicitation", uuids<2>, 0},
    {0x15, "128-bit service solicitation", uuids<16>, 0},
    {0x16, "service data", service_data<2>, 2},
    {0x17, "public target address", hex, 0},
    {0x18, "random target address", hex, 0},
    {0x19, "appearance", appearance, 2},
    {0x1A, "advertising interval", hex, 0},
    {0x1B, "LE device address", le_address, 6},
    {0x1C, "LE role", le_role, 1},
    {0x1D, "hash C-256", hex, 0},
    {0x1E, "randomizer R-256", hex, 0},
    {0x1F, "32-bit service solicitation", uuids<4>, 0},
    {0x20, "service data", service_data<4>, 4},
    {0x21, "service data", service_data<16>, 16},
    {0x22, "LE secure connections confirmation", hex, 0},
    {0x23, "LE secure connections random", hex, 0},
    {0x24, "URI", hex, 0},
    {0x27, "LE supported features", hex, 0},
    {0xFF, "manufacturer data", manufacturer, 2},
};

} // namespace

void show_structures(ByteView bytes, View &view)
{
    nfc_ndef_bt_oob walk{};
    walk.structures = bytes_view(bytes);
    for (nfc_ndef_eir structure; nfc_ndef_bt_oob_next(&walk, &structure) == 1;) {
        const ByteView data = view_of(structure.data);
        const auto *shown = std::ranges::find(known, structure.type, &Shown::type);
        if (shown == std::end(known))
            view.field(fmt::format("field 0x{:02X}", structure.type), hex_of(data));
        else if (data.size() < shown->least)
            view.field(shown->name, fmt::format("{} (too short)", hex_of(data)));
        else
            view.field(shown->name, shown->show(data));
    }
    const ByteView left = view_of(walk.structures);
    const auto length = std::ranges::find_if(left, [](uint8_t byte) { return byte != 0; });
    if (length != left.end())
        view.warning(fmt::format("a field of {} runs past the end", count_of(*length, "byte")));
}

std::string class_of_device_text(uint32_t class_of_device)
{
    std::string text =
        fmt::format("{:06X}, {}", class_of_device, Names(major_classes).title_of(class_of_device >> 8 & 0x1F));
    std::string_view separator = "; services: ";
    for (const Name &service : major_services)
        if ((class_of_device >> service.value & 1) != 0) {
            text.append(separator).append(service.name);
            separator = ", ";
        }
    return text;
}

} // namespace nfc_ndef::values
