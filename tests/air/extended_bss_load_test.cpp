#include "halvane/air/extended_bss_load.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirExtendedBssLoad, DecodesEveryField) {
    const auto element = ExtendedBssLoad::decode(bytesOf("0302 80 10 20 30"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->muMimoStationCount, 515);
    EXPECT_EQ(element->spatialStreamUnderutilization, 128);
    EXPECT_EQ(element->secondary20Utilization, 16);
    EXPECT_EQ(element->secondary40Utilization, 32);
    EXPECT_EQ(element->secondary80Utilization, 48);
    EXPECT_FALSE(ExtendedBssLoad::decode(bytesOf("0302 80 10 20")));
    EXPECT_EQ(ExtendedBssLoad{.muMimoStationCount = 1}.encode(), bytesOf("010000000000"));
}

}  // namespace
