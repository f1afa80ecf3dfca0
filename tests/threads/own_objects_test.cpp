// Threads that share nothing but the library: each writes and reads tags of its own. Under ThreadSanitizer this shows
// that the library keeps no state between calls.
#include "nfc_ndef.hpp"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace nfc_ndef;

const uint8_t *bytes_of(const std::string &text) { return reinterpret_cast<const uint8_t *>(text.data()); }

Record make_poster(const std::string &uri, const std::string &title)
{
    const Record uri_record{rtdlib_uri_record_create(4, static_cast<uint32_t>(uri.size()), bytes_of(uri))};
    const Record text{
        rtdlib_text_record_create(0, 2, bytes_of("en"), bytes_of(title), static_cast<uint32_t>(title.size()))};
    const std::array titles{text.get()};
    return Record{rtdlib_smart_poster_record_create(1, titles.data(), uri_record.get(), 0, 0, nullptr, nullptr, nullptr,
                                                    0, nullptr)};
}

Block<> encode(const Record &record, int32_t &length)
{
    const Message message{nfc_ndef_msg_create()};
    Block<> encoded;
    if (nfc_ndef_msg_append_record(message.get(), record.get()) == 1)
        length = nfc_ndef_msg_to_byte_array(message.get(), out(encoded));
    return encoded;
}

std::string uri_in(const nfc_ndef_record *poster)
{
    uint8_t title_count = 0, icon_count = 0, other_count = 0, code = 0;
    uint32_t action = 0, field_length = 0;
    nfc_ndef_record **titles = nullptr, **icons = nullptr, **others = nullptr;
    Record uri, size, type;
    Block<> field;
    if (rtdlib_smart_poster_record_extract(poster, &title_count, &titles, out(uri), &action, &icon_count, &icons,
                                           out(size), out(type), &other_count, &others) != 1)
        return {};
    for (uint8_t i = 0; i < title_count; ++i)
        nfc_ndef_record_delete(&titles[i]);
    os_block_dealloc(titles);
    if (rtdlib_uri_record_extract(uri.get(), &code, out(field), &field_length) != 1)
        return {};
    return {field.get(), field.get() + field_length};
}

bool write_and_read(const std::string &uri, const std::string &title)
{
    int32_t length = 0;
    const Block<> encoded = encode(make_poster(uri, title), length);
    const Message message{nfc_ndef_msg_create_by_msg_offset(encoded.get(), 0, static_cast<uint32_t>(length))};
    return message && uri_in(nfc_ndef_msg_get_record_by_index(message.get(), 0)) == uri;
}

TEST(Threads, WorkOnObjectsOfTheirOwn)
{
    constexpr size_t thread_count = 4;
    constexpr int rounds = 500;
    std::array<int, thread_count> correct{};
    std::vector<std::thread> threads;
    for (size_t number = 0; number < thread_count; ++number)
        threads.emplace_back([number, &correct] {
            for (int round = 0; round < rounds; ++round)
                correct[number] +=
                    write_and_read("example.com/" + std::to_string(number * rounds) + "/" + std::to_string(round),
                                   std::string(1 + number, 't'));
        });
    for (std::thread &thread : threads)
        thread.join();
    for (size_t number = 0; number < thread_count; ++number)
        EXPECT_EQ(correct[number], rounds) << "thread " << number;
}

} // namespace
