#include "command_line/io_options.h"
#include "make/content.h"
#include "make/thing.h"

#include <algorithm>

namespace tool::make {
namespace {

enum class Security { wpa2, wpa, open };

constexpr Option ssid{.names = "--ssid", .placeholder = "NAME", .help = "The network's name", .required = true};
constexpr Option key{
    .names = "--key", .placeholder = "KEY", .help = "Its passphrase, or 64 hex digits; - for a line of standard input"};
constexpr Option security{.names = "--security",
                          .placeholder = "SECURITY",
                          .help = "wpa2 (also for WPA3), wpa (old networks, WPA and WPA2) or open; wpa2 without it",
                          .values = Option::Values::listed,
                          .list = "wpa2 wpa open"};

constexpr uint16_t open_network = 0x0001, wpa_personal = 0x0002, wpa2_personal = 0x0020;
constexpr uint16_t no_encryption = 0x0001, tkip = 0x0004, aes = 0x0008;

bool is_hex_digit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

std::string given_key(const Arguments &given)
{
    const std::string text = given.value_or(key, "");
    return text == "-" ? text_of_input(given.has(no_limit)) : text;
}

void require_key(const std::string &text)
{
    require(!text.empty(), "a network that is not open needs a --key");
    const bool is_key = text.size() == 64 && std::ranges::all_of(text, is_hex_digit);
    require(is_key || (text.size() >= 8 && text.size() <= 63),
            "a key is a passphrase of 8 to 63 characters, or 64 hex digits");
    require(std::ranges::all_of(text, [](char c) { return c >= ' ' && c < 0x7F; }),
            "a passphrase is of visible ASCII characters and blanks");
}

values::Record record(const Arguments &given)
{
    const Security wanted = given.choice<Security>(security).value_or(Security::wpa2);
    values::WifiAttributes network;
    network.network_index = 1;
    network.ssid = given.value_or(ssid, "");
    require(!network.ssid->empty() && network.ssid->size() <= 32, "a network's name is 1 to 32 bytes long");
    network.mac_address.emplace().fill(0xFF); // for any device
    if (wanted == Security::open) {
        require(!given.has(key), "an open network has no key");
        network.authentication_type = open_network;
        network.encryption_type = no_encryption;
        network.network_key = "";
    } else {
        network.network_key = given_key(given);
        require_key(*network.network_key);
        const bool old = wanted == Security::wpa;
        network.authentication_type = static_cast<uint16_t>(old ? wpa_personal | wpa2_personal : wpa2_personal);
        network.encryption_type = static_cast<uint16_t>(old ? tkip | aes : aes);
    }
    values::Wifi wifi;
    wifi.credentials.push_back(std::move(network));
    return record_of(std::move(wifi));
}

} // namespace

Thing wifi()
{
    return {.name = "wifi",
            .summary = "Makes the record of a Wi-Fi network, which phones join",
            .options = {&ssid, &key, &security, &no_limit},
            .examples = "Examples:\n"
                        "  ndef make wifi --ssid Cafe --key 'flat white'\n"
                        "  ndef make wifi --ssid Guests --security open\n"
                        "  pass wifi | ndef make wifi --ssid Office --key -",
            .record = record};
}

} // namespace tool::make
