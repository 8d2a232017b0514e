#include "halvane/base/number.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

using halvane::Number;

namespace {

constexpr auto kMinInt64 = std::numeric_limits<std::int64_t>::min();
constexpr auto kMaxInt64 = std::numeric_limits<std::int64_t>::max();
constexpr auto kMaxUInt64 = std::numeric_limits<std::uint64_t>::max();

TEST(Number, PrintsIntegersWithoutFractionAndRealsInShortestForm) {
    EXPECT_EQ(Number().description(), "0");
    EXPECT_EQ(Number(54.0).description(), "54");
    EXPECT_EQ(Number(6.5).description(), "6.5");
    EXPECT_EQ(Number(-61).description(), "-61");
    EXPECT_EQ(Number(144.4).description(), "144.4");
    EXPECT_EQ(Number(kMinInt64).description(), "-9223372036854775808");
    EXPECT_EQ(Number(kMaxUInt64).description(), "18446744073709551615");
    EXPECT_EQ(Number(std::numeric_limits<double>::quiet_NaN()).description(), "nan");
}

TEST(Number, ClampsToTheLimitsOfTheAskedType) {
    EXPECT_EQ(Number(-61.7).int64(), -61);
    EXPECT_EQ(Number(1e300).int64(), kMaxInt64);
    EXPECT_EQ(Number(-1e300).int64(), kMinInt64);
    EXPECT_EQ(Number(kMaxUInt64).int64(), kMaxInt64);
    EXPECT_EQ(Number(-1).uint64(), 0u);
    EXPECT_EQ(Number(-0.5).uint64(), 0u);
    EXPECT_EQ(Number(1e300).uint64(), kMaxUInt64);
    EXPECT_EQ(Number(std::numeric_limits<double>::quiet_NaN()).int64(), 0);
    EXPECT_EQ(Number(7u).real(), 7.0);
}

TEST(Number, TellsWhetherAnIntegerTypeHoldsItExactly) {
    EXPECT_EQ(Number(54.0).exactInt64(), 54);
    EXPECT_EQ(Number(6.5).exactInt64(), std::nullopt);
    EXPECT_EQ(Number(kMaxUInt64).exactInt64(), std::nullopt);
    EXPECT_EQ(Number(kMaxUInt64).exactUInt64(), kMaxUInt64);
    EXPECT_EQ(Number(-1).exactUInt64(), std::nullopt);
    EXPECT_EQ(Number(9223372036854775808.0).exactInt64(), std::nullopt);
    EXPECT_EQ(Number(-9223372036854775808.0).exactInt64(), kMinInt64);
    EXPECT_EQ(Number(std::numeric_limits<double>::infinity()).exactInt64(), std::nullopt);
    EXPECT_EQ(Number(std::numeric_limits<double>::quiet_NaN()).exactInt64(), std::nullopt);
}

// Every pair of a list that ascends strictly in value, whatever the kinds are.
TEST(Number, OrdersByValueAcrossKinds) {
    const std::array ascending = {
        Number(-std::numeric_limits<double>::infinity()),
        Number(-1e19),
        Number(kMinInt64),
        Number(-2),
        Number(-1.5),
        Number(-1),
        Number(-0.25),
        Number(0u),
        Number(0.25),
        Number(1),
        Number(1.5),
        Number(2u),
        Number((std::int64_t{1} << 53) + 1),  // no double holds it
        Number(9007199254740994.0),
        Number(kMaxInt64),
        Number(9223372036854775808.0),
        Number((std::uint64_t{1} << 63) + 1),
        Number(kMaxUInt64),
        Number(18446744073709551616.0),
        Number(std::numeric_limits<double>::infinity()),
    };
    for (std::size_t i = 0; i < ascending.size(); ++i) {
        for (std::size_t j = 0; j < ascending.size(); ++j) {
            EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " " << j;
            EXPECT_EQ(ascending[i] == ascending[j], i == j) << i << " " << j;
        }
    }
}

TEST(Number, EqualsTheSameValueOfAnotherKind) {
    EXPECT_EQ(Number(1), Number(1.0));
    EXPECT_EQ(Number(1), Number(1u));
    EXPECT_EQ(Number(1u), Number(1.0));
    EXPECT_TRUE(Number(1).isSigned());
    EXPECT_TRUE(Number(1u).isUnsigned());
    EXPECT_TRUE(Number(1.0).isReal());
}

TEST(Number, IsUnorderedWhenNotANumber) {
    const Number nan(std::numeric_limits<double>::quiet_NaN());
    for (const Number& other : {Number(0), Number(0u), Number(0.0), nan}) {
        EXPECT_FALSE(nan == other);
        EXPECT_FALSE(nan < other);
        EXPECT_FALSE(other < nan);
    }
}

// Doubles of random bit patterns, and those around each power of two.
std::vector<double> hostileReals() {
    std::vector<double> values = {0.0, -0.0};
    std::mt19937_64 random(20261121);
    for (int i = 0; i < 2000; ++i) values.push_back(std::bit_cast<double>(random()));
    const double infinity = std::numeric_limits<double>::infinity();
    for (int exponent = -2; exponent <= 66; ++exponent) {
        const double power = std::ldexp(1.0, exponent);
        for (const double value :
             {power, std::nextafter(power, 0), std::nextafter(power, infinity)}) {
            values.push_back(value);
            values.push_back(-value);
        }
    }
    return values;
}

template <typename Integer>
Integer nearestWhole(double value) {
    if (std::isnan(value)) return 0;
    const long double whole = std::trunc(static_cast<long double>(value));
    if (whole >= static_cast<long double>(std::numeric_limits<Integer>::max())) {
        return std::numeric_limits<Integer>::max();
    }
    if (whole <= static_cast<long double>(std::numeric_limits<Integer>::min())) {
        return std::numeric_limits<Integer>::min();
    }
    return static_cast<Integer>(whole);
}

TEST(Number, ConvertsAnyRealToItsNearestWholeNumber) {
    for (const double value : hostileReals()) {
        EXPECT_EQ(Number(value).int64(), nearestWhole<std::int64_t>(value)) << value;
        EXPECT_EQ(Number(value).uint64(), nearestWhole<std::uint64_t>(value)) << value;
    }
}

// If a long double holds every 64-bit integer, it serves as the judge of the comparison.
TEST(Number, ComparesAnyRealExactlyWithIntegers) {
    if (std::numeric_limits<long double>::digits < 64) GTEST_SKIP() << "no wider real here";
    std::vector<std::uint64_t> integers = {0, 1, 2, 1ull << 63, (1ull << 63) - 1, kMaxUInt64};
    for (int bit = 50; bit < 64; ++bit) {
        integers.push_back((1ull << bit) - 1);
        integers.push_back((1ull << bit) + 1);
    }
    for (const double value : hostileReals()) {
        const auto exact = static_cast<long double>(value);
        for (const std::uint64_t integer : integers) {
            const auto negative = static_cast<std::int64_t>(integer);
            EXPECT_EQ(Number(value) <=> Number(integer),
                      exact <=> static_cast<long double>(integer));
            EXPECT_EQ(Number(negative) <=> Number(value),
                      static_cast<long double>(negative) <=> exact);
        }
    }
}

TEST(Number, PrintsAnyRealSoThatItReadsBack) {
    for (const double value : hostileReals()) {
        if (std::isnan(value)) continue;
        EXPECT_EQ(std::strtod(Number(value).description().c_str(), nullptr), value);
    }
}

}  // namespace
