#include "ndef.h"
#include "nfc_ndef_view.hpp"

using namespace test;

namespace {

nfc_ndef_bytes lent(const Bytes &data) { return {data.data(), static_cast<uint32_t>(data.size())}; }
Bytes copy(nfc_ndef_bytes view) { return test::copy(view.data, view.length); }
std::string hex(nfc_ndef_bytes view) { return test::hex(copy(view)); }

// A record of a message that holds no other.
nfc_ndef_record_view only_record(const Bytes &message)
{
    nfc_ndef_msg_view view;
    nfc_ndef_record_view record{};
    const auto read = [&] {
        return nfc_ndef_msg_view_open(lent(message), &view, nullptr) == 1 &&
               nfc_ndef_msg_view_next(&view, &record) == 1;
    };
    EXPECT_TRUE(under_test(read));
    EXPECT_EQ(allocations_of_last_call(), 0U);
    return record;
}

// Runs what needs and writes a number of bytes with each capacity; the bytes when they fit.
template <class Write> std::string written(Write write)
{
    const uint32_t needed = write(nullptr, 0);
    std::string result = "0";
    for (uint32_t capacity = needed > 2 ? needed - 2 : 0; needed != 0 && capacity <= needed + 1; ++capacity) {
        Bytes buffer(capacity, 0xEE);
        EXPECT_EQ(under_test([&] { return write(buffer.data(), capacity); }), needed) << capacity;
        EXPECT_EQ(allocations_of_last_call(), 0U);
        if (capacity >= needed) {
            result = test::hex(Bytes(buffer.begin(), buffer.begin() + needed));
            EXPECT_TRUE(capacity == needed || buffer.back() == 0xEE) << "a byte too many";
        }
    }
    return result;
}

const Bytes chunked = bytes("B901020154696162 360000 36000163 56000164");

} // namespace

TEST(View, OfAChunkedRecordHasPieces)
{
    const nfc_ndef_record_view record = only_record(chunked);
    EXPECT_EQ(hex(record.type) + "/" + hex(record.id) + "/" + hex(record.payload), "54/69/");
    EXPECT_EQ(hex(record.chunks), test::hex(chunked));
    EXPECT_EQ(record.flags, NFC_NDEF_FLAG_MB | NFC_NDEF_FLAG_ME | NFC_NDEF_FLAG_SR | NFC_NDEF_FLAG_IL);
    const auto pieces = [](const nfc_ndef_record_view &view) {
        std::string all;
        uint32_t position = 0;
        for (nfc_ndef_bytes piece; nfc_ndef_record_view_next_piece(&view, &position, &piece);)
            all += hex(piece) + ".";
        return all;
    };
    EXPECT_EQ(pieces(record), "6162..63.64.");
    EXPECT_EQ(pieces(only_record(bytes("D101025461 62"))), "6162.");
    const auto join = [&](uint8_t *buffer, uint32_t capacity) {
        return nfc_ndef_record_view_join(&record, buffer, capacity);
    };
    EXPECT_EQ(written(join), "61626364");
    const auto write = [&](uint8_t *buffer, uint32_t capacity) {
        return nfc_ndef_record_view_write(&record, buffer, capacity);
    };
    EXPECT_EQ(written(write), "D9010401546961626364");
}

TEST(View, SurvivesBytesThatChangeUnderIt)
{
    Bytes changing = chunked;
    nfc_ndef_msg_view opened;
    ASSERT_TRUE(nfc_ndef_msg_view_open(lent(changing), &opened, nullptr));
    nfc_ndef_msg_view again = opened;
    nfc_ndef_record_view record;
    ASSERT_TRUE(nfc_ndef_msg_view_next(&opened, &record));
    changing[13] = 0xFF; // the length of the third chunk
    EXPECT_FALSE(nfc_ndef_msg_view_next(&again, &record));
    uint32_t position = 11;
    nfc_ndef_bytes piece;
    record.chunks = lent(changing);
    EXPECT_FALSE(nfc_ndef_record_view_next_piece(&record, &position, &piece));

    Bytes plain = bytes("D1010154 61");
    ASSERT_TRUE(nfc_ndef_msg_view_open(lent(plain), &opened, nullptr));
    plain[2] = 0xFF; // the length of the payload
    EXPECT_FALSE(nfc_ndef_msg_view_next(&opened, &record));
}

