#include "tables.h"

#include <sys/mman.h>

using namespace test;

namespace {

Record text_of(uint8_t utf16, const Bytes &code, const Bytes &text)
{
    return Record(rtdlib_text_record_create(utf16, static_cast<uint8_t>(code.size()), ptr(code), ptr(text),
                                            static_cast<uint32_t>(text.size())));
}

Record uri_of(uint8_t code, const Bytes &field)
{
    return Record(rtdlib_uri_record_create(code, static_cast<uint32_t>(field.size()), ptr(field)));
}

} // namespace

TEST(Text, Builds)
{
    const Bytes en = text("en"), hi = text("Hi");
    const uint8_t *const e = en.data(), *const h = hi.data();
    const Built rows[] = {
        {text_of(0, en, hi), "1S T", "02656E4869", "all parts"},
        {text_of(2, en, hi), "1S T", "02656E4869", "more than the lowest bit counts"},
        {text_of(0xFF, filled(63, 'x'), hi), "1S T", "BF 78*63 4869", "longest code; utf16 sets bit 6"},
        {text_of(0, filled(64, 'x'), hi), "language code of 64 bytes runs into bit 6"},
        {text_of(0, en, filled(251, 'a')), "1S T", "02656E 61*251", "payload of 254 bytes"},
        {text_of(0, en, filled(252, 'a')), "1 T", "02656E 61*252", "payload of 255 bytes marked short"},
        {rtdlib_text_record_create(0, 0, e, h, 2), "language code without length"},
        {rtdlib_text_record_create(0, 2, nullptr, h, 2), "language code missing"},
        {rtdlib_text_record_create(0, 2, e, h, 0), "text without length"},
        {rtdlib_text_record_create(0, 2, e, nullptr, 2), "text missing"},
        {rtdlib_text_record_create(0, 2, e, h, 0xFFFFFFFD), "payload length wraps to 0"},
        {rtdlib_text_record_create(0, 2, e, h, 0xFFFFFFFF), "payload length wraps to 2"},
    };
    expect_built(rows);
}

TEST(Text, Reads)
{
    const Payload rows[] = {
        {"02656E4869", "1 utf16=0 code_length=2 code=656E length=2 text=4869", "all parts"},
        {"C2656E41", "1 utf16=1 code_length=2 code=656E length=1 text=41", "bit 6 taken for length"},
        {"0041", "1 utf16=0 code_length=0 length=1 text=41", "empty language code written"},
        {"00", "-1 utf16=0 code_length=0", "no text, no language"},
        {"03656E00", "-1 utf16=0 code_length=3", "language code takes the last byte"},
        {"BF41", "-1 utf16=1 code_length=3F", "language code past the end"},
    };
    expect_read(read_text, rows);
    EXPECT_EQ(read_text(nullptr), "-1");
    expect_cut(read_text, bytes("82656E4869"), [](size_t length) {
        return length == 0  ? "-1"
               : length < 4 ? "-1 utf16=1 code_length=2"
                            : "1 utf16=1 code_length=2 code=656E length=1 text=48";
    });
}

TEST(Uri, Builds)
{
    const Bytes abc = text("abc");
    const Built rows[] = {
        {uri_of(3, abc), "1S U", "03616263", "all parts"},
        {uri_of(5, {}), "1S U", "05", "code alone"},
        {uri_of(0xFF, bytes("207FC3A9")), "1S U", "FF207FC3A9", "a code, or more than control bytes, refused"},
        {uri_of(0, bytes("1F6161")), "control byte first"},
        {uri_of(0, bytes("61610A")), "control byte last"},
        {uri_of(0, filled(254, 'a')), "1 U", "00 61*254", "payload of 255 bytes marked short"},
        {rtdlib_uri_record_create(0, 3, nullptr), "field missing"},
        {rtdlib_uri_record_create(0, 0, abc.data()), "field without length"},
        {rtdlib_uri_record_create(0, 0xFFFFFFFF, abc.data()), "payload length wraps to 0"},
    };
    expect_built(rows);
}

TEST(Uri, Reads)
{
    const Payload rows[] = {
        {"03616263", "1 code=3 field=616263 length=3", "all parts"},
        {"05", "1 code=5 field=null length=0", "outputs of an empty field not written"},
        {"00611F", "-1 code=0 field=null length=0", "control byte last"},
        {"070A61", "-1 code=7 field=null length=0", "control byte first"},
        {"FF207FFF", "1 code=FF field=207FFF length=3", "bytes from 20 on refused"},
    };
    expect_read(read_uri, rows);
    EXPECT_EQ(read_uri(nullptr), "-1");
    expect_cut(read_uri, bytes("0361"), [](size_t length) { return length ? "1 code=3 field=null length=0" : "-1"; });
}

// Longer than a 32-bit distance: zeros that take no memory as long as nobody copies them.
TEST(Uri, FindsControlBytesInAFieldOfTwoGigabytes)
{
    constexpr uint32_t length = 0x80000002;
    void *const zeros =
        mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (zeros == MAP_FAILED)
        GTEST_SKIP() << "no room for 2 GiB";
    const nfc_ndef_record record{.payload_length = length, .payload = static_cast<uint8_t *>(zeros)};
    uint8_t code = 9, *field = nullptr;
    uint32_t field_length = 9;
    EXPECT_EQ(rtdlib_uri_record_extract(&record, &code, &field, &field_length), -1);
    EXPECT_TRUE(code == 0 && !field && field_length == 0);
    EXPECT_EQ(rtdlib_uri_record_create(0, length, record.payload), nullptr);
    munmap(zeros, length);
}
