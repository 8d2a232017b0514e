#include "tools/halvaned-sim/default_world.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/regulatory/channel.h"

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
ByteBuffer stationElements() {
    return {1,    8,    0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24,  //
            50,   4,    0x30, 0x48, 0x60, 0x6C,                          //
            48,   20,   0x01, 0x00, 0x00, 0x0F, 0xAC, 0x04,              //
            0x01, 0x00, 0x00, 0x0F, 0xAC, 0x04,                          //
            0x01, 0x00, 0x00, 0x0F, 0xAC, 0x02, 0x00, 0x00,              //
            45,   26,   0x2C, 0x01, 0x03, 0xFF, 0x00, 0x00, 0x00, 0x00,  //
            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //
            0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
}

HalvaneClient station(std::uint8_t number, int rssi) {
    auto client = HalvaneClient::initWithMAC({0x02, 0x00, 0x00, 0x00, 0x01, number});
    client.setCapabilityField(0x0431);  // ESS, privacy, short preamble, short slot time
    client.setInformationElements(stationElements());
    client.setRSSI(Number(rssi));
    client.setNoise(Number(-95));
    client.setDeauthReason(kReasonNone);
    return client;
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

HalvaneDevice device(const ByteBuffer& mac, std::uint64_t index, std::uint64_t chains) {
    auto device = HalvaneDevice::initWithMACAddress_withIndex(mac, index);
    device.setNumRadioChains(chains);
    return device;
}

SimulatedInterface interfaceOf(const HalvaneDevice& device, const char* name, const char* role,
                               std::vector<HalvaneChannel> channels) {
    auto bare = HalvaneInterface::initWithDevice_withMAC_withBSDName(
        std::make_shared<HalvaneDevice>(device), device.MACAddress(), name);
    PropertyListDictionary skeleton = bare.skeletonRepresentation();
    skeleton.set("Role", role);
    skeleton.set("Subsystem", "nl80211");
    SimulatedInterface interface {
        .record = *HalvaneInterface::initWithSkeletonRepresentation(skeleton)
    };
    interface.record.setAvailableChannels(std::move(channels));
    return interface;
}

}  // namespace

World defaultWorld() {
    std::vector<HalvaneDevice> devices = {device({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}, 0, 2),
                                          device({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5F}, 1, 3)};
    auto host = interfaceOf(devices[0], "wlan0", kHostRole, channelsOf(k24GHz));
    host.configs.put(network());
    host.stations = {station(1, -48), station(2, -61)};
    auto other = interfaceOf(devices[1], "wlan1", "STA", channelsOf(kBothBands));
    other.stations = {station(3, -70)};
    std::vector<SimulatedInterface> interfaces;
    interfaces.push_back(std::move(host));
    interfaces.push_back(std::move(other));
    return World(std::move(devices), std::move(interfaces));
}

}  // namespace halvane::sim
