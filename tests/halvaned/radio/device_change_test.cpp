#include "tools/halvaned/radio/device_change.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <utility>
#include <vector>

#include "halvane/base/mac_address.h"

#include "tests/halvaned/radio/device_samples.h"
#include "tools/halvane/input/wireless_interface.h"
#include "tools/halvaned/radio/device_list.h"

using halvane::MacAddress;
using halvane::testing::sampleDevices;
using halvane::tool::InterfaceMode;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace halvane::hosting;

namespace {

using Kind = DeviceChange::Kind;

std::vector<DeviceChange> changesBy(const std::function<void(DeviceList&)>& change) {
    DeviceList after = sampleDevices();
    change(after);
    return changesBetween(sampleDevices(), after);
}

TEST(DeviceChanges, AreNoneBetweenEqualLists) {
    EXPECT_THAT(changesBy([](DeviceList&) {}), IsEmpty());
    EXPECT_THAT(changesBetween({}, {}), IsEmpty());
}

TEST(DeviceChanges, AreInterfacesThatComeAndGo) {
    const DeviceChange kAll[] = {
        {Kind::Came, 3, "wlan0", ""}, {Kind::Came, 5, "wlan1", ""}, {Kind::Came, 9, "eth0", ""}};
    EXPECT_THAT(changesBetween({}, sampleDevices()), ::testing::ElementsAreArray(kAll));
    EXPECT_THAT(changesBy([](DeviceList& list) {
                    list.interfaces.erase(list.interfaces.begin());
                    list.interfaces.push_back({.name = "wlan0", .index = 12, .radio = 0});
                }),
                ElementsAre(DeviceChange{Kind::Went, 3, "wlan0", ""},
                            DeviceChange{Kind::Came, 12, "wlan0", ""}));
}

TEST(DeviceChanges, AreNewNamesEvenIfTheyAreSwapped) {
    EXPECT_THAT(changesBy([](DeviceList& list) {
                    std::swap(list.interfaces[0].name, list.interfaces[1].name);
                }),
                ElementsAre(DeviceChange{Kind::Renamed, 3, "wlan1", "wlan0"},
                            DeviceChange{Kind::Renamed, 5, "wlan0", "wlan1"}));
}

TEST(DeviceChanges, TellWhatAnInterfaceCanDo) {
    const std::pair<Kind, std::function<void(DeviceList&)>> changes[] = {
        {Kind::Altered, [](DeviceList& list) { list.interfaces[0].address = MacAddress(); }},
        {Kind::Altered, [](DeviceList& list) { list.interfaces[0].mode = InterfaceMode::Monitor; }},
        {Kind::Altered, [](DeviceList& list) { list.radios[0].mostAPs = 4; }},
        {Kind::Channels,
         [](DeviceList& list) {
             list.radios[0].bands[NL80211_BAND_2GHZ].channels[2484000].isDisabled = false;
         }},
        {Kind::Channels, [](DeviceList& list) { list.radios[0].bands.clear(); }},
        {Kind::Country, [](DeviceList& list) { list.domains[0].country = "FR"; }},
        {Kind::Country, [](DeviceList& list) { list.domains.erase(list.domains.begin()); }},
    };
    for (const auto& [kind, change] : changes) {
        EXPECT_THAT(changesBy(change), ElementsAre(DeviceChange{kind, 3, "wlan0", ""}));
    }
}

TEST(DeviceChanges, StandInTheOrderOfTheirKinds) {
    EXPECT_THAT(changesBy([](DeviceList& list) {
                    list.interfaces[1].name = "renamed";
                    list.interfaces[0].radio = 4;
                    list.interfaces.pop_back();
                }),
                ElementsAre(DeviceChange{Kind::Went, 9, "eth0", ""},
                            DeviceChange{Kind::Renamed, 5, "renamed", "wlan1"},
                            DeviceChange{Kind::Altered, 3, "wlan0", ""},
                            DeviceChange{Kind::Channels, 3, "wlan0", ""},
                            DeviceChange{Kind::Country, 3, "wlan0", ""}));
}

}  // namespace
