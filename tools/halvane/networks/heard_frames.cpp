#include "tools/halvane/networks/heard_frames.h"

#include <algorithm>

#include "halvane/air/channel.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/input/examined_frame.h"
#include "tools/halvane/networks/network_summary.h"
#include "tools/halvane/survey/cut_elements.h"
#include "tools/halvane/survey/saturated.h"

namespace halvane::tool {

std::optional<MacAddress> HeardFrames::add(const Packet& packet, WatchList::Time now) {
    const capture::CapturedFrame frame = examinedFrame(packet);
    summary_.add(frame);
    note(packet.time);
    if (frame.radio.frequencyMHz) {
        if (const auto channel = air::channelOf(*frame.radio.frequencyMHz)) {
            channel_ = channel->number;
        }
    }
    const capture::BeaconFrame* const beacon = frame.beacon();
    if (beacon == nullptr) return std::nullopt;
    capture::Sighting sighting = capture::sightingOf(*beacon, frame.radio);
    sighting.origin->frame = packet.number;
    sighting.origin->linkType = packet.linkType;
    const bool isCut = isCutFrame(*beacon);
    if (isCut) ++cutFrames_;
    list_.add(sighting,
              {.subtype = beacon->subtype,
               .number = packet.number,
               .time = packet.time,
               .signal = frame.radio.signalDBm,
               .isCut = isCut},
              now);
    return beacon->bssid;
}

std::string HeardFrames::summaryLine() const {
    std::optional<std::int64_t> duration;
    if (firstTime_) duration = saturatedDifference(*lastTime_, *firstTime_);
    return framesLine(summary_, cutFrames_, duration);
}

void HeardFrames::note(const std::optional<std::int64_t>& time) {
    if (!time) return;
    firstTime_ = std::min(firstTime_.value_or(*time), *time);
    lastTime_ = std::max(lastTime_.value_or(*time), *time);
}

}  // namespace halvane::tool
