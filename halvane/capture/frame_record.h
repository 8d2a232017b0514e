// From a captured frame to the record of its BSS.
//
// Free functions and plain values. Any thread may call the functions.
#ifndef HALVANE_CAPTURE_FRAME_RECORD_H
#define HALVANE_CAPTURE_FRAME_RECORD_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "halvane/base/export.h"
#include "halvane/base/number.h"
#include "halvane/base/result.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/link_type.h"
#include "halvane/capture/radio_header.h"
#include "halvane/ie/mac.h"

namespace halvane::capture {

// A record, and what the radio header tells of where it was received. It owns all that it holds.
struct Sighting {
    HalvaneMAC record;
    std::optional<Number> radioChannel{};  // the channel that the radio was on, if the header tells
    bool isChannelOfRadio = false;         // the record's channel is that one, for want of another

    // The radio's channel if the record's is another one. A radio that scans hears its neighbours,
    // or names the channel that it has just left.
    std::optional<Number> otherRadioChannel() const {
        return radioChannel != record.channel() ? radioChannel : std::nullopt;
    }
};

// The sighting of a beacon or probe response: a record that is added now, with the elements and
// fixed fields of `beacon` and the levels of `radio`, in dBm.
//
// The record's channel is the primary channel of the HT Operation element (IEEE 802.11-2020,
// 9.4.2.56), else the one of the DS Parameter Set (9.4.2.4), else the radio's. The radio's is the
// one of its frequency, else of its channel number. A number of 0 names no channel.
HALVANE_EXPORT Sighting sightingOf(const BeaconFrame& beacon, const RadioInfo& radio = {});

// The same of a captured packet; examinePacket() tells what the parameters are. The error is the
// reason why the packet gives no record.
HALVANE_EXPORT Result<Sighting, SkipReason> sightingOfPacket(
    LinkType linkType, std::span<const std::uint8_t> packet,
    std::optional<std::size_t> originalLength = std::nullopt);

}  // namespace halvane::capture

#endif