TEST(View, IsARange)
{
    const Bytes message = bytes("9101055402656E4869 110102550461 5102086163 0101610201620163"),
                cut = bytes("9101055402"), past = bytes("D1010154 02");
    std::string all;
    const auto read = [&] {
        const nfc_ndef::message_view view(message);
        for (const nfc_ndef::record_view &record : view) {
            if (const auto text = record.text())
                all += nfc_ndef::text_of(text->text);
            if (const auto uri = record.uri())
                all += uri->prefix, all += nfc_ndef::text_of(uri->field);
            if (const auto carrier = record.alternative_carrier())
                for (const nfc_ndef_bytes &reference : nfc_ndef::references(*carrier))
                    all += nfc_ndef::text_of(reference);
            all += ".";
        }
        return static_cast<bool>(view);
    };
    EXPECT_TRUE(under_test(read));
    EXPECT_EQ(all, "Hi.https://a.bc.");
    const nfc_ndef::message_view refused(cut);
    EXPECT_TRUE(!refused && refused.begin() == refused.end() && refused.report().offset == 4);
    const nfc_ndef::record_view malformed(only_record(past));
    nfc_ndef_payload_report report{};
    EXPECT_TRUE(!malformed.text(&report) && !malformed.uri(&report));
    EXPECT_EQ(report.reason, uint32_t{NFC_NDEF_PAYLOAD_FIELD_PAST_END});
}

TEST(View, ReadsOneRecordByItself)
{
    const struct {
        const char *wire;
        uint8_t flags;
        nfc_ndef_msg_report report;
    } rows[] = {
        {"D1010154 61 FE", 0xD0, {NFC_NDEF_MSG_VALID, 1, 5}},
        {"31010154 61 FE", 0x30, {NFC_NDEF_MSG_VALID, 1, 5}}, // a chunk by itself
        {"D1010254 61", 0, {NFC_NDEF_MSG_PAYLOAD_PAST_END, 0, 4}},
        {"", 0, {NFC_NDEF_MSG_BAD_ARGUMENTS, 0, 0}},
    };
    for (const auto &[wire, flags, expected] : rows) {
        nfc_ndef_record_view record;
        nfc_ndef_msg_report report;
        EXPECT_EQ(nfc_ndef_record_view_read(lent(bytes(wire)), &record, &report), expected.record) << wire;
        EXPECT_EQ(record.flags, flags) << wire;
        EXPECT_TRUE(report.reason == expected.reason && report.record == expected.record &&
                    report.offset == expected.offset)
            << wire << ": " << nfc_ndef_msg_check_text(report.reason) << " " << report.offset;
    }
}

TEST(View, OfAnObjectReadsOnlyWhatIsThere)
{
    nfc_ndef_record_view none = nfc_ndef_record_view_of(nullptr);
    EXPECT_EQ(none.type.data, nullptr);
    Record r = well_known("T", bytes("0102"), text("i"));
    r->record_type.format = 0x109;
    r->id_length = 0;
    nfc_ndef_record_view view = nfc_ndef_record_view_of(r.get());
    EXPECT_EQ(view.id.data, nullptr) << "a pointer without a length";
    EXPECT_EQ(view.format, 0xF9) << "a format that looks like a known one";
    os_block_dealloc(r->payload);
    r->payload = nullptr;
    view = nfc_ndef_record_view_of(r.get());
    EXPECT_TRUE(view.payload.length == 0 && view.payload_length == 0) << "a length without a pointer";
}

