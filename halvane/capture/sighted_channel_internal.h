// The channel of a frame, without a record of it.
//
// Pure functions and plain values; any thread may use them.
#ifndef HALVANE_CAPTURE_SIGHTED_CHANNEL_INTERNAL_H
#define HALVANE_CAPTURE_SIGHTED_CHANNEL_INTERNAL_H

#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/number.h"
#include "halvane/capture/radio_header.h"

namespace halvane::capture {

struct SightedChannel {
    std::optional<Number> channel{};  // the one that the elements state, otherwise the radio's
    std::optional<Number> radioChannel{};
    bool isOfRadio = false;  // no element states one
};

// Returns the channel that the elements state: that of HT Operation, otherwise that of the DS
// Parameter Set.
std::optional<Number> channelOfElements(std::span<const std::uint8_t> elements);

// frame_record.h tells which channel counts. `ownChannel` is that of the elements.
SightedChannel sightedChannelOf(const std::optional<Number>& ownChannel, const RadioInfo& radio);

}  // namespace halvane::capture

#endif
