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
    const Record uri(rtdlib_uri_record_create(4, size, bytes)),
        title(rtdlib_text_record_create(0, 2, bytes, bytes, size));
    nfc_ndef_record *const titles[] = {title.get()};
    const Record poster(
        rtdlib_smart_poster_record_create(1, titles, uri.get(), 0, 0, nullptr, nullptr, nullptr, 0, {}));
    const Message written(nfc_ndef_msg_create());
    nfc_ndef_msg_append_record(written.get(), poster.get());
    Block<> encoded, read;
    const int32_t length = nfc_ndef_msg_to_byte_array(written.get(), out(encoded));
    const Message parsed(nfc_ndef_msg_create_by_msg_offset(encoded.get(), 0, static_cast<uint32_t>(length)));

    uint8_t title_count = 0, icon_count = 0, other_count = 0, code = 0;
    uint32_t action = 0, read_size = 0;
    nfc_ndef_record **found = nullptr, **icons = nullptr, **others = nullptr;
    Record found_uri, no_size, no_type;
    rtdlib_smart_poster_record_extract(nfc_ndef_msg_get_record_by_index(parsed.get(), 0), &title_count, &found,
                                       out(found_uri), &action, &icon_count, &icons, out(no_size), out(no_type),
                                       &other_count, &others);
    rtdlib_uri_record_extract(found_uri.get(), &code, out(read), &read_size);
    if (found)
        nfc_ndef_record_delete(&found[0]);
    os_block_dealloc(found);
    return read_size == size && std::equal(bytes, bytes + size, read.get());
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
