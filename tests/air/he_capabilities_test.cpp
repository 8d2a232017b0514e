#include "halvane/air/he_capabilities.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

constexpr char kMacAndPhy[] = "0D009A181040 0C700CCA7F0240B11B0108";

Bytes bodyWith(std::string_view phy, std::string_view sets) {
    std::string hex = "0D009A181040";
    return bytesOf(hex.append(phy).append(sets));
}

// Bits counted from the first octet's lowest, 802.11ax-2021, 9.4.2.248.2 and 9.4.2.248.3.
TEST(AirHeCapabilities, DecodesTheMacCapabilities) {
    const auto he = HeCapabilities::decode(bytesOf(std::string(kMacAndPhy) + "FAFFFAFF AAFFAAFF"));
    ASSERT_TRUE(he);
    const HeMacCapabilities& mac = he->mac;
    EXPECT_TRUE(mac.has(HeMacCapability::HtcHe));
    EXPECT_FALSE(mac.has(HeMacCapability::TwtRequester));
    EXPECT_TRUE(mac.has(HeMacCapability::TwtResponder));
    EXPECT_EQ(mac.dynamicFragmentation(), 1);
    EXPECT_EQ(mac.maximumFragmentedMsdus(), 1);
    EXPECT_EQ(mac.minimumFragmentSize(), 0);
    EXPECT_EQ(mac.triggerFramePadding(), 0);
    EXPECT_EQ(mac.multiTidAggregationRx(), 1);
    EXPECT_EQ(mac.linkAdaptation(), 0);
    EXPECT_TRUE(mac.has(HeMacCapability::AllAck));
    EXPECT_FALSE(mac.has(HeMacCapability::Trs));
    EXPECT_TRUE(mac.has(HeMacCapability::Bsr));
    EXPECT_TRUE(mac.has(HeMacCapability::BroadcastTwt));
    EXPECT_TRUE(mac.has(HeMacCapability::AckEnabledAggregation));
    EXPECT_FALSE(mac.has(HeMacCapability::OmControl));
    EXPECT_EQ(mac.maximumAmpduLengthExponentExtension(), 3);
    EXPECT_TRUE(mac.has(HeMacCapability::NdpFeedbackReport));
    EXPECT_TRUE(mac.has(HeMacCapability::PuncturedSounding));
    EXPECT_EQ(mac.multiTidAggregationTx(), 1);
}

TEST(AirHeCapabilities, TellsTheMacFieldsOfSeveralBits) {
    HeMacCapabilities mac;
    mac.bits.setBits(5, 3, 7);
    EXPECT_FALSE(mac.maximumFragmentedMsdus());
    mac.bits.setBits(5, 3, 6);
    EXPECT_EQ(mac.maximumFragmentedMsdus(), 64);
    mac.bits.setBits(8, 2, 3);
    EXPECT_EQ(mac.minimumFragmentSize(), 512);
    mac.bits.setBits(10, 2, 2);
    EXPECT_EQ(mac.triggerFramePadding(), 16);
    mac.bits.setBits(12, 3, 7);
    EXPECT_EQ(mac.multiTidAggregationRx(), 8);
    mac.bits.setBits(39, 3, 4);
    EXPECT_EQ(mac.multiTidAggregationTx(), 5);
    mac.bits.setBits(15, 2, 3);
    EXPECT_EQ(mac.linkAdaptation(), 3);
}

TEST(AirHeCapabilities, DecodesThePhyCapabilities) {
    const auto he = HeCapabilities::decode(bytesOf(std::string(kMacAndPhy) + "FAFFFAFF AAFFAAFF"));
    ASSERT_TRUE(he);
    const HePhyCapabilities& phy = he->phy;
    EXPECT_FALSE(phy.has(HePhyCapability::Width40At2Ghz));
    EXPECT_TRUE(phy.has(HePhyCapability::Width40And80));
    EXPECT_TRUE(phy.has(HePhyCapability::Width160));
    EXPECT_FALSE(phy.has(HePhyCapability::Width80Plus80));
    EXPECT_EQ(phy.supportedChannelWidthSet(), 6);
    EXPECT_EQ(phy.puncturedPreambleRx(), 0);
    EXPECT_TRUE(phy.has(HePhyCapability::ClassA));
    EXPECT_TRUE(phy.has(HePhyCapability::Ldpc));
    EXPECT_TRUE(phy.has(HePhyCapability::SuPpdu1xLtf800NsGi));
    EXPECT_EQ(phy.midambleStreams(), 1);
    EXPECT_TRUE(phy.has(HePhyCapability::StbcTx80));
    EXPECT_TRUE(phy.has(HePhyCapability::StbcRx80));
    EXPECT_EQ(phy.dcmTx(), DcmConstellation::Qpsk);
    EXPECT_EQ(phy.dcmRx(), DcmConstellation::Bpsk);
    EXPECT_TRUE(phy.has(HePhyCapability::RxPartialBwSuIn20MhzMuPpdu));
    EXPECT_TRUE(phy.has(HePhyCapability::SuBeamformer));
    EXPECT_TRUE(phy.has(HePhyCapability::SuBeamformee));
    EXPECT_TRUE(phy.has(HePhyCapability::MuBeamformer));
    EXPECT_EQ(phy.beamformeeStreams80(), 8);
    EXPECT_EQ(phy.beamformeeStreamsOver80(), 4);
    EXPECT_EQ(phy.soundingDimensions80(), 3);
    EXPECT_EQ(phy.soundingDimensionsOver80(), 1);
    EXPECT_FALSE(phy.has(HePhyCapability::PpeThresholdsPresent));
    EXPECT_TRUE(phy.has(HePhyCapability::PartialBandwidthDlMuMimo));
    EXPECT_EQ(phy.maximumColumns(), 7);
    EXPECT_EQ(phy.dcmMaximumTones(), 242);
    EXPECT_TRUE(phy.has(HePhyCapability::LongerThan16SigBSymbols));
    EXPECT_TRUE(phy.has(HePhyCapability::ErSuPpdu4xLtf800NsGi));
    EXPECT_EQ(phy.nominalPacketPadding(), 0);
}

