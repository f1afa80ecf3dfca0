// Parsing a message: the input is the message.
#include "fuzz.h"

using namespace fuzz;
using nfc_ndef::Message;
using nfc_ndef::Record;

namespace {

Message parse(ByteView bytes, uint32_t offset = 0)
{
    return Message{nfc_ndef_msg_create_by_msg_offset(bytes.data(), offset, length32(bytes) - offset)};
}

const nfc_ndef_record &at(const Message &message, size_t position)
{
    return *nfc_ndef_msg_get_record_by_index(message.get(), static_cast<uint8_t>(position));
}

struct Expected {
    std::vector<Record> records; // chunks joined, one piece after the other
    bool canonical = true;       // no chunks, and each record in the form that the encoder gives it
};

// The same message read another way: record by record, with the payloads of chunks appended.
Expected read_singly(ByteView input)
{
    Expected expected;
    bool joins = false;
    for (size_t position = 0; position < input.size();) {
        Record piece{
            nfc_ndef_record_create_from_byte_array(input.data(), static_cast<uint32_t>(position), length32(input))};
        must(piece != nullptr, "a message is whole records");
        position += piece->parsed_length;
        const bool joins_next = piece->cf != 0;
        expected.canonical = expected.canonical && !joins_next && piece->sr == (piece->payload_length <= 255) &&
                             piece->il == (piece->id_length != 0);
        Record &whole = joins ? expected.records.back() : expected.records.emplace_back(std::move(piece));
        if (joins && whole->payload && piece->payload)
            nfc_ndef_record_append_payload(whole.get(), piece->payload, piece->payload_length);
        else if (joins && piece->payload)
            std::swap(whole->payload, piece->payload), std::swap(whole->payload_length, piece->payload_length);
        joins = joins_next;
    }
    return expected;
}

void check_encoding(const Message &message, ByteView input, const Expected &expected)
{
    const auto encodable = [](const Record &record) { return is_encodable(*record); };
    const Bytes bytes = encoded(*message);
    must(std::ranges::all_of(expected.records, encodable) == !bytes.empty(), "what parses encodes");
    if (bytes.empty())
        return;
    const Message again = parse(bytes);
    // The parser wants both flags in each record behind a leading "Gc", where the encoder writes one message.
    const size_t count = expected.records.size();
    if (equal(name_of(*expected.records[0]), bytes_of("Gc")) && count > 1)
        return must(!again, "a Gc record may not lead a message of several records");
    must(again && nfc_ndef_msg_get_number_of_records(again.get()) == count, "what is encoded parses");
    for (size_t i = 0; i < count; ++i)
        must(same(*expected.records[i], at(again, i)), "the same records come back");
    must(encoded(*again) == bytes, "the second encoding is the first");
    must(!expected.canonical || equal(bytes, input), "a message in the library's own form encodes to its bytes");
}

} // namespace

void fuzz::run(ByteView input)
{
    const Memory none;
    nfc_ndef_msg_report report{};
    const bool valid = nfc_ndef_msg_check(input.data(), 0, length32(input), &report) != 0;
    must(none.allocations() == 0, "the check allocates nothing");

    const Memory memory;
    const Message message = parse(input);
    must(memory.peak() <=
             cost_of_message + input.size() + (cost_of_record - 3) * std::min<size_t>(input.size() / 3, 254),
         "memory stays in proportion to the input");
    must(valid == (message != nullptr), "check and parser agree");
    must(valid || memory.allocations() == 0, "refused bytes cost no allocation");
    Bytes behind_one_byte{0};
    behind_one_byte.insert(behind_one_byte.end(), input.begin(), input.end());
    must(input.empty() || valid == (parse(behind_one_byte, 1) != nullptr), "an offset makes no difference");
    if (!message) {
        must(report.reason != NFC_NDEF_MSG_VALID && report.reason < NFC_NDEF_MSG_OUT_OF_MEMORY, "a refusal's reason");
        must(nfc_ndef_msg_check_text(report.reason)[0] != '\0', "a reason has a text");
        return must(report.offset <= input.size() && report.record <= 254, "a refusal points into the message");
    }
    must(report.reason == NFC_NDEF_MSG_VALID && report.offset == input.size(), "a valid message is reported whole");
    const Expected expected = read_singly(input);
    must(report.record == expected.records.size(), "the check counts the records, chunks as one");
    must(report.record == nfc_ndef_msg_get_number_of_records(message.get()), "and so does the message");
    for (size_t i = 0; i < expected.records.size(); ++i)
        must(same(*expected.records[i], at(message, i)), "a record is what its bytes say");
    check_encoding(message, input, expected);

    fail_allocation(1 + input.size() % memory.allocations());
    const Message failed = parse(input);
    must(end_failure() == !failed, "a parse without memory gives nothing");
}
