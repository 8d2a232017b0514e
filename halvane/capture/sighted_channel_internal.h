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

// All channels that a frame and its radio header tell; 0 stands for none.
struct SightedChannel {
    int own = 0;               // that the elements state
    unsigned ofFrequency = 0;  // of the radio's frequency
    int ofHeader = 0;          // the number in the radio header

    bool isOfRadio() const { return own == 0 && (ofFrequency != 0 || ofHeader != 0); }
    bool isKnown() const { return own != 0 || isOfRadio(); }

    // frame_record.h tells which one counts. If there is none, `channel` stays. The number is made
    // where it stays, since a copy of what was just written takes longer.
    void putInto(std::optional<Number>& channel) const {
        if (own == 0) return putRadioInto(channel);
        channel.emplace(own);
    }
    // The same for the radio's.
    void putRadioInto(std::optional<Number>& channel) const {
        if (ofFrequency != 0) {
            channel.emplace(ofFrequency);
        } else if (ofHeader != 0) {
            channel.emplace(ofHeader);
        }
    }
};

// Returns the channel that the elements state: that of HT Operation, otherwise that of the DS
// Parameter Set; 0 if none does.
int channelOfElements(std::span<const std::uint8_t> elements);

// `ownChannel` is that of the elements.
SightedChannel sightedChannelOf(int ownChannel, const RadioInfo& radio);

}  // namespace halvane::capture

#endif
