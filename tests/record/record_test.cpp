#include "ndef.h"

using namespace test;

namespace {

constexpr uint8_t untouched = 0xEE;

TEST(RecordType, KeepsACopyOfWhatItsFormatAllows)
{
    struct Case {
        uint32_t format;
        const char *name; // null: a null pointer
        uint8_t name_length;
        bool created;
    };
    for (const Case &c : std::initializer_list<Case>{
             {NFC_NDEF_TNF_WELL_KNOWN, "T", 1, true},
             {NFC_NDEF_TNF_EXTERNAL, "a.b:c", 5, true},
             {NFC_NDEF_TNF_RESERVED, "x", 1, true},
             {9, "x", 1, true},
             {NFC_NDEF_TNF_EMPTY, nullptr, 0, true},
             {NFC_NDEF_TNF_UNKNOWN, nullptr, 0, true},
             {NFC_NDEF_TNF_EMPTY, "x", 1, false},
             {NFC_NDEF_TNF_UNKNOWN, "x", 1, false},
             {NFC_NDEF_TNF_WELL_KNOWN, nullptr, 0, false},
             {9, nullptr, 0, false},
             {NFC_NDEF_TNF_MIME, "x", 0, false},
             {NFC_NDEF_TNF_UNKNOWN, "x", 0, false},
             {NFC_NDEF_TNF_EMPTY, nullptr, 3, false},
             {NFC_NDEF_TNF_ABSOLUTE_URI, nullptr, 3, false},
         }) {
        SCOPED_TRACE(testing::Message() << c.format << " " << (c.name ? c.name : "null") << " " << +c.name_length);
        Bytes name = c.name ? text(c.name) : Bytes();
        const RecordType type(nfc_ndef_record_type_create(c.format, c.name ? name.data() : nullptr, c.name_length));
        ASSERT_EQ(type != nullptr, c.created);
        std::fill(name.begin(), name.end(), uint8_t{'!'});
        uint8_t length = untouched;
        const uint8_t *const kept = nfc_ndef_record_type_get_name(type.get(), &length);
        EXPECT_EQ(length, c.created ? c.name_length : 0);
        EXPECT_EQ(copy(kept, length), c.created && c.name ? text(c.name) : Bytes());
        EXPECT_EQ(nfc_ndef_record_type_get_format(type.get()), c.created ? c.format : 255);
    }
    nfc_ndef_record_type_delete(nullptr);
}

TEST(RecordType, HasNoNameWhereItsFormatAllowsNoneOrItsFieldsDisagree)
{
    uint8_t name[] = {'T'};
    for (const nfc_ndef_record_type &type : {nfc_ndef_record_type{name, 1, NFC_NDEF_TNF_EMPTY},
                                             {name, 1, NFC_NDEF_TNF_UNKNOWN},
                                             {name, 0, NFC_NDEF_TNF_WELL_KNOWN},
                                             {nullptr, 1, NFC_NDEF_TNF_WELL_KNOWN}}) {
        uint8_t length = untouched;
        EXPECT_EQ(nfc_ndef_record_type_get_name(&type, &length), nullptr);
        EXPECT_EQ(length, 0);
    }
}

TEST(Record, IsMadeOfCopiesOfItsParts)
{
    struct Case {
        nfc_ndef_record_type type;
        Bytes id, payload;
        const char *expected;
    };
    uint8_t name[] = {'T'};
    for (const Case &c : std::initializer_list<Case>{
             {{name, 1, 1}, {}, bytes("0102030405"), "00010:1T//0102030405/0"},
             {{name, 1, 1}, text("ab"), bytes("01"), "00011:1T/6162/01/0"},
             {{name, 1, 1}, text("x"), bytes("01"), "00011:1T/78/01/0"},
             {{name, 1, 1}, {}, {}, "00000:1T///0"},
             {{nullptr, 4, 1}, {}, {}, "00000:1///0"},
             {{name, 0, 1}, {}, {}, "00000:1///0"},
             {{name, 1, 0}, text("ab"), bytes("01"), "00000:0///0"},
             {{name, 1, 5}, text("ab"), bytes("01"), "00011:5/6162/01/0"},
             {{name, 1, 9}, {}, {}, "00000:9T///0"},
         }) {
        Bytes id = c.id, payload = c.payload;
        const Record made(nfc_ndef_record_create_from_param(&c.type, ptr(id), static_cast<uint8_t>(id.size()),
                                                            ptr(payload), static_cast<uint32_t>(payload.size())));
        std::fill(id.begin(), id.end(), untouched);
        std::fill(payload.begin(), payload.end(), untouched);
        EXPECT_EQ(described(made.get()), c.expected);
        EXPECT_TRUE(c.type.format != NFC_NDEF_TNF_UNKNOWN || !made->record_type.name);
        EXPECT_EQ(made->record_type.name_length, made->record_type.name ? c.type.name_length : 0);
    }
    // The flag is for payloads below 255 bytes, although the wire form of 255 is short as well.
    for (const uint32_t length : {254U, 255U, 256U})
        EXPECT_EQ(well_known("T", filled(length, 1))->sr, length < 255);
}

TEST(Record, IsNotMadeOfAPointerWithoutALengthOrALengthWithout)
{
    const RecordType t = type(1, "T"), empty = type(0, "");
    const uint8_t byte[] = {1};
    EXPECT_EQ(nfc_ndef_record_create_from_param(nullptr, nullptr, 0, byte, 1), nullptr);
    for (const nfc_ndef_record_type *const each : {t.get(), empty.get()}) {
        EXPECT_EQ(nfc_ndef_record_create_from_param(each, byte, 0, nullptr, 0), nullptr);
        EXPECT_EQ(nfc_ndef_record_create_from_param(each, nullptr, 1, nullptr, 0), nullptr);
        EXPECT_EQ(nfc_ndef_record_create_from_param(each, nullptr, 0, byte, 0), nullptr);
        EXPECT_EQ(nfc_ndef_record_create_from_param(each, nullptr, 0, nullptr, 1), nullptr);
    }
}

TEST(Record, AccessorsPointIntoTheRecordAndLeaveTheIdLengthAloneWithoutAnId)
{
    const Record full = well_known("T", text("abc"), text("i")), bare = record(5, "", {});
    uint8_t id_length = untouched;
    uint32_t payload_length = untouched;
    EXPECT_EQ(nfc_ndef_record_get_id(full.get(), &id_length), full->id);
    EXPECT_EQ(id_length, 1);
    EXPECT_EQ(nfc_ndef_record_get_payload(full.get(), &payload_length), full->payload);
    EXPECT_EQ(payload_length, 3U);
    EXPECT_EQ(nfc_ndef_record_get_payload_length(full.get()), 3U);
    EXPECT_EQ(nfc_ndef_record_get_record_type(full.get()), &full->record_type);
    for (const nfc_ndef_record *const none : std::initializer_list<const nfc_ndef_record *>{bare.get(), nullptr}) {
        id_length = untouched;
        payload_length = untouched;
        EXPECT_EQ(nfc_ndef_record_get_id(none, &id_length), nullptr);
        EXPECT_EQ(id_length, untouched);
        EXPECT_EQ(nfc_ndef_record_get_payload(none, &payload_length), nullptr);
        EXPECT_EQ(payload_length, 0U);
        EXPECT_EQ(nfc_ndef_record_get_payload_length(none), 0U);
        EXPECT_EQ(nfc_ndef_record_get_record_type(none), none ? &none->record_type : nullptr);
    }
    // Fields that disagree: neither is of use alone.
    const nfc_ndef_record odd[] = {{.payload_length = 3, .id_length = 1}, {.id = full->id, .payload = full->payload}};
    for (const nfc_ndef_record &each : odd) {
        EXPECT_EQ(nfc_ndef_record_get_id(&each, &id_length), nullptr);
        EXPECT_EQ(nfc_ndef_record_get_payload(&each, &payload_length), nullptr);
        EXPECT_EQ(id_length, untouched);
        EXPECT_EQ(payload_length, 0U);
        EXPECT_EQ(nfc_ndef_record_get_payload_length(&each), each.payload_length);
    }
}

TEST(Record, CopyHasBytesOfItsOwnAndEveryFlag)
{
    Record source = decode(bytes("79 01 02 01 54 69 61 62"));
    Record copied(nfc_ndef_rec_create_and_copy(source.get()));
    EXPECT_EQ(described(copied.get()), "01111:1T/69/6162/8");
    source->payload[0] = source->id[0] = source->record_type.name[0] = '!';
    EXPECT_EQ(described(copied.get()), "01111:1T/69/6162/8");

    const nfc_ndef_record odd{.mb = 7, .payload_length = 3, .id_length = 2, .record_type = {nullptr, 4, 1}};
    copied.reset(nfc_ndef_rec_create_and_copy(&odd));
    EXPECT_TRUE(copied->mb == 7 && copied->payload_length == 3 && copied->id_length == 2);
    EXPECT_TRUE(!copied->payload && !copied->id && !copied->record_type.name);
    EXPECT_EQ(copied->record_type.name_length, 4);
    EXPECT_EQ(nfc_ndef_rec_create_and_copy(nullptr), nullptr);
}

TEST(Record, DeleteClearsTheCallersPointer)
{
    nfc_ndef_record *record = well_known("T", text("abc"), text("i")).release();
    for (int twice = 0; twice < 2; ++twice) {
        nfc_ndef_record_delete(&record);
        EXPECT_EQ(record, nullptr);
    }
    nfc_ndef_record_delete(nullptr);
}

TEST(Record, SetIdTakesTheBufferOverUnlessRefused)
{
    const Record r = well_known("T", text("abc"));
    uint8_t *const first = owned(text("ab")), *const second = owned(text("xyz"));
    EXPECT_EQ(nfc_ndef_record_set_id(nullptr, first, 2), 0);
    EXPECT_EQ(nfc_ndef_record_set_id(r.get(), first, 2), 2);
    EXPECT_EQ(r->id, first);
    EXPECT_EQ(r->il, 0); // the encoder looks at the id itself
    EXPECT_EQ(hex(encode(r)), "19010302546162616263");
    EXPECT_EQ(nfc_ndef_record_set_id(r.get(), second, 0), 0);
    EXPECT_EQ(nfc_ndef_record_set_id(r.get(), nullptr, 3), 0);
    EXPECT_EQ(id_of(r.get()), text("ab"));
    EXPECT_EQ(nfc_ndef_record_set_id(r.get(), second, 3), 3);
    EXPECT_EQ(id_of(r.get()), text("xyz"));
    EXPECT_EQ(nfc_ndef_record_set_id(r.get(), second, 2), 2); // its own
    EXPECT_EQ(id_of(r.get()), text("xy"));
    EXPECT_EQ(nfc_ndef_record_set_id(r.get(), nullptr, 0), 0);
    EXPECT_TRUE(!r->id && r->id_length == 0);
    EXPECT_EQ(hex(encode(r)), "11010354616263");

    r->id_length = 1; // no id to go with it
    uint8_t *const third = owned(text("q"));
    EXPECT_EQ(nfc_ndef_record_set_id(r.get(), third, 1), 0);
    EXPECT_TRUE(!r->id && r->id_length == 1);
    os_block_dealloc(third);
}

TEST(Record, AppendPayloadExtendsOnlyWhatIsThere)
{
    const Record r = well_known("T", text("abc")), empty = well_known("T", {});
    const uint8_t more[] = {'d', 'e'};
    EXPECT_EQ(nfc_ndef_record_append_payload(r.get(), more, 2), 1);
    EXPECT_EQ(payload_of(r.get()), text("abcde"));
    EXPECT_EQ(nfc_ndef_record_append_payload(r.get(), r->payload, 5), 1); // its own bytes
    EXPECT_EQ(payload_of(r.get()), text("abcdeabcde"));

    EXPECT_EQ(nfc_ndef_record_append_payload(nullptr, more, 2), 0xFF);
    EXPECT_EQ(nfc_ndef_record_append_payload(r.get(), nullptr, 2), 0xFF);
    EXPECT_EQ(nfc_ndef_record_append_payload(r.get(), more, 0), 0xFF);
    EXPECT_EQ(nfc_ndef_record_append_payload(empty.get(), more, 2), 0xFF);
    r->payload_length = UINT32_MAX - 1; // the sum would wrap to 0
    EXPECT_EQ(nfc_ndef_record_append_payload(r.get(), more, 2), 0xFF);
    EXPECT_EQ(r->payload_length, UINT32_MAX - 1);
    r->payload_length = 0;
    EXPECT_EQ(nfc_ndef_record_append_payload(r.get(), more, 2), 0xFF);
    r->payload_length = 10;
    EXPECT_EQ(payload_of(r.get()), text("abcdeabcde"));

    const Record short_form = well_known("T", filled(254, 1));
    EXPECT_EQ(nfc_ndef_record_append_payload(short_form.get(), more, 2), 1);
    EXPECT_EQ(short_form->sr, 1); // unchanged: the encoder looks at the length
    EXPECT_EQ(hex(encode(short_form)).substr(0, 14), "01010000010054");
}

} // namespace
