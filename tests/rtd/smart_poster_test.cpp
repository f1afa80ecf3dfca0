#include "tables.h"

using namespace test;
using namespace std::string_literals;

namespace {

Record poster(const Array &titles, std::string_view uri, uint8_t action, const Array &icons = {""},
              std::string_view size = "", std::string_view type = "", const Array &others = {""})
{
    return Record(rtdlib_smart_poster_record_create(titles.count(), titles.data(), record_of(uri).get(), action,
                                                    icons.count(), icons.data(), record_of(size).get(),
                                                    record_of(type).get(), others.count(), others.data()));
}

std::string repeated(size_t count, const std::string &part)
{
    std::string all;
    while (count-- > 0)
        all += (all.empty() ? "" : " ") + part;
    return all;
}

} // namespace

TEST(SmartPoster, Builds)
{
    const Array one("U:01");
    const auto arrays = [uri = one.records[0].get()](uint8_t count, nfc_ndef_record *const *array) {
        return Record(
            rtdlib_smart_poster_record_create(count, array, uri, 0, count, array, nullptr, nullptr, count, array));
    };
    std::vector<Record> broken;
    broken.push_back(unencodable());
    const Built rows[] = {
        {poster({""}, "U:0361", 0), "1S Sp", "910102550361 51030161637400", "URI and action"},
        {poster({"T:01"}, "", 0), "URI missing"},
        {poster({"T:01 - T:02"}, "U:0361", 0xFF, {"video/mp4:03 - image/png:04"}, "s:00000005", "t:06",
                {"- x:07 audio/ogg:08"}),
         "1S Sp", "[U:0361 T:01 T:02 act:FF video/mp4:03 image/png:04 t:06 s:00000005 x:07 audio/ogg:08]",
         "order, null entries"},
        {arrays(3, nullptr), "1S Sp", "[U:01 act:00]", "counts without arrays"},
        {arrays(0, one.data()), "1S Sp", "[U:01 act:00]", "arrays without counts"},
        {arrays(1, one.data()), "1S Sp", "[U:01 U:01 act:00 U:01 U:01]", "types of the parts looked at"},
        {poster({"T:01*237"}, "U:0361", 0), "1S Sp", "[U:0361 T:01*237 act:00]", "payload of 254 bytes"},
        {poster({"T:01*238"}, "U:0361", 0), "1 Sp", "[U:0361 T:01*238 act:00]", "255 bytes marked short"},
        {poster({""}, "U:01", 0, {""}, "", "", {std::move(broken)}), "a part that cannot be encoded"},
        {poster({repeated(254, "T:")}, "U:01", 0), "256 records in a message"},
    };
    expect_built(rows);
}

TEST(SmartPoster, Reads)
{
    const Payload rows[] = {
        {"[U:0361]", "1 titles=0 uri=U:0361 action=FF others=0", "outputs of absent parts written"},
        {"[T:01]", "-1", "no URI"},
        {"[U:01 T:02 U:03]", "-1", "two URIs"},
        {"B101015503 16000161 310300616374 360000 36000107 160000 320901696D6167652F706E6701 16000102 1101017809 "
         "310102730000 "
         "5600020005",
         "1 titles=0 uri=U:0361 action=7 icons=1 list=[image/png:0102] size=s:00000005 others=1 list=[x:09]",
         "parts in chunks"},
        {"[U: u:02 S:03]", "1 titles=0 uri=U: action=FF others=2 list=[u:02 S:03]", "case; URI looked into"},
        {"[act:01 t:02 act:02 s:00000001 U:03 t: s:02]",
         "1 titles=0 uri=U:03 action=1 size=s:00000001 type=t:02 others=3 list=[act:02 t: s:02]",
         "first of each is the part, the second another record of whatever length"},
        {"[T:02 U:03 s:000001 t:04 T:01 act:00 s:00000001]", "-1 titles=2 list=[T:02 T:01] uri=U:03 type=t:04",
         "size of 3 bytes: what was found before stays"},
        {"[U:03 s:0000000001]", "-1 titles=0 uri=U:03", "size of 5 bytes"},
        {"[U:03 act:0000 s:00000001 act:01 image/png:01]", "-1 titles=0 uri=U:03 action=FF size=s:00000001",
         "action of 2 bytes"},
        {"[U:03 act:]", "-1 titles=0 uri=U:03 action=FF", "empty action record"},
        {"[image/png:01 video/mpeg:02 image/gif:03 U:]",
         "1 titles=0 uri=U: action=FF icons=3 list=[image/png:01 image/gif:03 video/mpeg:02] others=0", "images first"},
        {"[U: video/mp4:01 *x:02 IMAGE/PNG:03 ;q:04 audio/ogg:05]",
         "1 titles=0 uri=U: action=FF icons=4 list=[*x:02 IMAGE/PNG:03 ;q:04 video/mp4:01] others=1 "
         "list=[audio/ogg:05]",
         "records that match both icon types come back once, as images"},
        {"[im;x:01 vid/x:02 Imag/x:03 U: VI*:04 ima/ge:05]",
         "1 titles=0 uri=U: action=FF icons=3 list=[im;x:01 Imag/x:03 VI*:04] others=2 list=[vid/x:02 ima/ge:05]",
         "four letters of each icon type count"},
        {"9101015501 5200013B", "1 titles=0 uri=U:01 action=FF others=1 list=[:3B]",
         "a media record without a type is no icon, whatever follows its header"},
        {"9101015501 520000", "1 titles=0 uri=U:01 action=FF others=1 list=[:]", "nor when nothing follows"},
        {"9101015501 5102010055 02", "1 titles=0 uri=U:01 action=FF others=1 list=[\0U:02]"s, "type of two bytes"},
        {"9101015501 510401 03616374 02", "1 titles=0 uri=U:01 action=FF others=1 list=[\003act:02]",
         "type of four bytes"},
        {"D00000", "-1", "an empty record alone"},
        {"[U:0361] FE", "-1", "a byte behind the message"},
    };
    expect_read(read_poster, rows);
    EXPECT_EQ(read_poster(nullptr), "-1");
    const Record built = poster({"T:01"}, "U:0361", 0xFF, {"image/png:04"}, "s:00000005", "t:06", {"x:07"});
    expect_cut(read_poster, payload_of(built.get()), [](size_t) { return "-1"; });
}

TEST(SmartPoster, HoldsAsManyRecordsAsAMessage)
{
    std::string images, videos, others;
    for (uint8_t i = 1; i <= 60; ++i) {
        const std::string payload = ":" + hex({i});
        images += " image/png" + payload;
        videos += " video/mp4" + payload;
        others += (i == 1 ? "x" : " x") + payload + " text/plain" + payload;
    }
    EXPECT_EQ(read_poster(poster({""}, "U:01", 0, {others}, "", "", {videos + images})),
              "1 titles=0 uri=U:01 action=0 icons=78 list=[" + images.substr(1) + videos + "] others=78 list=[" +
                  others + "]");
    EXPECT_EQ(read_poster(poster({repeated(252, "T:01")}, "U:01", 0)),
              "1 titles=FC list=[" + repeated(252, "T:01") + "] uri=U:01 action=0 others=0");
    Record unread = poster({repeated(253, "T:01")}, "U:01", 0);
    ASSERT_NE(unread, nullptr);
    EXPECT_EQ(read_poster(std::move(unread)), "-1") << "255 records can be written, but not read";
}
