#include "tools/halvane/input/scanned_frames.h"

#include <cstdint>
#include <span>

#include "halvane/capture/beacon_frame.h"
#include "halvane/capture/radio_header.h"

namespace halvane::tool {

namespace {

// Hundredths of a dBm, which is negative most of the time, to the nearest dBm.
int wholeDBm(std::int32_t signal) {
    const std::int64_t half = signal < 0 ? -50 : 50;
    return static_cast<int>((signal + half) / 100);
}

capture::RadioInfo radioOf(const ScannedNetwork& network) {
    capture::RadioInfo radio;
    // No channel of 802.11 is above the 16 bits.
    if (network.frequency && *network.frequency <= UINT16_MAX) {
        radio.frequencyMHz = static_cast<int>(*network.frequency);
    }
    if (network.signal) radio.signalDBm = wholeDBm(*network.signal);
    return radio;
}

capture::CapturedFrame frameOf(const ScannedNetwork& network, capture::BeaconSubtype subtype,
                               std::span<const std::uint8_t> elements) {
    return {.radio = radioOf(network),
            .content = capture::BeaconFrame{.subtype = subtype,
                                            .bssid = network.bssid,
                                            .beaconInterval = network.beaconInterval.value_or(0),
                                            .capabilities = network.capability.value_or(0),
                                            .elements = elements}};
}

}  // namespace

std::vector<capture::CapturedFrame> framesOf(const ScannedNetwork& network) {
    using capture::BeaconSubtype;
    std::vector<capture::CapturedFrame> frames;
    const auto& beacon = network.beaconElements;
    const auto& response = network.probeResponseElements;
    if (beacon) frames.push_back(frameOf(network, BeaconSubtype::Beacon, *beacon));
    if (response) frames.push_back(frameOf(network, BeaconSubtype::ProbeResponse, *response));
    if (frames.empty()) frames.push_back(frameOf(network, BeaconSubtype::Beacon, {}));
    return frames;
}

}  // namespace halvane::tool
