#include "halvane/capture/captured_frame.h"

#include <algorithm>

#include "halvane/capture/fcs.h"

namespace halvane::capture {

namespace {

// The elements are whole if all that is missing is of the frame check sequence.
Result<BeaconFrame, SkipReason> read(const RadioInfo& radio, std::size_t missing) {
    if (radio.isBadFCS) return Unexpected(SkipReason::Damaged);
    auto beacon = parseBeaconFrame(radio.hasFCS ? withoutFCS(radio.frame, missing) : radio.frame);
    if (beacon) beacon->isCut = missing > (radio.hasFCS ? kFCSSize : 0);
    return beacon;
}

}  // namespace

CapturedFrame examinePacket(LinkType linkType, std::span<const std::uint8_t> packet,
                            std::optional<std::size_t> originalLength) {
    const std::size_t missing = std::max(originalLength.value_or(0), packet.size()) - packet.size();
    const auto radio = parseRadioHeader(linkType, packet);
    if (!radio) {
        return {.content = Unexpected(SkipReason::MalformedHeader), .isCut = missing > 0};
    }
    return {.radio = *radio, .content = read(*radio, missing), .isCut = missing > 0};
}

}  // namespace halvane::capture
