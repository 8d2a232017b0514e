#include "halvane/capture/captured_frame.h"

#include <algorithm>

#include "halvane/capture/fcs.h"

namespace halvane::capture {

namespace {

std::variant<BeaconFrame, SkipReason> read(const RadioInfo& radio, std::size_t missing) {
    if (radio.isBadFCS) return SkipReason::Damaged;
    return parseBeaconFrame(radio.hasFCS ? withoutFCS(radio.frame, missing) : radio.frame);
}

}  // namespace

CapturedFrame examinePacket(LinkType linkType, std::span<const std::uint8_t> packet,
                            std::optional<std::size_t> originalLength) {
    const std::size_t missing = std::max(originalLength.value_or(0), packet.size()) - packet.size();
    const auto radio = parseRadioHeader(linkType, packet);
    return {.radio = radio.value_or(RadioInfo()),
            .content = radio ? read(*radio, missing) : SkipReason::MalformedHeader,
            .isCut = missing > 0};
}

}  // namespace halvane::capture
