#include "halvane/air/vht_capabilities.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.157.2: 0x33C379B2 by hand. MPDU length 2 (bits 0, 1), width 0, Rx LDPC, Short GI 80,
// Tx STBC, Rx STBC 1, both SU, STS 4 (3 + 1), 4 dimensions, exponent 7.
TEST(AirVhtCapabilities, DecodesEveryField) {
    const auto vht = VhtCapabilities::decode(bytesOf("B279C333 FAFF 0C63 FAFF 0C23 AB"));
    ASSERT_TRUE(vht);
    EXPECT_EQ(vht->maximumMpduLength(), 11454);
    EXPECT_EQ(vht->supportedChannelWidthSet(), 0);
    EXPECT_TRUE(vht->has(VhtCapability::RxLdpc));
    EXPECT_TRUE(vht->has(VhtCapability::ShortGi80));
    EXPECT_FALSE(vht->has(VhtCapability::ShortGi160));
    EXPECT_TRUE(vht->has(VhtCapability::TxStbc));
    EXPECT_EQ(vht->rxStbcStreams(), 1);
    EXPECT_TRUE(vht->has(VhtCapability::SuBeamformer));
    EXPECT_TRUE(vht->has(VhtCapability::SuBeamformee));
    EXPECT_EQ(vht->beamformeeStreams(), 4);
    EXPECT_EQ(vht->soundingDimensions(), 4);
    EXPECT_FALSE(vht->has(VhtCapability::MuBeamformer));
    EXPECT_FALSE(vht->has(VhtCapability::MuBeamformee));
    EXPECT_TRUE(vht->has(VhtCapability::HtcVht));
    EXPECT_EQ(vht->maximumAmpduLength(), 1048575);
    EXPECT_EQ(vht->linkAdaptation(), 0);
    EXPECT_TRUE(vht->has(VhtCapability::RxAntennaPatternConsistency));
    EXPECT_TRUE(vht->has(VhtCapability::TxAntennaPatternConsistency));
    EXPECT_EQ(vht->extendedNssBw(), 0);
    EXPECT_EQ(vht->rxMcs.streams(), 2);
    EXPECT_EQ(vht->rxMcs.highestMcs(2), 9);
    EXPECT_EQ(vht->highestRxRate(), 780);
    EXPECT_EQ(vht->maximumTotalStreams(), 3);
    EXPECT_EQ(vht->highestTxRate(), 780);
    EXPECT_TRUE(vht->isExtendedNssBwCapable());
    EXPECT_EQ(vht->rest, ByteBuffer({0xAB}));
}

// Table 9-272, each combination that it allows.
TEST(AirVhtCapabilities, TellsTheStreamsOfEachWidth) {
    struct Row {
        std::uint8_t set, extended;
        int at80, at160, at80Plus80;  // for 4 streams
    };
    constexpr Row kRows[] = {
        {0, 0, 4, 0, 0}, {0, 1, 4, 2, 0}, {0, 2, 4, 2, 2}, {0, 3, 4, 3, 3},
        {1, 0, 4, 4, 0}, {1, 1, 4, 4, 2}, {1, 2, 4, 4, 3}, {1, 3, 8, 8, 4},
        {2, 0, 4, 4, 4}, {2, 3, 8, 4, 4}, {3, 0, 4, 0, 0},
    };
    for (const Row& row : kRows) {
        VhtCapabilities vht;
        vht.information.setBits(2, 2, row.set);
        vht.information.setBits(30, 2, row.extended);
        EXPECT_EQ(vht.streamsAt80(4), row.at80) << int{row.set} << int{row.extended};
        EXPECT_EQ(vht.streamsAt160(4), row.at160) << int{row.set} << int{row.extended};
        EXPECT_EQ(vht.streamsAt80Plus80(4), row.at80Plus80) << int{row.set} << int{row.extended};
    }
}

TEST(AirVhtCapabilities, ReservesAnMpduLength) {
    VhtCapabilities vht;
    EXPECT_EQ(vht.maximumMpduLength(), 3895);
    vht.information.setBits(0, 2, 3);
    EXPECT_FALSE(vht.maximumMpduLength());
}

TEST(AirVhtCapabilities, IsEncodedFromItsFields) {
    VhtCapabilities vht;
    vht.information.setBit(4, true);
    vht.rxRates.setBits(0, 13, 433);
    EXPECT_EQ(vht.encode(), bytesOf("10000000 FFFF B101 FFFF 0000"));
    EXPECT_FALSE(VhtCapabilities::decode(bytesOf("10000000 FFFF B101 FFFF 00")));
}

}  // namespace
