#include "halvane/air/operating_channel_information.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirOperatingChannelInformation, DecodesTheChannel) {
    const auto element = OperatingChannelInformation::decode(bytesOf("82 24 9B"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->operatingClass, 130);
    EXPECT_EQ(element->primaryChannel, 36);
    EXPECT_EQ(element->centerSegment1, 155);
    EXPECT_FALSE(OperatingChannelInformation::decode(bytesOf("82 24")));
}

}  // namespace
