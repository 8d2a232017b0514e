// What was heard, from the first frame to the last: the networks, and counts of the frames.
//
// For one thread.
#ifndef TOOLS_HALVANE_NETWORKS_HEARD_FRAMES_H
#define TOOLS_HALVANE_NETWORKS_HEARD_FRAMES_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "halvane/base/mac_address.h"

#include "tools/halvane/input/capture_reader.h"
#include "tools/halvane/input/packet_source.h"
#include "tools/halvane/networks/watch_list.h"
#include "tools/halvane/survey/survey.h"

namespace halvane::tool {

class HeardFrames {
  public:
    // REQUIRES: mostNetworks > 0.
    explicit HeardFrames(std::size_t mostNetworks) : list_(mostNetworks) {}

    // Returns the address of the network, if the packet is a frame of one. `now` is as for the
    // list.
    std::optional<MacAddress> add(const Packet& packet, WatchList::Time now);

    WatchList& list() { return list_; }
    const Survey& survey() const { return list_.survey(); }
    std::uint64_t count() const { return summary_.frames; }
    // Of the last frame that told it.
    std::optional<int> channel() const { return channel_; }
    // Of any frame; nanoseconds since 1970-01-01 00:00 UTC.
    const std::optional<std::int64_t>& lastTime() const { return lastTime_; }

    // As framesLine() of network_summary.h.
    std::string summaryLine() const;

  private:
    void note(const std::optional<std::int64_t>& time);

    WatchList list_;
    CaptureSummary summary_;
    std::uint64_t cutFrames_ = 0;
    std::optional<int> channel_;
    std::optional<std::int64_t> firstTime_;
    std::optional<std::int64_t> lastTime_;
};

}  // namespace halvane::tool

#endif