TEST(View, KnowsTheKindsByTheRulesOfMatching)
{
    const struct {
        uint8_t format;
        const char *name;
        uint32_t kind;
    } rows[] = {
        {1, "T", NFC_NDEF_KIND_TEXT},
        {1, "t", NFC_NDEF_KIND_OTHER},
        {1, "U", NFC_NDEF_KIND_URI},
        {1, "Sp", NFC_NDEF_KIND_SMART_POSTER},
        {1, "Gc", NFC_NDEF_KIND_GENERIC_CONTROL},
        {1, "Hr", NFC_NDEF_KIND_HANDOVER_REQUEST},
        {1, "Hs", NFC_NDEF_KIND_HANDOVER_SELECT},
        {1, "Hc", NFC_NDEF_KIND_HANDOVER_CARRIER},
        {1, "ac", NFC_NDEF_KIND_ALTERNATIVE_CARRIER},
        {1, "cr", NFC_NDEF_KIND_COLLISION_RESOLUTION},
        {1, "err", NFC_NDEF_KIND_HANDOVER_ERROR},
        {1, "Text", NFC_NDEF_KIND_OTHER},
        {2, "T", NFC_NDEF_KIND_OTHER},
        {2, "Application/vnd.bluetooth.ep.oob;x", NFC_NDEF_KIND_BT_OOB},
        {4, "Example.com:bt", NFC_NDEF_KIND_BT_LEGACY},
        {4, "example.com:she", NFC_NDEF_KIND_SHARING_ENQUIRY},
        {0, "", NFC_NDEF_KIND_OTHER},
    };
    for (const auto &[format, name, kind] : rows) {
        const Bytes type_name = text(name);
        nfc_ndef_record_view record{};
        record.type = lent(type_name);
        record.format = format;
        EXPECT_EQ(nfc_ndef_record_view_kind(&record), kind) << name;
        EXPECT_EQ(nfc_ndef_record_view_matches(&record, format, lent(type_name)), 1) << name;
        EXPECT_EQ(nfc_ndef_record_view_matches(&record, 3, lent(type_name)), 0) << name;
        EXPECT_EQ(nfc_ndef_record_view_matches(&record, format, lent(filled(257, 'T'))), 0) << "length wraps";
    }
}

TEST(Writer, FiltersAndReordersIntoABuffer)
{
    const Bytes message = bytes("9101015461 3901020154696162 16000163 5101015564");
    const auto reversed = [&](uint8_t *buffer, uint32_t capacity) {
        nfc_ndef_msg_view view;
        nfc_ndef_record_view records[3], *next = records;
        EXPECT_EQ(nfc_ndef_msg_view_open(lent(message), &view, nullptr), 1);
        while (nfc_ndef_msg_view_next(&view, next))
            ++next;
        nfc_ndef_msg_writer writer;
        nfc_ndef_msg_writer_begin(&writer, buffer, capacity);
        EXPECT_EQ(nfc_ndef_msg_writer_end(&writer), 0U);
        while (next != records) {
            EXPECT_EQ(nfc_ndef_msg_writer_add(&writer, --next), 1);
            nfc_ndef_msg_writer_end(&writer); // and goes on
        }
        return nfc_ndef_msg_writer_end(&writer);
    };
    EXPECT_EQ(written(reversed), "9101015564"
                                 "1901030154696162635101015461");
}

