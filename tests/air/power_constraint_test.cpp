#include "halvane/air/power_constraint.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirPowerConstraint, IsOneOctet) {
    EXPECT_EQ(PowerConstraint::decode(bytesOf("0A"))->localConstraint, 10);
    EXPECT_FALSE(PowerConstraint::decode({}));
    EXPECT_EQ(PowerConstraint{.localConstraint = 3}.encode(), bytesOf("03"));
}

}  // namespace
