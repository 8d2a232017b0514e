#include "halvane/air/ssid_element.h"

#include <gtest/gtest.h>

#include "halvane/base/ssid.h"

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirSsidElement, HoldsTheOctetsOfTheName) {
    const auto element = SsidElement::decode(bytesOf("48C3B6"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->ssid, halvane::Ssid::fromText("H\xC3\xB6"));
    EXPECT_FALSE(element->ssid.isHidden());
    EXPECT_EQ(element->encode(), bytesOf("48C3B6"));
}

TEST(AirSsidElement, TellsAHiddenName) {
    EXPECT_TRUE(SsidElement::decode({})->ssid.isHidden());
    EXPECT_TRUE(SsidElement::decode(bytesOf("000000"))->ssid.isHidden());
    EXPECT_EQ(SsidElement::decode(bytesOf("000000"))->ssid.size(), 3u);
}

TEST(AirSsidElement, HasAtMost32Octets) {
    EXPECT_EQ(SsidElement::decode(Bytes(32, 'a'))->ssid.size(), 32u);
    EXPECT_FALSE(SsidElement::decode(Bytes(33, 'a')));
}

}  // namespace
