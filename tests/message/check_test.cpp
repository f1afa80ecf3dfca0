#include "ndef.h"

#include <array>
#include <fstream>
#include <nlohmann/json.hpp>
#include <random>
#include <set>

using namespace test;

namespace {

struct Verdict {
    uint32_t reason, record, offset;
    bool operator==(const Verdict &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Verdict &v)
{
    return out << nfc_ndef_msg_check_text(v.reason) << ", record " << v.record << ", byte " << v.offset;
}

Verdict check(const Bytes &data)
{
    const Exact input(data);
    nfc_ndef_msg_report report{99, 99, 99};
    const uint8_t valid = nfc_ndef_msg_check(input.data(), 0, input.size(), &report);
    EXPECT_EQ(valid, report.reason == NFC_NDEF_MSG_VALID);
    return {report.reason, report.record, report.offset};
}

const std::vector<Bytes> &vectors()
{
    static const std::vector<Bytes> all = [] {
        std::vector<Bytes> read;
        for (const auto &vector : nlohmann::json::parse(std::ifstream(TEST_DATA "/vectors.json")))
            read.push_back(bytes(vector.at("hex").get<std::string>()));
        return read;
    }();
    return all;
}

struct Case {
    const char *wire;
    Verdict expected;
};

TEST(Check, GivesEachReasonWithRecordAndOffset)
{
    for (const Case &c : std::initializer_list<Case>{
             {"D1010354616263", {NFC_NDEF_MSG_VALID, 1, 7}},
             {"9101015461 16000162 5101015563", {NFC_NDEF_MSG_VALID, 3, 14}},
             {"B101025461 62 3600026364 5600026566", {NFC_NDEF_MSG_VALID, 1, 16}}, // chunks joined
             {"D102014763 61 D1010154 62", {NFC_NDEF_MSG_VALID, 2, 11}},
             {"", {NFC_NDEF_MSG_BAD_ARGUMENTS, 0, 0}},
             {"9101015461 51", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 1, 5}},
             {"9101015461 41010000", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 1, 5}},
             {"9101015461 590100", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 1, 5}},
             {"9101015461 51020155", {NFC_NDEF_MSG_TYPE_PAST_END, 1, 8}},
             {"9101015461 5901010255 69", {NFC_NDEF_MSG_ID_PAST_END, 1, 10}},
             {"9101015461 590102015569 61", {NFC_NDEF_MSG_PAYLOAD_PAST_END, 1, 11}},
             {"C101FFFFFFFF54", {NFC_NDEF_MSG_PAYLOAD_PAST_END, 0, 7}},
             {"9101015461 50000161", {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 1, 5}},
             {"1001", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 0, 0}},
             {"9101015461 55010055", {NFC_NDEF_MSG_TYPE_NOT_ALLOWED, 1, 5}},
             {"D701010055", {NFC_NDEF_MSG_TYPE_NOT_ALLOWED, 0, 0}},
             {"D101015461 FE", {NFC_NDEF_MSG_BYTES_LEFT_OVER, 1, 5}},
             {"F50000 FE", {NFC_NDEF_MSG_CHUNK_WITH_ME, 0, 0}}, // before what is left over
             {"B101015461 5E00000169 FE", {NFC_NDEF_MSG_CHUNK_WITH_ID, 1, 5}},
             {"D101015461 510101", {NFC_NDEF_MSG_BYTES_LEFT_OVER, 1, 5}},
             {"1101015461 51010255", {NFC_NDEF_MSG_MB_MISSING, 0, 0}}, // the first that broke
             {"D102004763 51010055", {NFC_NDEF_MSG_MB_MISSING, 1, 5}},
             {"9101015461 91010055 51010055", {NFC_NDEF_MSG_MB_REPEATED, 1, 5}},
             {"9101015461 11010055", {NFC_NDEF_MSG_ME_MISSING, 1, 5}},
             {"9102004763 51010055", {NFC_NDEF_MSG_ME_MISSING, 0, 0}},
             {"D102004763 91010055", {NFC_NDEF_MSG_ME_MISSING, 1, 5}},
             {"D102004763 FE", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 1, 5}}, // where another message may follow
             {"D101015461 51010055", {NFC_NDEF_MSG_ME_EARLY, 0, 0}},
             {"9101015461 51010055 51010055", {NFC_NDEF_MSG_ME_EARLY, 1, 5}},
             {"9101015461 71010055", {NFC_NDEF_MSG_CHUNK_WITH_ME, 1, 5}},
             {"B101015461 760000", {NFC_NDEF_MSG_CHUNK_WITH_ME, 1, 5}},
             {"B6000161 560000", {NFC_NDEF_MSG_CHUNK_FIRST_UNCHANGED, 0, 0}},
             {"B101015461 3E000100 61 560000", {NFC_NDEF_MSG_CHUNK_WITH_ID, 1, 5}},
             {"B101015461 5E00000169", {NFC_NDEF_MSG_CHUNK_WITH_ID, 1, 5}},
             {"B101015461 36010055 560000", {NFC_NDEF_MSG_CHUNK_WITH_TYPE, 1, 5}},
             {"B101015461 56010055", {NFC_NDEF_MSG_CHUNK_WITH_TYPE, 1, 5}},
             {"B101015461 350000 560000", {NFC_NDEF_MSG_CHUNK_NOT_UNCHANGED, 1, 5}},
             {"B101015461 500000", {NFC_NDEF_MSG_CHUNK_NOT_UNCHANGED, 1, 5}},
             {"B101015461 160000 560000", {NFC_NDEF_MSG_UNCHANGED_OUTSIDE_CHUNKS, 2, 8}},
             {"960000 31010055 560000", {NFC_NDEF_MSG_UNCHANGED_OUTSIDE_CHUNKS, 0, 0}}, // the chunk makes it wrong
             {"B101015461 36000161", {NFC_NDEF_MSG_CHUNK_UNFINISHED, 1, 5}},
         })
        EXPECT_EQ(check(bytes(c.wire)), c.expected) << c.wire;

    Bytes too_many = bytes("910000");
    for (int i = 0; i < 254; ++i)
        too_many = too_many + (i < 253 ? bytes("110000") : bytes("510000"));
    EXPECT_EQ(check(too_many), (Verdict{NFC_NDEF_MSG_TOO_MANY_RECORDS, 254, 762}));

    const uint8_t data[] = {0, 0xD0, 0, 0};
    nfc_ndef_msg_report report;
    EXPECT_EQ(nfc_ndef_msg_check(data, 1, 3, &report), 1);
    EXPECT_EQ(report.offset, 3U);
    EXPECT_EQ(nfc_ndef_msg_check(data, 1, 3, nullptr), 1);
    EXPECT_EQ(nfc_ndef_msg_check(data, 3, 3, nullptr), 0);
    EXPECT_EQ(nfc_ndef_msg_check(data, 3, 3, &report), 0);
    EXPECT_EQ(report.reason, uint32_t{NFC_NDEF_MSG_BAD_ARGUMENTS});
    const Bytes behind = bytes("00 00 00 910100 54 11010055");
    EXPECT_EQ(nfc_ndef_msg_check(behind.data(), 3, 8, &report), 0);
    EXPECT_EQ(report.offset, 4U) << "counted from the message, not from the data";
    EXPECT_EQ(nfc_ndef_msg_check(nullptr, 0, 3, &report), 0);
    EXPECT_EQ(report.reason, uint32_t{NFC_NDEF_MSG_BAD_ARGUMENTS});
}

