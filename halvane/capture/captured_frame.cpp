#include "halvane/capture/captured_frame.h"

#include <algorithm>

#include "halvane/capture/beacon_frame_internal.h"
#include "halvane/capture/captured_frame_internal.h"
#include "halvane/capture/fcs.h"
#include "halvane/capture/radio_header_internal.h"

namespace halvane::capture {

namespace {

// The elements are whole if all that is missing is of the frame check sequence.
void readContent(std::size_t missing, CapturedFrame& frame) {
    const RadioInfo& radio = frame.radio;
    if (radio.isBadFCS) {
        frame.content = Unexpected(SkipReason::Damaged);
        return;
    }
    readBeaconFrame(radio.hasFCS ? withoutFCS(radio.frame, missing) : radio.frame, frame.content);
    if (frame.content) frame.content->isCut = missing > (radio.hasFCS ? kFCSSize : 0);
}

}  // namespace

void readPacket(LinkType linkType, std::span<const std::uint8_t> packet,
                std::optional<std::size_t> originalLength, CapturedFrame& frame) {
    const std::size_t missing = std::max(originalLength.value_or(0), packet.size()) - packet.size();
    frame.isCut = missing > 0;
    if (!readRadioHeader(linkType, packet, frame.radio)) {
        frame.radio = {};
        frame.content = Unexpected(SkipReason::MalformedHeader);
        return;
    }
    readContent(missing, frame);
}

CapturedFrame examinePacket(LinkType linkType, std::span<const std::uint8_t> packet,
                            std::optional<std::size_t> originalLength) {
    CapturedFrame frame;
    readPacket(linkType, packet, originalLength, frame);
    return frame;
}

}  // namespace halvane::capture
