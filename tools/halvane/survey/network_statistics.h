// How often, when and how strongly a network was heard.
//
// Plain values. Threads: as for a standard container.
#ifndef TOOLS_HALVANE_SURVEY_NETWORK_STATISTICS_H
#define TOOLS_HALVANE_SURVEY_NETWORK_STATISTICS_H

#include <cstddef>
#include <cstdint>
#include <optional>

#include "halvane/capture/beacon_frame.h"

#include "tools/halvane/survey/signal_histogram.h"
#include "tools/halvane/survey/signal_history.h"

namespace halvane::tool {

// A frame, as its capture tells it.
struct HeardFrame {
    capture::BeaconSubtype subtype = capture::BeaconSubtype::Beacon;
    std::uint64_t number = 0;            // in its capture, from 1
    std::size_t capture = 0;             // index of the capture
    std::optional<std::int64_t> time{};  // nanoseconds since 1970-01-01 00:00 UTC
    std::optional<int> signal{};         // dBm
    bool isCut = false;                  // the end of its elements is missing
    bool isForHistory = false;           // its signal is kept over time
};

struct NetworkStatistics {
    explicit NetworkStatistics(const HeardFrame& first);

    void add(const HeardFrame& frame);
    // Frames that were heard later.
    void add(const NetworkStatistics& later);

    std::uint64_t frames() const { return beacons + probeResponses; }

    std::uint64_t beacons = 0;
    std::uint64_t probeResponses = 0;
    std::uint64_t cutFrames = 0;
    std::uint64_t firstCutFrame = 0;  // its number, if there is one
    std::size_t firstCutCapture = 0;  // the index of its capture
    SignalHistogram signal{};
    SignalHistory history{};       // of the frames that are for it, and have time and signal
    std::uint64_t firstFrame = 0;  // its number in its capture
    // Nanoseconds since 1970-01-01 00:00 UTC, over all captures, which need not follow each other.
    std::optional<std::int64_t> firstTime{};
    std::optional<std::int64_t> lastTime{};
    // The capture of the last frame that was read, and when it was heard there.
    std::size_t lastCapture = 0;
    std::optional<std::int64_t> lastTimeInCapture{};
};

}  // namespace halvane::tool

#endif
