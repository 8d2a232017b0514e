#include "halvane/air/bss_max_idle_period.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.78: 300 units of 1000 TU.
TEST(AirBssMaxIdlePeriod, DecodesBothFields) {
    const auto element = BssMaxIdlePeriod::decode(bytesOf("2C01 01"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->period, 300);
    EXPECT_TRUE(element->isProtectionRequired());
    EXPECT_FALSE(BssMaxIdlePeriod::decode(bytesOf("2C01 FE"))->isProtectionRequired());
    EXPECT_FALSE(BssMaxIdlePeriod::decode(bytesOf("2C01")));
    EXPECT_EQ(BssMaxIdlePeriod().encode(), bytesOf("0100 00"));
}

}  // namespace
