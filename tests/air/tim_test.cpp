#include "halvane/air/tim.h"

#include <cstddef>
#include <gtest/gtest.h>

#include "halvane/base/byte_buffer.h"

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// The bitmap begins at the octet 4, with the association ID 32; bits 3 and 15 are 35 and 47.
TEST(AirTim, TellsTheStationsWithTraffic) {
    const auto element = Tim::decode(bytesOf("01 03 05 0880"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->dtimCount, 1);
    EXPECT_EQ(element->dtimPeriod, 3);
    EXPECT_TRUE(element->hasGroupTraffic());
    EXPECT_EQ(element->firstAid(), 32u);
    for (std::size_t aid = 0; aid < 2008; ++aid) {
        EXPECT_EQ(element->hasTraffic(aid), aid == 35 || aid == 47) << aid;
    }
}

TEST(AirTim, MayLackTheBitmap) {
    const auto element = Tim::decode(bytesOf("00 01"));
    ASSERT_TRUE(element);
    EXPECT_FALSE(element->hasGroupTraffic());
    EXPECT_FALSE(element->hasTraffic(0));
    EXPECT_FALSE(Tim::decode(bytesOf("00")));
    const auto empty = Tim::decode(bytesOf("00 01 01"));
    ASSERT_TRUE(empty);
    EXPECT_TRUE(empty->hasGroupTraffic());
    EXPECT_FALSE(empty->hasTraffic(1));
}

TEST(AirTim, IsEncodedFromItsFields) {
    Tim element{.dtimCount = 0, .dtimPeriod = 2};
    element.bitmapControl.emplace().setBit(0, true);
    element.partialBitmap = ByteBuffer({0});
    EXPECT_EQ(element.encode(), bytesOf("00 02 01 00"));
}

}  // namespace
