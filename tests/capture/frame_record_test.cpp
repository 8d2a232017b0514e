#include "halvane/capture/frame_record.h"

#include <gtest/gtest.h>

#include "halvane/base/byte_buffer.h"
#include "halvane/capture/beacon_frame.h"

#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::Number;
using namespace halvane::testing;
using namespace halvane::capture;

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
    return sightingOfFrame(frame).record.channel();
}

std::optional<Number> otherRadioChannel(const Bytes& elements, std::optional<int> frequency,
                                        std::optional<int> channel = {}) {
    auto frame = frameOf(elements);
    frame.radio.frequencyMHz = frequency;
    frame.radio.channel = channel;
    return sightingOfFrame(frame).otherRadioChannel();
}

TEST(FrameRecord, HoldsWhatTheFrameAndItsRadioHeaderTell) {
    const Bytes elements = ssidElement("home");
    auto frame = frameOf(elements);
    frame.radio.signalDBm = -61;
    frame.radio.noiseDBm = -95;
    const auto record = sightingOfFrame(frame).record;
    EXPECT_EQ(record.mac(), (ByteBuffer{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}));
    EXPECT_EQ(record.RSSI(), Number(-61));
    EXPECT_EQ(record.noise(), Number(-95));
    EXPECT_EQ(record.beaconInterval(), Number(100));
    EXPECT_EQ(record.capabilities(), 0x0411);
    EXPECT_EQ(record.SSID(), ByteBuffer::fromText("home"));
    EXPECT_FALSE(record.channel());
}

TEST(FrameRecord, LeavesOutWhatTheRadioHeaderDoesNotTell) {
    const auto record = sightingOfFrame(frameOf({})).record;
    EXPECT_FALSE(record.RSSI() || record.noise());
}

TEST(FrameRecord, TakesTheChannelFromTheFirstThatTellsIt) {
    const Bytes both = joined({kDSParameterSet, kHTOperation});
    EXPECT_EQ(channelOf(both, 2437, 1), Number(44));
    EXPECT_EQ(channelOf(both), Number(44));
    EXPECT_EQ(channelOf(kDSParameterSet, 5180, 1), Number(11));
    EXPECT_EQ(channelOf({}, 2437, 1), Number(6));
    EXPECT_EQ(channelOf({}, std::nullopt, 1), Number(1));
    EXPECT_EQ(channelOf({}), std::nullopt);
}

TEST(FrameRecord, TakesNoChannelOfZero) {
    EXPECT_EQ(channelOf(joined({element(3, {0}), htOperationElement(0, 0)}), 2437), Number(6));
    EXPECT_EQ(channelOf(joined({element(3, {0}), element(3, {11})}), 2437), Number(11));
}

TEST(FrameRecord, TellsTheRadiosChannelWhereItIsAnother) {
    EXPECT_EQ(otherRadioChannel(kHTOperation, 2412), Number(1));
    EXPECT_EQ(otherRadioChannel(kHTOperation, std::nullopt, 6), Number(6));
    EXPECT_EQ(otherRadioChannel(kHTOperation, 5220), std::nullopt);
    EXPECT_EQ(otherRadioChannel(kHTOperation, std::nullopt), std::nullopt);
    EXPECT_EQ(otherRadioChannel({}, 2412), std::nullopt);
    EXPECT_EQ(otherRadioChannel({}, std::nullopt), std::nullopt);
}

TEST(FrameRecord, PassesOverAFrequencyThatIsNoKnownChannel) {
    EXPECT_EQ(channelOf({}, 5955, 11), Number(11));
    EXPECT_EQ(channelOf({}, 0, 11), Number(11));
    EXPECT_EQ(channelOf({}, -5, 11), Number(11));
    EXPECT_EQ(channelOf({}, 2000), std::nullopt);
    EXPECT_EQ(channelOf({}, 5825), Number(165));
}

TEST(FrameRecord, PassesOverElementsTooShortForAChannel) {
    EXPECT_EQ(channelOf(joined({element(3, {}), kHTOperation})), Number(44));
    EXPECT_EQ(channelOf(element(61, {44, 0})), std::nullopt);
    EXPECT_EQ(channelOf({3, 255}), std::nullopt);
}

}  // namespace
