#include "halvane/air/ht_capabilities.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// Three streams at 20 and 40 MHz: MCS 0 to 23 and 32, 450 Mb/s (1C2 hexadecimal).
constexpr auto kThreeStreams = "EF09 17 FFFFFF00 01 0000000000 C201 01000000 0004 00000000 00";

TEST(AirHtCapabilities, DecodesTheCapabilityInformation) {
    const auto element = HtCapabilities::decode(bytesOf(kThreeStreams));
    ASSERT_TRUE(element);
    // 09EF is 0000 1001 1110 1111 in binary.
    const auto& information = element->information;
    EXPECT_TRUE(information.isLdpcSupported());
    EXPECT_TRUE(information.is40MhzSupported());
    EXPECT_EQ(information.smPowerSave(), HtCapabilityInformation::SmPowerSave::Disabled);
    EXPECT_FALSE(information.isGreenfieldSupported());
    EXPECT_TRUE(information.isShortGuardInterval20Supported());
    EXPECT_TRUE(information.isShortGuardInterval40Supported());
    EXPECT_TRUE(information.isTxStbcSupported());
    EXPECT_EQ(information.rxStbcStreams(), 1);
    EXPECT_FALSE(information.isDelayedBlockAckSupported());
    EXPECT_EQ(information.maxAmsduLength(), 7935);
    EXPECT_FALSE(information.isDsssCckAllowedAt40Mhz());
    EXPECT_FALSE(information.is40MhzIntolerant());
    EXPECT_FALSE(information.isLSigTxopProtectionSupported());
}

TEST(AirHtCapabilities, DecodesTheAmpduParameters) {
    const auto element = HtCapabilities::decode(bytesOf(kThreeStreams));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->ampdu.maxLength(), 65535);
    EXPECT_EQ(element->ampdu.minStartSpacing(), 32);  // 4 us
    EXPECT_EQ(AmpduParameters{}.maxLength(), 8191);
    EXPECT_EQ(AmpduParameters{}.minStartSpacing(), 0);
}

TEST(AirHtCapabilities, DecodesTheMcsSet) {
    const auto element = HtCapabilities::decode(bytesOf(kThreeStreams));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->rxMcs.streams(), 3);
    EXPECT_TRUE(element->rxMcs.supports(23));
    EXPECT_FALSE(element->rxMcs.supports(24));
    EXPECT_TRUE(element->rxMcs.supports(32));
    EXPECT_EQ(element->rxMcs.highestRate(), 450);
    EXPECT_TRUE(element->rxMcs.isTransmitSetDefined());
    EXPECT_FALSE(element->rxMcs.transmitStreams());
    EXPECT_TRUE(element->extended.isHtcSupported());
}

TEST(AirHtMcsSet, CountsNoStreamForMcs32) {
    HtMcsSet set;
    EXPECT_EQ(set.streams(), 0);
    set.fields.setBit(32, true);
    EXPECT_EQ(set.streams(), 0);
    set.fields.setBit(31, true);
    EXPECT_EQ(set.streams(), 4);
    EXPECT_FALSE(set.supports(-1));
    EXPECT_FALSE(set.supports(77));
    EXPECT_FALSE(set.highestRate());
}

TEST(AirHtMcsSet, TellsTheStreamsThatAreSentIfTheyDiffer) {
    HtMcsSet set;
    set.fields.setBits(96, 5, 0b10111);
    EXPECT_EQ(set.transmitStreams(), 2);
    EXPECT_TRUE(set.isUnequalModulationSent());
}

// 9.4.2.55.6: the fields from bit 11 on have two bits each.
TEST(AirHtCapabilities, DecodesTheBeamformingCapabilities) {
    TransmitBeamformingCapabilities beamforming;
    beamforming.fields.setBits(11, 6, 0b110110);
    beamforming.fields.setBits(19, 10, 0b1110010011);
    EXPECT_EQ(beamforming.csiFeedback(), TransmitBeamformingCapabilities::Feedback::Immediate);
    EXPECT_EQ(beamforming.noncompressedFeedback(),
              TransmitBeamformingCapabilities::Feedback::Delayed);
    EXPECT_EQ(beamforming.compressedFeedback(), TransmitBeamformingCapabilities::Feedback::Both);
    EXPECT_EQ(beamforming.csiAntennas(), 4);
    EXPECT_EQ(beamforming.noncompressedAntennas(), 1);
    EXPECT_EQ(beamforming.compressedAntennas(), 2);
    EXPECT_EQ(beamforming.csiRows(), 3);
    EXPECT_EQ(beamforming.channelEstimation(), 4);
    EXPECT_FALSE(beamforming.isCompressedBeamformer());
}

TEST(AirHtCapabilities, DecodesTheAntennaSelection) {
    const AntennaSelectionCapability selection{.fields = {{0x29}}};
    EXPECT_TRUE(selection.isSupported());
    EXPECT_FALSE(selection.usesExplicitCsiFeedback());
    EXPECT_TRUE(selection.sendsExplicitCsiFeedback());
    EXPECT_TRUE(selection.selectsForReception());
    EXPECT_FALSE(selection.sendsSoundingPpdus());
}

TEST(AirHtCapabilities, Has26Octets) {
    auto bytes = bytesOf(kThreeStreams);
    ASSERT_EQ(bytes.size(), 26u);
    EXPECT_EQ(HtCapabilities::decode(bytes)->encode(), bytes);
    bytes.pop_back();
    EXPECT_FALSE(HtCapabilities::decode(bytes));
}

TEST(AirHtCapabilities, IsEncodedFromItsFields) {
    HtCapabilities element;
    element.information.fields.setBit(1, true);
    element.rxMcs.fields.setBits(0, 8, 0xFF);
    EXPECT_EQ(element.encode(),
              bytesOf("0E00 00 FF000000000000000000000000000000 0000 00000000 00"));
}

}  // namespace
