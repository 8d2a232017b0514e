#include "tools/halvane/input/scanned_frames.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <utility>

#include "halvane/base/mac_address.h"
#include "halvane/capture/beacon_frame.h"

using halvane::MacAddress;
using halvane::capture::BeaconSubtype;
using halvane::capture::CapturedFrame;
using namespace halvane::tool;

namespace {

using Bytes = ScannedNetwork::Bytes;

ScannedNetwork network() {
    ScannedNetwork network;
    network.bssid = MacAddress({0x02, 0, 0, 0, 0, 0x01});
    network.frequency = 5180;
    network.signal = -3149;
    network.beaconInterval = 100;
    network.capability = 0x0411;
    return network;
}

Bytes elementsOf(const CapturedFrame& frame) {
    const auto elements = frame.beacon()->elements;
    return {elements.begin(), elements.end()};
}

TEST(ScannedFrames, AreABeaconAndAProbeResponse) {
    ScannedNetwork scanned = network();
    scanned.beaconElements = Bytes{0, 0};
    scanned.probeResponseElements = Bytes{0, 1, 'a'};
    const auto frames = framesOf(scanned);
    ASSERT_EQ(frames.size(), 2U);
    EXPECT_EQ(frames[0].beacon()->subtype, BeaconSubtype::Beacon);
    EXPECT_EQ(elementsOf(frames[0]), (Bytes{0, 0}));
    EXPECT_EQ(frames[1].beacon()->subtype, BeaconSubtype::ProbeResponse);
    EXPECT_EQ(elementsOf(frames[1]), (Bytes{0, 1, 'a'}));
    for (const CapturedFrame& frame : frames) {
        EXPECT_EQ(frame.beacon()->bssid, scanned.bssid);
        EXPECT_EQ(frame.beacon()->beaconInterval, 100);
        EXPECT_EQ(frame.beacon()->capabilities, 0x0411);
        EXPECT_EQ(frame.radio.frequencyMHz, 5180);
        EXPECT_EQ(frame.radio.signalDBm, -31);
        EXPECT_EQ(frame.radio.noiseDBm, std::nullopt);
        EXPECT_FALSE(frame.isCut);
    }
}

TEST(ScannedFrames, AreThoseThatAreTold) {
    ScannedNetwork scanned = network();
    scanned.probeResponseElements = Bytes{0, 0};
    EXPECT_EQ(framesOf(scanned).size(), 1U);
    EXPECT_EQ(framesOf(scanned)[0].beacon()->subtype, BeaconSubtype::ProbeResponse);
    const auto bare = framesOf(network());
    ASSERT_EQ(bare.size(), 1U);
    EXPECT_EQ(bare[0].beacon()->subtype, BeaconSubtype::Beacon);
    EXPECT_TRUE(bare[0].beacon()->elements.empty());
}

TEST(ScannedFrames, HaveTheNearestSignal) {
    const std::pair<std::int32_t, int> cases[] = {
        {-3150, -32},
        {-3149, -31},
        {-50, -1},
        {-49, 0},
        {0, 0},
        {149, 1},
        {150, 2},
        {INT32_MIN, -21474836},
        {INT32_MAX, 21474836},
    };
    for (const auto& [signal, expected] : cases) {
        ScannedNetwork scanned = network();
        scanned.signal = signal;
        EXPECT_EQ(framesOf(scanned)[0].radio.signalDBm, expected) << signal;
    }
}

TEST(ScannedFrames, LeaveOutWhatIsNoNumberOfTheirs) {
    ScannedNetwork scanned = network();
    scanned.signal.reset();
    scanned.unspecifiedSignal = 80;
    scanned.frequency = UINT32_MAX;
    EXPECT_EQ(framesOf(scanned)[0].radio.signalDBm, std::nullopt);
    EXPECT_EQ(framesOf(scanned)[0].radio.frequencyMHz, std::nullopt);
}

}  // namespace
