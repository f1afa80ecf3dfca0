// What C++ programs can say with values and JSON cannot: records inside records that nothing can be made of.
#include <nfc_ndef/values.h>

#include <gtest/gtest.h>

using namespace nfc_ndef::values;

TEST(Values, MakeNothingOfARecordThatCannotBeMade)
{
    const Record possible = generic_record(well_known("t"), {1});
    const Record impossible = generic_record(well_known("t"), {1}, Bytes(256, 'i'));
    const auto makes = [&](auto content, auto... members) {
        const auto with = [&](const Record &record) { return ((content.*members = record), ..., build(content)); };
        return with(possible).has_value() && !with(impossible).has_value();
    };
    SmartPoster poster;
    poster.uri_record = possible;
    poster.action = 0;
    EXPECT_TRUE(makes(poster, &SmartPoster::uri_record));
    EXPECT_TRUE(makes(poster, &SmartPoster::type_record));
    EXPECT_TRUE(makes(poster, &SmartPoster::size_record));
    GenericControl control;
    control.config = 0;
    control.target_record = possible;
    EXPECT_TRUE(makes(control, &GenericControl::target_record));
    EXPECT_TRUE(makes(control, &GenericControl::action_record));
    EXPECT_TRUE(makes(control, &GenericControl::data_record));
    EXPECT_TRUE(makes(HandoverRequest{.version = 0x12}, &HandoverRequest::cr_record));
    EXPECT_TRUE(makes(HandoverSelect{.version = 0x12}, &HandoverSelect::err_record));
}
