// What an extractor did, as a line of text that a table can hold.
#pragma once

#include "ndef.h"

#include <sstream>
#include <tuple>
#include <type_traits>
#include <utility>

namespace test {

// Type and id: "U", or "image/png#6964".
std::string name_of(const nfc_ndef_record *record);

// A field of a structure: nothing when absent; the length alone without the bytes that it speaks of.
std::string field(const char *name, const uint8_t *data, size_t length);

// An output of an extractor.
struct Output {
    const char *name;
    int length = -1;          // of a block or an array: which output tells its length
    bool null_before = false; // a pointer that must hold null; any other holds one to nowhere before the call
    int lengths = -1;         // of an array of blocks: which output tells their lengths
};

template <class T> T before(const Output &output)
{
    alignas(16) static char nowhere;
    if constexpr (std::is_pointer_v<T>)
        return output.null_before ? nullptr : reinterpret_cast<T>(&nowhere);
    else
        return static_cast<T>(0xEEEEEEEE);
}

template <class T> size_t number_of(T value)
{
    if constexpr (std::is_pointer_v<T>)
        return 0;
    else
        return value;
}
inline const uint8_t *block_of(uint8_t *block) { return block; }
template <class T> const uint8_t *block_of(T) { return nullptr; }

inline std::string shown(uint32_t number, size_t, const uint8_t *)
{
    return (std::ostringstream() << std::hex << std::uppercase << number).str();
}
inline std::string shown(const uint8_t *block, size_t length, const uint8_t *)
{
    return block ? hex(copy(block, length)) : "null";
}
inline std::string shown(const nfc_ndef_record *record, size_t, const uint8_t *)
{
    return record ? name_of(record) + ":" + hex(payload_of(record)) : "null";
}
template <class T> std::string shown(T **array, size_t count, const uint8_t *lengths)
{
    std::string all;
    for (size_t i = 0; array && i < count; ++i)
        all += (i == 0 ? "" : " ") + shown(array[i], lengths ? lengths[i] : 0, nullptr);
    return array ? "[" + all + "]" : "null";
}

inline void release(uint32_t, size_t) {}
inline void release(uint8_t *block, size_t) { os_block_dealloc(block); }
inline void release(nfc_ndef_record *record, size_t) { nfc_ndef_record_delete(&record); }
template <class T> void release(T **array, size_t count)
{
    for (size_t i = 0; array && i < count; ++i)
        release(array[i], 0);
    os_block_dealloc(array);
}

// Runs an extractor, deletes the record, which no output may point into, and tells the result and the outputs that were
// written, numbers in hex: "1 utf16=0 code_length=2 code=656E".
template <class... T> std::string outcome(int8_t (*extract)(const nfc_ndef_record *, T *...), Record record,
                                          const Output (&outputs)[sizeof...(T)])
{
    std::string line;
    const auto run = [&]<size_t... i>(std::index_sequence<i...>)
    {
        std::tuple<T...> values(before<T>(outputs[i])...);
        line = std::to_string(under_test([&] { return extract(record.get(), &std::get<i>(values)...); }));
        record.reset();
        const size_t lengths[] = {number_of(std::get<i>(values))...};
        const uint8_t *const blocks[] = {block_of(std::get<i>(values))...};
        const auto length = [&](const Output &output) { return output.length < 0 ? 0 : lengths[output.length]; };
        const auto show = [&](auto value, const Output &output) {
            if (value != before<decltype(value)>(output))
                line += std::string(" ") + output.name + "=" +
                        shown(value, length(output), output.lengths < 0 ? nullptr : blocks[output.lengths]);
        };
        const auto free = [&](auto value, const Output &output) {
            if (value != before<decltype(value)>(output))
                release(value, length(output));
        };
        (show(std::get<i>(values), outputs[i]), ...);
        (free(std::get<i>(values), outputs[i]), ...);
    };
    run(std::index_sequence_for<T...>());
    return line;
}

// The first outputs must not be null; what must hold null on entry must do so. Otherwise: -1, nothing written.
template <class... T> void expect_checked(int8_t (*extract)(const nfc_ndef_record *, T *...), const Record &record,
                                          const Output (&outputs)[sizeof...(T)], size_t checked = sizeof...(T))
{
    const auto run = [&]<size_t... i>(std::index_sequence<i...>)
    {
        const bool any_null = (outputs[i].null_before || ...);
        for (size_t missing = 0; missing < checked + any_null; ++missing) {
            const Output used[] = {{outputs[i].name, -1, outputs[i].null_before && missing < checked}...};
            std::tuple<T...> values(before<T>(used[i])...);
            const auto pointer_to = [&](auto &value, size_t index) {
                return index == missing && missing < checked ? nullptr : &value;
            };
            EXPECT_EQ(extract(record.get(), pointer_to(std::get<i>(values), i)...), -1) << missing;
            EXPECT_TRUE(((std::get<i>(values) == before<T>(used[i])) && ...)) << missing;
        }
    };
    run(std::index_sequence_for<T...>());
}

} // namespace test
