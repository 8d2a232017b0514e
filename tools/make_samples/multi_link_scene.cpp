// A multi-link device of three links: a beacon of each, and probe responses that tell
// everything about another link.
#include <cstdint>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/extended_capabilities.h"

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

constexpr std::uint8_t kMld = 0x30;
constexpr int kLinkCount = 3;

AccessPoint linkOf(std::uint8_t number, const RadioSetup& radio) {
    Keys keys = wpa3Personal();
    keys.akms = {kSAE, kSAEExtKey};
    keys.pairwise = {kCCMP, kGCMP256};
    return {.number = number,
            .name = "Birch House",
            .radio = radio,
            .generation = 7,
            .rates = withHashToElementAlone(kRates11a),
            .rsn = rsnOf(keys),
            .rsnx = hashToElement(),
            .extendedCapabilities =
                extendedCapabilities({air::ExtendedCapability::ExtendedChannelSwitching,
                                      air::ExtendedCapability::BssTransition,
                                      air::ExtendedCapability::OperatingModeNotification,
                                      air::ExtendedCapability::BeaconProtection})};
}

// The links by their numbers.
std::vector<AccessPoint> birchHouse() {
    std::vector<AccessPoint> links = {
        linkOf(0x31, {{Band::Ghz2, 6}, ChannelWidth::Mhz20, 2}),
        linkOf(0x32, {{Band::Ghz5, 36}, ChannelWidth::Mhz160, 2}),
        linkOf(0x33, {{Band::Ghz6, 37}, ChannelWidth::Mhz320First, 2}),
    };
    for (std::uint8_t id = 0; id < kLinkCount; ++id) {
        std::vector<CoLocated> others;
        for (std::uint8_t other = 0; other < kLinkCount; ++other) {
            if (other != id) others.push_back({links[other], other});
        }
        links[id].neighbors = coLocated(others);
        links[id].multiLink =
            multiLinkOf({.mldNumber = kMld, .linkId = id, .linkCount = kLinkCount});
    }
    return links;
}

// The reply to a station that asks, on one link, for everything about another.
AccessPoint responseAbout(std::uint8_t asked, const std::vector<AccessPoint>& links,
                          std::uint8_t link) {
    AccessPoint sender = links[link];
    sender.multiLink = multiLinkOf({.mldNumber = kMld,
                                    .linkId = link,
                                    .linkCount = kLinkCount,
                                    .profiles = {profileOfLink(asked, links[asked], sender)}});
    return sender;
}

}  // namespace

Bytes multiLinkCapture() {
    const auto links = birchHouse();
    return pcapFile(LinkType::Radiotap, Order::Little,
                    {
                        {heard(links[0], FrameKind::Beacon, -41)},
                        {heard(links[1], FrameKind::Beacon, -49)},
                        {heard(links[2], FrameKind::Beacon, -54)},
                        {heard(responseAbout(0, links, 1), FrameKind::ProbeResponse, -49)},
                        {heard(responseAbout(2, links, 1), FrameKind::ProbeResponse, -49)},
                    });
}

}  // namespace halvane::samples
