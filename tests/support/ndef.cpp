#include "ndef.h"

#include "agreement.h"

#include <algorithm>
#include <cctype>

namespace test {
namespace {

// Calls an encoder with a pointer to see written, or nulled when memory runs out.
template <class Encode> Bytes encoded_by(Encode encode)
{
    uint8_t nothing = 0, *block = &nothing;
    const auto length = under_test([&] { return encode(&block); });
    EXPECT_GE(int64_t{length}, 0);
    if (block == &nothing) {
        EXPECT_FALSE(failure_happened()) << "the pointer is not null";
        block = nullptr;
    }
    EXPECT_EQ(block != nullptr, length != 0);
    const Bytes bytes = copy(block, static_cast<size_t>(length));
    os_block_dealloc(block);
    return bytes;
}

} // namespace

std::string expanded(std::string_view text)
{
    std::string all(text);
    for (size_t star = 0; (star = all.find('*', star)) != all.npos; ++star) {
        if (star < 2 || star + 1 == all.size() || !std::isdigit(all[star + 1]))
            continue; // a wildcard
        size_t digits = 0;
        std::string run;
        for (size_t left = std::stoul(all.substr(star + 1), &digits); left > 0; --left)
            run += all.substr(star - 2, 2);
        all.replace(star - 2, 3 + digits, run);
    }
    return all;
}

Bytes bytes(std::string_view hex)
{
    std::string digits = expanded(hex);
    std::erase(digits, ' ');
    Bytes result;
    for (size_t i = 0; i < digits.size(); i += 2)
        result.push_back(static_cast<uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
    return result;
}

Bytes text(std::string_view characters) { return {characters.begin(), characters.end()}; }

Bytes filled(size_t count, uint8_t value) { return Bytes(count, value); }

Bytes sequence(size_t count, std::string_view first, std::string_view between, std::string_view last)
{
    Bytes all = bytes(first);
    for (size_t i = 2; i < count; ++i)
        all = all + bytes(between);
    return all + bytes(last);
}

Bytes operator+(Bytes left, const Bytes &right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes copy(const uint8_t *data, size_t length) { return data ? Bytes(data, data + length) : Bytes(); }

std::string hex(const Bytes &data)
{
    std::string result;
    for (const uint8_t byte : data)
        for (const int nibble : {byte >> 4, byte & 15})
            result += "0123456789ABCDEF"[nibble];
    return result;
}

Exact::Exact(const Bytes &data)
    : copy_(std::make_unique<uint8_t[]>(data.size())), size_(static_cast<uint32_t>(data.size()))
{
    std::copy(data.begin(), data.end(), copy_.get());
}

uint8_t *owned(const Bytes &data)
{
    auto *const block = static_cast<uint8_t *>(os_block_alloc(data.size()));
    std::copy(data.begin(), data.end(), block);
    return block;
}

RecordType type(uint32_t format, std::string_view name)
{
    const Bytes copied = text(name);
    return RecordType(nfc_ndef_record_type_create(format, ptr(copied), static_cast<uint8_t>(copied.size())));
}

Record record(uint32_t format, std::string_view type_name, const Bytes &payload, const Bytes &id)
{
    return Record(nfc_ndef_record_create_from_param(type(format, type_name).get(), ptr(id),
                                                    static_cast<uint8_t>(id.size()), ptr(payload),
                                                    static_cast<uint32_t>(payload.size())));
}

Record well_known(std::string_view type_name, const Bytes &payload, const Bytes &id)
{
    return record(NFC_NDEF_TNF_WELL_KNOWN, type_name, payload, id);
}

Record with_payload(const Bytes &payload)
{
    Record made = record(NFC_NDEF_TNF_UNKNOWN, "", payload);
    EXPECT_STREQ(made ? agreement::broken_by(*made) : nullptr, nullptr) << hex(payload);
    return made;
}

Message message(const std::vector<const nfc_ndef_record *> &records)
{
    Message result(nfc_ndef_msg_create());
    for (const nfc_ndef_record *const each : records)
        EXPECT_EQ(nfc_ndef_msg_append_record(result.get(), each), 1U);
    return result;
}

Record decode(const Bytes &data)
{
    const Exact input(data);
    return Record(under_test([&] { return nfc_ndef_record_create_from_byte_array(input.data(), 0, input.size()); }));
}

Message parse(const Bytes &data)
{
    const Exact input(data);
    EXPECT_STREQ(agreement::broken_by({input.data(), input.size()}), nullptr) << hex(data);
    return Message(under_test([&] { return nfc_ndef_msg_create_by_msg_offset(input.data(), 0, input.size()); }));
}

Bytes encode(const nfc_ndef_record *record)
{
    return encoded_by([record](uint8_t **block) { return nfc_ndef_record_to_byte_array(record, block); });
}

Bytes encode(const Message &message)
{
    return encoded_by([&message](uint8_t **block) { return nfc_ndef_msg_to_byte_array(message.get(), block); });
}

Bytes payload_of(const nfc_ndef_record *record)
{
    uint32_t length = 0;
    const uint8_t *const payload = nfc_ndef_record_get_payload(record, &length);
    return copy(payload, length);
}

Bytes id_of(const nfc_ndef_record *record)
{
    uint8_t length = 0;
    const uint8_t *const id = nfc_ndef_record_get_id(record, &length);
    return copy(id, length);
}

std::string type_of(const nfc_ndef_record *record)
{
    uint8_t length = 0;
    const uint8_t *const name = nfc_ndef_record_type_get_name(nfc_ndef_record_get_record_type(record), &length);
    return name ? std::string(reinterpret_cast<const char *>(name), length) : "";
}

const nfc_ndef_record *at(const Message &message, uint8_t position)
{
    return nfc_ndef_msg_get_record_by_index(message.get(), position);
}

std::string described(const nfc_ndef_record *record)
{
    if (!record)
        return "null";
    std::string result;
    for (const uint8_t flag : {record->mb, record->me, record->cf, record->sr, record->il})
        result += static_cast<char>('0' + flag);
    return result + ":" + std::to_string(record->record_type.format) + type_of(record) + "/" + hex(id_of(record)) +
           "/" + hex(payload_of(record)) + "/" + std::to_string(record->parsed_length);
}

std::string contents(const Message &message)
{
    std::string result;
    for (uint8_t i = 0; i < nfc_ndef_msg_get_number_of_records(message.get()); ++i) {
        const Bytes payload = at(message, i) ? payload_of(at(message, i)) : text("(none)");
        result.append(payload.begin(), payload.end());
    }
    return result;
}

} // namespace test