TEST(Writer, RefusesWhatCannotBeRead)
{
    nfc_ndef_record_view empty{}, id_too_long{}, with_payload{};
    const Bytes id = filled(256, 'i');
    id_too_long.format = with_payload.format = 1;
    id_too_long.id = lent(id);
    empty.payload = with_payload.payload = lent(id);
    const auto refused = [](const nfc_ndef_record_view &record) {
        nfc_ndef_msg_writer writer;
        nfc_ndef_msg_writer_begin(&writer, nullptr, 0);
        const nfc_ndef_record_view good{};
        return nfc_ndef_msg_writer_add(&writer, &record) + nfc_ndef_record_view_write(&record, nullptr, 0) +
               nfc_ndef_msg_writer_add(&writer, &good) + nfc_ndef_msg_writer_end(&writer);
    };
    EXPECT_EQ(refused(empty), 0U) << "an empty record with a payload; what comes after it";
    EXPECT_EQ(refused(id_too_long), 0U);
    with_payload.payload.length = 0x7FFFFFFF; // not read, as there is no room
    EXPECT_EQ(nfc_ndef_record_view_write(&with_payload, nullptr, 0), 0U);

    nfc_ndef_msg_writer writer;
    nfc_ndef_msg_writer_begin(&writer, nullptr, 0);
    with_payload.payload.length = 0x40000000;
    EXPECT_EQ(nfc_ndef_msg_writer_add(&writer, &with_payload), 1);
    EXPECT_EQ(nfc_ndef_msg_writer_add(&writer, &with_payload), 0) << "2 GiB in all";
    nfc_ndef_msg_writer_begin(&writer, nullptr, 0);
    const nfc_ndef_record_view least{};
    for (unsigned i = 0; i < 254; ++i)
        EXPECT_EQ(nfc_ndef_msg_writer_add(&writer, &least), 1);
    EXPECT_EQ(nfc_ndef_msg_writer_end(&writer), 3U * 254);
    EXPECT_EQ(nfc_ndef_msg_writer_add(&writer, &least), 0) << "255 records";
}

TEST(Writer, WritesObjects)
{
    const Record a = well_known("T", text("a"), text("i")), b = well_known("U", filled(256, 'b'));
    const auto write = [&](uint8_t *buffer, uint32_t capacity) {
        return nfc_ndef_record_write(a.get(), buffer, capacity);
    };
    EXPECT_EQ(written(write), "1901010154"
                              "6961");
    const Message m = message({a.get(), b.get()});
    const auto write_message = [&](uint8_t *buffer, uint32_t capacity) {
        return nfc_ndef_msg_write(m.get(), buffer, capacity);
    };
    EXPECT_EQ(written(write_message), test::hex(encode(m)));
    EXPECT_EQ(nfc_ndef_record_write(nullptr, nullptr, 0) + nfc_ndef_msg_write(nullptr, nullptr, 0) +
                  nfc_ndef_msg_write(Message(nfc_ndef_msg_create()).get(), nullptr, 0),
              0U);
    const_cast<nfc_ndef_record *>(at(m, 1))->payload_length = 0x7FFFFFFF; // not read, as there is no room
    EXPECT_EQ(nfc_ndef_msg_write(m.get(), nullptr, 0), 0U);
}

