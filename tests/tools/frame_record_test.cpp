#include "tools/halvane/frame_record.h"

#include <gtest/gtest.h>

#include "tests/support/elements.h"

using halvane::ByteBuffer;
using halvane::Number;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

CapturedFrame frameOf(const Bytes& elements) {
    CapturedFrame frame;
    BeaconFrame beacon;
    beacon.bssid = {0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
    beacon.beaconInterval = 100;
    beacon.capabilities = 0x0411;
    beacon.elements = elements;
    frame.content = beacon;
    return frame;
}

const Bytes kDSParameterSet = element(3, {11});
const Bytes kHTOperation = htOperationElement(44, 0);

std::optional<Number> channelOf(const Bytes& elements, std::optional<int> frequency = {},
                                std::optional<int> channel = {}) {
    auto frame = frameOf(elements);
    frame.radio.frequencyMHz = frequency;
    frame.radio.channel = channel;
    return recordOfFrame(frame).channel();
}

TEST(FrameRecord, HoldsWhatTheFrameAndItsRadioHeaderTell) {
    const Bytes elements = ssidElement("home");
    auto frame = frameOf(elements);
    frame.radio.signalDBm = -61;
    frame.radio.noiseDBm = -95;
    const auto record = recordOfFrame(frame);
    EXPECT_EQ(record.mac(), (ByteBuffer{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}));
    EXPECT_EQ(record.RSSI(), Number(-61));
    EXPECT_EQ(record.noise(), Number(-95));
    EXPECT_EQ(record.beaconInterval(), Number(100));
    EXPECT_EQ(record.capabilities(), 0x0411);
    EXPECT_EQ(record.SSID(), ByteBuffer::fromText("home"));
    EXPECT_FALSE(record.channel());
}

TEST(FrameRecord, LeavesOutWhatTheRadioHeaderDoesNotTell) {
    const auto record = recordOfFrame(frameOf({}));
    EXPECT_FALSE(record.RSSI() || record.noise());
}

TEST(FrameRecord, TakesTheChannelFromTheFirstThatTellsIt) {
    const Bytes both = joined({kDSParameterSet, kHTOperation});
    EXPECT_EQ(channelOf(both, 2437, 1), Number(6));
    EXPECT_EQ(channelOf(both, 5180), Number(36));
    EXPECT_EQ(channelOf(both, std::nullopt, 1), Number(1));
    EXPECT_EQ(channelOf(both), Number(11));
    EXPECT_EQ(channelOf(kHTOperation), Number(44));
    EXPECT_EQ(channelOf({}), std::nullopt);
}

TEST(FrameRecord, PassesOverAFrequencyThatIsNoKnownChannel) {
    EXPECT_EQ(channelOf(kDSParameterSet, 5955), Number(11));
    EXPECT_EQ(channelOf(kDSParameterSet, 0), Number(11));
    EXPECT_EQ(channelOf(kDSParameterSet, -5), Number(11));
    EXPECT_EQ(channelOf({}, 2000), std::nullopt);
    EXPECT_EQ(channelOf({}, 5825), Number(165));
}

TEST(FrameRecord, PassesOverElementsTooShortForAChannel) {
    EXPECT_EQ(channelOf(joined({element(3, {}), kHTOperation})), Number(44));
    EXPECT_EQ(channelOf(element(61, {44, 0})), std::nullopt);
    EXPECT_EQ(channelOf({3, 255}), std::nullopt);
}

}  // namespace
