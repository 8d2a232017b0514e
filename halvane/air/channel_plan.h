// Every channel of every width that the operating classes of all countries name, with its number,
// its centre frequency and its classes (IEEE 802.11-2020, table E-4, with the rows of 802.11ax,
// 802.11ay and 802.11be).
//
// Plain values and pure functions. Any thread may call them.
#ifndef HALVANE_AIR_CHANNEL_PLAN_H
#define HALVANE_AIR_CHANNEL_PLAN_H

#include <cstdint>
#include <optional>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/base/export.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// A channel of the plan.
struct HALVANE_EXPORT PlannedChannel {
    Band band = Band::Ghz2;
    std::uint8_t number = 0;      // that of the centre
    std::uint16_t width = 20;     // MHz: 5, 10, 20, 40, 80, 160, 320, and from 2160 on at 60 GHz
    std::uint32_t frequency = 0;  // kHz, of the centre
    // Those with a channel of this width, ascending. Empty for the old channels 34, 38, 42 and 46.
    InlineList<std::uint8_t, 4> classes{};
    // Whether the channel, or a part of it, is subject to DFS_50_100_Behavior.
    bool needsRadarDetection = false;
    bool isSegment = false;  // whether it may be one half of 80+80 MHz

    // Absent below 20 MHz, at 60 GHz, and for the classes 94, 101 and 106, whose channels are in no
    // row with others.
    std::optional<WideChannel> wide() const;

    friend bool operator==(const PlannedChannel&, const PlannedChannel&) = default;
};

// In the order of their bands, then of their frequencies, then of their widths. A frequency may
// stand twice with different numbers: some classes of 4.9 GHz count from another start.
HALVANE_EXPORT std::vector<PlannedChannel> channelPlan();

// All classes that a station may use on the channel: those of the channel itself, and for a channel
// of 20 MHz those of wider channels that may have it as their primary channel. Ascending.
HALVANE_EXPORT InlineList<std::uint8_t, 16> usableClassesOf(const PlannedChannel& channel);

}  // namespace halvane::air

#endif
