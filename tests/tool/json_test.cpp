// `ndef json` and `ndef make json`: the same bytes again, the right form for each record, and what is refused.
#include "run.h"

#include <fstream>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace test {
namespace {

using Json = nlohmann::json;

std::string hex_of(const std::string &bytes)
{
    std::string hex;
    for (const char c : bytes)
        for (const int digit : {(c >> 4) & 0x0F, c & 0x0F})
            hex += "0123456789ABCDEF"[digit];
    return hex;
}

// Whether no record is chunked, and each says its lengths in the one form that a writer uses.
bool is_canonical(const std::string &message)
{
    const auto byte = [&](size_t i) { return static_cast<uint8_t>(message.at(i)); };
    for (size_t i = 0; i < message.size();) {
        const uint8_t header = byte(i);
        const bool chunk = header & 0x20, short_record = header & 0x10, id = header & 0x08;
        size_t payload = 0, lengths = short_record ? 1 : 4;
        for (size_t n = 0; n < lengths; ++n)
            payload = payload << 8 | byte(i + 2 + n);
        const size_t id_length = id ? byte(i + 2 + lengths) : 0;
        if (chunk || short_record != (payload <= 255) || id != (id_length > 0))
            return false;
        i += 2 + lengths + (id ? 1 : 0) + byte(i + 1) + id_length + payload;
    }
    return true;
}

TEST(Json, GivesTheSameBytesAgainForEveryCanonicalVector)
{
    std::ifstream file(TEST_DATA "/vectors.json");
    size_t round_trips = 0;
    for (const Json &vector : Json::parse(file)) {
        const std::string hex = vector["hex"], message = raw(hex);
        const auto written = ndef({"json"}, message);
        if (written.status == 1)
            continue; // not a message; other tests say which are
        SCOPED_TRACE(hex);
        ASSERT_EQ(written.status, 0) << written.err;
        const auto made = ndef({"make", "json"}, written.out);
        ASSERT_EQ(made.status, 0) << made.err << written.out;
        if (!is_canonical(message))
            continue;
        EXPECT_EQ(hex_of(made.out), hex);
        ++round_trips;
    }
    EXPECT_GT(round_trips, 100u);
}

TEST(Json, TakesATypedFormOnlyWhereItGivesTheSameBytes)
{
    const std::string oob_type = "6170706C69636174696F6E2F766E642E626C7565746F6F74682E65702E6F6F62";
    const struct {
        std::string_view about;
        std::string hex, expected; // members of the first record
    } cases[] = {
        {"plain text", "D1010554 02656E4869",
         R"({"kind": "text", "utf16": false, "language_code": "en", "text": "Hi"})"},
        {"text whose reserved status bit is set", "D1010554 42656E4869", R"({"kind": "generic", "type": "T"})"},
        {"text that is not UTF-8", "D1010554 02656EFF69", R"({"payload": "02656EFF69"})"},
        {"UTF-16 behind a mark", "D1010754 82656EFFFE4100",
         R"({"byte_order_mark": "little", "text": "A", "utf16": true})"},
        {"UTF-16 with half a unit", "D1010654 82656E004100", R"({"kind": "generic"})"},
        {"half a surrogate pair", "D1010554 82656ED83D", R"({"kind": "generic"})"},
        {"a prefix that could be longer", "D1010855 047777772E612E62",
         R"({"kind": "uri", "identifier_code": 4, "uri": "https://www.a.b"})"},
        {"an identifier code without a meaning", "D1010255 FF61",
         R"({"kind": "uri", "identifier_code": 255, "uri": "a"})"},
        {"characters that a terminal obeys", "D1010755 03C29BE280AE7F", R"({"uri": "http://\u009b\u202e\u007f"})"},
        {"a type and an id that are no text", "DC020001 FFFE80", R"({"type_hex": "FFFE", "id_hex": "80"})"},
        {"a poster without an action", "D10205 5370 D101015500",
         R"({"type": "Sp", "records": [{"kind": "uri", "identifier_code": 0, "uri": ""}]})"},
        {"a poster with an id inside", "D1020F 5370 9901020155690161 51030161637400",
         R"({"kind": "smart_poster", "action": 0,
             "uri_record": {"kind": "uri", "id": "i", "identifier_code": 1, "uri": "http://www.a"}})"},
        {"a nested record in the long form", "D1020853 70 C101000000015500", R"({"payload": "C101000000015500"})"},
        {"a handover version without a builder", "D1020A 4873 13 D10204 6163 01013000",
         R"({"payload": "13", "records": [{"kind": "alternative_carrier", "cps": "active", "carrier_data_ref": "0"}]})"},
        {"a sequence of messages", "D10206 4763 00D1010174D5 D50000",
         R"({"kind": "generic", "payload": "00", "records": [{"kind": "generic", "payload": "D5", "tnf": "well-known",
             "type": "t"}]})"},
        {"flags of a nested action record", "D10211 4763 00 9101017400 510107 61 00 910102550361",
         R"({"kind": "generic_control", "action_flag": 0, "action_record": {"kind": "uri", "mb": true, "me": false,
             "cf": false, "identifier_code": 3, "uri": "http://a"}})"},
        {"Bluetooth, as it is built", "D2200D" + oob_type + "0D00010203040506040D0A0B0C",
         R"({"kind": "bt_2_1_configuration_data", "device_address": "010203040506", "class_of_device": "0A0B0C"})"},
        {"Bluetooth with its structures in another order", "D22010" + oob_type + "1000010203040506040D0A0B0C020941",
         R"({"kind": "generic", "tnf": "media"})"},
        {"Bluetooth with a wrong length inside", "D2200D" + oob_type + "0C00010203040506040D0A0B0C",
         R"({"kind": "generic"})"},
        {"another case of the type's letters", "D2200D41" + oob_type.substr(2) + "0D00010203040506040D0A0B0C",
         R"({"kind": "generic", "type": "Application/vnd.bluetooth.ep.oob"})"},
        {"a reserved format", "DF000101 4100", R"({"tnf": "reserved", "id": "A", "payload": "00"})"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.about);
        const std::string message = raw(c.hex);
        const auto written = ndef({"json"}, message);
        if (written.status != 0) {
            ADD_FAILURE() << written.err;
            continue;
        }
        const Json record = Json::parse(written.out)["records"][0];
        const Json expected = Json::parse(c.expected);
        for (const auto &[name, value] : expected.items())
            EXPECT_EQ(record.value(name, Json()).dump(), value.dump()) << name;
        const auto made = ndef({"make", "json"}, written.out);
        EXPECT_EQ(hex_of(made.out), hex_of(message)) << made.err;
        EXPECT_THAT(written.out, testing::Not(testing::ContainsRegex("\x7F|\xC2\x9B|\xE2\x80\xAE")));
    }
}

