#include "tables.h"

namespace test {

std::vector<Record> records_of(std::string_view parts)
{
    std::vector<Record> records;
    std::istringstream words{std::string(parts)};
    for (std::string word; words >> word;) {
        const size_t colon = word.find(':');
        const std::string name = word.substr(0, colon);
        const uint32_t format = name.find_first_of("/;*") == name.npos ? NFC_NDEF_TNF_WELL_KNOWN : NFC_NDEF_TNF_MIME;
        records.push_back(word == "-" ? nullptr : record(format, name, bytes(word.substr(colon + 1))));
    }
    return records;
}

Record record_of(std::string_view part) { return part.empty() ? nullptr : std::move(records_of(part).front()); }

Bytes spelled(std::string_view text)
{
    const size_t open = text.find('['), close = text.find(']');
    if (open == text.npos)
        return bytes(text);
    const Array parts(text.substr(open + 1, close - open - 1));
    return bytes(text.substr(0, open)) + encode(message({parts.pointers.begin(), parts.pointers.end()})) +
           bytes(text.substr(close + 1));
}

Array::Array(std::vector<Record> all) : records(std::move(all))
{
    for (const Record &each : records)
        pointers.push_back(each.get());
}

Record unencodable()
{
    Record broken = record_of("T:00");
    os_block_dealloc(broken->payload);
    broken->payload = nullptr;
    return broken;
}

void expect_built(std::span<const Built> rows)
{
    for (const auto &[made, kind, payload, fault] : rows) {
        std::string found = "null";
        if (const nfc_ndef_record *const r = made.get()) {
            found = std::to_string(r->record_type.format);
            for (const auto &[flag, letter] :
                 {std::pair(r->mb, 'B'), {r->me, 'E'}, {r->cf, 'C'}, {r->sr, 'S'}, {r->il, 'I'}})
                found += flag == 0 ? "" : flag == 1 ? std::string(1, letter) : "?";
            found += " " + name_of(r);
        }
        EXPECT_EQ(found, kind) << fault;
        EXPECT_EQ(hex(payload_of(made.get())), hex(spelled(payload))) << fault;
    }
}

void expect_read(Read read, std::span<const Payload> rows)
{
    for (const auto &[payload, expected, fault] : rows)
        EXPECT_EQ(read(with_payload(spelled(payload))), expanded(expected)) << fault << ": " << payload;
}

void expect_reports(Report report, std::initializer_list<Reported> rows)
{
    for (const auto &[payload, expected] : rows) {
        const Exact exact(spelled(payload));
        nfc_ndef_payload_report found{};
        under_test([&] { return (found = report({exact.data(), exact.size()})).reason; });
        EXPECT_TRUE(found.reason == expected.reason && found.offset == expected.offset &&
                    found.message_reason == expected.message_reason && found.record == expected.record)
            << payload << ": " << nfc_ndef_payload_reason_text(found.reason) << ", byte " << found.offset << ", "
            << nfc_ndef_msg_check_text(found.message_reason) << ", record " << found.record;
        EXPECT_EQ(allocations_of_last_call(), 0U) << payload;
    }
}

} // namespace test
