#include "halvane/air/supported_rates.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>

#include "halvane/air/rate_octet.h"

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 82 84 8B 96 are 1, 2, 5.5 and 11 Mb/s, all basic; 0C is 6 Mb/s, and FF the HT PHY.
TEST(AirSupportedRates, TellsRatesFromSelectors) {
    const auto element = SupportedRates::decode(bytesOf("82848B960CFF"));
    ASSERT_TRUE(element);
    ASSERT_EQ(element->rates.size(), 6u);
    const int expected[] = {2, 4, 11, 22, 12};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(element->rates[i].rate(), expected[i]);
        EXPECT_EQ(element->rates[i].isBasic(), i < 4);
        EXPECT_FALSE(element->rates[i].selector());
    }
    EXPECT_EQ(element->rates[5].selector(), BssMembershipSelector::HtPhy);
    EXPECT_FALSE(element->rates[5].rate());
    EXPECT_EQ(element->encode(), bytesOf("82848B960CFF"));
}

// 9.4.2.3: a selector has the highest bit set.
TEST(AirRateOctet, IsASelectorFrom121On) {
    const auto selectorOf = [](std::uint8_t octet) { return RateOctet{octet}.selector(); };
    EXPECT_EQ(selectorOf(0xF9), BssMembershipSelector::EhtPhy);
    EXPECT_EQ(selectorOf(0xFA), BssMembershipSelector::HePhy);
    EXPECT_EQ(selectorOf(0xFB), BssMembershipSelector::SaeHashToElementOnly);
    EXPECT_EQ(selectorOf(0xFC), BssMembershipSelector::Epd);
    EXPECT_EQ(selectorOf(0xFD), BssMembershipSelector::Glk);
    EXPECT_EQ(selectorOf(0xFE), BssMembershipSelector::VhtPhy);
    EXPECT_EQ(selectorOf(0xFF), BssMembershipSelector::HtPhy);
    EXPECT_FALSE(selectorOf(0xF8));
    EXPECT_EQ(RateOctet{0xF8}.rate(), 120);
    EXPECT_FALSE(selectorOf(0x7F));
    EXPECT_EQ(RateOctet{0x7F}.rate(), 127);
}

TEST(AirSupportedRates, MayHoldNoneOrMoreThanEight) {
    EXPECT_TRUE(SupportedRates::decode({})->rates.empty());
    EXPECT_EQ(SupportedRates::decode(bytesOf("02040B160C121824 3048606C"))->rates.size(), 12u);
}

TEST(AirSupportedRates, IsEncodedFromItsFields) {
    SupportedRates element;
    element.rates = {RateOctet{0x82}, RateOctet{0x0C}};
    EXPECT_EQ(element.encode(), bytesOf("820C"));
}

}  // namespace
