// A virtual tag on the virtual reader of the daemon: virtual_tag PORT KIND FILE [CHANGES]
// FILE has its memory, and gets it back; after so many changes the tag is torn away.
#include "virtual_tags.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string_view>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace test;

namespace {

// Every message of the reader's driver has its length in two bytes in front.
bool exchange_all(int socket, uint8_t *bytes, size_t length, ssize_t (*operation)(int, uint8_t *, size_t))
{
    for (ssize_t count = 0; length > 0; bytes += count, length -= static_cast<size_t>(count))
        if ((count = operation(socket, bytes, length)) <= 0)
            return false;
    return true;
}

bool receive(int socket, Bytes &bytes)
{
    const auto some = [](int from, uint8_t *at, size_t length) { return recv(from, at, length, 0); };
    uint8_t length[2];
    if (!exchange_all(socket, length, sizeof length, some))
        return false;
    bytes.resize(static_cast<size_t>(length[0] << 8 | length[1]));
    return exchange_all(socket, bytes.data(), bytes.size(), some);
}

bool send(int socket, Bytes bytes)
{
    const auto some = [](int to, uint8_t *at, size_t length) { return ::send(to, at, length, MSG_NOSIGNAL); };
    bytes.insert(bytes.begin(), {static_cast<uint8_t>(bytes.size() >> 8), static_cast<uint8_t>(bytes.size())});
    return exchange_all(socket, bytes.data(), bytes.size(), some);
}

std::unique_ptr<VirtualTag> tag_of(std::string_view kind, Bytes memory)
{
    if (kind == "type2")
        return virtual_type2(std::move(memory));
    if (kind == "type4")
        return virtual_type4(std::move(memory));
    if (kind == "type5")
        return virtual_type5(std::move(memory));
    return virtual_classic(std::move(memory));
}

// Wholly or not at all, for the test may end this program at any time.
void save(const VirtualTag &tag, const std::string &path)
{
    const std::string beside = path + ".new";
    std::ofstream(beside, std::ios::binary)
        .write(reinterpret_cast<const char *>(tag.memory.data()), std::ssize(tag.memory));
    std::rename(beside.c_str(), path.c_str());
}

void serve(int socket, VirtualTag &tag, const char *path)
{
    constexpr uint8_t answer_to_reset = 4;
    for (Bytes command; receive(socket, command);) {
        try {
            if (command.size() != 1 && !send(socket, tag.transmit(command)))
                return;
            if (command.size() == 1 && command[0] == answer_to_reset && !send(socket, tag.answer_to_reset()))
                return;
        } catch (const nfc_ndef::tags::Gone &) {
            return;
        }
        save(tag, path);
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 4)
        return 2;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(std::atoi(argv[1])));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int connection = socket(AF_INET, SOCK_STREAM, 0);
    if (connect(connection, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        std::perror("virtual_tag");
        return 1;
    }
    std::ifstream file(argv[3], std::ios::binary);
    const std::unique_ptr<VirtualTag> tag =
        tag_of(argv[2], Bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    if (argc > 4)
        tag->tear_after(static_cast<size_t>(std::atoi(argv[4])));
    serve(connection, *tag, argv[3]);
    close(connection);
    if (!tag->offence().empty())
        std::fprintf(stderr, "virtual_tag: %s\n", tag->offence().c_str());
    return tag->offence().empty() ? 0 : 1;
}