TEST(Check, EachReasonHasATextOfItsOwn)
{
    std::set<std::string> texts;
    for (uint32_t reason = 0; reason <= NFC_NDEF_MSG_OUT_OF_MEMORY + 1; ++reason) {
        const std::string text = nfc_ndef_msg_check_text(reason);
        EXPECT_TRUE(texts.insert(text).second && !text.empty() && !text.ends_with('.')) << text;
    }
    EXPECT_STREQ(nfc_ndef_msg_check_text(NFC_NDEF_MSG_OUT_OF_MEMORY + 1), "unknown reason");
    EXPECT_STREQ(nfc_ndef_msg_check_text(UINT32_MAX), "unknown reason");
}

TEST(Check, GivesTheTrueReasonOfEveryRefusedVector)
{
    const Case refused[] = {
        {"D0", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 0, 0}},
        {"D000", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 0, 0}},
        {"500000", {NFC_NDEF_MSG_MB_MISSING, 0, 0}},
        {"F50000", {NFC_NDEF_MSG_CHUNK_WITH_ME, 0, 0}},
        {"900000100000", {NFC_NDEF_MSG_ME_MISSING, 1, 3}},
        {"D801030100000000", {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 0, 0}},
        {"D8010301000000000000", {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 0, 0}},
        {"500000900000", {NFC_NDEF_MSG_MB_MISSING, 0, 0}},
        {"150000160000560000", {NFC_NDEF_MSG_MB_MISSING, 0, 0}},
        {"950000160000160000", {NFC_NDEF_MSG_ME_MISSING, 2, 6}},
        {"950000960000560000", {NFC_NDEF_MSG_MB_REPEATED, 1, 3}},
        {"C000", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 0, 0}},
        {"D0000100", {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 0, 0}},
        {"D0010000", {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 0, 0}},
        {"D9010101", {NFC_NDEF_MSG_TYPE_PAST_END, 0, 4}},
        {"D901010154", {NFC_NDEF_MSG_ID_PAST_END, 0, 5}},
        {"C00000000001", {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 0, 0}},
        {"C0000000000000", {NFC_NDEF_MSG_BYTES_LEFT_OVER, 1, 6}},
        {"19", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 0, 0}},
        {"190101", {NFC_NDEF_MSG_HEADER_CUT_SHORT, 0, 0}},
        {"18000001", {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 0, 0}},
        {"18010000", {NFC_NDEF_MSG_EMPTY_WITH_LENGTHS, 0, 0}},
        {"19000000", {NFC_NDEF_MSG_MB_MISSING, 0, 0}},
        {"19010101", {NFC_NDEF_MSG_TYPE_PAST_END, 0, 4}},
        {"CB090000010005696D6167652F706E676D795F6964000000000000000000", {NFC_NDEF_MSG_PAYLOAD_PAST_END, 0, 21}},
    };
    std::map<std::string, Verdict> expected;
    for (const Case &c : refused)
        expected.emplace(c.wire, c.expected);
    size_t seen = 0;
    for (const Bytes &vector : vectors()) {
        const auto found = expected.find(hex(vector));
        seen += found != expected.end();
        const Verdict verdict = check(vector);
        if (found != expected.end()) {
            EXPECT_EQ(verdict, found->second) << hex(vector);
        } else {
            EXPECT_EQ(verdict.reason, uint32_t{NFC_NDEF_MSG_VALID}) << hex(vector) << " " << verdict;
        }
    }
    EXPECT_EQ(seen, std::size(refused));
}

