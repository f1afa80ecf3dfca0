#include "outcome.h"

using namespace test;

namespace {

std::string read_carrier(Record record)
{
    return outcome(rtdlib_handover_carrier_record_extract, std::move(record),
                   {{"ctf"}, {"length"}, {"type", 1}, {"data_length"}, {"data", 3}});
}

std::string read_alternative(Record record)
{
    return outcome(rtdlib_alternative_carrier_record_extract, std::move(record),
                   {{"cps"}, {"length"}, {"ref", 1}, {"aux"}, {"lengths", 3}, {"list", 3, false, 4}});
}

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
    const Bytes a = text("a"), longest = filled(255, 'x');
    const uint8_t *const some = a.data();
    const Built rows[] = {
        {carrier(0x1FA, text("ab"), bytes("010203")), "1BES Hc", "FA026162010203", "low byte of the format, masked"},
        {carrier(2, a, {}), "1BES Hc", "020161", "no data"},
        {carrier(2, longest, longest), "1BES Hc", "02FF 78*510", "sr made to depend on the length"},
        {carrier(2, {}, a), "null", "", "type missing with length 0"},
        {Record(rtdlib_handover_carrier_record_create(2, 3, nullptr, 0, nullptr)), "null", "", "type missing"},
        {Record(rtdlib_handover_carrier_record_create(3, 0, some, 1, some)), "1BES Hc", "030061", "empty type"},
        {Record(rtdlib_handover_carrier_record_create(3, 1, some, 3, nullptr)), "1BES Hc", "030161000000", "zeros"},
        {Record(rtdlib_handover_carrier_record_create(3, 1, some, 0, some)), "1BES Hc", "030161", "data of length 0"},
    };
    expect_built(rows);
}

TEST(HandoverCarrier, Reads)
{
    const Payload rows[] = {
        {"FA026162", "1 ctf=2 length=2 type=6162", "no data: outputs written; reserved bits"},
        {"0201610B0C", "1 ctf=2 length=1 type=61 data_length=2 data=0B0C", "data"},
        {"0700", "1 ctf=7 length=0 type=", "an empty type is a block too"},
        {"01000A", "1 ctf=1 length=0 type= data_length=1 data=0A", "empty type with data"},
        {"", "-1", "no payload"},
        {"02", "-1", "no type length"},
        {"0201", "-1", "type missing"},
        {"02036162", "-1", "type one byte past the end"},
        {"02FF61", "-1", "data length wraps in eight bits"},
        {"0200 78*255", "1 ctf=2 length=0 type= data_length=FF data=78*255", "most data"},
        {"0200 78*256", "-1", "256 bytes of data count as none"},
        {"020178 78*257", "-1", "257 bytes of data count as 1"},
    };
    expect_read(read_carrier, rows);
    EXPECT_EQ(read_carrier(nullptr), "-1");
    EXPECT_EQ(read_carrier(carrier(2, text("a"), bytes("00"))), "1 ctf=2 length=1 type=61 data_length=1 data=00");
    expect_cut(read_carrier, bytes("020361626301"),
               [](size_t length) { return length < 5 ? "-1" : "1 ctf=2 length=3 type=616263"; });
}

TEST(AlternativeCarrier, Builds)
{
    const Bytes id = text("0"), length = bytes("01");
    const uint8_t *const none[] = {nullptr}, *const one[] = {id.data()}, *const i = id.data(), *const l = length.data();
    const auto raw = [](uint8_t n, const uint8_t *reference, uint8_t m, const uint8_t *lengths,
                        const uint8_t *const *aux) {
        return Record(rtdlib_alternative_carrier_record_create(1, n, reference, m, lengths, aux));
    };
    const Built rows[] = {
        {alternative(7, {}), "1BES ac", "070000", "byte 0 masked"},
        {alternative(0x101, text("0")), "1BES ac", "01013000", "more than the low byte of the power state"},
        {alternative(1, text("ab"), {id, {}, text("de")}), "1BES ac", "01026162 03 0130 00 026465", "references"},
        {alternative(1, text(" /~")), "1BES ac", "0103202F7E00", "characters checked"},
        {alternative(1, filled(252, 'x')), "1BES ac", "01FC 78*252 00", "255 bytes; sr depends on the length"},
        {alternative(1, filled(253, 'x')), "null", "", "256 bytes count as none"},
        {alternative(1, {}, {filled(128, 'x'), filled(124, 'x')}), "null", "", "257 bytes count as 1"},
        {alternative(1, filled(255, 'x'), std::vector<Bytes>(255, filled(255, 'x'))), "null", "", "largest arguments"},
        {raw(1, nullptr, 0, nullptr, nullptr), "null", "", "reference missing"},
        {raw(0, nullptr, 1, nullptr, one), "null", "", "lengths missing"},
        {raw(0, nullptr, 1, l, nullptr), "null", "", "array missing"},
        {raw(0, nullptr, 1, l, none), "null", "", "null entry with a length"},
        {raw(0, i, 0, l, one), "1BES ac", "010000", "pointers without lengths read"},
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
        {"", "-1", "no payload"},
        {"01", "-1", "length missing"},
        {"0100", "-1", "count missing behind no reference"},
        {"010130", "-1", "count missing"},
        {"01FF3000", "-1", "reference past the end"},
        {"010001", "-1", "auxiliary length missing"},
        {"010002 0161", "-1", "second auxiliary length missing"},
        {"010002 0161 0262", "-1", "second auxiliary reference one byte past the end"},
        {"01012F01 0261", "-1", "characters checked before the structure"},
        {"010361206200", "-1 cps=1 length=3 ref=null", "refused character: reference kept"},
        {"02017E01 0161", "-1 cps=2 length=1 ref=null", "refused character: auxiliary references written"},
    };
    expect_read(read_alternative, rows);
    EXPECT_EQ(read_alternative(nullptr), "-1");
    EXPECT_EQ(read_alternative(alternative(1, text("id-1"), {text("a"), {}, text("bc")})),
              "1 cps=1 length=4 ref=69642D31 aux=3 lengths=010002 list=[61 null 6263]");
    expect_cut(read_alternative, bytes("0102616202016302 6465"), [](size_t) { return "-1"; });
}

TEST(AlternativeCarrier, KnowsTheCharactersOfAReference)
{
    const std::string accepted = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789:-._";
    const auto accepts = [](const Bytes &reference) { return read_alternative(alternative(1, reference))[0] == '1'; };
    for (unsigned c = 0; c <= 0xFF; ++c) {
        const auto byte = static_cast<uint8_t>(c);
        const bool good = accepted.find(static_cast<char>(c)) != accepted.npos;
        EXPECT_EQ(accepts({byte, 'a'}), good) << c << " in front";
        EXPECT_EQ(accepts({'a', byte, 'a'}), good || c == '~') << c << " amid";
        EXPECT_EQ(accepts({'a', byte}), good || c == '~') << c << " at the end";
    }
}
