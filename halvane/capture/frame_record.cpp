#include "halvane/capture/frame_record.h"

#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/captured_frame.h"
#include "halvane/capture/radio_header.h"
#include "halvane/capture/sighted_channel_internal.h"

namespace halvane::capture {

namespace {

// The record knows its HT Operation, so most frames need no other walk over their elements.
int ownChannelOf(const HalvaneMAC& record, const BeaconFrame& beacon) {
    const auto& operation = record.HTOperation();
    if (operation && operation->isValid() && operation->primaryChannel() != 0) {
        return static_cast<int>(operation->primaryChannel());
    }
    return channelOfElements(beacon.elements);
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
    const auto channel = sightedChannelOf(ownChannelOf(record, beacon), radio);
    std::optional<Number> number;
    std::optional<Number> radioNumber;
    channel.putInto(number);
    channel.putRadioInto(radioNumber);
    record.setChannel(number);
    return {.record = std::move(record),
            .radioChannel = radioNumber,
            .isChannelOfRadio = channel.isOfRadio(),
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
