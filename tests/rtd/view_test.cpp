// Why and where payloads are refused in place. That they are, and what is read of the others, every row of the other
// tables shows: tests/support/agreement.h.
#include "tables.h"

#include <cstring>

using namespace test;

namespace {

constexpr Report text_report = report_of<nfc_ndef_text_read, nfc_ndef_text>,
                 uri_report = report_of<nfc_ndef_uri_read, nfc_ndef_uri>,
                 poster = report_of<nfc_ndef_smart_poster_read, nfc_ndef_smart_poster>,
                 control = report_of<nfc_ndef_generic_control_read, nfc_ndef_generic_control>,
                 request = report_of<nfc_ndef_handover_request_read, nfc_ndef_handover>,
                 carrier = report_of<nfc_ndef_handover_carrier_read, nfc_ndef_handover_carrier>,
                 alternative = report_of<nfc_ndef_alternative_carrier_read, nfc_ndef_alternative_carrier>,
                 collision = report_of<nfc_ndef_collision_resolution_read, nfc_ndef_collision_resolution>,
                 error = report_of<nfc_ndef_handover_error_read, nfc_ndef_handover_error>,
                 oob = report_of<nfc_ndef_bt_oob_read, nfc_ndef_bt_oob>,
                 legacy = report_of<nfc_ndef_bt_legacy_read, nfc_ndef_bt_legacy>,
                 enquiry = report_of<nfc_ndef_sharing_enquiry_read, nfc_ndef_sharing_enquiry>;

nfc_ndef_payload_report select(nfc_ndef_bytes payload)
{
    nfc_ndef_handover view;
    nfc_ndef_payload_report report;
    nfc_ndef_handover_select_read(payload, NFC_NDEF_FLAG_MB, &view, &report);
    return report;
}

const struct {
    Report report;
    const char *payload;
    nfc_ndef_payload_report expected; // reason, offset, and of a nested message reason and record
} refusals[] = {
    {text_report, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {text_report, "02656E41", {NFC_NDEF_PAYLOAD_VALID, 4}},
    {text_report, "03656E", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 1}},
    {text_report, "02656E", {NFC_NDEF_PAYLOAD_NO_TEXT, 3}},
    {uri_report, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {uri_report, "0061071F", {NFC_NDEF_PAYLOAD_CONTROL_CHARACTER, 2}}, // the first
    {poster, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {poster, "[T:01]", {NFC_NDEF_PAYLOAD_RECORD_MISSING, 5}},
    {poster, "[U:01 U: U:]", {NFC_NDEF_PAYLOAD_RECORD_REPEATED, 5}},
    {poster, "[U: s:01 s:00000001 act:]", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 4}},
    {poster, "[U: act:]", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 4}},
    {poster, "[U: T:] FE", {NFC_NDEF_PAYLOAD_NOT_A_MESSAGE, 8, NFC_NDEF_MSG_BYTES_LEFT_OVER, 2}},
    {control, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {control, "00", {NFC_NDEF_PAYLOAD_NOT_A_MESSAGE, 1, NFC_NDEF_MSG_BAD_ARGUMENTS, 0}},
    {control, "00[t:01 a:00] FE", {NFC_NDEF_PAYLOAD_NOT_A_MESSAGE, 11, NFC_NDEF_MSG_BYTES_LEFT_OVER, 2}},
    {control, "00[a:00]", {NFC_NDEF_PAYLOAD_RECORD_MISSING, 6}},
    {control, "00[t: t: a: a:]", {NFC_NDEF_PAYLOAD_RECORD_REPEATED, 5}},
    {control, "00[t: a: a:]", {NFC_NDEF_PAYLOAD_RECORD_REPEATED, 9}},
    {control, "00[t: a:01]", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 5}},
    {control, "00[t: d: d:]", {NFC_NDEF_PAYLOAD_RECORD_REPEATED, 9}},
    {request, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {request, "20[ac:]", {NFC_NDEF_PAYLOAD_VERSION_NOT_READ, 0}},
    {request, "10", {NFC_NDEF_PAYLOAD_NOT_A_MESSAGE, 1, NFC_NDEF_MSG_BAD_ARGUMENTS, 0}},
    {request, "12[ac:]", {NFC_NDEF_PAYLOAD_RECORD_MISSING, 6}},
    {request, "12[cr: ac: cr:]", {NFC_NDEF_PAYLOAD_RECORD_REPEATED, 11}},
    {select, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {select, "20", {NFC_NDEF_PAYLOAD_VERSION_NOT_READ, 0}},
    {select, "12", {NFC_NDEF_PAYLOAD_NOTHING_SELECTED, 1}},
    {select, "12FE", {NFC_NDEF_PAYLOAD_NOT_A_MESSAGE, 1, NFC_NDEF_MSG_HEADER_CUT_SHORT, 0}},
    {select, "12[err: ac: err:]", {NFC_NDEF_PAYLOAD_RECORD_REPEATED, 12}},
    {carrier, "02", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 1}},
    {carrier, "020161", {NFC_NDEF_PAYLOAD_VALID, 3}},
    {carrier, "020261", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 2}},
    {carrier, "020161 78*256", {NFC_NDEF_PAYLOAD_FIELD_TOO_LONG, 3}},
    {alternative, "01", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 1}},
    {alternative, "010261", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 2}},
    {alternative, "010161", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 3}},
    {alternative, "01016102 0162 0263", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 6}},
    {alternative, "0103617E2000", {NFC_NDEF_PAYLOAD_REFERENCE_CHARACTER, 4}},
    {alternative, "01017E00", {NFC_NDEF_PAYLOAD_REFERENCE_CHARACTER, 2}},
    {collision, "01", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 0}},
    {collision, "010203", {NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 2}},
    {error, "01", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 1}},
    {error, "010203", {NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 2}},
    {oob, "", {NFC_NDEF_PAYLOAD_EMPTY, 0}},
    {oob, "08", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 0}},
    {oob, "0800 0102030405", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 2}},
    {oob, "0800 010203040506 00 0161 030961", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 11}},
    {oob, "0800 010203040506 030201 02 030461 62", {NFC_NDEF_PAYLOAD_LIST_NOT_WHOLE, 12}},
    {oob, "0800 010203040506 030D0102", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 8}},
    {oob, "0800 010203040506 040D010203 040D010203", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 13}},
    {oob, "0800 010203040506 020861 0109", {NFC_NDEF_PAYLOAD_FIELD_REPEATED, 11}},
    {oob, "0800 010203040506 02FF01", {NFC_NDEF_PAYLOAD_WRONG_LENGTH, 8}},
    {oob, "0800 010203040506 00 110F 52*16", {NFC_NDEF_PAYLOAD_RANDOMIZER_WITHOUT_HASH, 9}},
    {legacy, "30", {NFC_NDEF_PAYLOAD_PAIRING_TYPE, 0}},
    {legacy, "10 0102030405", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 1}},
    {legacy, "10 010203040506 0102", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 7}},
    {legacy, "22 010203040506 010203 41", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 10}},
    {legacy, "10 010203040506 010203", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 10}},
    {legacy, "10 010203040506 010203 0241", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 11}},
    {legacy, "10 010203040506 010203 F9 41*249", {NFC_NDEF_PAYLOAD_FIELD_TOO_LONG, 10}},
    {enquiry, "1001", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 2}},
    {enquiry, "210100", {NFC_NDEF_PAYLOAD_VERSION_NOT_READ, 0}},
    {enquiry, "10010241", {NFC_NDEF_PAYLOAD_FIELD_PAST_END, 3}},
    {enquiry, "1001014142", {NFC_NDEF_PAYLOAD_BYTES_LEFT_OVER, 4}},
};

} // namespace

