#include "ndef.h"

using namespace test;

namespace {

constexpr uint8_t untouched = 0xEE;

// Checks an array of the message's own objects against expected positions, and frees it.
template <class Entry, class Of>
void expect_entries(const Entry **array, uint8_t count, const Message &m, const std::vector<uint8_t> &positions, Of of)
{
    EXPECT_EQ(count, positions.size());
    EXPECT_EQ(array != nullptr, !positions.empty());
    for (size_t i = 0; array && i < positions.size() && i < count; ++i)
        EXPECT_EQ(array[i], of(at(m, positions[i])));
    os_block_dealloc(array);
}

TEST(Query, GivesTheMessagesOwnRecordsInOrder)
{
    const Message m = message({well_known("T", text("0")).get(), record(2, "image/png", text("1")).get(),
                               well_known("T", text("2")).get(), record(5, "", text("3")).get()});
    const auto itself = [](const nfc_ndef_record *r) { return r; };
    const auto its_type = [](const nfc_ndef_record *r) { return &r->record_type; };
    uint8_t count = untouched;
    const nfc_ndef_record **const all = nfc_ndef_msg_get_records(m.get(), &count);
    expect_entries(all, count, m, {0, 1, 2, 3}, itself);
    const nfc_ndef_record_type **const types = nfc_ndef_msg_get_record_types(m.get(), &count);
    expect_entries(types, count, m, {0, 1, 2, 3}, its_type);

    struct Case {
        RecordType key;
        std::vector<uint8_t> found;
    };
    Case cases[] = {
        {type(1, "T"), {0, 2}}, {type(1, "Sp"), {}}, {type(2, "imag?*"), {1}}, {type(5, ""), {3}}, {nullptr, {}}};
    for (const Case &c : cases) {
        count = untouched;
        const nfc_ndef_record **const found = nfc_ndef_msg_get_records_by_type(m.get(), c.key.get(), &count);
        expect_entries(found, count, m, c.found, itself);
        EXPECT_EQ(nfc_ndef_record_index_by_type_from_msg(m.get(), c.key.get()), c.found.empty() ? -1 : c.found.front());
    }
    ASSERT_EQ(nfc_ndef_msg_remove_record(m.get(), 0), 1U);
    EXPECT_EQ(nfc_ndef_record_index_by_type_from_msg(m.get(), cases[0].key.get()), 1);
}

TEST(Query, GivesNothingOfNothing)
{
    const RecordType key = type(1, "T");
    const Message empty = message({}), one = message({well_known("T", text("a")).get()});
    for (const nfc_ndef_msg *const m :
         {static_cast<const nfc_ndef_msg *>(empty.get()), static_cast<const nfc_ndef_msg *>(nullptr)}) {
        uint8_t counts[3] = {untouched, untouched, untouched};
        EXPECT_EQ(nfc_ndef_msg_get_records(m, &counts[0]), nullptr);
        EXPECT_EQ(nfc_ndef_msg_get_record_types(m, &counts[1]), nullptr);
        EXPECT_EQ(nfc_ndef_msg_get_records_by_type(m, key.get(), &counts[2]), nullptr);
        EXPECT_EQ(counts[0] + counts[1] + counts[2], 0);
        EXPECT_EQ(nfc_ndef_record_index_by_type_from_msg(m, key.get()), -1);
    }
    EXPECT_EQ(nfc_ndef_msg_get_records(one.get(), nullptr), nullptr);
    EXPECT_EQ(nfc_ndef_msg_get_record_types(one.get(), nullptr), nullptr);
    EXPECT_EQ(nfc_ndef_msg_get_records_by_type(one.get(), key.get(), nullptr), nullptr);
}

} // namespace
