// A captured packet of any bytes under each link type, up to its BSS record.
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"

#include "fuzz/require.h"

using namespace halvane::capture;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr LinkType kLinkTypes[] = {LinkType::IEEE80211, LinkType::Prism, LinkType::Radiotap,
                                       LinkType::AVS, LinkType::PPI};
    const std::span<const std::uint8_t> packet(data, size);
    for (const LinkType linkType : kLinkTypes) {
        const auto radio = parseRadioHeader(linkType, packet);
        const auto sighting = sightingOfPacket(linkType, packet);
        REQUIRE(radio || (!sighting && sighting.error() == SkipReason::MalformedHeader));
        if (!radio) continue;
        REQUIRE(radio->frame.size() <= size);
        if (const auto beacon = parseBeaconFrame(radio->frame)) {
            REQUIRE(beacon->elements.size() < radio->frame.size());
        }
        if (!sighting) continue;
        REQUIRE(!radio->isBadFCS);
        REQUIRE(sighting->record.ieBuffer()->size() <= radio->frame.size());
    }
    return 0;
}
