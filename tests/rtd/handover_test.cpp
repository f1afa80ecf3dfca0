#include "outcome.h"

using namespace test;

namespace {

constexpr Output request_outputs[] = {{"cr"}, {"ac"}, {"list", 1, true}, {"version"}};
constexpr Output select_outputs[] = {{"ac"}, {"list", 0, true}, {"err"}, {"version"}};

std::string read_request(Record record)
{
    return outcome(rtdlib_handover_request_record_extract, std::move(record), request_outputs);
}

std::string read_select(Record record)
{
    return outcome(rtdlib_handover_select_record_extract, std::move(record), select_outputs);
}

Record request(uint8_t version, std::string_view cr, const Array &carriers)
{
    return Record(
        rtdlib_handover_request_record_create(record_of(cr).get(), carriers.count(), carriers.data(), version));
}

Record select(uint8_t version, const Array &carriers, std::string_view err)
{
    return Record(
        rtdlib_handover_select_record_create(carriers.count(), carriers.data(), record_of(err).get(), version));
}

Array broken()
{
    std::vector<Record> records = records_of("ac:01");
    records.push_back(unencodable());
    return Array(std::move(records));
}

} // namespace

TEST(HandoverRequest, Builds)
{
    const Array none(""), one("ac:01"), null("-");
    const nfc_ndef_record *const cr = one.records[0].get();
    const Built rows[] = {
        {request(0x12, "cr:1234", Array("ac:01013000")), "1S Hr", "12 91020263721234 5102046163 01013000", "1.2"},
        {request(0x10, "", Array("ac:01 - ac:02")), "1S Hr", "10 [ac:01 ac:02]", "1.0; null entry; order"},
        {request(0x12, "cr:1234", none), "1S Hr", "12 [cr:1234]", "no carrier"},
        {request(0x12, "x:01", Array("y:02")), "1S Hr", "12 [x:01 y:02]", "types looked at"},
        {request(0x10, "", Array("- ac:02")), "1S Hr", "10 D1020161 6302", "one record is not first and last"},
        {request(0x10, "", none), "null", "", "nothing to nest"},
        {request(0x10, "", null), "null", "", "nothing to nest but a null entry"},
        {request(0x12, "cr:1234", broken()), "null", "", "the last record cannot be encoded"},
        {Record(rtdlib_handover_request_record_create(cr, 1, nullptr, 0x12)), "null", "", "count without array"},
        {Record(rtdlib_handover_request_record_create(cr, 0, null.data(), 0x12)), "null", "", "array without count"},
    };
    expect_built(rows);
    for (unsigned version = 0; version <= 0xFF; ++version) {
        EXPECT_EQ(request(static_cast<uint8_t>(version), "", one) != nullptr, version == 0x10) << version;
        EXPECT_EQ(request(static_cast<uint8_t>(version), "cr:1234", one) != nullptr, version == 0x12) << version;
    }
}

TEST(HandoverRequest, Reads)
{
    const Payload rows[] = {
        {"12 [cr:1234 ac:01013000]", "1 cr=cr:1234 ac=1 list=[ac:01013000] version=12", "version 1.2"},
        {"12 [ac:02 err:03 cr:1234 ac:01]", "1 cr=cr:1234 ac=2 list=[ac:02 ac:01] version=12", "order, other types"},
        {"12 [cr:1234]", "1 cr=cr:1234 ac=0 version=12", "no carrier"},
        {"12 [ac:01]", "2 version=12", "no random number"},
        {"12 [CR:1234 ac:01]", "2 version=12", "type compared without case"},
        {"12 [cr:1234 ac:01 cr:1234]", "2 version=12", "two random numbers"},
        {"10 [cr:1234 cr:5678 ac:01]", "1 cr=null ac=1 list=[ac:01] version=10", "1.0 looks for none"},
        {"11 [ac:01]", "1 cr=null ac=1 list=[ac:01] version=11", "1.1 not read like 1.0"},
        {"13 [cr:1234 ac:01]", "1 cr=null ac=1 list=[ac:01] version=13", "1.3 read like 1.2"},
        {"1F [x:01]", "1 cr=null ac=0 version=1F", "1.15 not read like 1.0; no carrier"},
        {"20 [ac:01]", "-1 version=20", "version 2.0"},
        {"02 [cr:1234 ac:01]", "-1 version=2", "version 0.2"},
        {"", "-1", "no payload"},
        {"12", "-1 version=12", "version alone"},
        {"10 D102016163", "-1 version=10", "no message"},
    };
    expect_read(read_request, rows);
    EXPECT_EQ(read_request(nullptr), "-1");
    const Record built = request(0x12, "cr:1234", Array("ac:01013000 ac:0100"));
    expect_checked(rtdlib_handover_request_record_extract, built, request_outputs);
    expect_cut(read_request, payload_of(built.get()), [](size_t length) { return length ? "-1 version=12" : "-1"; });
}

TEST(HandoverSelect, Builds)
{
    const Array none(""), one("ac:01"), null("-");
    const nfc_ndef_record *const err = one.records[0].get();
    const Built rows[] = {
        {select(0x12, Array("ac:01 - ac:02"), "err:0102"), "1S Hs", "12 [ac:01 ac:02 err:0102]", "error not last"},
        {select(0x12, one, ""), "1S Hs", "12 D10201616301", "1.2 wants an error"},
        {select(0x12, none, "err:0102"), "1S Hs", "12 [err:0102]", "error alone"},
        {select(0x10, none, ""), "null", "", "nothing to nest"},
        {select(0x12, Array("- -"), ""), "null", "", "nothing to nest but null entries"},
        {select(0x10, broken(), ""), "null", "", "the last record cannot be encoded"},
        {Record(rtdlib_handover_select_record_create(1, nullptr, err, 0x12)), "null", "", "count without array"},
        {Record(rtdlib_handover_select_record_create(0, null.data(), err, 0x12)), "null", "", "array without count"},
    };
    expect_built(rows);
    for (unsigned version = 0; version <= 0xFF; ++version) {
        const auto v = static_cast<uint8_t>(version);
        EXPECT_EQ(select(v, one, "") != nullptr, v == 0x10 || v == 0x12) << version;
        EXPECT_EQ(select(v, one, "err:0102") != nullptr, v == 0x12) << version;
    }
}

