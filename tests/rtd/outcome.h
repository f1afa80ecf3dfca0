/*
 * What a builder or an extractor did, as lines of text that a table can hold.
 *
 * SPDX-License-Identifier: MIT
 */
#ifndef TESTS_RTD_OUTCOME_H
#define TESTS_RTD_OUTCOME_H

#include "ndef.h"

#include <sstream>
#include <tuple>
#include <type_traits>
#include <utility>

namespace test {

std::vector<Record> records_of(std::string_view parts);

/** Bytes in hex, where "78*255" is 255 times the same and "[U:0361 T:01]" a message of such records. */
inline Bytes spelled(std::string_view text)
{
    if (const size_t open = text.find('['); open != text.npos) {
        const size_t close = text.find(']');
        return spelled(text.substr(0, open)) + encode(message_of(records_of(text.substr(open + 1, close - open - 1)))) +
               spelled(text.substr(close + 1));
    }
    Bytes all;
    std::istringstream words{std::string(text)};
    for (std::string word; words >> word;) {
        const size_t star = word.find('*');
        const Bytes head = bytes(word.substr(0, star));
        all = all + (star == word.npos ? head : filled(std::stoul(word.substr(star + 1)), head[0]));
    }
    return all;
}

/** The reverse, without messages. */
inline std::string spell(const Bytes &data)
{
    std::string text;
    for (size_t i = 0; i < data.size();) {
        size_t end = i;
        while (end < data.size() && data[end] == data[i])
            ++end;
        const bool run = end - i >= 8;
        text += hex({data[i]});
        if (run)
            text.insert(text.size() - 2, text.size() > 2 ? " " : "") += "*" + std::to_string(end - i) + " ";
        i = run ? end : i + 1;
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/** "U:0361" is a well-known record, a type with one of "/;*" a media record, "-" none. */
inline std::vector<Record> records_of(std::string_view parts)
{
    std::vector<Record> records;
    std::istringstream words{std::string(parts)};
    for (std::string word; words >> word;) {
        const size_t colon = word.find(':');
        const std::string name = word.substr(0, colon);
        const uint32_t format = name.find_first_of("/;*") == name.npos ? NFC_NDEF_TNF_WELL_KNOWN : NFC_NDEF_TNF_MIME;
        records.push_back(word == "-" ? nullptr : record(format, name, spelled(word.substr(colon + 1))));
    }
    return records;
}

inline Record record_of(std::string_view part) { return part.empty() ? nullptr : std::move(records_of(part).front()); }

/** Records as the array and count that builders take. */
struct Array {
    explicit Array(std::vector<Record> all) : records(std::move(all))
    {
        for (const Record &each : records)
            pointers.push_back(each.get());
    }
    explicit Array(std::string_view parts) : Array(records_of(parts)) {}
    uint8_t count() const { return static_cast<uint8_t>(pointers.size()); }
    nfc_ndef_record *const *data() const { return pointers.empty() ? nullptr : pointers.data(); }

    std::vector<Record> records;
    std::vector<nfc_ndef_record *> pointers;
};

/** A record whose length speaks of a payload that it does not have, which nothing can encode. */
inline Record unencodable()
{
    Record broken = record_of("T:00");
    os_block_dealloc(broken->payload);
    broken->payload = nullptr;
    return broken;
}

/** Type and id: "U", or "image/png#6964". */
inline std::string name_of(const nfc_ndef_record *record)
{
    const std::string id = hex(id_of(record));
    return type_of(record) + (id.empty() ? "" : "#" + id);
}

/** The kind is the format, the flags that are set (of B, E, C, S, I), type and id: "1BES Gc". */
struct Built {
    Record record;
    std::string kind, payload;
    const char *fault;
};

template <size_t n> void expect_built(const Built (&rows)[n])
{
    for (const auto &[record, kind, payload, fault] : rows) {
        std::string found = "null";
        if (const nfc_ndef_record *const r = record.get()) {
            found = std::to_string(r->record_type.format);
            for (const auto &[flag, letter] :
                 {std::pair(r->mb, 'B'), {r->me, 'E'}, {r->cf, 'C'}, {r->sr, 'S'}, {r->il, 'I'}})
                found += flag == 0 ? "" : flag == 1 ? std::string(1, letter) : "?";
            found += " " + name_of(r);
        }
        EXPECT_EQ(found, kind) << fault;
        EXPECT_EQ(spell(payload_of(record.get())), spell(spelled(payload))) << fault;
    }
}

/** An output of an extractor. */
struct Output {
    const char *name;
    int length = -1;          /**< Of a block or an array: which output tells its length. */
    bool null_before = false; /**< A pointer that must hold null; any other holds one to nowhere before the call. */
    int lengths = -1;         /**< Of an array of blocks: which output tells their lengths. */
};

template <class T> T before(const Output &output)
{
    alignas(16) static char nowhere;
    if constexpr (std::is_pointer_v<T>)
        return output.null_before ? nullptr : reinterpret_cast<T>(&nowhere);
    else
        return static_cast<T>(0xEEEEEEEE);
}

inline size_t number_of(uint32_t number) { return number; }
inline size_t number_of(const void *) { return 0; }
inline const uint8_t *block_of(uint8_t *block) { return block; }
template <class T> const uint8_t *block_of(T) { return nullptr; }

/** A field of a structure: nothing when absent; the length alone without the bytes that it speaks of. */
inline std::string field(const char *name, const uint8_t *data, size_t length)
{
    if (!data && length == 0)
        return "";
    EXPECT_NE(length, 0U) << name;
    return std::string(" ") + name + "=" + (data ? spell(copy(data, length)) : "missing " + std::to_string(length));
}

inline std::string shown(uint32_t number, size_t, const uint8_t *)
{
    return (std::ostringstream() << std::hex << std::uppercase << number).str();
}
inline std::string shown(const uint8_t *block, size_t length, const uint8_t *)
{
    return block ? spell(copy(block, length)) : "null";
}
inline std::string shown(const nfc_ndef_record *record, size_t, const uint8_t *)
{
    return record ? name_of(record) + ":" + spell(payload_of(record)) : "null";
}
template <class T> std::string shown(T **array, size_t count, const uint8_t *lengths)
{
    std::string all;
    for (size_t i = 0; i < count; ++i)
        all += (i == 0 ? "" : " ") + shown(array[i], lengths ? lengths[i] : 0, nullptr);
    return "[" + all + "]";
}

inline void release(uint32_t, size_t) {}
inline void release(uint8_t *block, size_t) { os_block_dealloc(block); }
inline void release(nfc_ndef_record *record, size_t) { nfc_ndef_record_delete(&record); }
template <class T> void release(T **array, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        release(array[i], 0);
    os_block_dealloc(array);
}

/**
 * Runs an extractor, deletes the record, which no output may point into, and tells the result and the outputs that were
 * written, numbers in hex: "1 utf16=0 code_length=2 code=656E".
 */
template <class... T> std::string outcome(int8_t (*extract)(const nfc_ndef_record *, T *...), Record record,
                                          const Output (&outputs)[sizeof...(T)])
{
    std::string line;
    const auto run = [&]<size_t... i>(std::index_sequence<i...>)
    {
        std::tuple<T...> values(before<T>(outputs[i])...);
        line = std::to_string(extract(record.get(), &std::get<i>(values)...));
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

/** The first outputs must not be null; what must hold null on entry must do so. Otherwise: -1, nothing written. */
template <class... T> void expect_checked(int8_t (*extract)(const nfc_ndef_record *, T *...), const Record &record,
                                          const Output (&outputs)[sizeof...(T)], size_t checked = sizeof...(T))
{
    const auto run = [&]<size_t... i>(std::index_sequence<i...>)
    {
        const bool any_null = (outputs[i].null_before || ...);
        for (size_t missing = 0; missing < checked + any_null; ++missing) {
            const Output used[] = {{outputs[i].name, -1, outputs[i].null_before && missing < checked}...};
            std::tuple<T...> values(before<T>(used[i])...);
            EXPECT_EQ(extract(record.get(), (i == missing ? nullptr : &std::get<i>(values))...), -1) << missing;
            EXPECT_TRUE(((std::get<i>(values) == before<T>(used[i])) && ...)) << missing;
        }
    };
    run(std::index_sequence_for<T...>());
}

struct Payload {
    std::string payload, expected;
    const char *fault;
};

using Read = std::string (*)(Record);

template <size_t n> void expect_read(Read read, const Payload (&rows)[n])
{
    for (const auto &[payload, expected, fault] : rows)
        EXPECT_EQ(read(with_payload(spelled(payload))), expected) << fault << ": " << payload;
}

/** Cuts a good payload short everywhere, then inverts each of its bits, where nothing may crash, over-read or leak. */
template <class Expected> void expect_cut(Read read, const Bytes &good, Expected expected)
{
    for (size_t length = 0; length < good.size(); ++length)
        EXPECT_EQ(read(with_payload(copy(good.data(), length))), std::string(expected(length))) << length << " bytes";
    for (size_t bit = 0; bit < 8 * good.size(); ++bit) {
        Bytes changed = good;
        changed[bit / 8] = static_cast<uint8_t>(changed[bit / 8] ^ 1 << bit % 8);
        read(with_payload(changed));
    }
}

} // namespace test

#endif
