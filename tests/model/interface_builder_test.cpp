#include "halvane/model/interface_builder.h"

#include <gtest/gtest.h>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"

namespace halvane {

namespace {

constexpr MacAddress kAddress({2, 0, 0, 0, 0, 7});

HalvaneDevice device() {
    return HalvaneDevice::initWithMACAddress_withIndex(kAddress.buffer(), 3);
}

TEST(InterfaceBuilder, MakesWhatEveryInterfaceHas) {
    const auto interface = InterfaceBuilder("wlan0", "AP", "nl80211").build();
    EXPECT_EQ(interface.ifName(), "wlan0");
    EXPECT_EQ(interface.ifRole(), "AP");
    EXPECT_EQ(interface.ifSubsystem(), "nl80211");
    EXPECT_FALSE(interface.ifMAC());
    EXPECT_EQ(interface.wifiDevice(), nullptr);
    EXPECT_TRUE(interface.availableChannels().empty());
}

TEST(InterfaceBuilder, MakesAnInterfaceThatClientsRead) {
    const auto channel =
        HalvaneChannel::initWithChannel_withFrequency_isRadarProne(Number(6), Number(2437), false);
    const auto interface = InterfaceBuilder("wlan0", "AP", "nl80211")
                               .address(kAddress)
                               .device(device())
                               .channels({channel})
                               .build();
    EXPECT_EQ(interface.ifMAC(), kAddress.buffer());
    EXPECT_EQ(*interface.wifiDevice(), device());
    EXPECT_EQ(interface.availableChannels(), std::vector{channel});
    const auto read =
        HalvaneInterface::initWithSkeletonRepresentation(interface.skeletonRepresentation());
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, interface);
}

TEST(InterfaceBuilder, ChangesACopy) {
    const auto before = InterfaceBuilder("wlan0", "AP", "nl80211").device(device()).build();
    const auto after = InterfaceBuilder(before).role("STA").build();
    EXPECT_EQ(before.ifRole(), "AP");
    EXPECT_EQ(after.ifRole(), "STA");
    EXPECT_EQ(after.ifName(), "wlan0");
    EXPECT_EQ(after.wifiDevice(), before.wifiDevice());
}

}  // namespace

}  // namespace halvane