// The rules once more, applied one after the other to all records of a message, as NFC Forum NDEF 1.0 words them and
// not as one walk; the records are found by the record decoder.
bool is_message(const Bytes &data)
{
    const Exact input(data);
    std::vector<Record> records;
    for (uint32_t at = 0; at < input.size(); at += records.back()->parsed_length) {
        records.emplace_back(nfc_ndef_record_create_from_byte_array(input.data(), at, input.size()));
        if (!records.back() || records.size() > 254)
            return false;
    }
    const auto every = [&](auto holds) {
        for (const Record &r : records)
            if (!holds(*r, r == records.front(), r == records.back()))
                return false;
        return true;
    };
    if (records.empty())
        return false;
    if (type_of(records[0].get()) == "Gc"
            ? !every([](auto &r, bool, bool) { return r.mb && r.me; })
            : !every([](auto &r, bool first, bool last) { return r.mb == first && r.me == last; }))
        return false;
    if (every([](auto &r, bool, bool) { return !r.cf; }))
        return true;
    bool inside = false;
    return every([&](auto &r, bool, bool last) {
        const bool continues = std::exchange(inside, r.cf), unchanged = r.record_type.format == NFC_NDEF_TNF_UNCHANGED;
        return continues == unchanged && !(continues && (r.il || r.record_type.name_length)) &&
               !(r.cf && (r.me || last));
    });
}

