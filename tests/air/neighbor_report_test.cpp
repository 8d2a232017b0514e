#include "halvane/air/neighbor_report.h"

#include <gtest/gtest.h>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::MacAddress;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.36: reachable, same security, QoS, mobility domain, HT, VHT, HE, co-located, EHT.
TEST(AirNeighborReport, DecodesEveryField) {
    const auto report = NeighborReport::decode(
        bytesOf("0200000000AA 275C2100 80 2A 09 01 04 1000 6400 03 01 FE 2D 02 ABCD"));
    ASSERT_TRUE(report);
    EXPECT_EQ(report->bssid, MacAddress({0x02, 0, 0, 0, 0, 0xAA}));
    const NeighborBssidInformation& information = report->information;
    EXPECT_EQ(information.reachability(), ApReachability::Reachable);
    EXPECT_TRUE(information.hasSameSecurity());
    EXPECT_FALSE(information.hasSameAuthenticator());
    EXPECT_FALSE(information.hasSpectrumManagement());
    EXPECT_TRUE(information.hasQos());
    EXPECT_FALSE(information.hasApsd());
    EXPECT_FALSE(information.hasRadioMeasurement());
    EXPECT_TRUE(information.isInMobilityDomain());
    EXPECT_TRUE(information.isHighThroughput());
    EXPECT_TRUE(information.isVeryHighThroughput());
    EXPECT_FALSE(information.hasFtm());
    EXPECT_TRUE(information.isHighEfficiency());
    EXPECT_FALSE(information.isErBss());
    EXPECT_TRUE(information.isCoLocated());
    EXPECT_FALSE(information.sendsUnsolicitedProbeResponses());
    EXPECT_FALSE(information.isInEssWithCoLocatedAp());
    EXPECT_FALSE(information.hasOctWithSender());
    EXPECT_FALSE(information.isCoLocatedWith6GhzAp());
    EXPECT_TRUE(information.isExtremelyHighThroughput());
    EXPECT_EQ(report->operatingClass, 128);
    EXPECT_EQ(report->channel, 42);
    EXPECT_EQ(report->phyType, 9);
    EXPECT_EQ(report->tsf(), (NeighborTsf{16, 100}));
    EXPECT_EQ(report->preference(), 254);
    ASSERT_TRUE(report->find(45));
    EXPECT_EQ(report->find(45)->body, ByteBuffer({0xAB, 0xCD}));
    EXPECT_EQ(report->find(191), nullptr);
}

TEST(AirNeighborReport, LacksSubelementsThatAreMissingOrShort) {
    const auto bare = NeighborReport::decode(bytesOf("0200000000AA 00000000 51 06 07"));
    ASSERT_TRUE(bare);
    EXPECT_FALSE(bare->tsf() || bare->preference());
    const auto shortOnes =
        NeighborReport::decode(bytesOf("0200000000AA 00000000 51 06 07 01 03 100064 03 00 07 05"));
    ASSERT_TRUE(shortOnes);
    EXPECT_FALSE(shortOnes->tsf() || shortOnes->preference());
    EXPECT_EQ(shortOnes->rest, ByteBuffer({7, 5}));
    EXPECT_FALSE(NeighborReport::decode(bytesOf("0200000000AA 00000000 51 06")));
}

TEST(AirNeighborReport, IsEncodedFromItsFields) {
    NeighborReport report;
    report.information.fields.setBits(0, 2, 3);
    report.operatingClass = 81;
    report.channel = 6;
    report.phyType = 7;
    report.subelements.push_back({3, ByteBuffer({255})});
    EXPECT_EQ(report.encode(), bytesOf("000000000000 03000000 51 06 07 03 01 FF"));
}

}  // namespace
