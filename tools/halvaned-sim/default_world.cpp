#include "tools/halvaned-sim/default_world.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/client_builder.h"
#include "halvane/model/device.h"
#include "halvane/model/interface_builder.h"
#include "halvane/regulatory/channel.h"
#include "halvane/service/hosting_rules_internal.h"

namespace halvane::sim {

namespace {

struct Band {
    unsigned first, last, step;
    bool isRadarProne;
};

constexpr Band k24GHz[] = {{1, 11, 1, false}};
constexpr Band kBothBands[] = {
    {1, 11, 1, false}, {36, 48, 4, false}, {52, 64, 4, true}, {149, 165, 4, false}};

template <std::size_t count>
std::vector<HalvaneChannel> channelsOf(const Band (&bands)[count]) {
    std::vector<HalvaneChannel> channels;
    for (const Band& band : bands) {
        for (unsigned number = band.first; number <= band.last; number += band.step) {
            auto channel = HalvaneChannel::initWithChannel_withFrequency_isRadarProne(
                Number(number), Number(HalvaneChannel::channelFrequencyForNumber(number)),
                band.isRadarProne);
            channel.setSupports40MHz(HalvaneChannel::channelExtensionForNumber(number) != 0);
            channels.push_back(channel);
        }
    }
    return channels;
}

// The elements of a station with one stream that associates with a WPA2 network (IEEE 802.11-2020,
// 9.3.3.5): Supported Rates, Extended Supported Rates, RSN with CCMP and a pre-shared key, HT
// Capabilities.
constexpr std::uint8_t kStationElements[] = {
    1,    8,    0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24,  //
    50,   4,    0x30, 0x48, 0x60, 0x6C,                          //
    48,   20,   0x01, 0x00, 0x00, 0x0F, 0xAC, 0x04,              //
    0x01, 0x00, 0x00, 0x0F, 0xAC, 0x04,                          //
    0x01, 0x00, 0x00, 0x0F, 0xAC, 0x02, 0x00, 0x00,              //
    45,   26,   0x2C, 0x01, 0x03, 0xFF, 0x00, 0x00, 0x00, 0x00,  //
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};

HalvaneClient station(std::uint8_t number, int rssi) {
    return ClientBuilder(MacAddress({0x02, 0x00, 0x00, 0x00, 0x01, number}))
        .capabilities(0x0431)  // ESS, privacy, short preamble, short slot time
        .elements(kStationElements)
        .signal(rssi)
        .noise(-95)
        .build();
}

HalvaneBSSConfig network() {
    auto config = HalvaneBSSConfig::init();
    config.setSSID_error("Halvane Simulation");
    config.setWirelessPassphrase_error("only a simulation");
    config.setSecurityWithOptionString_error("WPA2");
    config.setUnicastCipherWithOptionString_error("CCMP");
    config.setMulticastCipherWithOptionString_error("CCMP");
    config.setKeyManagementWithOptionString_error("PSK");
    config.setChannel(6);
    config.generateKeyMaterial();
    return config;
}

// A device and its only interface have the same address.
struct Radio {
    MacAddress address;
    std::uint64_t index;
    std::uint64_t chains;

    HalvaneDevice device() const {
        auto device = HalvaneDevice::initWithMACAddress_withIndex(address.buffer(), index);
        device.setNumRadioChains(chains);
        return device;
    }
};

SimulatedInterface interfaceOf(const Radio& radio, const char* name, const char* role,
                               std::vector<HalvaneChannel> channels) {
    return {.record = InterfaceBuilder(name, role, "nl80211")
                          .address(radio.address)
                          .device(radio.device())
                          .channels(std::move(channels))
                          .build()};
}

}  // namespace

World defaultWorld() {
    const Radio first = {MacAddress({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}), 0, 2};
    const Radio second = {MacAddress({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5F}), 1, 3};
    auto host = interfaceOf(first, "wlan0", kHostRole, channelsOf(k24GHz));
    host.configs.put(network());
    host.stations = {station(1, -48), station(2, -61)};
    auto other = interfaceOf(second, "wlan1", "STA", channelsOf(kBothBands));
    other.stations = {station(3, -70)};
    std::vector<SimulatedInterface> interfaces;
    interfaces.push_back(std::move(host));
    interfaces.push_back(std::move(other));
    return World({first.device(), second.device()}, std::move(interfaces));
}

}  // namespace halvane::sim
