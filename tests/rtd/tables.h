// Rows of the tables that test a record type: what a builder made, and what an extractor reads.
#pragma once

#include "readers.h"

#include <nfc_ndef_view.h>

#include <span>

namespace test {

// "U:0361" is a well-known record, a type with one of "/;*" a media record, "-" none.
std::vector<Record> records_of(std::string_view parts);
// The only one of the parts; none of no part.
Record record_of(std::string_view part);

// Bytes in hex, where "[U:0361 T:01]" is a message of such records.
Bytes spelled(std::string_view text);

// Records as the array and count that builders take.
struct Array {
    Array(std::vector<Record> all);
    Array(std::string_view parts) : Array(records_of(parts)) {}
    uint8_t count() const { return static_cast<uint8_t>(pointers.size()); }
    nfc_ndef_record *const *data() const { return pointers.empty() ? nullptr : pointers.data(); }

    std::vector<Record> records;
    std::vector<nfc_ndef_record *> pointers;
};

// A record whose length speaks of a payload that it does not have, which nothing can encode.
Record unencodable();

// The kind is the format, the flags that are set (of B, E, C, S, I), type and id: "1BES Gc".
struct Built {
    Record record;
    std::string kind, payload;
    const char *fault;

    Built(Record made, std::string kind_of, std::string payload_of, const char *shown_by)
        : record(std::move(made)), kind(std::move(kind_of)), payload(std::move(payload_of)), fault(shown_by)
    {
    }
    // One that is refused.
    Built(Record refused, const char *shown_by) : Built(std::move(refused), "null", "", shown_by) {}
    Built(nfc_ndef_record *refused, const char *shown_by) : Built(Record(refused), shown_by) {}
};
void expect_built(std::span<const Built> rows);

struct Payload {
    std::string payload, expected;
    const char *fault;
};
void expect_read(Read read, std::span<const Payload> rows);

// What a function that reads a payload in place says of it.
using Report = nfc_ndef_payload_report (*)(nfc_ndef_bytes payload);
template <auto read, class Structure> nfc_ndef_payload_report report_of(nfc_ndef_bytes payload)
{
    Structure structure;
    nfc_ndef_payload_report report{99, 99, 99, 99};
    const bool valid = read(payload, &structure, &report);
    EXPECT_EQ(valid, report.reason == NFC_NDEF_PAYLOAD_VALID);
    return report;
}
struct Reported {
    const char *payload;
    nfc_ndef_payload_report expected; // reason, offset, and of a nested message reason and record
};
void expect_reports(Report report, std::initializer_list<Reported> rows);

// Cuts a good payload short everywhere, then inverts each of its bits, where nothing may crash, over-read or leak.
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
