#include "halvane/air/channel_usage.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.85: a usage mode and pairs of class and channel.
TEST(AirChannelUsage, DecodesEachChannel) {
    const auto element = ChannelUsage::decode(bytesOf("01 5106 510B 80"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->mode, 1);
    ASSERT_EQ(element->channels.size(), 2u);
    EXPECT_EQ(element->channels[1], (UsageChannel{81, 11}));
    EXPECT_EQ(element->rest.size(), 1u);
    EXPECT_FALSE(ChannelUsage::decode({}));
}

}  // namespace
