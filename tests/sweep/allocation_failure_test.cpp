// Every exported function that allocates, with its n-th allocation failing, then all from the n-th on, for n = 1, 2,
// ...
#include "ndef.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>

using namespace test;
using nfc_ndef::BluetoothLegacy;
using nfc_ndef::BluetoothOob;
using nfc_ndef::out;

namespace {

struct Case {
    const char *function;
    const char *branch;
    std::string success;
    /** What may come of it without memory, each of which must come of it at least once. */
    std::set<std::string> failures;
    /** Prepares, makes the call through `armed`, and says what came of it. */
    std::function<std::string(Armed &)> run;
};

/** A constructor or builder gives a whole object or null. */
template <class Handle, class Call> Case maker(const char *function, const char *branch, Call call)
{
    return {function, branch, "made", {"null"}, [call](Armed &armed) { return Handle(armed(call)) ? "made" : "null"; }};
}

std::string shown(const void *pointer) { return pointer ? "*" : "-"; }
template <class T, class D> std::string shown(const std::unique_ptr<T, D> &handle) { return shown(handle.get()); }
std::string shown(int64_t number, const void *pointer) { return std::to_string(number) + shown(pointer); }

/** An array output. */
struct Records {
    uint8_t count = 9;
    nfc_ndef_record **array = nullptr;
    ~Records()
    {
        for (size_t i = 0; array && i < count; ++i)
            nfc_ndef_record_delete(&array[i]);
        os_block_dealloc(array);
    }
    std::string text() const { return shown(count, array); }
};

std::string payloads(const Message &m)
{
    std::string result;
    for (uint8_t i = 0; at(m, i); ++i)
        result += static_cast<char>(at(m, i)->payload[0]);
    return result;
}

// Lives as long as the program, in blocks of its own: what builders borrow.
struct Parts {
    uint8_t name[2] = {'T', 'x'}, id[1] = {'i'}, data[16] = {'d'}, lengths[2] = {1, 0};
    uint8_t *refs[2] = {data, nullptr}, *ids[1] = {data};
    nfc_ndef_record text{.payload_length = 1, .payload = data, .record_type = {name, 1, 1}};
    nfc_ndef_record *records[2] = {&text, &text};
    nfc_ndef_record_type type{name, 1, 1};
    nfc_ndef_bt_rtd_2_1_str oob{.local_name_length = 1,
                                .local_name = data,
                                .hash_c_length = 16,
                                .hash_c = data,
                                .manufacturer_data_count = 1,
                                .manufacturer_id_length = 2,
                                .manufacturer_ids = ids,
                                .manufacturer_data_lengths = lengths,
                                .manufacturer_data = ids};
    nfc_ndef_bt_rtd_2_0_str legacy{
        .pairing_data_length = 16, .pairing_data = data, .local_name_length = 1, .local_name = data};
} parts;

Record record_of(const char *payload) { return with_payload(bytes(payload)); }

template <class Handle>
Case encoder(const char *function, int64_t length, Handle (*prepare)(), int64_t (*encode)(const Handle &, uint8_t **))
{
    return {function, "", shown(length, &parts), {"0-"}, [=](Armed &armed) {
                const Handle object = prepare();
                uint8_t *block = parts.data; // to see it nulled
                const int64_t got = armed([&] { return encode(object, &block); });
                const std::string result = shown(got, block);
                os_block_dealloc(block);
                return result;
            }};
}

template <class Query> Case query(const char *function, Query query)
{
    return {function, "", "2*", {"0-"}, [=](Armed &armed) {
                const Message m = message({&parts.text, &parts.text});
                uint8_t count = 9;
                const auto array = armed([&] { return query(m.get(), &count); });
                os_block_dealloc(array);
                return shown(count, array);
            }};
}

Case inserter(const char *branch, const char *present, const char *after)
{
    return {"nfc_ndef_msg_insert_record",
            branch,
            std::string("1 ") + after,
            {std::string("255 ") + present},
            [=](Armed &armed) {
                const Message m(nfc_ndef_msg_create());
                for (const char *each = present; *each; ++each)
                    nfc_ndef_msg_append_record(m.get(), &parts.text);
                Record r = well_known("T", text("x"));
                const uint32_t result = armed([&] { return nfc_ndef_msg_insert_record(m.get(), 0, r.get()); });
                if (result == 1)
                    static_cast<void>(r.release());
                return std::to_string(result) + " " + payloads(m);
            }};
}

Case generic_control_reader(const char *branch, const char *action, const char *read, std::set<std::string> failures)
{
    return {"rtdlib_generic_control_record_extract", branch, read, std::move(failures), [=](Armed &armed) {
                const Record r = with_payload(
                    bytes("05") +
                    encode(message({well_known("t", text("x")).get(), well_known("a", bytes(action)).get(),
                                    well_known("d", text("y")).get(), well_known("Gc", text("z")).get()})));
                uint32_t config = 77, code = 77;
                uint8_t flag = 77;
                Record target, described, data;
                Records controls;
                const int result = armed([&] {
                    return rtdlib_generic_control_record_extract(r.get(), &config, out(target), &flag, &code,
                                                                 out(described), out(data), &controls.count,
                                                                 &controls.array);
                });
                return std::to_string(result) + " t" + shown(target) + " f" + std::to_string(flag) + " c" +
                       shown(code, described.get()) + " d" + shown(data) + " G" + controls.text();
            }};
}

Case carrier_reader(const char *branch, const char *payload, const char *success)
{
    return {"rtdlib_handover_carrier_record_extract", branch, success, {"-1 t0- d9-"}, [=](Armed &armed) {
                const Record r = record_of(payload);
                uint32_t format = 77;
                uint8_t type_length = 9, data_length = 9;
                nfc_ndef::Block<> type_name, data;
                const int result = armed([&] {
                    return rtdlib_handover_carrier_record_extract(r.get(), &format, &type_length, out(type_name),
                                                                  &data_length, out(data));
                });
                return std::to_string(result) + " t" + shown(type_length, type_name.get()) + " d" +
                       shown(data_length, data.get());
            }};
}

// Four functions, because compilers take long over one table of this size.
std::vector<Case> record_cases()
{
    return {
        maker<RecordType>("nfc_ndef_record_type_create", "with a name",
                          [] { return nfc_ndef_record_type_create(1, parts.name, 1); }),
        maker<RecordType>("nfc_ndef_record_type_create", "without",
                          [] { return nfc_ndef_record_type_create(5, nullptr, 0); }),
        maker<Record>("nfc_ndef_record_create_from_param", "",
                      [] { return nfc_ndef_record_create_from_param(&parts.type, parts.id, 1, parts.data, 16); }),
        maker<Record>("nfc_ndef_rec_create_and_copy", "",
                      [] {
                          nfc_ndef_record full = parts.text;
                          full.id = parts.id;
                          full.id_length = 1;
                          return nfc_ndef_rec_create_and_copy(&full);
                      }),
        {"nfc_ndef_record_append_payload",
         "",
         "1 78787979",
         {"255 7878"},
         [](Armed &armed) {
             const Record r = record_of("7878");
             const int result = armed([&] { return nfc_ndef_record_append_payload(r.get(), text("yy").data(), 2); });
             return std::to_string(result) + " " + hex(payload_of(r.get()));
         }},
        encoder<Record>(
            "nfc_ndef_record_to_byte_array", 5, [] { return well_known("T", text("x")); },
            [](const Record &r, uint8_t **block) { return int64_t{nfc_ndef_record_to_byte_array(r.get(), block)}; }),
        maker<Record>("nfc_ndef_record_create_from_byte_array", "",
                      [] { return nfc_ndef_record_create_from_byte_array(bytes("D901010154 69 61").data(), 0, 7); })};
}

std::vector<Case> message_cases()
{
    return {
        maker<Message>("nfc_ndef_msg_create", "", [] { return nfc_ndef_msg_create(); }),
        {"nfc_ndef_msg_copy",
         "",
         "made",
         {"null"},
         [](Armed &armed) {
             const Message m = message({&parts.text, &parts.text});
             return Message(armed([&] { return nfc_ndef_msg_copy(m.get()); })) ? "made" : "null";
         }},
        {"nfc_ndef_msg_create_by_records",
         "",
         "xy",
         {"the array is still xy"},
         [](Armed &armed) {
             auto **const array = static_cast<nfc_ndef_record **>(os_block_alloc(2 * sizeof(nfc_ndef_record *)));
             array[0] = well_known("T", text("x")).release();
             array[1] = well_known("T", text("y")).release();
             const Message m(armed([&] { return nfc_ndef_msg_create_by_records(array, 2); }));
             if (m)
                 return payloads(m);
             const Bytes left = payload_of(array[0]) + payload_of(array[1]);
             nfc_ndef_record_delete(&array[0]);
             nfc_ndef_record_delete(&array[1]);
             os_block_dealloc(array);
             return "the array is still " + std::string(left.begin(), left.end());
         }},
        {"nfc_ndef_msg_append_record",
         "",
         "1 dd",
         {"255 d"},
         [](Armed &armed) {
             const Message m = message({&parts.text});
             const uint32_t result = armed([&] { return nfc_ndef_msg_append_record(m.get(), &parts.text); });
             return std::to_string(result) + " " + payloads(m);
         }},
        inserter("into an empty message", "", "x"),
        inserter("before another record", "d", "xd"),
        query("nfc_ndef_msg_get_records", [](auto *m, uint8_t *count) { return nfc_ndef_msg_get_records(m, count); }),
        query("nfc_ndef_msg_get_record_types",
              [](auto *m, uint8_t *count) { return nfc_ndef_msg_get_record_types(m, count); }),
        query("nfc_ndef_msg_get_records_by_type",
              [](auto *m, uint8_t *count) { return nfc_ndef_msg_get_records_by_type(m, &parts.type, count); }),
        encoder<Message>(
            "nfc_ndef_msg_to_byte_array", 5, [] { return message({&parts.text}); },
            [](const Message &m, uint8_t **block) { return int64_t{nfc_ndef_msg_to_byte_array(m.get(), block)}; }),
        maker<Message>(
            "nfc_ndef_msg_create_by_msg_offset", "whole records",
            [] { return nfc_ndef_msg_create_by_msg_offset(bytes("99010101546961 51010055").data(), 0, 11); }),
        maker<Message>("nfc_ndef_msg_create_by_msg_offset", "chunks", [] {
            return nfc_ndef_msg_create_by_msg_offset(bytes("B9010101546961 36000162 56000163").data(), 0, 15);
        })};
}

std::vector<Case> builder_cases()
{
    return {
        maker<Record>("rtdlib_text_record_create", "",
                      [] { return rtdlib_text_record_create(0, 2, parts.name, parts.data, 16); }),
        maker<Record>("rtdlib_uri_record_create", "", [] { return rtdlib_uri_record_create(1, 1, parts.id); }),
        maker<Record>("rtdlib_uri_record_create", "code alone", [] { return rtdlib_uri_record_create(1, 0, nullptr); }),
        maker<Record>("rtdlib_smart_poster_record_create", "",
                      [] {
                          return rtdlib_smart_poster_record_create(2, parts.records, &parts.text, 1, 2, parts.records,
                                                                   &parts.text, &parts.text, 2, parts.records);
                      }),
        maker<Record>("rtdlib_generic_control_record_create", "action code",
                      [] {
                          return rtdlib_generic_control_record_create(0, &parts.text, 1, 5, nullptr, nullptr, 2,
                                                                      parts.records);
                      }),
        maker<Record>("rtdlib_generic_control_record_create", "action record",
                      [] {
                          return rtdlib_generic_control_record_create(0, &parts.text, 0, 0, &parts.text, &parts.text, 0,
                                                                      nullptr);
                      }),
        maker<Record>("rtdlib_handover_request_record_create", "",
                      [] { return rtdlib_handover_request_record_create(&parts.text, 2, parts.records, 0x12); }),
        maker<Record>("rtdlib_handover_select_record_create", "",
                      [] { return rtdlib_handover_select_record_create(2, parts.records, &parts.text, 0x12); }),
        maker<Record>("rtdlib_handover_carrier_record_create", "",
                      [] { return rtdlib_handover_carrier_record_create(2, 1, parts.name, 16, parts.data); }),
        maker<Record>(
            "rtdlib_alternative_carrier_record_create", "",
            [] { return rtdlib_alternative_carrier_record_create(1, 1, parts.id, 2, parts.lengths, parts.refs); }),
        maker<Record>("rtdlib_collision_resolution_record_create", "",
                      [] { return rtdlib_collision_resolution_record_create(1); }),
        maker<Record>("rtdlib_handover_select_error_record_create", "",
                      [] { return rtdlib_handover_select_error_record_create(1, 2); }),
        maker<Record>(
            "rtdlib_bt_2_1_configuration_data_record_create", "",
            [] { return rtdlib_bt_2_1_configuration_data_record_create(&parts.oob, 9, 0, 0, 0, parts.id, 1, 1); }),
        maker<Record>("rtdlib_bt_configuration_data_record_create", "",
                      [] { return rtdlib_bt_configuration_data_record_create(&parts.legacy, parts.id, 1, 1); }),
        maker<Record>("rtdlib_sharing_enquiry_record_create", "",
                      [] { return rtdlib_sharing_enquiry_record_create(1, 16, parts.data, 0x10); })};
}

std::vector<Case> extractor_cases()
{
    return {
        {"rtdlib_text_record_extract",
         "",
         "1 2* 2*",
         {"1 2- 2*", "1 2* 2-", "1 2- 2-"},
         [](Armed &armed) {
             const Record r = record_of("02656E4869");
             uint8_t utf16 = 9, language_length = 9;
             uint32_t length = 9;
             nfc_ndef::Block<> language, words;
             const int result = armed([&] {
                 return rtdlib_text_record_extract(r.get(), &utf16, &language_length, out(language), &length,
                                                   out(words));
             });
             return std::to_string(result) + " " + shown(language_length, language.get()) + " " +
                    shown(length, words.get());
         }},
        {"rtdlib_uri_record_extract",
         "",
         "1 2*",
         {"1 2-"},
         [](Armed &armed) {
             const Record r = record_of("016162");
             uint8_t code = 9;
             uint32_t length = 9;
             nfc_ndef::Block<> field;
             const int result = armed([&] { return rtdlib_uri_record_extract(r.get(), &code, out(field), &length); });
             return std::to_string(result) + " " + shown(length, field.get());
         }},
        {"rtdlib_smart_poster_record_extract",
         "",
         "1 U* T2* t* s* a1 I2* O2*",
         {"-1 U- T9- t- s- a77 I9- O9-", "-1 U* T0- t- s- a77 I9- O9-", "-1 U* T2* t- s- a77 I9- O9-",
          "-1 U* T2* t* s- a77 I9- O9-", "-1 U* T2* t* s* a1 I0- O9-", "-1 U* T2* t* s* a1 I2* O0-"},
         [](Armed &armed) {
             const Record title = well_known("T", text("x")), other = well_known("X", {});
             const Record r = with_payload(encode(message(
                 {title.get(), well_known("U", text("x")).get(), title.get(), record(2, "image/png", {}).get(),
                  record(2, "video/mp4", {}).get(), well_known("s", bytes("00000001")).get(),
                  well_known("t", text("x")).get(), well_known("act", bytes("01")).get(), other.get(), other.get()})));
             Records titles, icons, others;
             Record uri, size, type_record;
             uint32_t action = 77;
             const int result = armed([&] {
                 return rtdlib_smart_poster_record_extract(r.get(), &titles.count, &titles.array, out(uri), &action,
                                                           &icons.count, &icons.array, out(size), out(type_record),
                                                           &others.count, &others.array);
             });
             return std::to_string(result) + " U" + shown(uri) + " T" + titles.text() + " t" + shown(type_record) +
                    " s" + shown(size) + " a" + std::to_string(action) + " I" + icons.text() + " O" + others.text();
         }},
        generic_control_reader(
            "action code", "0107", "1 t* f1 c7- d* G1*",
            {"-1 t- f77 c77- d- G9-", "-1 t* f77 c77- d- G9-", "-1 t* f1 c7- d- G9-", "-1 t* f1 c7- d* G0-"}),
        generic_control_reader("action record", "00D101015461", "1 t* f0 c77* d* G1*",
                               {"-1 t- f77 c77- d- G9-", "-1 t* f77 c77- d- G9-", "-1 t* f0 c77- d- G9-",
                                "-1 t* f0 c77* d- G9-", "-1 t* f0 c77* d* G0-"}),
        {"rtdlib_handover_request_record_extract",
         "",
         "1 c* 2*",
         {"-1 c- 9-", "-1 c* 0-"},
         [](Armed &armed) {
             const Record r = record_of("12 91020263720102 1102036163010000 5102036163010000");
             Record collision;
             Records carriers;
             uint8_t version = 9;
             const int result = armed([&] {
                 return rtdlib_handover_request_record_extract(r.get(), out(collision), &carriers.count,
                                                               &carriers.array, &version);
             });
             return std::to_string(result) + " c" + shown(collision) + " " + carriers.text();
         }},
        {"rtdlib_handover_select_record_extract",
         "",
         "1 2* e*",
         {"-1 0- e-", "-1 2* e-"},
         [](Armed &armed) {
             const Record r = record_of("12 9102036163010000 1102036163010000 5103026572720110");
             Record error;
             Records carriers;
             uint8_t version = 9;
             const int result = armed([&] {
                 return rtdlib_handover_select_record_extract(r.get(), &carriers.count, &carriers.array, out(error),
                                                              &version);
             });
             return std::to_string(result) + " " + carriers.text() + " e" + shown(error);
         }},
        carrier_reader("type and data", "02 02 612F 010203", "1 t2* d3*"),
        carrier_reader("neither", "02 00", "1 t0* d9-"),
        {"rtdlib_alternative_carrier_record_extract",
         "",
         "1 r1* 3**",
         {"-1 r1- 0--"},
         [](Armed &armed) {
             const Record r = record_of("01 0161 03 0162 00 0163");
             uint32_t power = 77;
             uint8_t length = 9, count = 9;
             nfc_ndef::Block<> reference, lengths;
             uint8_t **references = nullptr;
             const int result = armed([&] {
                 return rtdlib_alternative_carrier_record_extract(r.get(), &power, &length, out(reference), &count,
                                                                  out(lengths), &references);
             });
             const std::string read = std::to_string(result) + " r" + shown(length, reference.get()) + " " +
                                      shown(count, lengths.get()) + shown(references);
             for (uint8_t i = 0; references && i < count; ++i)
                 os_block_dealloc(references[i]);
             os_block_dealloc(references);
             return read;
         }},
        {"rtdlib_bt_2_1_configuration_data_record_extract",
         "",
         "1 1* 16* 16* 2* 4* 16* M",
         {"0 -", "0 0- 0- 0- 0- 0- 0- m", "0 1* 0- 0- 0- 0- 0- m", "0 1* 16* 0- 0- 0- 0- m", "0 1* 16* 16* 0- 0- 0- m",
          "0 1* 16* 16* 2* 0- 0- m", "0 1* 16* 16* 2* 4* 0- m", "0 1* 16* 16* 2* 4* 16* m", "0 1* 16* 16* 2* 4* 16* M"},
         [](Armed &armed) {
             const Bytes key = filled(16, 7);
             const Record r =
                 with_payload(bytes("0000 010203040506 020961 110E") + key + bytes("110F") + key +
                              bytes("03030A11 050501020304 1107") + key + bytes("040D010203 06FF0100616263 03FF0200"));
             BluetoothOob f;
             const int result = armed([&] { return rtdlib_bt_2_1_configuration_data_record_extract(r.get(), out(f)); });
             if (!f)
                 return std::to_string(result) + " -";
             return std::to_string(result) + " " + shown(f->local_name_length, f->local_name) + " " +
                    shown(f->hash_c_length, f->hash_c) + " " + shown(f->randomizer_r_length, f->randomizer_r) + " " +
                    shown(f->uuid16_list_length, f->uuid16_list) + " " + shown(f->uuid32_list_length, f->uuid32_list) +
                    " " + shown(f->uuid128_list_length, f->uuid128_list) +
                    (f->manufacturer_ids && f->manufacturer_data_lengths && f->manufacturer_data ? " M" : " m");
         }},
        {"rtdlib_bt_configuration_data_record_extract",
         "",
         "1 16* 1*",
         {"0 -", "0 0- 0-", "0 16* 0-"},
         [](Armed &armed) {
             const Record r = with_payload(bytes("00 010203040506 010203") + filled(16, 7) + bytes("01 61"));
             BluetoothLegacy f;
             const int result = armed([&] { return rtdlib_bt_configuration_data_record_extract(r.get(), out(f)); });
             if (!f)
                 return std::to_string(result) + " -";
             return std::to_string(result) + " " + shown(f->pairing_data_length, f->pairing_data) + " " +
                    shown(f->local_name_length, f->local_name);
         }},
        {"rtdlib_sharing_enquiry_record_extract", "", "1 2*", {"-1 0-"}, [](Armed &armed) {
             const Record r = record_of("10 01 02 6162");
             uint8_t kind = 9, length = 9, version = 9;
             nfc_ndef::Block<> data;
             const int result = armed(
                 [&] { return rtdlib_sharing_enquiry_record_extract(r.get(), &kind, &length, out(data), &version); });
             return std::to_string(result) + " " + shown(length, data.get());
         }}};
}

std::vector<Case> all_cases()
{
    std::vector<Case> all;
    for (const auto cases : {record_cases, message_cases, builder_cases, extractor_cases})
        std::ranges::move(cases(), std::back_inserter(all));
    return all;
}

TEST(AllocationFailure, GivesTheStatedResultAndLeavesNothingBehind)
{
    for (const Case &c : all_cases()) {
        std::set<std::string> failures;
        for (const Failing mode : {Failing::once, Failing::from_there_on})
            for (size_t n = 1; !HasFatalFailure(); ++n) {
                SCOPED_TRACE(testing::Message() << c.function << " " << c.branch << ", allocation " << n
                                                << (mode == Failing::once ? " fails" : " and all later ones fail"));
                Armed armed(n, mode);
                const std::string result = c.run(armed);
                ASSERT_EQ(live_blocks(), 0U);
                if (!armed.failed()) {
                    EXPECT_EQ(result, c.success);
                    EXPECT_GT(n, 1U) << "it allocates nothing";
                    break;
                }
                EXPECT_TRUE(c.failures.contains(result)) << result;
                failures.insert(result);
            }
        EXPECT_EQ(failures, c.failures) << c.function << " " << c.branch;
    }
}

TEST(AllocationFailure, IsSweptOverEveryExportedFunctionThatAllocates)
{
    std::set<std::string> covered{
        // the allocator itself
        "os_block_alloc", "os_block_alloc_and_clear", "os_block_dealloc",
        // free, or take over what they are given
        "nfc_ndef_record_type_delete", "nfc_ndef_record_delete", "nfc_ndef_msg_delete",
        "nfc_ndef_bt_rtd_2_1_str_delete", "nfc_ndef_bt_rtd_2_0_str_delete", "nfc_ndef_record_set_id",
        "nfc_ndef_msg_set_record", "nfc_ndef_msg_remove_record",
        // look, and answer with a number or a pointer into what is there
        "nfc_ndef_record_type_get_name", "nfc_ndef_record_type_get_format", "nfc_ndef_record_type_equals",
        "nfc_ndef_record_get_id", "nfc_ndef_record_get_payload", "nfc_ndef_record_get_payload_length",
        "nfc_ndef_record_get_record_type", "nfc_ndef_msg_get_record_by_index", "nfc_ndef_msg_edit_record_by_index",
        "nfc_ndef_msg_get_record_by_id", "nfc_ndef_msg_edit_record_by_id", "nfc_ndef_msg_get_number_of_records",
        "nfc_ndef_record_index_by_type_from_msg", "nfc_ndef_msg_check", "nfc_ndef_msg_check_text",
        "rtdlib_collision_resolution_record_extract", "rtdlib_handover_select_error_record_extract"};
    for (const Case &c : all_cases())
        covered.insert(c.function);

    std::set<std::string> exported;
    std::ifstream map(EXPORTED_NAMES);
    for (std::string word; map >> word;)
        if (word.ends_with(';') && word != "*;" && word != "};")
            exported.insert(word.substr(0, word.size() - 1));
    EXPECT_EQ(covered, exported);
}

} // namespace
