#include "halvane/capture/frame_record.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/number.h"
#include "halvane/capture/beacon_frame.h"
#include "halvane/ie/mac.h"

#include "tests/capture/packets.h"
#include "tests/support/elements.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::HalvaneMAC;
using halvane::MacAddress;
using halvane::Number;
using namespace halvane::testing;
using namespace halvane::capture;

namespace {

constexpr MacAddress kBSSID({0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});

BeaconFrame beaconOf(const Bytes& elements) {
    return {.bssid = kBSSID, .beaconInterval = 100, .capabilities = 0x0411, .elements = elements};
}

const Bytes kDSParameterSet = element(3, {11});
const Bytes kHTOperation = htOperationElement(44, 0);

std::optional<Number> channelOf(const Bytes& elements, std::optional<int> frequency = {},
                                std::optional<int> channel = {}) {
    const RadioInfo radio = {.frequencyMHz = frequency, .channel = channel};
    return sightingOf(beaconOf(elements), radio).record.channel();
}

std::optional<Number> otherRadioChannel(const Bytes& elements, std::optional<int> frequency,
                                        std::optional<int> channel = {}) {
    const RadioInfo radio = {.frequencyMHz = frequency, .channel = channel};
    return sightingOf(beaconOf(elements), radio).otherRadioChannel();
}

TEST(FrameRecord, HoldsWhatTheFrameAndItsRadioHeaderTell) {
    const Bytes elements = ssidElement("home");
    const RadioInfo radio = {.signalDBm = -61, .noiseDBm = -95};
    const auto record = sightingOf(beaconOf(elements), radio).record;
    EXPECT_EQ(record.mac(), kBSSID.buffer());
    EXPECT_EQ(record.RSSI(), Number(-61));
    EXPECT_EQ(record.noise(), Number(-95));
    EXPECT_EQ(record.beaconInterval(), Number(100));
    EXPECT_EQ(record.capabilities(), 0x0411);
    EXPECT_EQ(record.SSID(), ByteBuffer::fromText("home"));
    EXPECT_FALSE(record.channel());
}

TEST(FrameRecord, LeavesOutWhatTheRadioHeaderDoesNotTell) {
    const auto record = sightingOf(beaconOf({})).record;
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
    EXPECT_EQ(channelOf({}, std::nullopt, 0), std::nullopt);
    EXPECT_EQ(channelOf({}, std::nullopt, -1), std::nullopt);
    EXPECT_EQ(otherRadioChannel(kHTOperation, std::nullopt, 0), std::nullopt);
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

TEST(FrameRecord, IsMadeOfAPacket) {
    const Bytes packet = withRadiotap(0, beaconPacket());
    const auto sighting = sightingOfPacket(LinkType::Radiotap, packet);
    ASSERT_TRUE(sighting);
    EXPECT_EQ(sighting->record.mac(), (ByteBuffer{0x02, 0, 0, 0, 0, 0x01}));
    EXPECT_EQ(sighting->record.RSSI(), Number(-60));
    EXPECT_EQ(sighting->record.SSID(), ByteBuffer::fromText("a"));
}

TEST(FrameRecord, KeepsNothingOfThePacketThatItIsMadeOf) {
    Bytes packet = withRadiotap(0, beaconPacket());
    const auto sighting = sightingOfPacket(LinkType::Radiotap, packet);
    std::ranges::fill(packet, std::uint8_t{0xFF});
    ASSERT_TRUE(sighting);
    EXPECT_EQ(sighting->record.ieBuffer(), (ByteBuffer{0x00, 0x01, 0x61}));
}

TEST(FrameRecord, IsMadeOfWhatTheCaptureKept) {
    Bytes packet = withRadiotap(0x10, beaconPacket());  // the frame check sequence was cut off
    const auto sighting = sightingOfPacket(LinkType::Radiotap, packet, packet.size() + 4);
    ASSERT_TRUE(sighting);
    EXPECT_EQ(sighting->record.SSID(), ByteBuffer::fromText("a"));
}

TEST(FrameRecord, IsNotMadeOfAPacketThatIsSkipped) {
    Bytes data = beaconPacket();
    data.at(0) = 0x08;
    for (const auto& [packet, reason] : {
             std::pair(withRadiotap(0, data), SkipReason::OtherFrame),
             std::pair(withRadiotap(0x40, beaconPacket()), SkipReason::Damaged),
             std::pair(beaconPacket(), SkipReason::MalformedHeader),
         }) {
        const auto sighting = sightingOfPacket(LinkType::Radiotap, packet);
        ASSERT_FALSE(sighting);
        EXPECT_EQ(sighting.error(), reason);
    }
}

// The channel that a record of the elements tells: the primary channel of its HT Operation, or else
// the first in a DS Parameter Set.
std::optional<Number> channelOfRecord(const Bytes& elements) {
    auto record = HalvaneMAC::initWithMAC(kBSSID.buffer());
    record.setInformationElements(ByteBuffer(elements));
    const auto& operation = record.HTOperation();
    if (operation && operation->isValid() && operation->primaryChannel() != 0) {
        return Number(operation->primaryChannel());
    }
    for (const ByteBuffer& ie : record.IEs()) {
        const auto octets = ie.bytes();
        if (octets.size() > 2 && octets[0] == 3 && octets[2] != 0) return Number(octets[2]);
    }
    return std::nullopt;
}

// Every sequence of three, with the lengths that a record reads otherwise than the standard.
TEST(FrameRecord, TakesTheChannelFromTheElementsThatARecordReads) {
    const std::vector<Bytes> choices = {
        element(3, {}),         element(3, {0}),          element(3, {11}),  element(3, {7, 8}),
        kHTOperation,           htOperationElement(0, 0), element(61, {44}), element(0, Bytes(253)),
        element(0, Bytes(254)), element(0, Bytes(255)),   Bytes{3},          Bytes{61, 22, 44}};
    std::size_t told = 0;
    for (const Bytes& first : choices) {
        for (const Bytes& second : choices) {
            for (const Bytes& third : choices) {
                const Bytes all = joined({first, second, third});
                const auto expected = channelOfRecord(all);
                EXPECT_EQ(channelOf(all), expected) << ByteBuffer(all).description();
                told += expected ? 1 : 0;
            }
        }
    }
    EXPECT_GT(told, 100u);
}

TEST(FrameRecord, ReadsNoChannelBeyondTheElements) {
    const Bytes sample = joined({ssidElement("home"), kDSParameterSet, kHTOperation});
    forEachHostileForm(sample, {1, 7, 10}, [](const ByteBuffer& elements) {
        const Bytes copy(elements.bytes().begin(), elements.bytes().end());
        EXPECT_EQ(channelOf(copy), channelOfRecord(copy));
    });
}

}  // namespace
