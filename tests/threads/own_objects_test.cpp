// Threads that share nothing but the library: each writes and reads tags of its own. Under ThreadSanitizer this shows
// that the library keeps no state between calls.
#include "nfc_ndef.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace nfc_ndef;

bool write_and_read(const std::string &content)
{
    const auto *const bytes = reinterpret_cast<const uint8_t *>(content.data());
    const auto size = static_cast<uint32_t>(content.size());
    const Record uri(rtdlib_uri_record_create(4, size, bytes));
    const Record poster(rtdlib_smart_poster_record_create(0, {}, uri.get(), 0, 0, {}, {}, {}, 0, {}));
    Block<> encoded, read;
    const uint32_t length = nfc_ndef_record_to_byte_array(poster.get(), out(encoded));
    const Message parsed(nfc_ndef_msg_create_by_msg_offset(poster->payload, 0, poster->payload_length));
    uint8_t code = 0;
    uint32_t read_size = 0;
    rtdlib_uri_record_extract(nfc_ndef_msg_get_record_by_index(parsed.get(), 0), &code, out(read), &read_size);
    return length != 0 && read_size == size && std::equal(bytes, bytes + size, read.get());
}

TEST(Threads, WorkOnObjectsOfTheirOwn)
{
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([number] {
            int correct = 0;
            for (int round = 0; round < 500; ++round)
                correct += write_and_read("example.com/" + std::to_string(number) + "/" + std::to_string(round));
            EXPECT_EQ(correct, 500) << "thread " << number;
        });
    for (std::thread &thread : threads)
        thread.join();
}

} // namespace
