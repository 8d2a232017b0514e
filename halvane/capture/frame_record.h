// Turns a captured frame into the record of its BSS.
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

// The frame that the elements of a record come from.
struct ElementsOrigin {
    BeaconSubtype subtype = BeaconSubtype::Beacon;  // of the frame that the elements are from
    std::size_t offset = 0;                         // of the first element in the 802.11 frame
    std::uint64_t frame = 0;             // number in its file, counted from 1; 0: not known
    std::size_t file = 0;                // index of its file, where a program reads several
    std::optional<LinkType> linkType{};  // of the packet, if it is known
};

// A record, and the channel on which the radio received it. It owns all its data.
struct Sighting {
    HalvaneMAC record;                       // made of this frame alone
    std::optional<Number> radioChannel{};    // the radio's channel, if its header states it
    bool isChannelOfRadio = false;           // the record's channel is the radio's, as no element
                                             // states one
    std::optional<int> radioFrequency{};     // MHz, of the radio's channel, if its header states it
    std::optional<ElementsOrigin> origin{};  // absent if the elements come from no frame
    std::uint64_t frames = 1;                // that are merged here
    bool isNameRevealed = false;             // the first of them hid the SSID
    bool isCut = false;  // the capture kept only the start of the frame of the elements: what they
                         // do not tell may have been told

    // Returns the radio's channel if the record's differs from it. A scanning radio also hears
    // neighbouring channels, or still states the channel that it has just left.
    std::optional<Number> otherRadioChannel() const {
        return radioChannel != record.channel() ? radioChannel : std::nullopt;
    }
};

// Returns the sighting of a beacon or probe response. Its record is added now and holds the
// elements and fixed fields of `beacon` and the levels of `radio`, in dBm. Of the origin, number
// and link type are not known.
//
// The record's channel is the primary channel of the HT Operation element (IEEE 802.11-2020,
// 9.4.2.56), otherwise the channel of the DS Parameter Set (9.4.2.4), otherwise the radio's
// channel. The radio's channel is that of its frequency, otherwise its channel number. Neither 0
// nor a negative number names a channel.
HALVANE_EXPORT Sighting sightingOf(const BeaconFrame& beacon, const RadioInfo& radio = {});

// The same for a captured packet; examinePacket() describes the parameters. The error is the reason
// why the packet gives no record.
HALVANE_EXPORT Result<Sighting, SkipReason> sightingOfPacket(
    LinkType linkType, std::span<const std::uint8_t> packet,
    std::optional<std::size_t> originalLength = std::nullopt);

}  // namespace halvane::capture

#endif
