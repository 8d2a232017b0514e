#include "halvane/air/tpc_report.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// Both fields are in two's complement.
TEST(AirTpcReport, HasSignedFields) {
    const auto element = TpcReport::decode(bytesOf("F605"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->transmitPower, -10);
    EXPECT_EQ(element->linkMargin, 5);
    EXPECT_FALSE(TpcReport::decode(bytesOf("F6")));
    EXPECT_EQ((TpcReport{.transmitPower = -1, .linkMargin = 127}.encode()), bytesOf("FF7F"));
}

}  // namespace
