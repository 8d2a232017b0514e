#include "halvane/air/extended_supported_rates.h"

#include <gtest/gtest.h>

#include "halvane/air/rate_octet.h"

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 48 and 54 Mb/s, and a BSS that stations join with Hash to Element alone.
TEST(AirExtendedSupportedRates, TellsRatesFromSelectors) {
    const auto element = ExtendedSupportedRates::decode(bytesOf("606CFB"));
    ASSERT_TRUE(element);
    ASSERT_EQ(element->rates.size(), 3u);
    EXPECT_EQ(element->rates[0].rate(), 96);
    EXPECT_EQ(element->rates[1].rate(), 108);
    EXPECT_EQ(element->rates[2].selector(), BssMembershipSelector::SaeHashToElementOnly);
    EXPECT_EQ(element->encode(), bytesOf("606CFB"));
}

TEST(AirExtendedSupportedRates, TakesAsManyAsAnElementHolds) {
    EXPECT_EQ(ExtendedSupportedRates::decode(Bytes(255, 0x0C))->rates.size(), 255u);
}

}  // namespace
