#include "halvane/air/ds_parameter_set.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirDsParameterSet, HoldsTheChannel) {
    const auto element = DsParameterSet::decode(bytesOf("0D"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->currentChannel, 13);
    EXPECT_FALSE(DsParameterSet::decode({}));
    EXPECT_EQ(DsParameterSet{.currentChannel = 6}.encode(), bytesOf("06"));
}

}  // namespace