TEST(Tlv, IsFoundInADataArea)
{
    const std::string header = "04010203 04050607 00000000 E1101200", one = "D1010154 61";
    const std::string last = "0203 F70102", eight = last + last + last + last + last + last + last + last;
    const struct {
        std::string memory, found; // pieces
        uint32_t reason, offset;
        const char *fault;
    } rows[] = {
        {"0305" + one + "FE", "D101015461.", NFC_NDEF_TLV_FOUND, 0, "the value, and nothing behind it"},
        {"0000 0103A0100C FD02AAAA 0305" + one, "D101015461.", NFC_NDEF_TLV_FOUND, 11, "no terminator"},
        {"0300", "", NFC_NDEF_TLV_FOUND, 0, "no message on the tag"},
        {"03FF0005" + one, "D101015461.", NFC_NDEF_TLV_FOUND, 0, "a length in its long form"},
        {"03FF0100 61*256", test::expanded("61*256") + ".", NFC_NDEF_TLV_FOUND, 0, "both bytes of the length count"},
        {header + "0305" + one, "D101015461.", NFC_NDEF_TLV_FOUND, 16, "memory from its first byte"},
        {header + "FD90 AA*144 0305" + one, "", NFC_NDEF_TLV_CUT_SHORT, 160, "the size of the data area"},
        {header + "0203 F00200 0305 D1010154 61", "D101015461.", NFC_NDEF_TLV_FOUND, 21, "before the reserved bytes"},
        {"0203 000202 0305" + one, "D101015461.", NFC_NDEF_TLV_FOUND, 5, "reserved before the area"},
        {header + eight + "0305" + one, "D101015461.", NFC_NDEF_TLV_FOUND, 56, "as many areas as are kept"},
        {header + eight + last + "0305" + one, "", NFC_NDEF_TLV_TOO_MANY_AREAS, 56, "one more"},
        {header + "0103 601002 0305 D1 EEEE 010154 61", "D1.01015461.", NFC_NDEF_TLV_FOUND, 21, "bits, not bytes"},
        {header + "0203 300203 0305 D1 EEEE 010154 61", "D1.01015461.", NFC_NDEF_TLV_FOUND, 21, "page size"},
        {header + "0203 510302 EEEEEE 0305" + one, "D101015461.", NFC_NDEF_TLV_FOUND, 24, "reserved between blocks"},
        {"", "", NFC_NDEF_TLV_NO_MESSAGE, 0, "nothing"},
        {"00FE0305" + one, "", NFC_NDEF_TLV_NO_MESSAGE, 1, "behind the terminator"},
        {header + "0203 510302 EEEE", "", NFC_NDEF_TLV_NO_MESSAGE, 23, "an area that reaches past the end"},
        {"0000", "", NFC_NDEF_TLV_NO_MESSAGE, 2, "the end instead of a terminator"},
        {"0306" + one, "", NFC_NDEF_TLV_CUT_SHORT, 7, "the value"},
        {"03", "", NFC_NDEF_TLV_CUT_SHORT, 1, "the length"},
        {"03FF00", "", NFC_NDEF_TLV_CUT_SHORT, 3, "the long length"},
        {"0203F0", "", NFC_NDEF_TLV_CUT_SHORT, 3, "a control TLV"},
    };
    for (const auto &[memory, found, reason, offset, fault] : rows) {
        const Exact exact(bytes(memory));
        nfc_ndef_tlv tlv;
        nfc_ndef_tlv_report report;
        const auto find = [&] { return nfc_ndef_tlv_find({exact.data(), exact.size()}, &tlv, &report); };
        EXPECT_EQ(under_test(find), reason == NFC_NDEF_TLV_FOUND) << fault;
        EXPECT_EQ(allocations_of_last_call(), 0U);
        EXPECT_EQ(report.reason, reason) << fault;
        EXPECT_EQ(report.offset, offset) << fault;
        Bytes joined(tlv.length);
        EXPECT_EQ(nfc_ndef_tlv_join(&tlv, joined.data(), tlv.length), tlv.length);
        std::string pieces, bytes_of_pieces;
        for (nfc_ndef_bytes piece; nfc_ndef_tlv_next_piece(&tlv, &piece);) {
            pieces += hex(piece) + ".";
            bytes_of_pieces += hex(piece);
        }
        EXPECT_EQ(pieces, found) << fault;
        EXPECT_EQ(test::hex(joined), bytes_of_pieces) << fault;
        EXPECT_EQ(hex(tlv.message), std::count(pieces.begin(), pieces.end(), '.') == 1 ? bytes_of_pieces : "") << fault;
    }
}

TEST(Tlv, WrapsAMessage)
{
    const auto wrap = [](size_t length) {
        const Bytes message = filled(length, 'a');
        return written(
            [&](uint8_t *buffer, uint32_t capacity) { return nfc_ndef_tlv_wrap(lent(message), buffer, capacity); });
    };
    EXPECT_EQ(wrap(0), "0300FE");
    EXPECT_EQ(wrap(254), expanded("03FE61*254FE"));
    EXPECT_EQ(wrap(255), expanded("03FF00FF61*255FE"));
    EXPECT_EQ(wrap(65534).substr(0, 10), "03FFFFFE61");
    EXPECT_EQ(wrap(65535), "0");
    Bytes in_place = bytes("0102 0304 EEEEEE");
    EXPECT_EQ(nfc_ndef_tlv_wrap({in_place.data(), 4}, in_place.data(), 7), 7U);
    EXPECT_EQ(test::hex(in_place), "030401020304FE");
}

TEST(Version, OfTheLibraryIsThatOfItsHeader)
{
    EXPECT_EQ(nfc_ndef_version(),
              0x10000U * NFC_NDEF_VERSION_MAJOR + 0x100 * NFC_NDEF_VERSION_MINOR + NFC_NDEF_VERSION_PATCH);
}
