// From a captured frame to its BSS record.
#ifndef HALVANE_CAPTURE_FRAME_RECORD_H
#define HALVANE_CAPTURE_FRAME_RECORD_H

#include <optional>

#include "halvane/base/export.h"
#include "halvane/base/number.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/ie/mac.h"

namespace halvane::capture {

// A record, and what the radio header tells of where it was received.
struct Sighting {
    HalvaneMAC record;
    std::optional<Number> radioChannel{};  // where the radio was, as far as the header tells
    bool isChannelOfRadio = false;         // the record's channel is that one, for want of another

    // The radio's channel where the record's is another one. A radio that scans hears its
    // neighbours, or names the channel that it has just left.
    std::optional<Number> otherRadioChannel() const {
        return radioChannel != record.channel() ? radioChannel : std::nullopt;
    }
};

// The sighting of a beacon or probe response. The record's channel is the primary channel of the HT
// Operation element, else the one of the DS Parameter Set, else the radio's, which is the one of
// its frequency, else of its channel number. A number of 0 names no channel.
// REQUIRES: frame.beacon() is not null.
HALVANE_EXPORT Sighting sightingOfFrame(const CapturedFrame& frame);

}  // namespace halvane::capture

#endif
