// The prefixes that a URI record abbreviates: NFC Forum URI RTD 1.0.
#include "record/view.h"

#include <iterator>

using namespace ndef;

namespace {

// Indexed by the identifier code. Each lies in the table itself, which therefore needs no relocation.
constexpr char prefixes[][27] = {
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

const char *nfc_ndef_uri_prefix(uint8_t identifier_code)
{
    return prefixes[identifier_code < std::size(prefixes) ? identifier_code : 0];
}

uint8_t nfc_ndef_uri_prefix_code(nfc_ndef_bytes uri, uint32_t *prefix_length)
{
    const ByteView bytes = bytes_of(uri);
    size_t longest = 0, found = 0;
    for (size_t code = 1; code < std::size(prefixes); ++code) {
        const size_t length = std::strlen(prefixes[code]);
        if (length > longest && length <= bytes.size() && std::memcmp(prefixes[code], bytes.data(), length) == 0) {
            longest = length;
            found = code;
        }
    }
    if (prefix_length)
        *prefix_length = static_cast<uint32_t>(longest);
    return static_cast<uint8_t>(found);
}
