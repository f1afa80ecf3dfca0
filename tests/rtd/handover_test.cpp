#include "tables.h"

using namespace test;

namespace {

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

// Two carriers that differ from "ac:01" in their fields.
template <class Change> Record request_of_two(Change change)
{
    const Array carriers("ac:01 ac:01");
    for (const Record &each : carriers.records)
        change(*each);
    return request(0x10, "", carriers);
}

} // namespace

TEST(HandoverRequest, Builds)
{
    const auto create = rtdlib_handover_request_record_create;
    const Array one("ac:01"), null("-");
    const nfc_ndef_record *const cr = one.records[0].get();
    const Built rows[] = {
        {request(0x12, "cr:1234", {"ac:01013000"}), "1S Hr", "12 91020263721234 5102046163 01013000", "1.2"},
        {request(0x10, "", {"ac:01 - ac:02"}), "1S Hr", "10 [ac:01 ac:02]", "1.0; null entry; order"},
        {request(0x12, "x:01", {"y:02"}), "1S Hr", "12 [x:01 y:02]", "types looked at"},
        {request(0x10, "", {"- ac:02"}), "1S Hr", "10 D1020161 6302", "one record is not first and last"},
        {request(0x10, "", {""}), "nothing to nest"},
        {request(0x10, "", null), "nothing to nest but a null entry"},
        {request(0x12, "cr:1234", broken()), "the last record cannot be encoded"},
        {request_of_two([](nfc_ndef_record &r) { r.payload_length = r.record_type.name_length = 0; }), "1S Hr",
         "10 910000 510000", "a pointer without a length, which a copy would drop"},
        {request_of_two([](nfc_ndef_record &r) { r.id = owned(bytes("69")); }), "1S Hr", "10 [ac:01 ac:01]",
         "an id without a length"},
        {request_of_two([](nfc_ndef_record &r) { r.payload_length = 0x40000000; }), "2^31 bytes in all"},
        {request(0x11, "cr:1234", one), "version 1.1"},
        {request(0x10, "cr:1234", one), "1.0 with a random number"},
        {request(0x12, "", one), "1.2 without one"},
        {create(cr, 1, nullptr, 0x12), "count without array"},
        {create(cr, 0, null.data(), 0x12), "array without count"},
    };
    expect_built(rows);
}

TEST(HandoverRequest, Reads)
{
    const Payload rows[] = {
        {"12 [ac:02 err:03 cr:1234 ac:01]", "1 cr=cr:1234 ac=2 list=[ac:02 ac:01] version=12", "order, other types"},
        {"12 [cr:1234]", "1 cr=cr:1234 ac=0 version=12", "no carrier"},
        {"12 [ac:01]", "2 version=12", "no random number"},
        {"12 [CR:1234 ac:01]", "2 version=12", "type compared without case"},
        {"12 [cr:1234 ac:01 cr:1234]", "2 version=12", "two random numbers"},
        {"10 [cr:1234 cr:5678 ac:01]", "1 cr=null ac=1 list=[ac:01] version=10", "1.0 looks for none"},
        {"13 [cr:1234 ac:01]", "1 cr=null ac=1 list=[ac:01] version=13", "1.3 read like 1.2"},
        {"1F [x:01]", "1 cr=null ac=0 version=1F", "1.15 not read like 1.0; no carrier"},
        {"20 [ac:01]", "-1 version=20", "version 2.0"},
        {"02 [cr:1234 ac:01]", "-1 version=2", "version 0.2"},
    };
    expect_read(read_request, rows);
    EXPECT_EQ(read_request(nullptr), "-1");
    const Record built = request(0x12, "cr:1234", {"ac:01013000 ac:0100"});
    expect_checked(rtdlib_handover_request_record_extract, built, request_outputs);
    expect_cut(read_request, payload_of(built.get()), [](size_t length) { return length ? "-1 version=12" : "-1"; });
}