TEST(AirHeCapabilities, HasTheMapsThatTheWidthSetNames) {
    EXPECT_EQ(
        HeCapabilities::decode(bodyWith("0400000000000000000000", "FAFFFAFF"))->upTo80.rx.streams(),
        2);
    const auto both =
        HeCapabilities::decode(bodyWith("1C00000000000000000000", "AAFFEAFF FAFFFEFF FEFFFFFF 99"));
    ASSERT_TRUE(both && both->at160 && both->at80Plus80);
    EXPECT_EQ(both->upTo80.rx.streams(), 4);
    EXPECT_EQ(both->upTo80.tx.streams(), 3);
    EXPECT_EQ(both->at160->rx.streams(), 2);
    EXPECT_EQ(both->at160->tx.streams(), 1);
    EXPECT_EQ(both->at80Plus80->rx.streams(), 1);
    EXPECT_EQ(both->at80Plus80->tx.streams(), 0);
    EXPECT_EQ(both->upTo80.rx.highestMcs(1), 11);
    EXPECT_EQ(both->rest, ByteBuffer({0x99}));
    const auto only80Plus80 =
        HeCapabilities::decode(bodyWith("1000000000000000000000", "AAFFEAFF FEFFFFFF"));
    ASSERT_TRUE(only80Plus80);
    EXPECT_FALSE(only80Plus80->at160);
    EXPECT_TRUE(only80Plus80->at80Plus80);
    EXPECT_FALSE(HeCapabilities::decode(bodyWith("0800000000000000000000", "AAFFEAFF FEFFFF")));
}

// Two streams, 242 and 996 tones: 7 + 2 * 2 * 6 = 31 bits. After the header the triples are, from
// the lowest bit: 0 7, 1 7, 2 5, 3 4.
TEST(AirHeCapabilities, DecodesPpeThresholds) {
    std::uint64_t bits = 1 | 5 << 3;
    const int triples[] = {0, 7, 1, 7, 2, 5, 3, 4};
    for (int i = 0; i < 8; ++i) bits |= std::uint64_t(triples[i]) << (7 + 3 * i);
    Bytes body = bodyWith("0000000000008000000000", "FAFFFAFF");
    for (int i = 0; i < 4; ++i) body.push_back(static_cast<std::uint8_t>(bits >> (8 * i)));
    body.push_back(0x42);
    const auto he = HeCapabilities::decode(body);
    ASSERT_TRUE(he && he->ppe);
    const HePpeThresholds& ppe = *he->ppe;
    EXPECT_EQ(ppe.octets.size(), 4u);
    EXPECT_EQ(ppe.streams(), 2);
    EXPECT_TRUE(ppe.hasResourceUnit(0));
    EXPECT_FALSE(ppe.hasResourceUnit(1));
    EXPECT_TRUE(ppe.hasResourceUnit(2));
    EXPECT_EQ(ppe.thresholds(1, 0), (HePpeThresholds::Pair{0, 7}));
    EXPECT_EQ(ppe.thresholds(1, 2), (HePpeThresholds::Pair{1, 7}));
    EXPECT_EQ(ppe.thresholds(2, 0), (HePpeThresholds::Pair{2, 5}));
    EXPECT_EQ(ppe.thresholds(2, 2), (HePpeThresholds::Pair{3, 4}));
    EXPECT_FALSE(ppe.thresholds(3, 0));
    EXPECT_FALSE(ppe.thresholds(1, 1));
    EXPECT_EQ(he->rest, ByteBuffer({0x42}));
    EXPECT_EQ(he->encode(), body);
}

TEST(AirHeCapabilities, HoldsTheLargestPpeThresholds) {
    Bytes body = bodyWith("0000000000008000000000", "FAFFFAFF 7F");
    body.resize(body.size() + 24, 0xFF);
    const auto he = HeCapabilities::decode(body);
    ASSERT_TRUE(he && he->ppe);
    EXPECT_EQ(he->ppe->octets.size(), 25u);
    EXPECT_TRUE(he->rest.empty());
    body.pop_back();
    EXPECT_FALSE(HeCapabilities::decode(body));
}

TEST(AirHeCapabilities, IsEncodedFromItsFields) {
    HeCapabilities he;
    he.phy.bits.setBit(3, true);
    he.upTo80.rx.fields.setBits(0, 2, 2);
    he.at160.emplace().tx.fields.setBits(0, 2, 1);
    EXPECT_EQ(he.encode(), bytesOf("000000000000 0800000000000000000000 FEFFFFFF FFFFFDFF"));
    EXPECT_EQ(HeCapabilities::decode(he.encode()), he);
}

}  // namespace
