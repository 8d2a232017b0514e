// A captured packet of any bytes under each link type, up to its BSS record.
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/capture/folded_sighting.h"
#include "halvane/capture/frame_record.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"

#include "fuzz/require.h"

using namespace halvane::capture;

namespace {

// The numbers of a frame are folded without its record as with it.
void checkFolding(const BeaconFrame& beacon, const RadioInfo& radio, const Sighting& sighting) {
    FoldedSighting expected(sighting);
    FoldedSighting actual(sighting);
    expected.fold(sighting);
    if (!actual.foldNumbers(beacon, radio)) return;
    const Sighting whole = expected.sighting();
    const Sighting numbers = actual.sighting();
    REQUIRE(whole.record.channel() == numbers.record.channel());
    REQUIRE(whole.record.RSSI() == numbers.record.RSSI());
    REQUIRE(whole.record.noise() == numbers.record.noise());
    REQUIRE(whole.record.beaconInterval() == numbers.record.beaconInterval());
    REQUIRE(whole.record.capabilities() == numbers.record.capabilities());
    REQUIRE(whole.radioChannel == numbers.radioChannel);
    REQUIRE(whole.radioFrequency == numbers.radioFrequency);
    REQUIRE(whole.isChannelOfRadio == numbers.isChannelOfRadio);
    REQUIRE(whole.frames == numbers.frames);
}

}  // namespace

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
        checkFolding(*examinePacket(linkType, packet).beacon(), *radio, *sighting);
    }
    return 0;
}
