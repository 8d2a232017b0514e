#include "halvane/air/secondary_channel_offset.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// The element (9.4.2.19) names the values 0, 1 and 3.
TEST(AirSecondaryChannelOffset, TellsWhereTheSecondaryChannelIs) {
    const auto placeOf = [](std::uint8_t offset) {
        return SecondaryChannelOffset{.offset = offset}.secondaryChannel();
    };
    EXPECT_EQ(placeOf(0), SecondaryChannel::None);
    EXPECT_EQ(placeOf(1), SecondaryChannel::Above);
    EXPECT_EQ(placeOf(2), SecondaryChannel::Reserved);
    EXPECT_EQ(placeOf(3), SecondaryChannel::Below);
    EXPECT_EQ(placeOf(4), SecondaryChannel::Reserved);
    EXPECT_EQ(placeOf(0xFF), SecondaryChannel::Reserved);
}

TEST(AirSecondaryChannelOffset, IsOneOctet) {
    EXPECT_EQ(SecondaryChannelOffset::decode(bytesOf("03"))->offset, 3);
    EXPECT_FALSE(SecondaryChannelOffset::decode({}));
    EXPECT_EQ(SecondaryChannelOffset{.offset = 1}.encode(), bytesOf("01"));
}

}  // namespace
