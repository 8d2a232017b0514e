#include "tools/halvane/input/wireless_interface.h"

#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <span>
#include <vector>

using namespace halvane::tool;

namespace {

TEST(WirelessInterface, HasTheNameOfItsMode) {
    EXPECT_EQ(modeName(static_cast<InterfaceMode>(NL80211_IFTYPE_ADHOC)), "IBSS");
    EXPECT_EQ(modeName(static_cast<InterfaceMode>(NL80211_IFTYPE_STATION)), "managed");
    EXPECT_EQ(modeName(static_cast<InterfaceMode>(NL80211_IFTYPE_AP)), "AP");
    EXPECT_EQ(modeName(static_cast<InterfaceMode>(NL80211_IFTYPE_AP_VLAN)), "AP/VLAN");
    EXPECT_EQ(modeName(static_cast<InterfaceMode>(NL80211_IFTYPE_MONITOR)), "monitor");
    EXPECT_EQ(modeName(static_cast<InterfaceMode>(NL80211_IFTYPE_MESH_POINT)), "mesh point");
    EXPECT_EQ(modeName(static_cast<InterfaceMode>(NL80211_IFTYPE_P2P_GO)), "P2P-GO");
    EXPECT_EQ(modeName(static_cast<InterfaceMode>(NL80211_IFTYPE_OCB)), "outside of a BSS");
    EXPECT_EQ(modeName(static_cast<InterfaceMode>(NL80211_IFTYPE_NAN)), "NAN");
    EXPECT_EQ(modeName(static_cast<InterfaceMode>(99)), "mode 99");
}

TEST(WirelessInterface, IsListedWithItsMode) {
    const std::vector<WirelessInterface> two = {{"wlan0", 3, InterfaceMode::Managed},
                                                {"wlan1mon", 4, InterfaceMode::Monitor}};
    EXPECT_EQ(listText({}), "");
    EXPECT_EQ(thereAre({}), "there is no Wi-Fi interface");
    EXPECT_EQ(thereAre(std::span(two).first(1)), "there is: wlan0 (managed)");
    EXPECT_EQ(thereAre(two), "there are: wlan0 (managed), wlan1mon (monitor)");
    EXPECT_EQ(findInterface(two, "wlan1mon"), &two[1]);
    EXPECT_EQ(findInterface(two, "wlan1"), nullptr);
}

TEST(WirelessInterface, StandsOnceInJoinedLists) {
    const auto both = joined({{"b", 5, InterfaceMode::Monitor}, {"a", 9, InterfaceMode::Managed}},
                             {{"b", 5, InterfaceMode::Monitor}, {"c", 7, InterfaceMode::Monitor}});
    EXPECT_EQ(listText(both), "b (monitor), c (monitor), a (managed)");
}

}  // namespace
