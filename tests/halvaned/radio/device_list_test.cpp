#include "tools/halvaned/radio/device_list.h"

#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "tests/halvaned/radio/device_samples.h"

using halvane::testing::sampleDevices;
using namespace halvane::hosting;

namespace {

TEST(DeviceList, FindsInterfacesWithTheirRadios) {
    const DeviceList list = sampleDevices();
    ASSERT_NE(list.find("wlan1"), nullptr);
    EXPECT_EQ(list.find("wlan1")->index, 5U);
    EXPECT_EQ(list.radioOf(*list.find("wlan1"))->name, "phy4");
    EXPECT_EQ(list.radioOf(*list.find("eth0")), nullptr);
    EXPECT_EQ(list.find("wlan"), nullptr);
    EXPECT_EQ(list.radioOf({.radio = 77}), nullptr);
}

TEST(DeviceList, TellsWhoseRulesAnInterfaceFollows) {
    DeviceList list = sampleDevices();
    EXPECT_EQ(list.countryOf(*list.find("wlan0")), "DE");
    EXPECT_EQ(list.countryOf(*list.find("wlan1")), "US");
    EXPECT_EQ(list.countryOf(*list.find("eth0")), std::nullopt);
    list.domains.clear();
    EXPECT_EQ(list.countryOf(*list.find("wlan0")), std::nullopt);
}

}  // namespace
