#include "halvane/air/max_channel_switch_time.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirMaxChannelSwitchTime, HasThreeOctets) {
    EXPECT_EQ(MaxChannelSwitchTime::decode(bytesOf("010203"))->switchTime, 0x030201u);
    EXPECT_FALSE(MaxChannelSwitchTime::decode(bytesOf("0102")));
    EXPECT_EQ(MaxChannelSwitchTime{.switchTime = 60000}.encode(), bytesOf("60EA00"));
}

}  // namespace
