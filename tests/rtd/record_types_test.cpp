// Record types as others write them: what is refused, and that what is read makes a record that reads the same.
#include "tables.h"
#include <nfc_ndef_types.h>

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
        if (!row.contains("reads_as"))
            continue;
        const std::string wire = row["hex"];
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

namespace {

#define REPORT(type, structure) report_of<nfc_ndef_##type##_read, nfc_ndef_##structure>
const Report application = REPORT(android_application, android_application),
             device = REPORT(device_information, device_information), le = REPORT(bt_le, bt_le),
             sig = REPORT(signature, signature), mediation = REPORT(handover_mediation, handover),
             initiate = REPORT(handover_initiate, handover), parameter = REPORT(service_parameter, service_parameter),
             service = REPORT(service_select, service_select), status = REPORT(tnep_status, tnep_status),
             wifi = REPORT(wifi, wifi);

const struct {
    Report report;
    const char *payload;
    nfc_ndef_payload_report expected;
} refusals[] = {
    {application, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {application, "612E5A5F39", {NFC_NDEF_PAYLOAD_VALID, 5}},
    {application, "612D62", {NFC_NDEF_PAYLOAD_CHARACTER_NOT_ALLOWED, 1}},
    {device, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {device, "000156 01014D", {NFC_NDEF_PAYLOAD_VALID, 6}},
    {device, "000156 0102", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 3}},
    {device, "000156 01", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 3}},
    {device, "000156 0100", {NFC_NDEF_PAYLOAD_FIELD_EMPTY, 3}},
    {device, "000156 0300", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 3}},
    {device, "000156 0200 0200", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 5}},
    {device, "000156 FF00", {NFC_NDEF_PAYLOAD_FIELD_MISSING, 5}},
    {device, "000156 FF00 0200 0200 01014D", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 7}},
    {device, "01014D FF00", {NFC_NDEF_PAYLOAD_FIELD_MISSING, 5}},
    {le, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {le, "0000", {NFC_NDEF_PAYLOAD_FIELD_MISSING, 2}},
    {le, "00 0141", {NFC_NDEF_PAYLOAD_VALID, 3}},
    {le, "021C00 0341", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 3}},
    {le, "00 061B0102030405", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 1}},
    {le, "031C0001", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {le, "1010 00*15", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {le, "041600 0102", {NFC_NDEF_PAYLOAD_VALID, 5}},
    {le, "021600", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {le, "0420000000", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {le, "1021 00*15", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {le, "02FF00", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {le, "03030F18 03020F18", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 4}},
    {le, "0103 03020F18 0102", {NFC_NDEF_PAYLOAD_VALID, 8}}, // empty lists are lists of nobody
    {le, "0405000000", {NFC_NDEF_PAYLOAD_LIST_NOT_WHOLE, 0}},
    {le, "020101 03010102 020101", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 7}},
    {le, "0109 0108", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 2}},
    {sig, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {sig, "01 00 00", {NFC_NDEF_PAYLOAD_VERSION_NOT_READ, 0}},
    {sig, "20 00 02 0000", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 5}},
    {sig, "20 00 02 0001", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 3}},
    {sig, "20 00 02 0000 01 0001", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 6}},
    {sig, "20 00 02 0000 02 0000 00", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 8}},
    {sig, "20 00 02 0000 00 00", {NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 6}},
    {sig, "20 80 02 0000 00", {NFC_NDEF_PAYLOAD_FIELD_EMPTY, 3}},
    {sig, "20 00 02 0000 80 0001 1F", {NFC_NDEF_PAYLOAD_CONTROL_CHARACTER, 6}},
    {sig, "20 00 02 0000 80 0002 C3BC", {NFC_NDEF_PAYLOAD_VALID, 10}},
    {sig, "20 00 02 0000 80 0004 F48FBFBF", {NFC_NDEF_PAYLOAD_VALID, 12}},
    {sig, "20 00 02 0000 80 0003 EE8080", {NFC_NDEF_PAYLOAD_VALID, 11}},
    {mediation, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {mediation, "23", {NFC_NDEF_PAYLOAD_VERSION_NOT_READ, 0}},
    {mediation, "1F", {NFC_NDEF_PAYLOAD_VALID, 1}},
    {mediation, "13[ac: U:01] 00", {NFC_NDEF_PAYLOAD_NOT_A_MESSAGE, 11, NFC_NDEF_MSG_BYTES_LEFT_OVER, 2}},
    {mediation, "13 91010055 31010054 560000", {NFC_NDEF_PAYLOAD_IN_CHUNKS, 5}},
    {mediation, "13 D102004763 D1010055", {NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 6}},
    {initiate, "05", {NFC_NDEF_PAYLOAD_VERSION_NOT_READ, 0}},
    {initiate, "15", {NFC_NDEF_PAYLOAD_VALID, 1}},
    {parameter, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {parameter, "20 0161 00 00 00 0000", {NFC_NDEF_PAYLOAD_VERSION_NOT_READ, 0}},
    {parameter, "10", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 1}},
    {parameter, "10 0261", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 2}},
    {parameter, "10 00 00 00 00 0000", {NFC_NDEF_PAYLOAD_FIELD_EMPTY, 1}},
    {parameter, "10 026120 00 00 00 0000", {NFC_NDEF_PAYLOAD_CHARACTER_NOT_ALLOWED, 3}},
    {parameter, "10 0161 00", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 4}},
    {parameter, "10 0161 00 00 00 00", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 6}},
    {parameter, "10 0161 00 40 10 FFFF", {NFC_NDEF_PAYLOAD_VALID, 8}},
    {parameter, "10 0161 00 00 00 0000 00", {NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 8}},
    {service, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {service, "00", {NFC_NDEF_PAYLOAD_VALID, 1}},
    {service, "0261", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 1}},
    {service, "0161 00", {NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 2}},
    {service, "017F", {NFC_NDEF_PAYLOAD_CHARACTER_NOT_ALLOWED, 1}},
    {status, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {status, "0000", {NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 1}},
    {wifi, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {wifi, "0001 10", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 0}},
    {wifi, "0004 10FA0000", {NFC_NDEF_PAYLOAD_VALID, 6}},
    {wifi, "0FFF0000", {NFC_NDEF_PAYLOAD_NUMBER_NOT_ALLOWED, 0}},
    {wifi, "10450000 10270000 10110000 10210000 10230000 10240000 10420000", {NFC_NDEF_PAYLOAD_VALID, 28}},
    {wifi, "10FA0000 10FA0001", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 4}},
    {wifi, "0006 10FA0000 1045", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 6}},
    {wifi, "10FA0000 1045 0021 00*33", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 4}},
    {wifi, "1055 000C 00*12", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {wifi, "10450000 10450000", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 4}},
    {wifi, "1026000101 1026000101", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 5}},
    {wifi, "102C 0015 00*21", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {wifi, "102C 0017 00*20 000700", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {wifi, "102C 0016 00*20 0008", {NFC_NDEF_PAYLOAD_NUMBER_NOT_ALLOWED, 0}},
    {wifi, "102C 0025 00*20 0010 00*15", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {wifi, "102C 0016 00*20 0007 102C 0016 00*20 0007", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 26}},
    {wifi, "10FA0000 100E 0004 10450000", {NFC_NDEF_PAYLOAD_FIELD_MISSING, 12}},
    {wifi, "100E 0009 1045 0000 1026 0002 01", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 8}},
    {wifi, "100E 0010 1045 0000 100300020001 100F00020008", {NFC_NDEF_PAYLOAD_FIELD_MISSING, 20}},
    {wifi, "1049 0002 0037", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {wifi, "1049 0401 00*1025", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {wifi, "1049 0005 00372A 0001", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 0}},
    {wifi, "1049 0006 00372A 010100", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
    {wifi, "1049 0007 00372A 0300 0300", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 0}},
};

} // namespace

TEST(RecordTypes, SayWhyTheyAreRefused)
{
    for (const auto &[report, payload, expected] : refusals)
        expect_reports(report, {{payload, expected}});
    // Overlong, a surrogate, beyond the last character, a continuation alone, one missing, bytes that are never used.
    for (const char *uri :
         {"C0AF", "E08080", "F0808080", "EDA080", "F4908080", "8061", "C361", "E28261", "F5808080", "FF61"}) {
        const size_t length = std::string(uri).size() / 2;
        const std::string payload = std::string("20 00 02 0000 80 00 0") + std::to_string(length) + uri;
        expect_reports(sig, {{payload.c_str(), {NFC_NDEF_PAYLOAD_NOT_UTF8, 6}}});
    }
}
