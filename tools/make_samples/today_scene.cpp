// Networks of Wi-Fi 5 to 7 with the security of today, each in a beacon of its own.
#include <cstdint>
#include <string_view>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/owe_transition_mode.h"
#include "halvane/air/security.h"
#include "halvane/base/byte_buffer.h"

#include "tools/make_samples/access_point.h"
#include "tools/make_samples/air_elements.h"
#include "tools/make_samples/bytes.h"
#include "tools/make_samples/capture_file.h"
#include "tools/make_samples/elements.h"
#include "tools/make_samples/multi_link_elements.h"
#include "tools/make_samples/scenes.h"

namespace halvane::samples {

namespace {

using air::Band;
using air::ChannelWidth;

// For clients of WPA2 and of WPA3, with one password.
AccessPoint lindenHouse() {
    return {.number = 0x11,
            .name = "Linden House",
            .radio = {{Band::Ghz2, 1}, ChannelWidth::Mhz20, 2},
            .rates = kRates11bg,
            .rsn = rsnOf({.akms = {kPSK, kSAE}, .pmf = air::Pmf::Capable}),
            .rsnx = hashToElement(),
            .load = loadOf(7, 66)};
}

AccessPoint lindenHouseAt5Ghz() {
    return {.number = 0x12,
            .name = "Linden House 5G",
            .radio = {{Band::Ghz5, 36}, ChannelWidth::Mhz80, 3},
            .generation = 5,
            .rsn = rsnOf({.akms = {kPSK}})};
}

// Two access points in one device. Clients change between them without a new exchange of keys.
AccessPoint larchLane() {
    Keys keys = wpa3Personal();
    keys.akms = {kSAE, kFTSAE};
    return {.name = "Larch Lane",
            .rsn = rsnOf(keys),
            .rsnx = hashToElement(),
            .mobilityDomain = mobilityDomain()};
}

AccessPoint larchLaneAt6Ghz() {
    AccessPoint accessPoint = larchLane();
    accessPoint.number = 0x14;
    accessPoint.radio = {{Band::Ghz6, 37}, ChannelWidth::Mhz160, 2};
    accessPoint.rates = withHashToElementAlone(kRates11a);
    return accessPoint;
}

AccessPoint larchLaneAt5Ghz() {
    AccessPoint accessPoint = larchLane();
    accessPoint.number = 0x13;
    accessPoint.radio = {{Band::Ghz5, 100}, ChannelWidth::Mhz160, 4};
    accessPoint.neighbors = coLocated({{larchLaneAt6Ghz(), {}}});
    return accessPoint;
}

// 320 MHz of which 40 are not used. The access point has no other link.
AccessPoint poplarTower() {
    constexpr std::uint16_t kChannels73And77 = 0x0C00;
    Keys keys = wpa3Personal();
    keys.akms = {kSAE, kSAEExtKey};
    keys.pairwise = {kCCMP, kGCMP256};
    return {.number = 0x15,
            .name = "Poplar Tower",
            .radio = {{Band::Ghz6, 53}, ChannelWidth::Mhz320Second, 4, kChannels73And77},
            .generation = 7,
            .rates = withHashToElementAlone(kRates11a),
            .rsn = rsnOf(keys),
            .rsnx = hashToElement(),
            .multiLink = multiLinkOf({.mldNumber = 0x1F, .linkId = 0, .linkCount = 1})};
}

AccessPoint ministry() {
    return {.number = 0x16,
            .name = "Ministry",
            .radio = {{Band::Ghz5, 44}, ChannelWidth::Mhz80, 4},
            .rsn = rsnOf({.akms = {kSuiteB192},
                          .pairwise = {kGCMP256},
                          .group = kGCMP256,
                          .pmf = air::Pmf::Required,
                          .groupManagement = kBIPGMAC256})};
}

Keys enhancedOpen() {
    return {.akms = {kOWE}, .pmf = air::Pmf::Required, .groupManagement = kBIPCMAC128};
}

AccessPoint poplarCafe() {
    return {.number = 0x17,
            .name = "Poplar Cafe",
            .radio = {{Band::Ghz2, 6}, ChannelWidth::Mhz20, 2},
            .rsn = rsnOf(enhancedOpen())};
}

// The halves of one network: clients that know OWE go to the hidden one.
constexpr std::uint8_t kOpenHalf = 0x18, kHiddenHalf = 0x19;
constexpr std::string_view kOpenName = "Market Hall", kHiddenName = "Market Hall OWE";

Bytes otherHalf(std::uint8_t number, std::string_view name) {
    return airElement(
        air::OweTransitionMode{.bssid = addressOf(number), .ssid = ByteBuffer(text(name))});
}

AccessPoint marketHall() {
    return {.number = kOpenHalf,
            .name = kOpenName,
            .radio = {{Band::Ghz2, 11}, ChannelWidth::Mhz20, 2},
            .vendor = otherHalf(kHiddenHalf, kHiddenName)};
}

AccessPoint marketHallHidden() {
    AccessPoint accessPoint = marketHall();
    accessPoint.number = kHiddenHalf;
    accessPoint.name = "";
    accessPoint.rsn = rsnOf(enhancedOpen());
    accessPoint.vendor = otherHalf(kOpenHalf, kOpenName);
    return accessPoint;
}

}  // namespace

Bytes todayCapture() {
    struct Scene {
        AccessPoint accessPoint;
        std::int8_t signalDBm;
    };
    const Scene scenes[] = {
        {lindenHouse(), -44},     {lindenHouseAt5Ghz(), -52}, {larchLaneAt5Ghz(), -61},
        {larchLaneAt6Ghz(), -66}, {poplarTower(), -58},       {ministry(), -71},
        {poplarCafe(), -63},      {marketHall(), -75},        {marketHallHidden(), -75},
    };
    std::vector<Packet> packets;
    for (const Scene& scene : scenes) {
        packets.push_back({heard(scene.accessPoint, FrameKind::Beacon, scene.signalDBm)});
    }
    return pcapFile(LinkType::Radiotap, Order::Little, packets);
}

}  // namespace halvane::samples