TEST(HandoverSelect, Reads)
{
    const Payload rows[] = {
        {"12 [ac:02 cr:1234 ac:01]", "1 ac=2 list=[ac:02 ac:01] version=12", "no error: output written"},
        {"12 [err:0102 ac:01]", "1 ac=1 list=[ac:01] err=err:0102 version=12", "one error, in front"},
        {"12 [err:0102]", "1 ac=0 err=err:0102 version=12", "error alone"},
        {"12 [ac:01 err:0102 err:0102]", "2 ac=1 list=[ac:01] err=null version=12", "two errors: carriers lost"},
        {"12 [err:0102 err:0102]", "2 ac=0 err=null version=12", "two errors alone"},
        {"10 [ac:01 err:0102 err:0102]", "1 ac=1 list=[ac:01] version=10", "1.0 looks for none"},
        {"11 [err:0102 ac:01]", "1 ac=1 list=[ac:01] version=11", "1.1 not read like 1.0"},
        {"13 [ac:01 err:0102]", "1 ac=1 list=[ac:01] version=13", "1.3 read like 1.2"},
        {"1F [x:]", "1 ac=0 version=1F", "1.15 not read like 1.0; no carrier"},
        {"20 [ac:01]", "-1 version=20", "version 2.0"},
        {"", "-1", "no payload"},
        {"12", "-1 version=12", "version alone, without MB and ME"},
        {"12 D102016163", "-1 version=12", "no message"},
    };
    expect_read(read_select, rows);
    EXPECT_EQ(read_select(nullptr), "-1");
    const auto bare = [](uint8_t version, uint8_t mb, uint8_t me) {
        Record record = well_known("Hs", {version});
        record->mb = mb;
        record->me = me;
        return read_select(std::move(record));
    };
    EXPECT_EQ(bare(0x12, 1, 1), "1 ac=0 version=12");
    EXPECT_EQ(bare(0x10, 1, 1), "1 ac=0 version=10");
    EXPECT_EQ(bare(0x12, 0, 1), "-1 version=12");
    EXPECT_EQ(bare(0x12, 1, 0), "-1 version=12");
    EXPECT_EQ(bare(0x20, 1, 1), "-1 version=20");

    const Record built = select(0x12, Array("ac:01013000"), "err:0102");
    expect_checked(rtdlib_handover_select_record_extract, built, select_outputs);
    expect_cut(read_select, payload_of(built.get()), [](size_t length) { return length ? "-1 version=12" : "-1"; });
}

TEST(CollisionResolution, BuildsAndReads)
{
    constexpr static Output outputs[] = {{"number"}};
    const Built built[] = {
        {Record(rtdlib_collision_resolution_record_create(0x1234)), "1S cr", "1234", "byte order"},
        {Record(rtdlib_collision_resolution_record_create(0)), "1S cr", "0000", "zero"},
    };
    expect_built(built);
    const Payload rows[] = {
        {"1234", "1 number=1234", "byte order"},
        {"FFFE", "1 number=FFFE", "sign"},
        {"", "-1", "no payload"},
        {"12", "-1", "one byte"},
        {"123456", "-1", "three bytes"},
    };
    expect_read(
        [](Record record) { return outcome(rtdlib_collision_resolution_record_extract, std::move(record), outputs); },
        rows);
    expect_checked(rtdlib_collision_resolution_record_extract, built[0].record, outputs);
    EXPECT_EQ(outcome(rtdlib_collision_resolution_record_extract, nullptr, outputs), "-1");
}

TEST(HandoverSelectError, BuildsAndReads)
{
    constexpr static Output outputs[] = {{"reason"}, {"data"}};
    const Built built[] = {
        {Record(rtdlib_handover_select_error_record_create(0x101, 0x2FF)), "1S err", "01FF", "low bytes"}};
    expect_built(built);
    const Payload rows[] = {
        {"01FF", "1 reason=1 data=FF", "order"},
        {"", "2", "no payload"},
        {"01", "2", "one byte"},
        {"010203", "2", "three bytes"},
    };
    expect_read(
        [](Record record) { return outcome(rtdlib_handover_select_error_record_extract, std::move(record), outputs); },
        rows);
    expect_checked(rtdlib_handover_select_error_record_extract, built[0].record, outputs);
    EXPECT_EQ(outcome(rtdlib_handover_select_error_record_extract, nullptr, outputs), "-1");
}

TEST(HandoverRequest, NestsPartsAsTheirCopiesWouldBe)
{
    // A copy drops a pointer that has no length, so that such a part can be encoded.
    const Record carrier = record_of("ac:01");
    carrier->payload_length = 0;
    carrier->record_type.name_length = 0;
    nfc_ndef_record *const parts[] = {carrier.get()};
    const Record built(rtdlib_handover_request_record_create(nullptr, 1, parts, 0x10));
    EXPECT_EQ(payload_of(built.get()), bytes("10 D10000"));
}
