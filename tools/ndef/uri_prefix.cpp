#include "uri_prefix.h"

#include <iterator>

namespace tool {

namespace {

// Indexed by the identifier code.
constexpr std::string_view prefixes[] = {
    "",
    "http://www.",
    "https://www.",
    "http://",
    "https://",
    "tel:",
    "mailto:",
    "ftp://anonymous:anonymous@",
    "ftp://ftp.",
    "ftps://",
    "sftp://",
    "smb://",
    "nfs://",
    "ftp://",
    "dav://",
    "news:",
    "telnet://",
    "imap:",
    "rtsp://",
    "urn:",
    "pop:",
    "sip:",
    "sips:",
    "tftp:",
    "btspp://",
    "btl2cap://",
    "btgoep://",
    "tcpobex://",
    "irdaobex://",
    "file://",
    "urn:epc:id:",
    "urn:epc:tag:",
    "urn:epc:pat:",
    "urn:epc:raw:",
    "urn:epc:",
    "urn:nfc:",
};
static_assert(std::size(prefixes) == 0x24);

} // namespace

std::string_view uri_prefix(uint8_t identifier_code)
{
    return identifier_code < std::size(prefixes) ? prefixes[identifier_code] : std::string_view();
}

std::string expand_uri(const model::Uri &uri) { return std::string(uri_prefix(uri.identifier_code)) + uri.uri_field; }

model::Uri abbreviate_uri(std::string_view uri)
{
    size_t longest = 0;
    for (size_t code = 1; code < std::size(prefixes); ++code)
        if (uri.starts_with(prefixes[code]) && prefixes[code].size() > prefixes[longest].size())
            longest = code;
    return {static_cast<uint8_t>(longest), std::string(uri.substr(prefixes[longest].size()))};
}

} // namespace tool