TEST(Json, KeepsWhatIsNestedDeeperThanItGoes)
{
    std::string poster, wrapped = raw("D1010155 00");
    for (int depth = 0; depth < 12; ++depth) {
        const auto length = static_cast<char>(poster.size());
        poster = raw("9101015500") +
                 (poster.empty() ? raw("51030161637400") : raw("11030161637400") + "\x51\x02" + length + "Sp" + poster);
        wrapped = raw("D102") + static_cast<char>(wrapped.size()) + "Sp" + wrapped;
    }
    const std::string typed = raw("D102") + static_cast<char>(poster.size()) + "Sp" + poster;
    for (const std::string &message : {typed, wrapped}) {
        const auto written = ndef({"json"}, message);
        EXPECT_EQ(Json::parse(written.out)["records"][0].contains("records"), message == wrapped);
        const auto made = ndef({"make", "json"}, written.out);
        EXPECT_EQ(hex_of(made.out), hex_of(message)) << made.err;
    }
}

// A message of one record with these members.
std::string one(const std::string &members) { return R"({"records": [{)" + members + "}]}"; }

TEST(Json, NamesTheMemberThatItRefuses)
{
    const std::string text = R"("kind": "text", "language_code": "en")",
                      target = R"("target_record": {"kind": "generic", "tnf": "well-known", "type": "t"})";
    std::string nested = one(R"("kind": "generic", "tnf": "empty")"), innermost = "/records/0";
    for (int i = 0; i < 9; ++i) {
        nested = one(R"("kind": "generic", "tnf": "well-known", "type": "Sp", )" + nested.substr(1, nested.size() - 2));
        innermost += "/records/0";
    }
    const struct {
        std::string json, expected;
    } cases[] = {
        {"", "line 1, column 1: "},
        {"{\"records\":\n [}", "line 2, column 3: "},
        {"\x1B[31m", "line 1, column 1: "},
        {std::string(100000, '['), "is nested too deep"},
        {nested, innermost + ": is nested too deep"},
        {"[]", "must be an object"},
        {R"({"records": []})", "/records: must not be empty"},
        {R"({"records": [1]})", "/records/0: must be an object"},
        {one(R"("text": "a")"), "/records/0/kind: is missing"},
        {one(R"("kind": "txt")"), "/records/0/kind: must be one of: generic, text"},
        {one(text), "/records/0/text: is missing"},
        {one(text + R"(, "text": 5)"), "/records/0/text: must be a string"},
        {one(text + R"(, "text": "")"), "/records/0/text: must not be empty"},
        {one(text + R"(, "text": "a\u0000")"), "/records/0/text: must not hold a NUL"},
        {one(text + R"(, "text": "a", "utf16": 1)"), "/records/0/utf16: must be true or false"},
        {one(text + R"(, "text": "a", "text": "b")"), "/records/0/text: is there twice"},
        {one(text + R"(, "text": "a", "x/\u001b": 1)"), "/records/0/x~1\\x1B: is not a member"},
        {one(text + R"(, "text": "a", "id": "a", "id_hex": "61")"), "/records/0/id_hex: must not be there along"},
        {one(text + R"(, "text": "a", "id": ")" + std::string(256, 'a') + '"'), "/records/0/id: must be at most 255"},
        {one(text + R"(, "text": "a", "mb": true)"), "/records/0/mb: is not a member"},
        {one(R"("kind": "uri", "uri": "a\nb")"), "/records/0/uri: must not hold control"},
        {one(R"("kind": "uri", "uri": "http://a", "identifier_code": 4)"), "/records/0/uri: must begin with"},
        {one(R"("kind": "generic", "tnf": "mime")"), "/records/0/tnf: must be one of: empty, "},
        {one(R"("kind": "generic", "tnf": "media", "payload": "0")"), "/records/0/payload: must be pairs"},
        {one(R"("kind": "generic", "tnf": "empty", "payload": "00")"), "/records/0/payload: is not for \"empty\""},
        {one(R"("kind": "generic", "tnf": "unknown", "type": "a")"), "/records/0/type: is not for \"unknown\""},
        {one(R"("kind": "smart_poster", "action": 0, "uri_record": {"kind": "uri", "uri": "a"}, "titles": [{"kind": "uri",
             "uri": "a"}])"),
         "/records/0/titles/0: must be a record of the well-known type \"T\""},
        {one(R"("kind": "smart_poster", "uri_record": {"kind": "uri", "uri": "a"}, "action": 256)"),
         "/records/0/action: must be a whole number from 0 to 255"},
        {one(R"("kind": "generic_control", "config": 0, "action_flag": 2, )" + target),
         "/records/0/action_flag: must be 0 or 1"},
        {one(R"("kind": "handover_request", "version": "1.3")"), "/records/0/version: must be"},
        {one(R"("kind": "handover_request", "version": "1.2")"), "/records/0/cr_record: is needed"},
        {one(R"("kind": "handover_select", "version": "1.2")"), "/records/0/ac_records: must not be empty"},
        {one(R"("kind": "alternative_carrier", "cps": "active", "carrier_data_ref": "~")"),
         "/records/0/carrier_data_ref: must be of"},
        {one(R"("kind": "collision_resolution", "random_number": -1)"), "/records/0/random_number: must be a whole"},
        {one(R"("kind": "collision_resolution", "random_number": 1e999)"), "/records/0/random_number: is a number out"},
        {one(R"("kind": "bt_2_1_configuration_data", "device_address": "0102", "class_of_device": "010203")"),
         "/records/0/device_address: must be 6 bytes"},
        {one(R"("kind": "bt_2_1_configuration_data", "device_address": "010203040506", "class_of_device": "010203",
             "manufacturer_data": [{"manufacturer_id": "3412"}, {}])"),
         "/records/0/manufacturer_data/1/manufacturer_id: is missing"},
        {one(R"("kind": "bt_configuration_data", "device_address": "010203040506", "class_of_device": "010203",
             "pairing_type": 33)"),
         "/records/0/pairing_data: must be 1 bytes"},
        {one(R"("kind": "sharing_enquiry", "version": "2.1", "enquiry_type": 0)"), "/records/0/version: must be"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.json.substr(0, 200));
        const auto made = ndef({"make", "json"}, c.json);
        EXPECT_EQ(made.status, 1);
        EXPECT_EQ(made.out, "");
        EXPECT_THAT(made.err, testing::StartsWith("ndef: standard input: "));
        EXPECT_THAT(made.err, testing::HasSubstr(": " + c.expected));
        EXPECT_LT(made.err.size(), 600u);
        EXPECT_EQ(made.err.find('\x1B'), std::string::npos);
    }
}

} // namespace
} // namespace test
