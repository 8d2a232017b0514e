#include "tools/halvane/survey/network_statistics.h"

#include <algorithm>

namespace halvane::tool {

NetworkStatistics::NetworkStatistics(const HeardFrame& first)
    : firstFrame(first.number), lastCapture(first.capture) {
    add(first);
}

void NetworkStatistics::add(const HeardFrame& frame) {
    ++(frame.subtype == capture::BeaconSubtype::Beacon ? beacons : probeResponses);
    if (frame.isCut && cutFrames++ == 0) {
        firstCutFrame = frame.number;
        firstCutCapture = frame.capture;
    }
    if (frame.signal) signal.add(*frame.signal);
    if (frame.isForHistory && frame.signal && frame.time) history.add(*frame.time, *frame.signal);
    if (lastCapture != frame.capture) lastTimeInCapture.reset();
    lastCapture = frame.capture;
    if (!frame.time) return;
    lastTimeInCapture = std::max(lastTimeInCapture.value_or(*frame.time), *frame.time);
    firstTime = std::min(firstTime.value_or(*frame.time), *frame.time);
    lastTime = std::max(lastTime.value_or(*frame.time), *frame.time);
}

void NetworkStatistics::add(const NetworkStatistics& later) {
    beacons += later.beacons;
    probeResponses += later.probeResponses;
    if (cutFrames == 0) {
        firstCutFrame = later.firstCutFrame;
        firstCutCapture = later.firstCutCapture;
    }
    cutFrames += later.cutFrames;
    signal.add(later.signal);
    history.add(later.history);
    lastCapture = later.lastCapture;
    lastTimeInCapture = later.lastTimeInCapture;
    if (!later.firstTime) return;
    firstTime = std::min(firstTime.value_or(*later.firstTime), *later.firstTime);
    lastTime = std::max(lastTime.value_or(*later.lastTime), *later.lastTime);
}

}  // namespace halvane::tool
