#include "halvane/air/country.h"

#include <cstdint>
#include <gtest/gtest.h>

#include "halvane/base/byte_buffer.h"

#include "tests/air/element_samples.h"
#include "tests/support/hostile_bytes.h"

using halvane::ByteBuffer;
using halvane::testing::Bytes;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// The United States by the global table. Operating class 131 without a coverage class; the channels
// 1 to 233 of 30 dBm; an octet of padding would make the length even.
TEST(AirCountry, DecodesEveryField) {
    const auto element = Country::decode(bytesOf("555304 C98300 01E91E 00"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->code(), "US");
    EXPECT_EQ(element->environment(), Country::Environment::OperatingClassTable);
    EXPECT_EQ(element->operatingClassTable(), 4);
    ASSERT_EQ(element->triplets.size(), 2u);
    EXPECT_TRUE(element->triplets[0].isOperating());
    EXPECT_EQ(element->triplets[0].operatingClass(), 131);
    EXPECT_EQ(element->triplets[0].coverageClass(), 0);
    EXPECT_FALSE(element->triplets[1].isOperating());
    EXPECT_EQ(element->triplets[1].firstChannel, 1);
    EXPECT_EQ(element->triplets[1].channelCount, 233);
    EXPECT_EQ(element->triplets[1].maxPower(), 30);
    EXPECT_EQ(element->rest, ByteBuffer({0}));
}

TEST(AirCountry, TellsTheEnvironment) {
    const auto environmentOf = [](std::uint8_t octet) {
        return Country{.countryCode = {'D', 'E'}, .environmentOctet = octet}.environment();
    };
    EXPECT_EQ(environmentOf(' '), Country::Environment::Any);
    EXPECT_EQ(environmentOf('O'), Country::Environment::Outdoor);
    EXPECT_EQ(environmentOf('I'), Country::Environment::Indoor);
    EXPECT_EQ(environmentOf('X'), Country::Environment::Noncountry);
    EXPECT_EQ(environmentOf(1), Country::Environment::OperatingClassTable);
    EXPECT_EQ(environmentOf(5), Country::Environment::OperatingClassTable);
    EXPECT_EQ(environmentOf(0), Country::Environment::Unknown);
    EXPECT_EQ(environmentOf(6), Country::Environment::Unknown);
    EXPECT_FALSE((Country{.environmentOctet = ' '}.operatingClassTable()));
}

TEST(AirCountry, HasNoCodeWithoutLetters) {
    EXPECT_FALSE((Country{.countryCode = {'d', 'e'}}.code()));
    EXPECT_FALSE((Country{.countryCode = {'D', 0}}.code()));
    EXPECT_EQ((Country{.countryCode = {'X', 'X'}}.code()), "XX");
}

TEST(AirCountry, TellsANegativePower) {
    EXPECT_EQ((CountryTriplet{1, 11, 0xFB}.maxPower()), -5);
    EXPECT_FALSE((CountryTriplet{200, 1, 0}.isOperating()));
    EXPECT_TRUE((CountryTriplet{201, 1, 0}.isOperating()));
}

TEST(AirCountry, NeedsTheCountryString) {
    EXPECT_FALSE(Country::decode(bytesOf("4445")));
    EXPECT_TRUE(Country::decode(bytesOf("444520"))->triplets.empty());
    EXPECT_EQ(Country::decode(Bytes(255, 1))->triplets.size(), 84u);
}

TEST(AirCountry, IsEncodedFromItsFields) {
    Country element{.countryCode = {'D', 'E'}, .environmentOctet = 'I'};
    element.triplets = {{1, 13, 20}};
    EXPECT_EQ(element.encode(), bytesOf("444549 010D14"));
}

}  // namespace
