#include "tools/halvane/input/examined_frame.h"

#include <algorithm>
#include <cstddef>

#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame_internal.h"
#include "halvane/capture/fcs.h"
#include "halvane/capture/link_type.h"

namespace halvane::tool {

namespace {

// Radio headers of these types tell whether a frame check sequence is there.
bool tellsFCS(capture::LinkType linkType) {
    return linkType == capture::LinkType::Radiotap || linkType == capture::LinkType::PPI;
}

bool isMalformed(const capture::CapturedFrame& frame) {
    return !frame.content && frame.content.error() == capture::SkipReason::MalformedHeader;
}

// As examinePacket(), for a capture that itself tells of frame check sequences. A radio header that
// can tell of them and does not is believed, unless the frame does end in one.
capture::CapturedFrame examineWithFCS(const Packet& packet) {
    const auto frame = capture::examinePacket(packet.linkType, packet.bytes, packet.originalLength);
    if (frame.radio.hasFCS || isMalformed(frame)) return frame;
    if (tellsFCS(packet.linkType) && (frame.isCut || !capture::endsInItsFCS(frame.radio.frame))) {
        return frame;
    }
    const std::size_t missing =
        std::max(packet.originalLength, packet.bytes.size()) - packet.bytes.size();
    const std::size_t sequence =
        frame.radio.frame.size() - capture::withoutFCS(frame.radio.frame, missing).size();
    auto content =
        capture::examinePacket(packet.linkType, packet.bytes.first(packet.bytes.size() - sequence));
    content.radio.frame = frame.radio.frame;
    content.radio.hasFCS = true;
    content.isCut = frame.isCut;
    if (content.content) content.content->isCut = missing > capture::kFCSSize;
    return content;
}

}  // namespace

capture::CapturedFrame examinedFrame(const Packet& packet) {
    capture::CapturedFrame frame;
    examineFrame(packet, frame);
    return frame;
}

void examineFrame(const Packet& packet, capture::CapturedFrame& frame) {
    if (packet.endsInFCS) {
        frame = examineWithFCS(packet);
    } else {
        capture::readPacket(packet.linkType, packet.bytes, packet.originalLength, frame);
    }
}

}  // namespace halvane::tool