class Mutations {
public:
    /** A vector or a message of chunks and short records, with some of its bytes spoilt. */
    Bytes next()
    {
        Bytes data = below(3) == 0 ? vectors()[below(vectors().size())] : made();
        for (size_t spoilt = below(3); spoilt > 0 && !data.empty(); --spoilt)
            spoil(data);
        return data;
    }

private:
    size_t below(size_t limit) { return random_() % limit; }

    Bytes made()
    {
        Bytes data;
        bool inside = false;
        const size_t count = 1 + below(5);
        const bool generic_control = below(8) == 0;
        for (size_t i = 0; i < count; ++i) {
            const bool chunk = i + 1 < count && !generic_control && below(2), named = !inside && below(4);
            const int flags = (i == 0 || generic_control ? 0x80 : 0) | (i + 1 == count || generic_control ? 0x40 : 0) |
                              (chunk ? 0x20 : 0) | 0x10 | (!inside && below(4) == 0 ? 0x08 : 0);
            const size_t format = inside ? 6 : named ? 1 + below(4) : 5;
            const Bytes type_name = !named            ? Bytes()
                                    : generic_control ? text("Gc")
                                                      : text("T"),
                        payload = filled(below(3), 'p');
            data = data +
                   Bytes{static_cast<uint8_t>(static_cast<size_t>(flags) | format),
                         static_cast<uint8_t>(type_name.size()), static_cast<uint8_t>(payload.size())} +
                   (flags & 8 ? bytes("01") : Bytes()) + type_name + (flags & 8 ? text("i") : Bytes()) + payload;
            inside = chunk;
        }
        return data;
    }

    void spoil(Bytes &data)
    {
        const size_t at = below(data.size());
        const auto position = data.begin() + static_cast<std::ptrdiff_t>(at);
        switch (below(5)) {
        case 0:
            data.resize(at);
            break;
        case 1:
            data.insert(position, static_cast<uint8_t>(below(256)));
            break;
        case 2:
            data.erase(position);
            break;
        case 3:
            data[at] = static_cast<uint8_t>(below(8));
            break;
        default:
            data[at] = static_cast<uint8_t>(data[at] ^ 1U << below(8));
        }
    }

    std::mt19937 random_{20};
};

TEST(Check, AgreesWithTheParserAndTheRules)
{
    std::vector<Bytes> inputs = vectors();
    std::array<size_t, NFC_NDEF_MSG_OUT_OF_MEMORY + 1> reached{};
    Mutations mutations;
    for (int i = 0; i < 300'000 && !HasFailure(); ++i) {
        const Bytes data = static_cast<size_t>(i) < inputs.size() ? inputs[static_cast<size_t>(i)] : mutations.next();
        const Verdict verdict = check(data);
        const Message parsed = parse(data);
        const bool valid = verdict.reason == NFC_NDEF_MSG_VALID;
        EXPECT_EQ(parsed != nullptr, valid) << hex(data) << " " << verdict;
        EXPECT_EQ(is_message(data), valid) << hex(data) << " " << verdict;
        EXPECT_LE(verdict.offset, data.size()) << hex(data);
        if (valid) {
            EXPECT_EQ(nfc_ndef_msg_get_number_of_records(parsed.get()), verdict.record) << hex(data);
        }
        ASSERT_LT(verdict.reason, reached.size());
        ++reached[verdict.reason];
    }
    for (uint32_t reason = 0; reason < reached.size(); ++reason)
        EXPECT_EQ(reached[reason] > 0, reason != NFC_NDEF_MSG_TOO_MANY_RECORDS && reason != NFC_NDEF_MSG_OUT_OF_MEMORY)
            << nfc_ndef_msg_check_text(reason);
}

} // namespace
