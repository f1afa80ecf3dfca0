// Record types as others write them: what is refused, and that what is read makes a record that reads the same.
#include "nfc_ndef_types.h"
#include "tables.h"

#include <fstream>
#include <nlohmann/json.hpp>

using namespace test;

namespace {

// Whether a payload is read, and the record that is made of what was read.
struct Rebuilt {
    bool read;
    Record record;
};
using Rebuild = std::function<Rebuilt(nfc_ndef_bytes payload)>;

template <class Structure> Rebuild with(uint8_t (*read)(nfc_ndef_bytes, Structure *, nfc_ndef_payload_report *),
                                        nfc_ndef_record *(*create)(const Structure *, nfc_ndef_bytes))
{
    return [=](nfc_ndef_bytes payload) {
        Structure structure;
        const bool valid = under_test([&] { return read(payload, &structure, nullptr); }) == 1;
        EXPECT_EQ(allocations_of_last_call(), 0U);
        const uint8_t id = 'i';
        return Rebuilt{valid, Record(valid ? create(&structure, {&id, 1}) : nullptr)};
    };
}

#define REBUILT(kind, type)                                                                                            \
    {                                                                                                                  \
        NFC_NDEF_KIND_##kind, with(nfc_ndef_##type##_read, nfc_ndef_##type##_record_create)                            \
    }
const std::map<uint32_t, Rebuild> types{
    REBUILT(ANDROID_APPLICATION, android_application),
    REBUILT(DEVICE_INFORMATION, device_information),
    REBUILT(WIFI, wifi),
    REBUILT(BT_LE, bt_le),
    REBUILT(HANDOVER_MEDIATION, handover_mediation),
    REBUILT(HANDOVER_INITIATE, handover_initiate),
    REBUILT(SERVICE_PARAMETER, service_parameter),
    REBUILT(SERVICE_SELECT, service_select),
    REBUILT(TNEP_STATUS, tnep_status),
    REBUILT(SIGNATURE, signature),
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

        const uint32_t kind = nfc_ndef_record_view_kind(&record);
        const Rebuild &rebuild = types.at(kind);
        const Exact payload(copy(record.payload.data, record.payload.length));
        const auto [read, made] = rebuild({payload.data(), payload.size()});
        ASSERT_EQ(read, !row["reads_as"].is_null()) << wire;
        ASSERT_TRUE(made || !read || kind == NFC_NDEF_KIND_SERVICE_PARAMETER) << wire; // of more than is made
        if (!made)
            continue;
        const nfc_ndef_record_view view_of_made = nfc_ndef_record_view_of(made.get());
        EXPECT_EQ(nfc_ndef_record_view_kind(&view_of_made), kind) << wire;
        EXPECT_EQ(made->id_length, 1) << wire;
        EXPECT_EQ(payload_of(rebuild(view_of_made.payload).record.get()), payload_of(made.get())) << wire;
    }
}
