#include "halvane/capture/frame_record.h"

#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/base/number.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/capture/radio_header.h"
#include "halvane/regulatory/channel.h"

namespace halvane::capture {

namespace {

// For an unknown frequency the look-up returns the last frequency of the map, so the result is
// checked by the inverse look-up.
std::optional<Number> channelOfFrequency(std::optional<int> frequency) {
    if (!frequency || *frequency <= 0) return std::nullopt;
    const auto megahertz = static_cast<unsigned>(*frequency);
    const unsigned channel = HalvaneChannel::channelNumberForFrequency(megahertz);
    if (HalvaneChannel::channelFrequencyForNumber(channel) != megahertz) return std::nullopt;
    return Number(channel);
}

// IEEE 802.11-2020, 9.4.2.4: one octet.
std::optional<Number> channelOfDSParameterSet(const HalvaneMAC& record) {
    for (const ByteBuffer& element : record.IEs()) {
        ByteCursor cursor(element);
        if (cursor.u8() != kElementIDDSParameterSet || !cursor.skip(1)) continue;
        if (const auto channel = cursor.u8(); channel && *channel != 0) return Number(*channel);
    }
    return std::nullopt;
}

std::optional<Number> channelOfHTOperation(const HalvaneMAC& record) {
    const auto& operation = record.HTOperation();
    if (!operation || !operation->isValid() || operation->primaryChannel() == 0) {
        return std::nullopt;
    }
    return Number(operation->primaryChannel());
}

// Returns the channel that the BSS itself states.
std::optional<Number> channelOfElements(const HalvaneMAC& record) {
    if (const auto channel = channelOfHTOperation(record)) return channel;
    return channelOfDSParameterSet(record);
}

std::optional<Number> channelOfRadio(const RadioInfo& radio) {
    if (const auto channel = channelOfFrequency(radio.frequencyMHz)) return channel;
    if (!radio.channel || *radio.channel <= 0) return std::nullopt;
    return Number(*radio.channel);
}

std::optional<Number> numberOf(std::optional<int> value) {
    return value ? std::optional<Number>(*value) : std::nullopt;
}

}  // namespace

Sighting sightingOf(const BeaconFrame& beacon, const RadioInfo& radio) {
    auto record = HalvaneMAC::initWithMAC_withCapabilityField_withInformationElements(
        beacon.bssid.buffer(), beacon.capabilities, ByteBuffer(beacon.elements));
    record.setRSSI(numberOf(radio.signalDBm));
    record.setNoise(numberOf(radio.noiseDBm));
    record.setBeaconInterval(Number(beacon.beaconInterval));
    const auto radioChannel = channelOfRadio(radio);
    const auto ownChannel = channelOfElements(record);
    record.setChannel(ownChannel ? ownChannel : radioChannel);
    return {.record = std::move(record),
            .radioChannel = radioChannel,
            .isChannelOfRadio = !ownChannel && radioChannel,
            .radioFrequency = radio.frequencyMHz,
            .origin = ElementsOrigin{.subtype = beacon.subtype, .offset = beacon.elementsOffset},
            .isCut = beacon.isCut};
}

Result<Sighting, SkipReason> sightingOfPacket(LinkType linkType,
                                              std::span<const std::uint8_t> packet,
                                              std::optional<std::size_t> originalLength) {
    const CapturedFrame frame = examinePacket(linkType, packet, originalLength);
    if (!frame.content) return Unexpected(frame.content.error());
    Sighting sighting = sightingOf(*frame.content, frame.radio);
    sighting.origin->linkType = linkType;
    return sighting;
}

}  // namespace halvane::capture
