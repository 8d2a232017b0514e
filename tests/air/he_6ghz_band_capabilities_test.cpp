#include "halvane/air/he_6ghz_band_capabilities.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 0x36BD: start spacing 5, exponent 7, MPDU length 2, SM Power Save 3, both antenna patterns.
TEST(AirHe6GhzBandCapabilities, DecodesEveryField) {
    const auto he = He6GhzBandCapabilities::decode(bytesOf("BD36 01"));
    ASSERT_TRUE(he);
    EXPECT_EQ(he->minimumMpduStartSpacing(), 4.0);
    EXPECT_EQ(he->maximumAmpduLength(), 1048575);
    EXPECT_EQ(he->maximumMpduLength(), 11454);
    EXPECT_EQ(he->smPowerSave(), SmPowerSave::Disabled);
    EXPECT_FALSE(he->isRdResponder());
    EXPECT_TRUE(he->isRxAntennaPatternConsistent());
    EXPECT_TRUE(he->isTxAntennaPatternConsistent());
    EXPECT_EQ(he->rest, ByteBuffer({1}));
}

TEST(AirHe6GhzBandCapabilities, TellsTheEndsOfEachRange) {
    He6GhzBandCapabilities he;
    EXPECT_EQ(he.minimumMpduStartSpacing(), 0.0);
    EXPECT_EQ(he.maximumAmpduLength(), 8191);
    EXPECT_EQ(he.maximumMpduLength(), 3895);
    he.information.setBits(0, 3, 1);
    EXPECT_EQ(he.minimumMpduStartSpacing(), 0.25);
    he.information.setBits(0, 3, 7);
    EXPECT_EQ(he.minimumMpduStartSpacing(), 16.0);
    he.information.setBits(6, 2, 3);
    EXPECT_FALSE(he.maximumMpduLength());
    EXPECT_FALSE(He6GhzBandCapabilities::decode(bytesOf("BD")));
}

}  // namespace
