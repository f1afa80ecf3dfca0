#include "tables.h"

using namespace test;

namespace {

Record carrier(uint32_t ctf, const Bytes &type, const Bytes &data)
{
    return Record(rtdlib_handover_carrier_record_create(ctf, static_cast<uint8_t>(type.size()), ptr(type),
                                                        static_cast<uint8_t>(data.size()), ptr(data)));
}

Record alternative(uint32_t cps, const Bytes &reference, const std::vector<Bytes> &aux = {})
{
    Bytes lengths;
    std::vector<const uint8_t *> pointers;
    for (const Bytes &each : aux) {
        lengths.push_back(static_cast<uint8_t>(each.size()));
        pointers.push_back(ptr(each));
    }
    return Record(rtdlib_alternative_carrier_record_create(cps, static_cast<uint8_t>(reference.size()), ptr(reference),
                                                           static_cast<uint8_t>(aux.size()), ptr(lengths),
                                                           pointers.empty() ? nullptr : pointers.data()));
}

} // namespace

TEST(HandoverCarrier, Builds)
{
    const auto create = rtdlib_handover_carrier_record_create;
    const Bytes a = text("a"), longest = filled(255, 'x');
    const uint8_t *const some = a.data();
    const Built rows[] = {
        {carrier(0x1FA, text("ab"), bytes("010203")), "1BES Hc", "FA026162010203", "low byte of the format, masked"},
        {carrier(2, longest, longest), "1BES Hc", "02FF 78*510", "sr made to depend on the length"},
        {carrier(2, {}, a), "type missing with length 0"},
        {create(2, 3, nullptr, 0, nullptr), "type missing"},
        {Record(create(3, 0, some, 1, some)), "1BES Hc", "030061", "empty type"},
        {Record(create(3, 1, some, 3, nullptr)), "1BES Hc", "030161000000", "zeros"},
        {Record(create(3, 1, some, 0, some)), "1BES Hc", "030161", "data of length 0"},
    };
    expect_built(rows);
}

TEST(HandoverCarrier, Reads)
{
    const Payload rows[] = {
        {"FA026162", "1 ctf=2 length=2 type=6162", "no data: outputs written; reserved bits"},
        {"0201610B0C", "1 ctf=2 length=1 type=61 data_length=2 data=0B0C", "data"},
        {"0700", "1 ctf=7 length=0 type=", "an empty type is a block too"},
        {"02036162", "-1", "type one byte past the end"},
        {"02FF61", "-1", "data length wraps in eight bits"},
        {"0200 78*255", "1 ctf=2 length=0 type= data_length=FF data=78*255", "most data"},
        {"0200 78*256", "-1", "256 bytes of data count as none"},
    };
    expect_read(read_carrier, rows);
    EXPECT_EQ(read_carrier(nullptr), "-1");
    expect_cut(read_carrier, bytes("020361626301"),
               [](size_t length) { return length < 5 ? "-1" : "1 ctf=2 length=3 type=616263"; });
}

TEST(AlternativeCarrier, Builds)
{
    const auto create = rtdlib_alternative_carrier_record_create;
    const Bytes id = text("0"), length = bytes("01");
    const uint8_t *const none[] = {nullptr}, *const one[] = {id.data()}, *const i = id.data(), *const l = length.data();
    const Built rows[] = {
        {alternative(7, {}), "1BES ac", "070000", "byte 0 masked"},
        {alternative(0x101, text("0")), "1BES ac", "01013000", "more than the low byte of the power state"},
        {alternative(1, text("ab"), {id, {}, text("de")}), "1BES ac", "01026162 03 0130 00 026465", "references"},
        {alternative(1, text(" /~")), "1BES ac", "0103202F7E00", "characters checked"},
        {alternative(1, filled(252, 'x')), "1BES ac", "01FC 78*252 00", "255 bytes; sr depends on the length"},
        {alternative(1, filled(253, 'x')), "256 bytes count as none"},
        {alternative(1, {}, {filled(128, 'x'), filled(124, 'x')}), "257 bytes count as 1"},
        {alternative(1, filled(255, 'x'), std::vector<Bytes>(255, filled(255, 'x'))), "largest arguments"},
        {create(1, 1, nullptr, 0, nullptr, nullptr), "reference missing"},
        {create(1, 0, nullptr, 1, nullptr, one), "lengths missing"},
        {create(1, 0, nullptr, 1, l, nullptr), "array missing"},
        {create(1, 0, nullptr, 1, l, none), "null entry with a length"},
        {Record(create(1, 0, i, 0, l, one)), "1BES ac", "010000", "pointers without lengths read"},
    };
    expect_built(rows);
}

TEST(AlternativeCarrier, Reads)
{
    const Payload rows[] = {
        {"FD013000", "1 cps=1 length=1 ref=30 aux=0", "reserved bits"},
        {"020000", "1 cps=2 length=0 ref=null aux=0", "no reference"},
        {"030001026162", "1 cps=3 length=0 ref=null aux=1 lengths=02 list=[6162]", "count looked for elsewhere"},
        {"01013003 00 0120 00", "1 cps=1 length=1 ref=30 aux=3 lengths=000100 list=[null 20 null]", "empty references"},
        {"01013001C8 78*200", "1 cps=1 length=1 ref=30 aux=1 lengths=C8 list=[78*200]", "length taken for negative"},
        {"010130010161BB", "1 cps=1 length=1 ref=30 aux=1 lengths=01 list=[61]", "bytes behind the last reference"},
        {"0100", "-1", "count missing behind no reference"},
        {"01FF3000", "-1", "reference past the end"},
        {"010002 0161 0262", "-1", "second auxiliary reference one byte past the end"},
        {"01012F01 0261", "-1", "characters checked before the structure"},
        {"010361206200", "-1 cps=1 length=3 ref=null", "refused character: reference kept"},
        {"02017E01 0161", "-1 cps=2 length=1 ref=null", "refused character: auxiliary references written"},
    };
    expect_read(read_alternative, rows);
    EXPECT_EQ(read_alternative(nullptr), "-1");
    expect_cut(read_alternative, bytes("0102616202016302 6465"), [](size_t) { return "-1"; });
}

TEST(AlternativeCarrier, KnowsTheCharactersOfAReference)
{
    const auto accepts = [](const std::string &reference) {
        return read_alternative(alternative(1, text(reference)))[0] == '1';
    };
    EXPECT_TRUE(accepts("AZaz09:-._~"));
    for (const char *const refused :
         {"a@", "a[", "a`", "a{", "a/", "a;", "a,", "a^", "a}", "a ", "a\x7F", "a\xC1", "~a"})
        EXPECT_FALSE(accepts(refused)) << refused;
    for (const char *const first : {"A", "z", "0", ":", "-", ".", "_"})
        EXPECT_TRUE(accepts(first)) << first;
}
