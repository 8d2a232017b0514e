// A list of two radios and a wired interface, to be changed by tests.
#ifndef TESTS_HALVANED_RADIO_DEVICE_SAMPLES_H
#define TESTS_HALVANED_RADIO_DEVICE_SAMPLES_H

#include <linux/nl80211.h>

#include "halvane/base/mac_address.h"

#include "tools/halvane/input/wireless_interface.h"
#include "tools/halvaned/radio/device_list.h"
#include "tools/halvaned/radio/radio.h"

namespace halvane::testing {

inline hosting::DeviceList sampleDevices() {
    hosting::Radio first{.index = 0, .name = "phy0", .sendingChains = 3};
    first.modes = {tool::InterfaceMode::AP};
    first.bands[NL80211_BAND_2GHZ].ht = 0x0002;
    first.bands[NL80211_BAND_2GHZ].channels = {{2412000, {.frequency = 2412}},
                                               {2484000, {.frequency = 2484, .isDisabled = true}}};
    first.bands[NL80211_BAND_5GHZ].ht = 0x0002;
    first.bands[NL80211_BAND_5GHZ].vht = 0;
    first.bands[NL80211_BAND_5GHZ].channels = {
        {5180000, {.frequency = 5180, .isPassive = true}},
        {5260000, {.frequency = 5260, .isPassive = true, .isRadarProne = true}},
        {5261000, {.frequency = 5261}}};
    hosting::Radio second{.index = 4, .name = "phy4"};
    second.address = MacAddress({2, 0, 0, 0, 4, 0});
    hosting::DeviceList list;
    list.radios = {first, second};
    list.interfaces = {
        {.name = "wlan0", .index = 3, .address = MacAddress({2, 0, 0, 0, 0, 1}), .radio = 0},
        {.name = "wlan1", .index = 5, .address = MacAddress({2, 0, 0, 0, 0, 2}), .radio = 4},
        {.name = "eth0", .index = 9, .address = MacAddress({2, 0, 0, 0, 0, 3})}};
    list.domains = {{"DE", {}}, {"US", 4}};
    return list;
}

}  // namespace halvane::testing

#endif
