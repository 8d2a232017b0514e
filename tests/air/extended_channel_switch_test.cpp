#include "halvane/air/extended_channel_switch.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirExtendedChannelSwitch, TellsTheClassAndTheChannel) {
    const auto element = ExtendedChannelSwitch::decode(bytesOf("00 83 25 07"));
    ASSERT_TRUE(element);
    EXPECT_FALSE(element->isQuiet());
    EXPECT_EQ(element->newOperatingClass, 131);
    EXPECT_EQ(element->newChannel, 37);
    EXPECT_EQ(element->count, 7);
    EXPECT_FALSE(ExtendedChannelSwitch::decode(bytesOf("00 83 25")));
    ExtendedChannelSwitch built;
    built.mode = 1;
    built.newOperatingClass = 115;
    EXPECT_EQ(built.encode(), bytesOf("01730000"));
}

}  // namespace
