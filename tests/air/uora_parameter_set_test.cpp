#include "halvane/air/uora_parameter_set.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// EOCWmin 3 and EOCWmax 5: windows of 7 and 31.
TEST(AirUoraParameterSet, TellsTheWindow) {
    const auto element = UoraParameterSet::decode(bytesOf("EB"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->minWindow(), 7);
    EXPECT_EQ(element->maxWindow(), 31);
    EXPECT_FALSE(UoraParameterSet::decode({}));
    UoraParameterSet built;
    built.range.setBits(3, 3, 7);
    EXPECT_EQ(built.encode(), bytesOf("38"));
}

}  // namespace
