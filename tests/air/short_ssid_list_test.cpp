#include "halvane/air/short_ssid_list.h"

#include <gtest/gtest.h>

#include "halvane/base/ssid.h"

#include "tests/air/element_samples.h"

using halvane::Ssid;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// The check value of CRC-32 is the sum of "123456789".
TEST(AirShortSsid, IsTheCrcOfTheName) {
    EXPECT_EQ(shortSsidOf(*Ssid::fromText("123456789")), 0xCBF43926u);
    EXPECT_EQ(shortSsidOf(Ssid()), 0u);
}

TEST(AirShortSsidList, DecodesEachSum) {
    const auto element = ShortSsidList::decode(bytesOf("2639F4CB 01000000 AABB"));
    ASSERT_TRUE(element);
    ASSERT_EQ(element->shortSsids.size(), 2u);
    EXPECT_EQ(element->shortSsids[0], shortSsidOf(*Ssid::fromText("123456789")));
    EXPECT_EQ(element->shortSsids[1], 1u);
    EXPECT_EQ(element->rest.size(), 2u);
}

}  // namespace
