#include "halvane/air/bss_color_change.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirBssColorChange, TellsTheColor) {
    const auto element = BssColorChange::decode(bytesOf("03 FF"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->countdown, 3);
    EXPECT_EQ(element->newBssColor(), 63);
    EXPECT_FALSE(BssColorChange::decode(bytesOf("03")));
    BssColorChange built;
    built.newColorInformation.setBits(0, 6, 42);
    EXPECT_EQ(built.encode(), bytesOf("00 2A"));
}

}  // namespace
