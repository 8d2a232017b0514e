// The channel of a frame, without a record of it.
//
// A pure function and plain values; any thread may use them.
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

// frame_record.h tells which channel counts.
SightedChannel sightedChannelOf(std::span<const std::uint8_t> elements, const RadioInfo& radio);

}  // namespace halvane::capture

#endif
