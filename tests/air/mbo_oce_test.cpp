#include "halvane/air/mbo_oce.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"
#include "tests/air/told_fields.h"

using halvane::testing::bytesOf;
using halvane::testing::ToldFields;
using namespace halvane::air;

namespace {

TEST(AirMboOce, TellsItsAttributes) {
    const auto mbo = MboOce::decode(bytesOf("010140 040102 650109 670134 6602AABB"));
    ASSERT_TRUE(mbo);
    EXPECT_EQ(mbo->attributes.size(), 5u);
    EXPECT_TRUE(mbo->isMbo() && mbo->isCellularDataAware());
    EXPECT_EQ(mbo->associationDisallowed(), 2);
    EXPECT_EQ(mbo->oceRelease(), 1);
    EXPECT_EQ(mbo->downlinkCapacity(), 4);
    EXPECT_EQ(mbo->uplinkCapacity(), 3);
}

TEST(AirMboOce, LacksWhatIsNotThere) {
    const auto none = MboOce::decode(bytesOf("0100"));
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->isMbo());
    EXPECT_FALSE(none->isCellularDataAware());
    EXPECT_FALSE(none->associationDisallowed() || none->oceRelease() || none->uplinkCapacity());
    EXPECT_FALSE(MboOce::decode({})->isMbo());
    EXPECT_FALSE(MboOce::decode(bytesOf("010240")));
    EXPECT_FALSE(MboOce::decode(bytesOf("01")));
}

TEST(AirMboOce, NamesWhatItTells) {
    ToldFields fields;
    EXPECT_FALSE(MboOce::describe(bytesOf("040105 C80101"), fields));
    EXPECT_EQ(fields.text_,
              "Attribute{Attribute ID=Association Disallowed;Length=1;"
              "Reason Code=Insufficient RSSI;}Attribute{Attribute ID=200;Length=1;Value=01;}");
}

}  // namespace
