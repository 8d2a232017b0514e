#include "halvane/air/estimated_service_parameters.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.173: AC_BE, A-MSDU and A-MPDU, a window of 64.
TEST(AirEstimatedServiceParameters, DecodesEachService) {
    const auto element = EstimatedServiceParameters::decode(bytesOf("F9 80 64 02 FF 00 AA"));
    ASSERT_TRUE(element);
    ASSERT_EQ(element->services.size(), 2u);
    const EstimatedService& first = element->services[0];
    EXPECT_EQ(first.category(), AccessCategory::BestEffort);
    EXPECT_TRUE(first.usesAmsdu());
    EXPECT_TRUE(first.usesAmpdu());
    EXPECT_EQ(first.blockAckWindow(), 64);
    EXPECT_EQ(first.airTimeFraction(), 128);
    EXPECT_EQ(first.ppduDurationMicroseconds(), 5000u);
    const EstimatedService& second = element->services[1];
    EXPECT_EQ(second.category(), AccessCategory::Video);
    EXPECT_FALSE(second.usesAmsdu() || second.usesAmpdu());
    EXPECT_FALSE(second.blockAckWindow());
    EXPECT_EQ(element->rest.size(), 1u);
}

TEST(AirEstimatedServiceParameters, KeepsWhatExceedsTheCategories) {
    const auto element =
        EstimatedServiceParameters::decode(bytesOf("000000 010000 020000 030000 AABBCC"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->services.size(), 4u);
    EXPECT_EQ(element->rest.size(), 3u);
}

}  // namespace
