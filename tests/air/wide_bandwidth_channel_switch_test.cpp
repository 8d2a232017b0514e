#include "halvane/air/wide_bandwidth_channel_switch.h"

#include <gtest/gtest.h>

#include "halvane/air/vht_operation.h"

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 160 MHz on 50, whose primary half is on 42.
TEST(AirWideBandwidthChannelSwitch, TellsTheChannel) {
    const auto element = WideBandwidthChannelSwitch::decode(bytesOf("01 2A 32"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->channel.channelWidth, 1);
    EXPECT_EQ(element->channel.centerSegment0, 42);
    EXPECT_EQ(element->channel.centerSegment1, 50);
    EXPECT_FALSE(WideBandwidthChannelSwitch::decode(bytesOf("01 2A")));
    WideBandwidthChannelSwitch built;
    built.channel.centerSegment0 = 38;
    EXPECT_EQ(built.encode(), bytesOf("00 26 00"));
}

}  // namespace
