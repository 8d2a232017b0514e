#include "halvane/air/quiet_channel.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.164: the interval is there in the mode 1 alone.
TEST(AirQuietChannel, HasAnIntervalInTheModeOne) {
    const auto quiet = QuietChannel::decode(bytesOf("01 02 03 0400 0501"));
    ASSERT_TRUE(quiet);
    EXPECT_EQ(quiet->interval, (QuietInterval{2, 3, 4, 0x105}));
    const auto other = QuietChannel::decode(bytesOf("00"));
    ASSERT_TRUE(other);
    EXPECT_FALSE(other->interval);
    EXPECT_FALSE(QuietChannel::decode(bytesOf("01 02 03 0400 05")));
    EXPECT_FALSE(QuietChannel::decode({}));
}

}  // namespace
