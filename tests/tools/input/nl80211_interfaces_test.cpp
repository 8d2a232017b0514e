#include "tools/halvane/input/nl80211_interfaces.h"

#include <cerrno>
#include <cstdint>
#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <string>

#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"
#include "tests/support/private_network.h"
#include "tests/support/scripted_nl80211.h"
#include "tools/halvane/input/wireless_interface.h"

using halvane::testing::Bytes;
using halvane::testing::enterPrivateNetwork;
using halvane::testing::hasPrivateNetworks;
using halvane::testing::HeardInterface;
using halvane::testing::isTrueInChild;
using halvane::testing::NetlinkMessage;
using halvane::testing::ScriptedNl80211;
using namespace halvane::tool;

namespace {

Bytes interfaceMessage(const std::string& name, std::uint32_t index, std::uint32_t mode) {
    NetlinkMessage message(NL80211_CMD_NEW_INTERFACE);
    message.addU32(NL80211_ATTR_IFINDEX, index).addText(NL80211_ATTR_IFNAME, name);
    return message.addU32(NL80211_ATTR_IFTYPE, mode).bytes();
}

TEST(InterfacesOfNl80211, StandInTheOrderOfTheirIndexes) {
    ScriptedNl80211 kernel;
    kernel.answers.emplace_back(
        Nl80211Answer{{interfaceMessage("wlan1mon", 7, NL80211_IFTYPE_MONITOR), Bytes{1, 2},
                       interfaceMessage("wlan0", 3, NL80211_IFTYPE_STATION)}});
    const auto interfaces = interfacesOf(kernel);
    ASSERT_TRUE(interfaces);
    EXPECT_EQ(listText(*interfaces), "wlan0 (managed), wlan1mon (monitor)");
    ASSERT_EQ(kernel.asked.size(), 1U);
    EXPECT_EQ(kernel.asked[0].command, NL80211_CMD_GET_INTERFACE);
    EXPECT_TRUE(kernel.asked[0].isList);
    EXPECT_TRUE(kernel.asked[0].attributes.bytes().empty());
}

TEST(InterfacesOfNl80211, MayBeRefused) {
    ScriptedNl80211 kernel;
    kernel.answers.push_back(ScriptedNl80211::refusal(EPERM));
    EXPECT_EQ(interfacesOf(kernel).error().error, EPERM);
}

TEST(WirelessInterfaces, AreThoseInMonitorModeToo) {
    if (!hasPrivateNetworks()) {
        GTEST_SKIP() << "this system has no network namespaces or no TAP devices for tests";
    }
    EXPECT_TRUE(isTrueInChild([] {
        if (!enterPrivateNetwork()) return false;
        const HeardInterface ethernet("eth0", 1);
        const HeardInterface second("mon1"), first("mon0");
        return listText(wirelessInterfaces()) == "mon1 (monitor), mon0 (monitor)";
    }));
}

}  // namespace
