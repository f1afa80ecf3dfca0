#include "tables.h"

using namespace test;

namespace {

Record control(std::string_view target, uint8_t flag, uint8_t code, const Record &action, std::string_view data = "",
               const Array &nested = {""})
{
    return Record(rtdlib_generic_control_record_create(0x80, record_of(target).get(), flag, code, action.get(),
                                                       record_of(data).get(), nested.count(), nested.data()));
}

} // namespace

TEST(GenericControl, Builds)
{
    const auto create = rtdlib_generic_control_record_create;
    const Record broken = unencodable(), target = record_of("t:01"), flagged = record_of("x:0304"),
                 inconsistent = record_of("x:");
    flagged->mb = flagged->me = 1;
    inconsistent->payload = owned(bytes("00")); // a part that is nested as it is, unlike copies, which drop the pointer
    nfc_ndef_record *const none[] = {nullptr};
    const nfc_ndef_record *const t = target.get();
    std::vector<Record> many(254);
    for (Record &each : many)
        each = record_of("Gc:01");
    const Built rows[] = {
        {control("", 1, 2, nullptr), "target missing"},
        {control("t:0102", 1, 2, nullptr), "1BES Gc", "80 910102740102 510102610102", "action code"},
        {control("t:0102", 5, 0xFF, record_of("x:01")), "1BES Gc", "80 [t:0102 a:01FF]", "flag 5 written as it is"},
        {control("t:0102", 0, 9, nullptr), "1BES Gc", "80 [t:0102 a:00]", "no action"},
        {control("t:0102", 0, 9, record_of("x:0304")), "1BES Gc", "80 [t:0102 a:00110102780304]", "action record"},
        {control("t:0102", 0, 9, record(0, "", {})), "1BES Gc", "80 [t:0102 a:00100000]", "smallest action record"},
        {control("t:0102", 0, 9, flagged), "1BES Gc", "80 [t:0102 a:00D10102780304]", "its own flags not written"},
        {control("t:0102", 0, 9, broken), "1BES Gc", "80 [t:0102 a:00]", "unencodable action counts as none"},
        {control("t:0102", 0, 9, inconsistent), "1BES Gc", "80 [t:0102 a:00]", "inconsistent action copied first"},
        {control("t:01", 1, 2, nullptr, "d:05", {"Gc:0A Gc:0B Gc:0C"}), "1BES Gc",
         "80 [t:01 a:0102 d:05 Gc:0C Gc:0B Gc:0A]", "data first; nested records from the last to the first"},
        {control("x:01", 1, 2, nullptr, "y:02", {"z:03"}), "1BES Gc", "80 [x:01 a:0102 y:02 z:03]", "types looked at"},
        {control("t:07*300", 1, 2, nullptr), "1BES Gc", "80 [t:07*300 a:0102]", "sr made to depend on the length"},
        {create(0x80, t, 1, 2, nullptr, broken.get(), 0, nullptr), "a part that cannot be encoded"},
        {create(0x80, t, 1, 2, nullptr, nullptr, 1, none), "null entry"},
        {create(0x80, t, 1, 2, nullptr, nullptr, 2, nullptr), "count without array"},
        {Record(create(0x80, t, 1, 2, nullptr, nullptr, 0, none)), "1BES Gc", "80 [t:01 a:0102]",
         "array without count"},
        {control("t:01", 1, 2, nullptr, "", {std::move(many)}), "256 records in a message"},
    };
    expect_built(rows);
    EXPECT_EQ(hex(encode(control("t:0102", 1, 2, nullptr))), "D1020D476380910102740102510102610102") << "alone";
}

TEST(GenericControl, Reads)
{
    const Payload rows[] = {
        {"FF [t:0102 a:0102]", "1 config=FF target=t:0102 flag=1 code=2 nested=0", "target and action"},
        {"07 [t:01 T:02 x:03]", "1 config=7 target=t:01 nested=0", "other records not dropped"},
        {"07 [d:05 Gc:04 a:80FF03 Gc:06 t:01]",
         "1 config=7 target=t:01 flag=80 code=FF data=d:05 nested=2 list=[Gc:04 Gc:06]",
         "any order; flag other than 1"},
        {"07 [Gc:04 t:01]", "-1", "first nested record Gc without MB and ME on each"},
        {"07 D102014763 0A D101017401", "1 config=7 target=t:01 nested=1 list=[Gc:0A]", "first Gc, MB and ME on each"},
        {"07 [t: d:]", "1 config=7 target=t: data=d: nested=0", "parts without payload"},
        {"07 [d:05 a:0102]", "-1 config=7", "no target"},
        {"07 [t:01 t:01]", "-1 config=7", "two targets"},
        {"07 [t:01 a:0102 a:0102]", "-1 config=7", "two actions"},
        {"07 [t:01 a:00]", "1 config=7 target=t:01 flag=0 nested=0", "no action record behind the flag"},
        {"07 [t:01 a:00D00000]", "1 config=7 target=t:01 flag=0 action=: nested=0", "smallest record"},
        {"07 [t:01 a:00D1010554]", "1 config=7 target=t:01 flag=0 nested=0", "record that does not decode"},
        {"07 [t:01 a:001101015441FF]", "1 config=7 target=t:01 flag=0 action=T:41 nested=0", "bytes behind the record"},
        {"07 [t:01 a: d:02]", "-1 config=7", "empty action: nothing of it written"},
        {"07 [t:01 a:01 d:02]", "-1 config=7", "flag without its code: nothing of it written"},
        {"07 [t:01 a:0102 d:02 d:02]", "-1 config=7 flag=1 code=2", "two data records"},
        {"07 [t:01 a:001101015441 d: d: Gc:01]", "-1 config=7 flag=0", "two data records: action record freed"},
        {"07 D101", "-1", "no message"},
    };
    expect_read(read_control, rows);
    EXPECT_EQ(read_control(nullptr), "-1");
    const Record built = control("t:01", 0, 0, record_of("x:0304"), "d:05", {"Gc:0A Gc:0B"});
    expect_cut(read_control, payload_of(built.get()), [](size_t) { return "-1"; });
}
