#include "halvane/capture/frame_record.h"

#include <utility>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/byte_cursor.h"
#include "halvane/base/element_id.h"
#include "halvane/base/number.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/radio_header.h"
#include "halvane/regulatory/channel.h"

namespace halvane::capture {

namespace {

// The look-up leaves the last frequency of the map behind for one that it does not know, so the
// answer is checked the other way round.
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

// What the BSS says of itself.
std::optional<Number> channelOfElements(const HalvaneMAC& record) {
    if (const auto channel = channelOfHTOperation(record)) return channel;
    return channelOfDSParameterSet(record);
}

std::optional<Number> channelOfRadio(const RadioInfo& radio) {
    if (const auto channel = channelOfFrequency(radio.frequencyMHz)) return channel;
    return radio.channel ? std::optional<Number>(*radio.channel) : std::nullopt;
}

std::optional<Number> numberOf(std::optional<int> value) {
    return value ? std::optional<Number>(*value) : std::nullopt;
}

}  // namespace

Sighting sightingOfFrame(const CapturedFrame& frame) {
    const BeaconFrame& beacon = *frame.beacon();
    auto record = HalvaneMAC::initWithMAC(beacon.bssid);
    record.setRSSI(numberOf(frame.radio.signalDBm));
    record.setNoise(numberOf(frame.radio.noiseDBm));
    record.setBeaconInterval(Number(beacon.beaconInterval));
    record.setCapabilityField(beacon.capabilities);
    record.setInformationElements(ByteBuffer(beacon.elements));
    const auto radioChannel = channelOfRadio(frame.radio);
    const auto ownChannel = channelOfElements(record);
    record.setChannel(ownChannel ? ownChannel : radioChannel);
    return {std::move(record), radioChannel, !ownChannel && radioChannel};
}

}  // namespace halvane::capture
