#include "halvane/air/time_advertisement.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.60, table 9-179: 2025-11-22 10:44:00.500.
TEST(AirTimeAdvertisement, DecodesUtc) {
    const auto element =
        TimeAdvertisement::decode(bytesOf("02 E907 0B 16 0A 2C 00 F401 00 0102030405 07"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->utc, (UtcTime{2025, 11, 22, 10, 44, 0, 500, 0}));
    EXPECT_EQ(element->error, 0x0504030201u);
    EXPECT_EQ(element->updateCounter, 7);
    EXPECT_FALSE(element->offset);
}

TEST(AirTimeAdvertisement, DecodesAnOffset) {
    const auto element = TimeAdvertisement::decode(bytesOf("01 0102030405060708090A FF00000000"));
    ASSERT_TRUE(element && element->offset);
    EXPECT_EQ(element->offset->octets[9], 10);
    EXPECT_EQ(element->error, 255u);
    EXPECT_FALSE(element->utc || element->updateCounter);
}

TEST(AirTimeAdvertisement, MayTellNothing) {
    const auto element = TimeAdvertisement::decode(bytesOf("00 AA"));
    ASSERT_TRUE(element);
    EXPECT_FALSE(element->offset || element->utc || element->error);
    EXPECT_EQ(element->rest.size(), 1u);
    EXPECT_FALSE(TimeAdvertisement::decode(bytesOf("01 0102")));
    EXPECT_FALSE(TimeAdvertisement::decode({}));
}

}  // namespace
