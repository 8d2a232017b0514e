#include "halvane/air/operating_mode_notification.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// Width 2 with bit 2, and three streams.
TEST(AirOperatingModeNotification, TellsWidthAndStreams) {
    const auto element = OperatingModeNotification::decode(bytesOf("26"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->channelWidth(), 160);
    EXPECT_EQ(element->streams(), 3);
    EXPECT_FALSE(element->isLdpcUnwanted());
    EXPECT_FALSE(element->isOfBeamforming());
    EXPECT_FALSE(OperatingModeNotification::decode({}));
    OperatingModeNotification built;
    built.mode.setBits(4, 3, 7);
    EXPECT_EQ(built.encode(), bytesOf("70"));
    EXPECT_EQ(built.streams(), 8);
}

TEST(AirOperatingModeNotification, TellsEachWidth) {
    const int widths[] = {20, 40, 80, 160, 20, 40, 160, 160};
    for (std::uint8_t mode = 0; mode < 8; ++mode) {
        EXPECT_EQ(OperatingModeNotification{.mode = {{mode}}}.channelWidth(), widths[mode]);
    }
    EXPECT_TRUE(OperatingModeNotification{.mode = {{0x08}}}.isLdpcUnwanted());
    EXPECT_TRUE(OperatingModeNotification{.mode = {{0x80}}}.isOfBeamforming());
}

}  // namespace
