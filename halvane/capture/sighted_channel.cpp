#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/capture/sighted_channel_internal.h"
#include "halvane/ie/element_walk_internal.h"
#include "halvane/regulatory/channel.h"

namespace halvane::capture {

namespace {

constexpr std::size_t kHTOperationSize = 24;  // with its header (IEEE 802.11-2020, 9.4.2.56)

// For an unknown frequency the look-up returns the last frequency of the map, so the result is
// checked by the inverse look-up.
unsigned channelOfFrequency(int frequency) {
    if (frequency <= 0) return 0;
    const auto megahertz = static_cast<unsigned>(frequency);
    const unsigned channel = HalvaneChannel::channelNumberForFrequency(megahertz);
    return HalvaneChannel::channelFrequencyForNumber(channel) == megahertz ? channel : 0;
}

// The first octet of an element's body; 0 if it is empty.
std::uint8_t firstOctetOf(std::span<const std::uint8_t> element) {
    ByteCursor cursor(element);
    cursor.skip(kElementHeaderSize);
    return cursor.u8().value_or(0);
}

}  // namespace

// Of several HT Operation elements the last counts, as for a record, even if it is damaged or
// states none. Of several DS Parameter Sets (9.4.2.4) the first that states a channel does.
int channelOfElements(std::span<const std::uint8_t> elements) {
    std::uint8_t ofOperation = 0;
    std::uint8_t ofParameterSet = 0;
    walkElements(walkedBytesOf(elements), [&](std::size_t, std::span<const std::uint8_t> element) {
        if (element[0] == kElementIDHTOperation) {
            ofOperation = element.size() == kHTOperationSize ? firstOctetOf(element) : 0;
        } else if (element[0] == kElementIDDSParameterSet && ofParameterSet == 0) {
            ofParameterSet = firstOctetOf(element);
        }
    });
    return ofOperation != 0 ? ofOperation : ofParameterSet;
}

SightedChannel sightedChannelOf(int ownChannel, const RadioInfo& radio) {
    return {.own = ownChannel,
            .ofFrequency = channelOfFrequency(radio.frequencyMHz.value_or(0)),
            .ofHeader = std::max(radio.channel.value_or(0), 0)};
}

}  // namespace halvane::capture
