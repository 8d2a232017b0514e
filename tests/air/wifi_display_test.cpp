#include "halvane/air/wifi_display.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirWifiDisplay, TellsItsDevice) {
    const auto display = WifiDisplay::decode(bytesOf("00 0006 0151 1C44 0032 07 0002 0000"));
    ASSERT_TRUE(display);
    const auto device = display->device();
    ASSERT_TRUE(device);
    EXPECT_EQ(device->role(), WifiDisplayRole::PrimarySink);
    EXPECT_TRUE(device->isSessionAvailable());
    EXPECT_TRUE(device->isServiceDiscoverySupported());
    EXPECT_TRUE(device->isContentProtectionSupported());
    EXPECT_EQ(device->controlPort, 7236);
    EXPECT_EQ(device->maximumThroughput, 50);
    EXPECT_FALSE(WifiDisplay::decode(bytesOf("00 0002 0011"))->device());
    EXPECT_FALSE(WifiDisplay::decode(bytesOf("07 0001 00"))->device());
    EXPECT_FALSE(WifiDisplay::decode(bytesOf("00 0006 0011")));
}

}  // namespace
