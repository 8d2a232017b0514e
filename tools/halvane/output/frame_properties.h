// The properties of frames, and of how a network was heard. Those of a frame's place precede the
// properties of the record; the others follow them.
//
// Keys are stable, because programs read them.
#ifndef TOOLS_HALVANE_OUTPUT_FRAME_PROPERTIES_H
#define TOOLS_HALVANE_OUTPUT_FRAME_PROPERTIES_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

#include "halvane/base/number.h"
#include "halvane/capture/frame_record.h"

#include "tools/halvane/output/frame_origin.h"
#include "tools/halvane/output/property_table.h"
#include "tools/halvane/output/time_text.h"
#include "tools/halvane/survey/network_moment.h"
#include "tools/halvane/survey/network_statistics.h"
#include "tools/halvane/survey/signal_histogram.h"

namespace halvane::tool {

inline std::optional<std::string> timeTextIf(const std::optional<std::int64_t>& time) {
    return time ? std::optional(utcTimeText(*time)) : std::nullopt;
}

template <>
inline constexpr std::string_view kTableName<FrameOrigin> = "frameOrigin";
template <>
inline constexpr auto kProperties<FrameOrigin> = std::tuple{
    Property{"frame", [](const FrameOrigin& origin) { return origin.number; }},
    Property{"subtype", [](const FrameOrigin& origin) { return subtypeName(origin.subtype); }},
};

// What follows the record of a single frame.
struct FrameTime {
    const FrameOrigin& origin;
};
template <>
inline constexpr std::string_view kTableName<FrameTime> = "frameTime";
template <>
inline constexpr auto kProperties<FrameTime> = std::tuple{
    Property{"time", [](const FrameTime& frame) { return timeTextIf(frame.origin.time); }},
};

template <>
inline constexpr std::string_view kTableName<SignalHistogram> = "signal";
template <>
inline constexpr auto kProperties<SignalHistogram> = std::tuple{
    Property{"least", [](const SignalHistogram& signal) { return signal.least(); }},
    Property{"median", [](const SignalHistogram& signal) { return signal.median(); }},
    Property{"mean",
             [](const SignalHistogram& signal) -> std::optional<Number> {
                 const auto mean = signal.mean();
                 return mean ? std::optional(Number(*mean)) : std::nullopt;
             }},
    Property{"greatest", [](const SignalHistogram& signal) { return signal.greatest(); }},
    Property{"count", [](const SignalHistogram& signal) { return signal.count(); }},
};

// What follows the record of a network.
template <>
inline constexpr std::string_view kTableName<NetworkStatistics> = "statistics";
template <>
inline constexpr auto kProperties<NetworkStatistics> = std::tuple{
    Property{"firstSeen",
             [](const NetworkStatistics& heard) { return timeTextIf(heard.firstTime); }},
    Property{"lastSeen", [](const NetworkStatistics& heard) { return timeTextIf(heard.lastTime); }},
    Property{"firstFrame", [](const NetworkStatistics& heard) { return heard.firstFrame; }},
    Property{"frames", [](const NetworkStatistics& heard) { return heard.frames(); }},
    Property{"beacons", [](const NetworkStatistics& heard) { return heard.beacons; }},
    Property{"probeResponses", [](const NetworkStatistics& heard) { return heard.probeResponses; }},
    Property{"cutFrames", [](const NetworkStatistics& heard) { return heard.cutFrames; }},
    Property{"signal",
             [](const NetworkStatistics& heard) -> std::optional<SignalHistogram> {
                 if (heard.signal.count() == 0) return std::nullopt;
                 return heard.signal;
             }},
};

// Who the IEEE assigned the network's address to.
struct RecordMaker {
    std::optional<std::string_view> name;
};
template <>
inline constexpr std::string_view kTableName<RecordMaker> = "maker";
template <>
inline constexpr auto kProperties<RecordMaker> = std::tuple{
    Property{"maker", [](const RecordMaker& maker) { return maker.name; }},
};

// What follows the record of a network of the kernel's list.
template <>
inline constexpr std::string_view kTableName<NetworkMoment> = "moment";
template <>
inline constexpr auto kProperties<NetworkMoment> = std::tuple{
    Property{"age",
             [](const NetworkMoment& moment) -> std::optional<std::int64_t> {
                 constexpr std::int64_t kMillisecond = 1'000'000;
                 if (!moment.age) return std::nullopt;
                 return *moment.age / kMillisecond;
             }},
    Property{
        "isInUse",
        [](const NetworkMoment& moment) { return moment.state == NetworkMoment::State::InUse; }},
};

// The properties of the sighting alone. Its record has its own table.
template <>
inline constexpr std::string_view kTableName<capture::Sighting> = "sighting";
template <>
inline constexpr auto kProperties<capture::Sighting> = std::tuple{
    Property{"radioChannel",
             [](const capture::Sighting& sighting) { return sighting.otherRadioChannel(); }},
};

}  // namespace halvane::tool

#endif
