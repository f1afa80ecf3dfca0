// Reads an NDEF message, replaces its first URI record or appends one, and prints the new message as hex.
// Reads the file given as argument; without one, a message of a Text and a URI record.

#include <nfc_ndef.hpp>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

using nfc_ndef::out;

namespace {

using Bytes = std::vector<uint8_t>;

nfc_ndef::Record make_uri(uint8_t prefix_code, std::string_view rest)
{
    return nfc_ndef::Record(rtdlib_uri_record_create(prefix_code, static_cast<uint32_t>(rest.size()),
                                                     reinterpret_cast<const uint8_t *>(rest.data())));
}

bool put_uri(nfc_ndef_msg *message, nfc_ndef::Record uri)
{
    const int32_t found = nfc_ndef_record_index_by_type_from_msg(message, nfc_ndef_record_get_record_type(uri.get()));
    const uint32_t result =
        found >= 0 ? nfc_ndef_msg_set_record(message, static_cast<uint8_t>(found), uri.get())
                   : nfc_ndef_msg_insert_record(message, nfc_ndef_msg_get_number_of_records(message), uri.get());
    if (result != NFC_NDEF_OK)
        return false;
    (void)uri.release(); // the message owns it now
    return true;
}

bool edit(const Bytes &tag)
{
    const nfc_ndef::Message message(
        nfc_ndef_msg_create_by_msg_offset(tag.data(), 0, static_cast<uint32_t>(tag.size())));
    if (!message || !put_uri(message.get(), make_uri(4, "example.com/new")))
        return false;

    nfc_ndef::Block<> bytes;
    const int32_t length = nfc_ndef_msg_to_byte_array(message.get(), out(bytes));
    for (int32_t i = 0; i < length; ++i)
        std::printf(i + 1 < length ? "%02X " : "%02X\n", bytes[static_cast<size_t>(i)]);
    return length > 0;
}

} // namespace

int main(int argc, char **argv)
{
    static constexpr std::string_view sample = "\x91\x01\x05T\x02"
                                               "enHi"
                                               "\x51\x01\x08U\x04"
                                               "old.org";
    Bytes tag(sample.begin(), sample.end());
    if (argc > 1) {
        std::ifstream file(argv[1], std::ios::binary);
        if (!file) {
            std::perror(argv[1]);
            return 2;
        }
        tag.assign(std::istreambuf_iterator<char>(file), {});
    }
    if (edit(tag))
        return 0;
    std::fprintf(stderr, "not an NDEF message, or out of memory\n");
    return 1;
}
