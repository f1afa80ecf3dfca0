#include "ndef.h"

#include <algorithm>
#include <cctype>

namespace test {
namespace {

uint8_t digit(char c)
{
    const size_t value = std::string_view("0123456789ABCDEF").find(static_cast<char>(std::toupper(c)));
    EXPECT_LT(value, 16U) << "not a hex digit: " << c;
    return static_cast<uint8_t>(value);
}

Bytes take(uint8_t *block, uint64_t length)
{
    EXPECT_EQ(block != nullptr, length != 0);
    const Bytes taken = copy(block, static_cast<size_t>(length));
    os_block_dealloc(block);
    return taken;
}

} // namespace

Bytes bytes(std::string_view hex)
{
    std::string digits(hex);
    std::erase(digits, ' ');
    EXPECT_EQ(digits.size() % 2, 0U) << hex;
    Bytes result;
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        result.push_back(static_cast<uint8_t>(digit(digits[i]) << 4 | digit(digits[i + 1])));
    return result;
}

Bytes text(std::string_view characters) { return {characters.begin(), characters.end()}; }

Bytes filled(size_t count, uint8_t value) { return Bytes(count, value); }

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

Record with_payload(const Bytes &payload) { return record(NFC_NDEF_TNF_UNKNOWN, "", payload); }

Message message(std::initializer_list<const nfc_ndef_record *> records)
{
    Message result(nfc_ndef_msg_create());
    for (const nfc_ndef_record *const each : records)
        EXPECT_EQ(nfc_ndef_msg_append_record(result.get(), each), 1U);
    return result;
}

Message message_of(const std::vector<Record> &records)
{
    Message result(nfc_ndef_msg_create());
    for (const Record &each : records)
        EXPECT_EQ(nfc_ndef_msg_append_record(result.get(), each.get()), 1U);
    return result;
}

Record decode(const Bytes &data)
{
    const Exact input(data);
    return Record(nfc_ndef_record_create_from_byte_array(input.data(), 0, input.size()));
}

Message parse(const Bytes &data)
{
    const Exact input(data);
    return Message(nfc_ndef_msg_create_by_msg_offset(input.data(), 0, input.size()));
}

Bytes encode(const nfc_ndef_record *record)
{
    uint8_t *block = nullptr;
    const uint32_t length = nfc_ndef_record_to_byte_array(record, &block);
    return take(block, length);
}

Bytes encode(const Record &record) { return encode(record.get()); }

Bytes encode(const Message &message)
{
    uint8_t *block = nullptr;
    const int32_t length = nfc_ndef_msg_to_byte_array(message.get(), &block);
    EXPECT_GE(length, 0);
    return take(block, static_cast<uint64_t>(length));
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

} // namespace test
