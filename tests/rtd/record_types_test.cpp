// Record types as others write them: what is refused, and that what is read makes a record that reads the same.
#include "nfc_ndef_types.h"
#include "tables.h"

#include <fstream>
#include <nlohmann/json.hpp>

using namespace test;

namespace {

// Reads a payload and makes a record of what was read: that record's payload, or null when the payload is refused.
using Rebuild = std::function<Record(nfc_ndef_bytes payload)>;

template <class Structure> Rebuild with(uint8_t (*read)(nfc_ndef_bytes, Structure *, nfc_ndef_payload_report *),
                                        nfc_ndef_record *(*create)(const Structure *, nfc_ndef_bytes))
{
    return [=](nfc_ndef_bytes payload) {
        Structure structure;
        const bool valid = under_test([&] { return read(payload, &structure, nullptr); }) == 1;
        EXPECT_EQ(allocations_of_last_call(), 0U);
        const uint8_t id = 'i';
        return Record(valid ? create(&structure, {&id, 1}) : nullptr);
    };
}

const std::map<uint32_t, Rebuild> types{
    {NFC_NDEF_KIND_ANDROID_APPLICATION,
     with(nfc_ndef_android_application_read, nfc_ndef_android_application_record_create)},
    {NFC_NDEF_KIND_DEVICE_INFORMATION,
     with(nfc_ndef_device_information_read, nfc_ndef_device_information_record_create)},
};

} // namespace

TEST(RecordTypes, AreReadAndMadeAgain)
{
    for (const auto &row : nlohmann::json::parse(std::ifstream(TEST_DATA "/record-types.json"))) {
        const std::string wire = row["hex"];
        if (!row.contains("reads_as"))
            continue;
        const Exact message(bytes(wire));
        nfc_ndef_msg_view view;
        nfc_ndef_record_view record;
        ASSERT_EQ(nfc_ndef_msg_view_open({message.data(), message.size()}, &view, nullptr), 1) << wire;
        for (int left = row.value("record", 1); left > 0; --left)
            ASSERT_EQ(nfc_ndef_msg_view_next(&view, &record), 1) << wire;

        const Rebuild &rebuild = types.at(nfc_ndef_record_view_kind(&record));
        const Exact payload(copy(record.payload.data, record.payload.length));
        const Record once = rebuild({payload.data(), payload.size()});
        ASSERT_EQ(once == nullptr, row["reads_as"].is_null()) << wire;
        if (!once)
            continue;
        const nfc_ndef_record_view made = nfc_ndef_record_view_of(once.get());
        EXPECT_EQ(nfc_ndef_record_view_kind(&made), nfc_ndef_record_view_kind(&record)) << wire;
        EXPECT_EQ(once->id_length, 1) << wire;
        const Record twice = rebuild(made.payload);
        EXPECT_EQ(payload_of(twice.get()), payload_of(once.get())) << wire;
    }
}
