#include "tools/halvaned/radio/radio_interface.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <string>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"

#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"
#include "tools/halvane/input/wireless_interface.h"

using halvane::ByteBuffer;
using halvane::MacAddress;
using halvane::testing::Bytes;
using halvane::testing::forEachPrefix;
using halvane::testing::NetlinkMessage;
using halvane::tool::InterfaceMode;
using namespace halvane::hosting;

namespace {

NetlinkMessage interfaceMessage() {
    NetlinkMessage message(NL80211_CMD_NEW_INTERFACE);
    message.addU32(NL80211_ATTR_IFINDEX, 3).addText(NL80211_ATTR_IFNAME, "wlan0");
    message.addU32(NL80211_ATTR_WIPHY, 2).addU32(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_AP);
    message.add(NL80211_ATTR_MAC, {2, 0, 0, 0, 0, 1}).addU64(NL80211_ATTR_WDEV, 0x200000001);
    return message;
}

const RadioInterface kInterface{.name = "wlan0",
                                .index = 3,
                                .radio = 2,
                                .address = MacAddress({2, 0, 0, 0, 0, 1}),
                                .mode = InterfaceMode::AP};

TEST(RadioInterface, IsReadFromItsMessage) {
    const auto interface = readRadioInterface(interfaceMessage().bytes());
    ASSERT_TRUE(interface && *interface);
    EXPECT_EQ(**interface, kInterface);
}

TEST(RadioInterface, IsNoDeviceWithoutANetwork) {
    NetlinkMessage device(NL80211_CMD_NEW_INTERFACE);
    device.addU64(NL80211_ATTR_WDEV, 1).addU32(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_P2P_DEVICE);
    const auto none = readRadioInterface(device.bytes());
    ASSERT_TRUE(none);
    EXPECT_FALSE(*none);
    const auto other = readRadioInterface(NetlinkMessage(NL80211_CMD_DEL_INTERFACE).bytes());
    ASSERT_TRUE(other);
    EXPECT_FALSE(*other);
}

TEST(RadioInterface, IsNotReadFromAPartOfItsAttributes) {
    const Bytes whole = interfaceMessage().bytes();
    std::size_t faults = 0;
    forEachPrefix(whole, [&](const ByteBuffer& prefix) {
        const auto interface = readRadioInterface(prefix.bytes());
        if (!interface) ++faults;
        // The last attribute tells nothing that is kept.
        const bool isWhole = interface && *interface && **interface == kInterface;
        EXPECT_EQ(isWhole, prefix.size() == whole.size() || prefix.size() == whole.size() - 12 ||
                               prefix.size() == whole.size() - 13 ||
                               prefix.size() == whole.size() - 14)
            << prefix.size() << " of " << whole.size();
    });
    EXPECT_GT(faults, whole.size() / 2);
}

TEST(RadioInterface, IsChecked) {
    const auto faultOf = [](int type, std::size_t size) {
        NetlinkMessage message = NetlinkMessage(NL80211_CMD_NEW_INTERFACE);
        message.add(type, Bytes(size, 1));
        return readRadioInterface(message.bytes()).error();
    };
    EXPECT_EQ(faultOf(NL80211_ATTR_IFINDEX, 5), "its interface has 5 octets");
    EXPECT_EQ(faultOf(NL80211_ATTR_WIPHY, 3), "its radio has 3 octets");
    EXPECT_EQ(faultOf(NL80211_ATTR_IFTYPE, 0), "its interface's type has 0 octets");
    EXPECT_EQ(faultOf(NL80211_ATTR_MAC, 7), "its address has 7 octets");
    NetlinkMessage alone(NL80211_CMD_NEW_INTERFACE);
    alone.addU32(NL80211_ATTR_IFINDEX, 3).addText(NL80211_ATTR_IFNAME, "wlan0");
    EXPECT_EQ(readRadioInterface(alone.bytes()).error(), "it tells no radio");
}

}  // namespace
