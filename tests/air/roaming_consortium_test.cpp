#include "halvane/air/roaming_consortium.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirRoamingConsortium, DecodesUpToThreeOrganisations) {
    const auto all = RoamingConsortium::decode(bytesOf("02 53 506F9A 001BC50460 004096"));
    ASSERT_TRUE(all);
    EXPECT_EQ(all->anqpCount, 2);
    EXPECT_EQ(all->first.hex(), "506f9a");
    EXPECT_EQ(all->second.hex(), "001bc50460");
    EXPECT_EQ(all->third.hex(), "004096");
    const auto one = RoamingConsortium::decode(bytesOf("00 05 001BC50460"));
    ASSERT_TRUE(one);
    EXPECT_TRUE(one->second.empty() && one->third.empty());
    EXPECT_FALSE(RoamingConsortium::decode(bytesOf("00 33 506F9A 001B")));
    EXPECT_FALSE(RoamingConsortium::decode(bytesOf("00")));
}

TEST(AirRoamingConsortium, IsEncodedFromItsFields) {
    RoamingConsortium element;
    element.set(ByteBuffer({1, 2, 3}), ByteBuffer({4, 5, 6, 7, 8}));
    EXPECT_EQ(element.encode(), bytesOf("00 53 010203 0405060708"));
}

}  // namespace
