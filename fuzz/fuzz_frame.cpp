// A captured packet of any bytes under each link type, up to its BSS record.
#include <cstddef>
#include <cstdint>
#include <span>

#include "fuzz/require.h"
#include "tools/halvane/beacon_frame.h"
#include "tools/halvane/frame_record.h"
#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/radio_header.h"

using namespace halvane::tool;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr LinkType kLinkTypes[] = {LinkType::IEEE80211, LinkType::Prism, LinkType::Radiotap,
                                       LinkType::AVS, LinkType::PPI};
    const std::span<const std::uint8_t> packet(data, size);
    for (const LinkType linkType : kLinkTypes) {
        const auto radio = parseRadioHeader(linkType, packet);
        if (!radio) continue;
        REQUIRE(radio->frame.size() <= size);
        CapturedFrame frame;
        frame.radio = *radio;
        frame.content = parseBeaconFrame(radio->frame);
        if (frame.beacon() == nullptr) continue;
        const auto record = sightingOfFrame(frame).record;
        REQUIRE(record.ieBuffer()->size() <= radio->frame.size());
    }
    return 0;
}