TEST(HandoverSelect, Builds)
{
    const auto create = rtdlib_handover_select_record_create;
    const Array one("ac:01"), null("-");
    const nfc_ndef_record *const err = one.records[0].get();
    const Built rows[] = {
        {select(0x12, {"ac:01 - ac:02"}, "err:0102"), "1S Hs", "12 [ac:01 ac:02 err:0102]", "error not last"},
        {select(0x12, one, ""), "1S Hs", "12 D10201616301", "1.2 wants an error"},
        {select(0x12, {""}, "err:0102"), "1S Hs", "12 [err:0102]", "error alone"},
        {select(0x10, {""}, ""), "nothing to nest"},
        {select(0x10, broken(), ""), "the last record cannot be encoded"},
        {select(0x10, one, "err:0102"), "1.0 with an error"},
        {select(0x11, one, ""), "version 1.1"},
        {select(0x22, one, "err:0102"), "version 2.2"},
        {create(1, nullptr, err, 0x12), "count without array"},
        {create(0, null.data(), err, 0x12), "array without count"},
    };
    expect_built(rows);
}

TEST(HandoverSelect, Reads)
{
    const Payload rows[] = {
        {"12 [ac:02 cr:1234 ac:01]", "1 ac=2 list=[ac:02 ac:01] version=12", "no error: output written"},
        {"12 [err:0102 ac:01]", "1 ac=1 list=[ac:01] err=err:0102 version=12", "one error, in front"},
        {"12 [ac:01 err:0102 err:0102]", "2 ac=1 list=[ac:01] err=null version=12", "two errors: carriers lost"},
        {"10 [ac:01 err:0102 err:0102]", "1 ac=1 list=[ac:01] version=10", "1.0 looks for none"},
        {"13 [ac:01 err:0102]", "1 ac=1 list=[ac:01] version=13", "1.3 read like 1.2"},
        {"1F [x:]", "1 ac=0 version=1F", "1.15 not read like 1.0; no carrier"},
        {"20 [ac:01]", "-1 version=20", "version 2.0"},
    };
    expect_read(read_select, rows);
    EXPECT_EQ(read_select(nullptr), "-1");
    const auto bare = [](uint8_t version, uint8_t mb, uint8_t me) {
        Record record = well_known("Hs", {version});
        record->mb = mb;
        record->me = me;
        return read_select(std::move(record));
    };
    EXPECT_EQ(bare(0x10, 1, 1), "1 ac=0 version=10");
    EXPECT_EQ(bare(0x12, 0, 1), "-1 version=12");
    EXPECT_EQ(bare(0x12, 1, 0), "-1 version=12");
    EXPECT_EQ(bare(0x20, 1, 1), "-1 version=20");

    const Record built = select(0x12, {"ac:01013000"}, "err:0102");
    expect_checked(rtdlib_handover_select_record_extract, built, select_outputs);
    expect_cut(read_select, payload_of(built.get()), [](size_t length) { return length ? "-1 version=12" : "-1"; });
}

TEST(CollisionResolution, BuildsAndReads)
{
    const Built built[] = {{Record(rtdlib_collision_resolution_record_create(0x1234)), "1S cr", "1234", "byte order"}};
    expect_built(built);
    const Payload rows[] = {
        {"FFFE", "1 number=FFFE", "byte order, sign"},
        {"12", "-1", "one byte"},
        {"123456", "-1", "three bytes"},
    };
    expect_read(read_collision, rows);
    expect_checked(rtdlib_collision_resolution_record_extract, built[0].record, collision_outputs);
    EXPECT_EQ(read_collision(nullptr), "-1");
}

TEST(HandoverSelectError, BuildsAndReads)
{
    const Built built[] = {
        {Record(rtdlib_handover_select_error_record_create(0x101, 0x2FF)), "1S err", "01FF", "low bytes"}};
    expect_built(built);
    const Payload rows[] = {
        {"01FF", "1 reason=1 data=FF", "order"},
        {"", "2", "no payload"},
        {"01", "2", "one byte"},
        {"010203", "2", "three bytes"},
    };
    expect_read(read_error, rows);
    expect_checked(rtdlib_handover_select_error_record_extract, built[0].record, error_outputs);
    EXPECT_EQ(read_error(nullptr), "-1");
}
