// Every exported function that allocates, with its n-th allocation failing, then all from the n-th on, for n = 1, 2 ...
#include "readers.h"

#include <nfc_ndef_types.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <regex>
#include <set>

using namespace test;

// The name of a function and a call of it.
#define CALLING(function, ...) #function, [&] { return function(__VA_ARGS__); }

namespace {

struct Case {
    const char *function;
    std::string success;
    // What may come of it without memory, each of which must come of it at least once.
    std::set<std::string> failures;
    std::function<std::string()> run;
};

// One that fails in one way.
template <class Run> Case whole(const char *function, std::string success, std::string failure, Run run)
{
    return {function, std::move(success), {std::move(failure)}, run};
}

// A constructor or builder gives a whole object or null.
template <class Handle, class Call> Case maker(const char *function, Call call)
{
    return whole(function, "made", "null", [call] { return Handle(under_test(call)) ? "made" : "null"; });
}

Case reader(const char *function, Read read, const char *payload, std::string success, std::set<std::string> failures)
{
    return {function, std::move(success), std::move(failures), [=] { return read(with_payload(bytes(payload))); }};
}

std::string shown(int64_t number, const void *pointer) { return std::to_string(number) + (pointer ? "*" : "-"); }

// Lives as long as the program, in blocks of its own: what builders borrow.
struct Parts {
    uint8_t name[2] = {'T', 'x'}, id[1] = {'i'}, data[16] = {'d'}, lengths[2] = {1, 0};
    uint8_t *refs[2] = {data, nullptr}, *ids[1] = {data};
    nfc_ndef_record text{.payload_length = 1, .id_length = 1, .id = id, .payload = data, .record_type = {name, 1, 1}};
    nfc_ndef_record *records[2] = {&text, &text};
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
const nfc_ndef_record *const part = &parts.text;

template <class Query> Case query(const char *function, Query query)
{
    return whole(function, "2*", "0-", [=] {
        const Message m = message({part, part});
        uint8_t count = 9;
        const auto array = under_test([&] { return query(m.get(), &count); });
        os_block_dealloc(array);
        return shown(count, array);
    });
}

// Puts a record in front of those present, or behind them.
template <class Edit> Case editor(const char *function, size_t present, std::string after, Edit edit)
{
    return whole(function, "1 " + after, "255 " + std::string(present, 'd'), [=] {
        const Message m = message(std::vector<const nfc_ndef_record *>(present, part));
        Record r = well_known("T", text("x"));
        const uint32_t result = under_test([&] { return edit(m.get(), r); });
        return std::to_string(result) + " " + contents(m);
    });
}

uint32_t insert(nfc_ndef_msg *m, Record &record)
{
    const uint32_t result = nfc_ndef_msg_insert_record(m, 0, record.get());
    static_cast<void>(result == 1 ? record.release() : nullptr);
    return result;
}

std::string append_payload()
{
    const Record r = with_payload(text("xx"));
    const Bytes more = text("yy");
    const int result = under_test([&] { return nfc_ndef_record_append_payload(r.get(), more.data(), 2); });
    return std::to_string(result) + " " + hex(payload_of(r.get()));
}

std::string make_of_an_array()
{
    auto **const array = static_cast<nfc_ndef_record **>(os_block_alloc(2 * sizeof(nfc_ndef_record *)));
    array[0] = well_known("T", text("x")).release();
    array[1] = well_known("T", text("y")).release();
    const Message m(under_test([&] { return nfc_ndef_msg_create_by_records(array, 2); }));
    if (m)
        return contents(m);
    const std::string left = hex(payload_of(array[0]) + payload_of(array[1]));
    nfc_ndef_record_delete(&array[0]);
    nfc_ndef_record_delete(&array[1]);
    os_block_dealloc(array);
    return "the array is still " + left;
}

std::vector<Case> record_and_message_cases()
{
    return {
        maker<RecordType>(CALLING(nfc_ndef_record_type_create, 1, parts.name, 1)),
        maker<Record>(CALLING(nfc_ndef_record_create_from_param, &part->record_type, parts.id, 1, parts.data, 16)),
        maker<Record>(CALLING(nfc_ndef_rec_create_and_copy, part)),
        whole("nfc_ndef_record_append_payload", "1 78787979", "255 7878", append_payload),
        whole("nfc_ndef_record_to_byte_array", "1500026162", "", [] { return hex(encode(with_payload(text("ab")))); }),
        whole("nfc_ndef_record_create_from_byte_array", "made", "null",
              [] { return decode(bytes("D901010154 69 61")) ? "made" : "null"; }),
        maker<Message>(CALLING(nfc_ndef_msg_create)),
        whole("nfc_ndef_msg_copy", "dd", "",
              [] {
                  const Message m = message({part, part});
                  return contents(Message(under_test([&] { return nfc_ndef_msg_copy(m.get()); })));
              }),
        whole("nfc_ndef_msg_create_by_records", "xy", "the array is still 7879", make_of_an_array),
        editor("nfc_ndef_msg_append_record", 1, "dx",
               [](nfc_ndef_msg *m, Record &r) { return nfc_ndef_msg_append_record(m, r.get()); }),
        editor("nfc_ndef_msg_insert_record", 0, "x", insert),
        editor("nfc_ndef_msg_insert_record", 1, "xd", insert),
        query("nfc_ndef_msg_get_records", nfc_ndef_msg_get_records),
        query("nfc_ndef_msg_get_record_types", nfc_ndef_msg_get_record_types),
        query("nfc_ndef_msg_get_records_by_type",
              [](auto *m, uint8_t *count) { return nfc_ndef_msg_get_records_by_type(m, &part->record_type, count); }),
        whole("nfc_ndef_msg_to_byte_array", "D500026162", "",
              [] { return hex(encode(message({with_payload(text("ab")).get()}))); }),
        whole("nfc_ndef_msg_create_by_msg_offset", "ab", "",
              [] { return contents(parse(bytes("99010101546961 5101015562"))); }),
        whole("nfc_ndef_msg_create_by_msg_offset", "abc", "",
              [] { return contents(parse(bytes("B9010101546961 36000162 56000163"))); }),
    };
}

std::vector<Case> builder_cases()
{
    return {
        maker<Record>(CALLING(rtdlib_text_record_create, 0, 2, parts.name, parts.data, 16)),
        maker<Record>(CALLING(rtdlib_uri_record_create, 1, 1, parts.id)),
        maker<Record>(CALLING(rtdlib_smart_poster_record_create, 2, parts.records, part, 1, 2, parts.records, part,
                              part, 2, parts.records)),
        maker<Record>(CALLING(rtdlib_generic_control_record_create, 0, part, 1, 5, part, part, 2, parts.records)),
        maker<Record>(CALLING(rtdlib_generic_control_record_create, 0, part, 0, 0, part, part, 0, nullptr)),
        maker<Record>(CALLING(rtdlib_handover_request_record_create, part, 2, parts.records, 0x12)),
        maker<Record>(CALLING(rtdlib_handover_select_record_create, 2, parts.records, part, 0x12)),
        maker<Record>(CALLING(rtdlib_handover_carrier_record_create, 2, 1, parts.name, 16, parts.data)),
        maker<Record>(CALLING(rtdlib_alternative_carrier_record_create, 1, 1, parts.id, 2, parts.lengths, parts.refs)),
        maker<Record>(CALLING(rtdlib_collision_resolution_record_create, 1)),
        maker<Record>(CALLING(rtdlib_handover_select_error_record_create, 1, 2)),
        maker<Record>(CALLING(rtdlib_bt_2_1_configuration_data_record_create, &parts.oob, 9, 0, 0, 0, parts.id, 1, 1)),
        maker<Record>(CALLING(rtdlib_bt_configuration_data_record_create, &parts.legacy, parts.id, 1, 1)),
        maker<Record>(CALLING(rtdlib_sharing_enquiry_record_create, 1, 16, parts.data, 0x10)),
    };
}

// The builder of a type of nfc_ndef_types.h, and a payload to be read and made again.
template <class Structure> Case rebuilder(const char *function, const char *payload,
                                          uint8_t (*read)(nfc_ndef_bytes, Structure *, nfc_ndef_payload_report *),
                                          nfc_ndef_record *(*create)(const Structure *, nfc_ndef_bytes))
{
    return maker<Record>(function, [=] {
        static Bytes data; // outlives what was read of it
        data = bytes(payload);
        Structure structure;
        EXPECT_EQ(read({data.data(), data.size()}, &structure, nullptr), 1) << payload;
        return create(&structure, {parts.id, 1});
    });
}
#define REBUILDING(type, payload)                                                                                      \
    rebuilder("nfc_ndef_" #type "_record_create", payload, nfc_ndef_##type##_read, nfc_ndef_##type##_record_create)

std::vector<Case> rebuilder_cases()
{
    return {
        REBUILDING(android_application, "612E62"),
        REBUILDING(device_information, "000156 01014D FF0101"),
        REBUILDING(wifi, "100E 0011 1045 0001 61 1003 0002 0001 100F 0002 0001"),
        REBUILDING(bt_le, "021C00 020A01"),
        REBUILDING(handover_mediation, "13 D102006163"),
        REBUILDING(handover_initiate, "13"),
        REBUILDING(service_parameter, "10 0161 00 00 00 0000"),
        REBUILDING(service_select, "0161"),
        REBUILDING(tnep_status, "00"),
        REBUILDING(signature, "20 00 02 0000 01 000161"),
    };
}

std::vector<Case> extractor_cases()
{
    return {
        reader("rtdlib_text_record_extract", read_text, "02656E4869",
               "1 utf16=0 code_length=2 code=656E length=2 text=4869",
               {"1 utf16=0 code_length=2 code=656E length=2 text=null",
                "1 utf16=0 code_length=2 code=null length=2 text=4869",
                "1 utf16=0 code_length=2 code=null length=2 text=null"}),
        reader("rtdlib_uri_record_extract", read_uri, "016162", "1 code=1 field=6162 length=2",
               {"1 code=1 field=null length=2"}),
        reader("rtdlib_smart_poster_record_extract", read_poster,
               "9101015401 1101015502 1101015403 120901 696D6167652F706E67 04 120901 766964656F2F6D7034 05"
               "11010473 00000001 1101017406 110301616374 07 5101015808",
               "1 titles=2 list=[T:01 T:03] uri=U:02 action=7 icons=2 list=[image/png:04 video/mp4:05] "
               "size=s:00000001 type=t:06 others=1 list=[X:08]",
               {"-1", "-1 titles=0 list=null uri=U:02", "-1 titles=2 list=[T:01 T:03] uri=U:02",
                "-1 titles=2 list=[T:01 T:03] uri=U:02 type=t:06",
                "-1 titles=2 list=[T:01 T:03] uri=U:02 action=7 icons=0 list=null size=s:00000001 type=t:06",
                "-1 titles=2 list=[T:01 T:03] uri=U:02 action=7 icons=2 list=[image/png:04 video/mp4:05] "
                "size=s:00000001 type=t:06 others=0 list=null"}),
        reader("rtdlib_generic_control_record_extract", read_control,
               "05 9101017401 110102610107 1101016402 510201476303",
               "1 config=5 target=t:01 flag=1 code=7 data=d:02 nested=1 list=[Gc:03]",
               {"-1 config=5", "-1 config=5 target=t:01 flag=1 code=7",
                "-1 config=5 target=t:01 flag=1 code=7 data=d:02 nested=0 list=null"}),
        reader("rtdlib_generic_control_record_extract", read_control,
               "05 9101017401 3101016100 160005D101015461 1101016402 510201476303", // an action in chunks is joined
               "1 config=5 target=t:01 flag=0 action=T:61 data=d:02 nested=1 list=[Gc:03]",
               {"-1 config=5", "-1 config=5 target=t:01", "-1 config=5 target=t:01 flag=0",
                "-1 config=5 target=t:01 flag=0 action=T:61",
                "-1 config=5 target=t:01 flag=0 action=T:61 data=d:02 nested=0 list=null"}),
        reader("rtdlib_handover_request_record_extract", read_request, "12 91020263720102 1102016163A1 5102016163A2",
               "1 cr=cr:0102 ac=2 list=[ac:A1 ac:A2] version=12", {"-1 cr=cr:0102 ac=0 version=12", "-1 version=12"}),
        reader("rtdlib_handover_select_record_extract", read_select, "12 9102016163A1 1102016163A2 5103026572720110",
               "1 ac=2 list=[ac:A1 ac:A2] err=err:0110 version=12",
               {"-1 ac=0 version=12", "-1 ac=2 list=[ac:A1 ac:A2] version=12"}),
        reader("rtdlib_handover_carrier_record_extract", read_carrier, "02 02 612F 010203",
               "1 ctf=2 length=2 type=612F data_length=3 data=010203", {"-1 ctf=2 length=0 type=null"}),
        reader("rtdlib_alternative_carrier_record_extract", read_alternative, "01 0161 03 0162 00 0163",
               "1 cps=1 length=1 ref=61 aux=3 lengths=010001 list=[62 null 63]",
               {"-1 cps=1 length=1 ref=null aux=0", "-1 cps=1 length=1 ref=null aux=0 lengths=null list=null"}),
        reader("rtdlib_bt_2_1_configuration_data_record_extract", read_oob,
               "0000 010203040506 020961 03030A11 040D010203 06FF0100616263 03FF0200",
               "1 class=010203 name=61 uuid16=0A11 makers=2 id=0100 data=616263 id=0200",
               {"0", "0 name=61", "0 class=010203 name=61 uuid16=0A11 makers=2",
                "0 class=010203 name=61 uuid16=0A11 makers=2 id=0100",
                "0 class=010203 name=61 uuid16=0A11 makers=2 id=0100 data=616263"}),
        reader("rtdlib_bt_configuration_data_record_extract", read_legacy, "21 060504030201 0C0B0A 07 01 61",
               "1 21 @ pairing=07 name=61", {"0", "0 21", "0 21 @ pairing=07"}),
        reader("rtdlib_sharing_enquiry_record_extract", read_enquiry, "10 01 02 6162",
               "1 type=1 length=2 data=6162 version=10", {"-1 type=1 length=0 version=10"}),
    };
}

std::vector<Case> all_cases()
{
    std::vector<Case> all;
    for (const auto cases : {record_and_message_cases, builder_cases, rebuilder_cases, extractor_cases})
        for (Case &c : cases())
            all.push_back(std::move(c));
    return all;
}

TEST(AllocationFailure, GivesTheStatedResultAndLeavesNothingBehind)
{
    for (const Case &c : all_cases()) {
        std::set<std::string> failures;
        for (const Failing mode : {Failing::once, Failing::from_there_on}) {
            bool failed = true;
            for (size_t n = 1; failed && !HasFatalFailure(); ++n) {
                SCOPED_TRACE(testing::Message() << c.function << ", allocation " << n
                                                << (mode == Failing::once ? " fails" : " and all later ones fail"));
                plan_failure(n, mode);
                const std::string result = c.run();
                forget_failure();
                failed = failure_happened();
                ASSERT_EQ(live_blocks(), 0U);
                if (failed)
                    failures.insert(result);
                else
                    EXPECT_EQ(result, c.success);
                EXPECT_TRUE(failed || n > 1) << "it allocates nothing";
            }
        }
        EXPECT_EQ(failures, c.failures) << c.function;
    }
}

// The functions of the public headers, but for those that read in place and write into buffers: they never allocate, as
// their tests see. Beside them only what makes a record does.
std::set<std::string> declared()
{
    std::set<std::string> names;
    const std::regex declaration("NFC_NDEF_API [^;(]*[ *](\\w+)\\(");
    for (const auto &file : std::filesystem::directory_iterator(PUBLIC_HEADERS)) {
        std::string line, code;
        for (std::ifstream header(file.path()); file.path().extension() == ".h" && std::getline(header, line);)
            code += line.starts_with('#') ? "" : line + ' ';
        const bool owning = file.path().filename() == "nfc_ndef.h";
        for (std::sregex_iterator name(code.begin(), code.end(), declaration); name != std::sregex_iterator(); ++name)
            if (owning || (*name)[1].str().ends_with("_record_create"))
                names.insert((*name)[1]);
    }
    return names;
}

TEST(AllocationFailure, IsSweptOverEveryFunctionThatAllocates)
{
    const Message m = message({part, part, part});
    nfc_ndef_msg *const msg = m.get();
    const nfc_ndef_record_type *const key = &part->record_type;
    const nfc_ndef_record_type absent = {parts.name, 2, 1};
    nfc_ndef_record *const replacement = well_known("T", text("x")).release();
    uint8_t *const id = owned(text("i"));
    const Record two_bytes = with_payload(bytes("0102"));
    uint8_t first = 0, second = 0;
    uint16_t number = 0;
    uint32_t length = 0;
    // What takes over what it is given, or answers with a number or a pointer into what is there.
    const std::pair<const char *, std::function<void()>> others[] = {
        {CALLING(nfc_ndef_record_set_id, replacement, id, 1)},
        {CALLING(nfc_ndef_msg_set_record, msg, 0, replacement)},
        {CALLING(nfc_ndef_msg_remove_record, msg, 1)},
        {CALLING(nfc_ndef_record_type_get_name, key, &first)},
        {CALLING(nfc_ndef_record_type_get_format, key)},
        {CALLING(nfc_ndef_record_type_equals, key, &replacement->record_type)},
        {CALLING(nfc_ndef_record_get_id, part, &first)},
        {CALLING(nfc_ndef_record_get_payload, part, &length)},
        {CALLING(nfc_ndef_record_get_payload_length, part)},
        {CALLING(nfc_ndef_record_get_record_type, part)},
        {CALLING(nfc_ndef_msg_get_record_by_index, msg, 1)},
        {CALLING(nfc_ndef_msg_edit_record_by_index, msg, 1)},
        {CALLING(nfc_ndef_msg_get_record_by_id, msg, parts.id, 1)},
        {CALLING(nfc_ndef_msg_edit_record_by_id, msg, parts.id, 1)},
        {CALLING(nfc_ndef_msg_get_number_of_records, msg)},
        {CALLING(nfc_ndef_record_index_by_type_from_msg, msg, key)},
        {CALLING(nfc_ndef_msg_get_records_by_type, msg, &absent, &first)},
        {CALLING(nfc_ndef_msg_check, parts.data, 0, 16, nullptr)},
        {CALLING(nfc_ndef_msg_check_text, 0)},
        {CALLING(rtdlib_collision_resolution_record_extract, two_bytes.get(), &number)},
        {CALLING(rtdlib_handover_select_error_record_extract, two_bytes.get(), &first, &second)},
    };
    // And these allocate by themselves, or only free.
    std::set<std::string> covered{"os_block_alloc",
                                  "os_block_alloc_and_clear",
                                  "os_block_dealloc",
                                  "nfc_ndef_record_type_delete",
                                  "nfc_ndef_record_delete",
                                  "nfc_ndef_msg_delete",
                                  "nfc_ndef_bt_rtd_2_1_str_delete",
                                  "nfc_ndef_bt_rtd_2_0_str_delete"};
    const size_t before = allocations();
    for (const auto &[function, call] : others) {
        call();
        EXPECT_EQ(allocations(), before) << function;
        covered.insert(function);
    }
    for (const Case &c : all_cases())
        covered.insert(c.function);
    EXPECT_EQ(covered, declared());
}

} // namespace
