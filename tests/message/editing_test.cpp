#include "ndef.h"

using namespace test;

namespace {

Record named(char name) { return well_known("T", {static_cast<uint8_t>(name)}); }

Message abc() { return message({named('a').get(), named('b').get(), named('c').get()}); }

TEST(Editing, AppendCopies)
{
    const Message m(nfc_ndef_msg_create());
    {
        const Record a = named('a');
        EXPECT_EQ(nfc_ndef_msg_append_record(m.get(), a.get()), 1U);
        a->payload[0] = 'x';
        EXPECT_EQ(nfc_ndef_msg_append_record(m.get(), a.get()), 1U);
        EXPECT_NE(at(m, 1), a.get());
    }
    EXPECT_EQ(contents(m), "ax");
    EXPECT_EQ(nfc_ndef_msg_append_record(m.get(), nullptr), 255U);
    EXPECT_EQ(nfc_ndef_msg_append_record(nullptr, at(m, 0)), 255U);
    EXPECT_EQ(nfc_ndef_msg_append_record(m.get(), at(m, 0)), 1U); // a record of its own
    EXPECT_EQ(contents(m), "axa");
}

TEST(Editing, InsertAndSetTakeTheRecordOverWhenTheyCan)
{
    using Edit = uint32_t (*)(nfc_ndef_msg *, uint8_t, nfc_ndef_record *);
    struct Case {
        Edit edit;
        bool empty; // else a, b, c
        uint8_t position;
        const char *expected; // null: 255
    };
    for (const Case &c : std::initializer_list<Case>{
             {nfc_ndef_msg_insert_record, false, 0, "dabc"},
             {nfc_ndef_msg_insert_record, false, 2, "abdc"},
             {nfc_ndef_msg_insert_record, false, 3, "abcd"},
             {nfc_ndef_msg_insert_record, false, 4, nullptr},
             {nfc_ndef_msg_insert_record, true, 0, "d"},
             {nfc_ndef_msg_set_record, false, 0, "dbc"},
             {nfc_ndef_msg_set_record, false, 1, "adc"},
             {nfc_ndef_msg_set_record, false, 2, "abd"},
             {nfc_ndef_msg_set_record, false, 3, nullptr},
             {nfc_ndef_msg_set_record, true, 0, nullptr},
         }) {
        SCOPED_TRACE(testing::Message() << (c.expected ? c.expected : "refused") << " at " << +c.position);
        const Message m = c.empty ? message({}) : abc();
        Record d = named('d');
        const nfc_ndef_record *const object = d.get();
        EXPECT_EQ(c.edit(m.get(), c.position, nullptr), 255U);
        EXPECT_EQ(c.edit(nullptr, c.position, d.get()), 255U);
        EXPECT_EQ(c.edit(m.get(), c.position, d.get()), c.expected ? 1U : 255U);
        if (c.expected)
            static_cast<void>(d.release());
        EXPECT_EQ(contents(m), c.expected ? c.expected : c.empty ? "" : "abc");
        if (c.expected) {
            EXPECT_EQ(at(m, c.position) == object, !c.empty) << "an empty message takes a copy";
        }
    }
}

TEST(Editing, RemoveFreesTheRecordAtAPosition)
{
    for (const auto &[position, left] : {std::pair{0, "bc"}, {1, "ac"}, {2, "ab"}, {3, "abc"}, {255, "abc"}}) {
        const Message m = abc();
        EXPECT_EQ(nfc_ndef_msg_remove_record(m.get(), static_cast<uint8_t>(position)), position < 3 ? 1U : 255U);
        EXPECT_EQ(contents(m), left);
    }
    EXPECT_EQ(nfc_ndef_msg_remove_record(nullptr, 0), 255U);
    const Message m = abc(); // down to nothing from behind, and up again
    for (uint8_t i = 3; i-- > 0;)
        EXPECT_EQ(nfc_ndef_msg_remove_record(m.get(), i), 1U);
    EXPECT_EQ(nfc_ndef_msg_append_record(m.get(), named('z').get()), 1U);
    EXPECT_EQ(contents(m), "z");
}

TEST(Editing, EachEditLeavesTheListWholeForTheNext)
{
    struct Step {
        char edit; // insert, remove or append
        uint8_t position;
        const char *left;
    };
    for (const auto &steps : {std::vector<Step>{{'i', 1, "adbc"}, {'r', 2, "adc"}, {'r', 1, "ac"}, {'a', 2, "acd"}},
                              {{'r', 1, "ac"}, {'r', 1, "a"}, {'a', 1, "ad"}}}) {
        const Message m = abc();
        for (const auto &[edit, position, left] : steps) {
            if (edit == 'i')
                EXPECT_EQ(nfc_ndef_msg_insert_record(m.get(), position, named('d').release()), 1U);
            else
                EXPECT_EQ(edit == 'r' ? nfc_ndef_msg_remove_record(m.get(), position)
                                      : nfc_ndef_msg_append_record(m.get(), named('d').get()),
                          1U);
            ASSERT_EQ(contents(m), left);
        }
    }
}

TEST(Editing, HoldsAtMost255Records)
{
    const Message m(nfc_ndef_msg_create());
    Record r = named('r');
    for (int i = 0; i < 254; ++i)
        ASSERT_EQ(nfc_ndef_msg_append_record(m.get(), r.get()), 1U);
    EXPECT_EQ(nfc_ndef_msg_insert_record(m.get(), 254, named('r').release()), 1U);
    EXPECT_EQ(nfc_ndef_msg_append_record(m.get(), r.get()), 255U);
    EXPECT_EQ(nfc_ndef_msg_insert_record(m.get(), 0, r.get()), 255U);
    EXPECT_EQ(nfc_ndef_msg_insert_record(m.get(), 255, r.get()), 255U);
    EXPECT_EQ(nfc_ndef_msg_get_number_of_records(m.get()), 255);
    EXPECT_EQ(nfc_ndef_msg_get_record_by_index(m.get(), 255), nullptr);
    EXPECT_EQ(nfc_ndef_msg_set_record(m.get(), 255, r.get()), 255U);
    for (const uint8_t position : {uint8_t{0}, uint8_t{254}}) {
        nfc_ndef_record *const replacement = named('s').release();
        EXPECT_EQ(nfc_ndef_msg_set_record(m.get(), position, replacement), 1U);
        EXPECT_EQ(at(m, position), replacement);
    }
    EXPECT_EQ(contents(m), "s" + std::string(253, 'r') + "s");
    EXPECT_EQ(encode(m).size(), 255U * 5);
    uint8_t count = 0;
    const nfc_ndef::Block<const nfc_ndef_record *> all(nfc_ndef_msg_get_records(m.get(), &count));
    EXPECT_EQ(count, 255);
    EXPECT_EQ(all[254], at(m, 254));
}

TEST(Editing, CopiesAreWholeAndIndependent)
{
    const Message source = parse(bytes("99 01 01 01 54 69 61  51 01 01 55 62"));
    const Message copied(nfc_ndef_msg_copy(source.get())), empty(nfc_ndef_msg_copy(message({}).get()));
    EXPECT_EQ(contents(copied), "ab");
    EXPECT_NE(at(copied, 0), at(source, 0));
    EXPECT_TRUE(at(copied, 0)->mb == 1 && at(copied, 0)->parsed_length == 7 && at(copied, 1)->me == 1);
    nfc_ndef_msg_edit_record_by_index(source.get(), 0)->payload[0] = 'x';
    EXPECT_EQ(contents(copied), "ab");
    ASSERT_TRUE(empty);
    EXPECT_EQ(nfc_ndef_msg_get_number_of_records(empty.get()), 0);
    EXPECT_EQ(nfc_ndef_msg_copy(nullptr), nullptr);
}

TEST(Editing, MadeOfAnArrayItFreesTheArrayOnlyOnSuccess)
{
    for (const bool complete : {true, false}) {
        auto **const array = static_cast<nfc_ndef_record **>(os_block_alloc(3 * sizeof(nfc_ndef_record *)));
        array[0] = named('a').release();
        array[1] = complete ? named('b').release() : nullptr;
        array[2] = named('c').release();
        EXPECT_EQ(nfc_ndef_msg_create_by_records(array, 0), nullptr);
        const Message made(nfc_ndef_msg_create_by_records(array, 3));
        ASSERT_EQ(made != nullptr, complete);
        if (complete) {
            EXPECT_EQ(contents(made), "abc");
            EXPECT_EQ(live_blocks(),
                      2 + 3 * (1 + 3U)); // message and list; per record a node, the record, name, payload
            continue;
        }
        nfc_ndef_record_delete(&array[0]);
        nfc_ndef_record_delete(&array[2]);
        os_block_dealloc(array);
    }
    EXPECT_EQ(nfc_ndef_msg_create_by_records(nullptr, 3), nullptr);
}

TEST(Editing, LookupsGiveTheStoredRecord)
{
    const Message m =
        message({well_known("T", text("0"), text("ab")).get(), well_known("T", text("1"), text("a")).get(),
                 named('2').get(), well_known("T", text("3"), text("a")).get()});
    nfc_ndef_msg_edit_record_by_index(m.get(), 2)->id_length = 1; // without an id
    struct Case {
        const char *id;
        uint8_t length;
        int position;
    };
    for (const Case &c :
         {Case{"a", 1, 1}, {"ab", 2, 0}, {"abc", 3, -1}, {"b", 1, -1}, {"ab", 0, -1}, {nullptr, 1, -1}}) {
        const auto *const id = reinterpret_cast<const uint8_t *>(c.id);
        const nfc_ndef_record *const expected = c.position < 0 ? nullptr : at(m, static_cast<uint8_t>(c.position));
        EXPECT_EQ(nfc_ndef_msg_get_record_by_id(m.get(), id, c.length), expected);
        EXPECT_EQ(nfc_ndef_msg_edit_record_by_id(m.get(), id, c.length), expected);
        EXPECT_EQ(nfc_ndef_msg_get_record_by_id(nullptr, id, c.length), nullptr);
        EXPECT_EQ(nfc_ndef_msg_edit_record_by_id(nullptr, id, c.length), nullptr);
    }
    for (uint8_t i = 0; i < 6; ++i) {
        EXPECT_EQ(nfc_ndef_msg_edit_record_by_index(m.get(), i), at(m, i));
        EXPECT_EQ(at(m, i) != nullptr, i < 4);
    }
    EXPECT_EQ(nfc_ndef_msg_get_record_by_index(nullptr, 0), nullptr);
    EXPECT_EQ(nfc_ndef_msg_edit_record_by_index(nullptr, 0), nullptr);
    EXPECT_EQ(nfc_ndef_msg_get_number_of_records(nullptr), 0);
    ASSERT_EQ(nfc_ndef_record_append_payload(nfc_ndef_msg_edit_record_by_index(m.get(), 2), text("x").data(), 1), 1);
    EXPECT_EQ(contents(m), "012x3");
}

TEST(EditingDeathTest, AMessageWithoutAListIsFatal)
{
    const Record r = named('a');
    const RecordType key = type(1, "T");
    nfc_ndef_msg m{nullptr};
    uint8_t count = 0, id[] = {'i'}, *block = nullptr;
    struct Case {
        const char *operation;
        std::function<void()> call;
        const char *message = "ndef_msg";
    };
    for (const Case &c : std::initializer_list<Case>{
             {"nfc_ndef_msg_copy", [&] { nfc_ndef_msg_copy(&m); }, "msg"},
             {"nfc_ndef_msg_append_record", [&] { nfc_ndef_msg_append_record(&m, r.get()); }},
             {"nfc_ndef_msg_insert_record", [&] { nfc_ndef_msg_insert_record(&m, 0, r.get()); }},
             {"nfc_ndef_msg_set_record", [&] { nfc_ndef_msg_set_record(&m, 0, r.get()); }},
             {"nfc_ndef_msg_remove_record", [&] { nfc_ndef_msg_remove_record(&m, 0); }},
             {"nfc_ndef_msg_record_by_index", [&] { nfc_ndef_msg_get_record_by_index(&m, 0); }},
             {"nfc_ndef_msg_record_by_index", [&] { nfc_ndef_msg_edit_record_by_index(&m, 0); }},
             {"nfc_ndef_msg_record_by_id", [&] { nfc_ndef_msg_get_record_by_id(&m, id, 1); }},
             {"nfc_ndef_msg_record_by_id", [&] { nfc_ndef_msg_edit_record_by_id(&m, id, 1); }},
             {"nfc_ndef_msg_get_number_of_records", [&] { nfc_ndef_msg_get_number_of_records(&m); }},
             {"nfc_ndef_msg_get_records", [&] { nfc_ndef_msg_get_records(&m, &count); }},
             {"nfc_ndef_msg_get_record_types", [&] { nfc_ndef_msg_get_record_types(&m, &count); }},
             {"nfc_ndef_msg_get_records_by_type", [&] { nfc_ndef_msg_get_records_by_type(&m, key.get(), &count); }},
             {"nfc_ndef_record_index_by_type_from_msg", [&] { nfc_ndef_record_index_by_type_from_msg(&m, key.get()); }},
             {"nfc_ndef_msg_to_byte_array", [&] { nfc_ndef_msg_to_byte_array(&m, &block); }},
         })
        EXPECT_DEATH(c.call(), std::string("nfc_ndef_rtd_lib:[0-9]+: ") + c.operation +
                                   ": Assertion `\\(\\(void \\*\\)0\\) != " + c.message + "->records' failed");

    nfc_ndef_msg_delete(nullptr);
    auto *const listless = static_cast<nfc_ndef_msg *>(os_block_alloc_and_clear(sizeof(nfc_ndef_msg)));
    nfc_ndef_msg *message = listless;
    for (int twice = 0; twice < 2; ++twice) { // but it can be deleted
        nfc_ndef_msg_delete(&message);
        EXPECT_EQ(message, nullptr);
    }
}

} // namespace
