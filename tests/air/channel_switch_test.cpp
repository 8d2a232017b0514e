#include "halvane/air/channel_switch.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirChannelSwitch, TellsTheChannel) {
    const auto element = ChannelSwitch::decode(bytesOf("01 64 05"));
    ASSERT_TRUE(element);
    EXPECT_TRUE(element->isQuiet());
    EXPECT_EQ(element->newChannel, 100);
    EXPECT_EQ(element->count, 5);
    EXPECT_FALSE(ChannelSwitch::decode(bytesOf("01 64")));
    EXPECT_EQ((ChannelSwitch{.mode = 0, .newChannel = 36, .count = 1}.encode()), bytesOf("002401"));
}

}  // namespace