TEST(PayloadReport, SaysWhyAndWhere)
{
    for (const auto &[report, payload, expected] : refusals)
        expect_reports(report, {{payload, expected}});
}

TEST(GenericControlView, LeavesAnActionInChunksToBeJoined)
{
    nfc_ndef_generic_control view;
    const Bytes chunked = bytes("00 91010074 310101 61 00 560003 D00000");
    ASSERT_EQ(nfc_ndef_generic_control_read({chunked.data(), static_cast<uint32_t>(chunked.size())}, &view, nullptr),
              1);
    EXPECT_TRUE(view.has_action && view.action_flag == 0 && view.action_record.flags == 0);
    const Bytes code = bytes("00 91010074 310101 61 05 560001 07");
    ASSERT_EQ(nfc_ndef_generic_control_read({code.data(), static_cast<uint32_t>(code.size())}, &view, nullptr), 1);
    EXPECT_TRUE(view.action_flag == 5 && view.action_code == 7);
}

TEST(BluetoothOobView, KeepsWhatTheExtractorDrops)
{
    const Bytes payload = bytes("0900 010203040506 03020100 050500000000 0106 020941 040D010203");
    nfc_ndef_bt_oob view;
    ASSERT_EQ(nfc_ndef_bt_oob_read({payload.data(), static_cast<uint32_t>(payload.size())}, &view, nullptr), 1);
    EXPECT_EQ(hex({view.uuid16_list_type, view.uuid32_list_type, view.uuid128_list_type, view.local_name_type,
                   view.has_class_of_device, static_cast<uint8_t>(view.stated_length)}),
              "020506090109");
}

TEST(UriPrefix, IsTheLongest)
{
    const struct {
        const char *uri;
        uint8_t code;
        const char *prefix;
    } rows[] = {
        {"http://www.x", 1, "http://www."},
        {"http://ww", 3, "http://"},
        {"urn:epc:id", 0x22, "urn:epc:"},
        {"urn:epc:id:", 0x1E, "urn:epc:id:"},
        {"urn:nfc:", 0x23, "urn:nfc:"},
        {"HTTP://x", 0, ""},
        {"ftp://anonymous:anonymous@x", 7, "ftp://anonymous:anonymous@"},
        {"", 0, ""},
    };
    for (const auto &[uri, code, prefix] : rows) {
        const Exact exact(text(uri));
        uint32_t length = 99;
        EXPECT_EQ(nfc_ndef_uri_prefix_code({exact.data(), exact.size()}, &length), code) << uri;
        EXPECT_EQ(length, std::strlen(prefix)) << uri;
        EXPECT_STREQ(nfc_ndef_uri_prefix(code), prefix);
        nfc_ndef_uri view;
        EXPECT_EQ(nfc_ndef_uri_read({&code, 1}, &view, nullptr), 1);
        EXPECT_STREQ(view.prefix, prefix);
    }
    EXPECT_STREQ(nfc_ndef_uri_prefix(0x24), "");
}
