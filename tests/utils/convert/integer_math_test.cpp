#include "halvane/utils/convert/integer_math.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <numbers>
#include <random>
#include <utility>
#include <vector>

namespace {

std::int64_t gcdBySubtraction(std::int64_t a, std::int64_t b) {
    while (a > 0) {
        if (a < b) std::swap(a, b);
        a -= b;
    }
    return b;
}

TEST(Gcd64, IsWhatRepeatedSubtractionGives) {
    for (std::int64_t a = -3; a <= 60; ++a) {
        for (std::int64_t b = 1; b <= 60; ++b) ASSERT_EQ(gcd64(a, b), gcdBySubtraction(a, b));
    }
    EXPECT_EQ(gcd64(12, 18), 6);
    EXPECT_EQ(gcd64(1'000'000'007, 998'244'353), 1);
}

TEST(Gcd64, AnswersAtOnceForAnyNumbers) {
    EXPECT_EQ(gcd64(INT64_MAX, 1), 1);
    EXPECT_EQ(gcd64(1, INT64_MAX), 1);
    EXPECT_EQ(gcd64(INT64_MAX, INT64_MAX), INT64_MAX);
    EXPECT_EQ(gcd64(INT64_MAX - 1, 2), 2);
    EXPECT_EQ(gcd64(7540113804746346429, 4660046610375530309), 1);  // Fibonacci's: the most steps
}

TEST(Gcd64, GivesTheOtherForOneThatIsNotAboveZero) {
    EXPECT_EQ(gcd64(0, 7), 7);
    EXPECT_EQ(gcd64(-4, 7), 7);
    EXPECT_EQ(gcd64(INT64_MIN, INT64_MIN), INT64_MIN);
    EXPECT_EQ(gcd64(0, 0), 0);
    EXPECT_EQ(gcd64(0, -7), -7);
    EXPECT_EQ(gcd64(7, 0), 7);
    EXPECT_EQ(gcd64(7, -4), 7);
    EXPECT_EQ(gcd64(7, INT64_MIN), 7);
}

TEST(PowersOfTwo, AreRoundedBothWays) {
    EXPECT_EQ(iceil2(0), 0u);
    EXPECT_EQ(ifloor2(0), 0u);
    EXPECT_EQ(iceil2_64(0), 0u);
    EXPECT_EQ(ifloor2_64(0), 0u);
    EXPECT_EQ(ilog2_64(0), 0);
    EXPECT_EQ(iceil2(3), 4u);
    EXPECT_EQ(ifloor2(3), 2u);
    for (int k = 0; k < 64; ++k) {
        const std::uint64_t power = std::uint64_t{1} << k;
        EXPECT_EQ(iceil2_64(power), power);
        EXPECT_EQ(ifloor2_64(power), power);
        EXPECT_EQ(ilog2_64(power), k);
        if (k < 32) {
            const auto small = static_cast<std::uint32_t>(power);
            EXPECT_EQ(iceil2(small), small);
            EXPECT_EQ(ifloor2(small), small);
        }
        if (k < 2) continue;
        EXPECT_EQ(iceil2_64(power - 1), power);
        EXPECT_EQ(ifloor2_64(power - 1), power / 2);
        EXPECT_EQ(iceil2_64(power + 1), k == 63 ? 0 : power * 2);
        EXPECT_EQ(ifloor2_64(power + 1), power);
        EXPECT_EQ(ilog2_64(power - 1), k - 1);
        EXPECT_EQ(ilog2_64(power + 1), k);
    }
}

TEST(PowersOfTwo, ThatDoNotFitAreZero) {
    EXPECT_EQ(iceil2(0x80000000), 0x80000000);
    EXPECT_EQ(iceil2(0x80000001), 0u);
    EXPECT_EQ(iceil2(UINT32_MAX), 0u);
    EXPECT_EQ(ifloor2(UINT32_MAX), 0x80000000);
    EXPECT_EQ(iceil2_64(UINT64_MAX), 0u);
    EXPECT_EQ(ifloor2_64(UINT64_MAX), 0x8000000000000000);
    EXPECT_EQ(ilog2_64(UINT64_MAX), 63);
}

TEST(PowersOfTen, AreClampedToTheGreatest) {
    std::uint64_t power = 1;
    for (std::uint32_t n = 0; n <= 19; ++n) {
        EXPECT_EQ(ipow10_64(n), power) << n;
        EXPECT_EQ(ipow10(n), n <= 9 ? power : 1'000'000'000) << n;
        if (n < 19) power *= 10;
    }
    EXPECT_EQ(ipow10(UINT32_MAX), 1'000'000'000u);
    EXPECT_EQ(ipow10_64(20), 10'000'000'000'000'000'000u);
    EXPECT_EQ(ipow10_64(UINT32_MAX), 10'000'000'000'000'000'000u);
}

TEST(Isin, IsExactAtQuarterTurns) {
    EXPECT_EQ(isin(0), 0);
    EXPECT_EQ(isin(8192), 4096);
    EXPECT_EQ(isin(16384), 0);
    EXPECT_EQ(isin(24576), -4096);
    EXPECT_EQ(isin(32768), 0);
    EXPECT_EQ(isin(-8192), -4096);
}

TEST(Isin, FollowsItsPolynomial) {
    struct Row {
        int angle;
        int sine;
    };
    // Another program has computed these from the formula.
    const std::vector<Row> rows = {{1, 1},         {100, 79},     {2048, 1576},   {4096, 2908},
                                   {8191, 4096},   {12288, 2908}, {16383, 1},     {16385, -1},
                                   {20480, -2908}, {32767, -1},   {-4096, -2908}, {36864, 2908}};
    for (const Row& row : rows) EXPECT_EQ(isin(row.angle), row.sine) << row.angle;
    int sum = 0;
    for (int angle = 0; angle < kSineFullTurn / 2; ++angle) sum += isin(angle);
    EXPECT_EQ(sum, 42828592);
}

TEST(Isin, StaysNearTheSineAllTheWayRound) {
    constexpr double kOne = kSineOne;
    constexpr double kTurn = kSineFullTurn;
    double worst = 0;
    for (int angle = 0; angle < kSineFullTurn; ++angle) {
        const double exact = kOne * std::sin(2 * std::numbers::pi * angle / kTurn);
        worst = std::max(worst, std::abs(isin(angle) - exact));
        ASSERT_EQ(isin(angle), isin(angle - kSineFullTurn));
        ASSERT_EQ(isin(angle), isin(angle + 1000 * kSineFullTurn));
        ASSERT_EQ(isin(angle + kSineFullTurn / 2), -isin(angle));
    }
    EXPECT_LE(worst, 13);
    EXPECT_GT(worst, 12);
}

TEST(Isin, IsDefinedForEveryAngle) {
    EXPECT_EQ(isin(INT_MIN), 0);
    EXPECT_EQ(isin(INT_MAX), isin(-1));
    EXPECT_EQ(isin(INT_MIN + 8192), 4096);
}

struct Product {
    std::uint64_t high;
    std::uint64_t low;

    bool operator==(const Product&) const = default;
};

Product product(std::uint64_t a, std::uint64_t b) {
    Product result{};
    Multiply64x64(a, b, &result.high, &result.low);
    return result;
}

// Multiplies by the four products of the halves.
Product productOfHalves(std::uint64_t a, std::uint64_t b) {
    const std::uint64_t aHigh = a >> 32;
    const std::uint64_t aLow = a & 0xFFFFFFFF;
    const std::uint64_t bHigh = b >> 32;
    const std::uint64_t bLow = b & 0xFFFFFFFF;
    const std::uint64_t middle = aHigh * bLow + (aLow * bLow >> 32);
    const std::uint64_t carry = aLow * bHigh + (middle & 0xFFFFFFFF);
    return {aHigh * bHigh + (middle >> 32) + (carry >> 32), a * b};
}

TEST(Multiply64x64, GivesAll128Bits) {
    EXPECT_EQ(product(0, UINT64_MAX), (Product{0, 0}));
    EXPECT_EQ(product(1, UINT64_MAX), (Product{0, UINT64_MAX}));
    EXPECT_EQ(product(UINT64_MAX, UINT64_MAX), (Product{UINT64_MAX - 1, 1}));
    EXPECT_EQ(product(0x8000000000000000, 2), (Product{1, 0}));
    EXPECT_EQ(product(0x123456789ABCDEF0, 0xFEDCBA9876543210),
              (Product{0x121FA00AD77D7422, 0x236D88FE5618CF00}));
    std::mt19937_64 random(1);
    for (int i = 0; i < 5000; ++i) {
        const std::uint64_t a = random() >> random() % 64;
        const std::uint64_t b = random() >> random() % 64;
        ASSERT_EQ(product(a, b), productOfHalves(a, b));
    }
}

TEST(Multiply64x64, NeedsNoOutputs) {
    std::uint64_t half = 0;
    Multiply64x64(UINT64_MAX, 2, &half, nullptr);
    EXPECT_EQ(half, 1u);
    Multiply64x64(UINT64_MAX, 2, nullptr, &half);
    EXPECT_EQ(half, UINT64_MAX - 1);
    Multiply64x64(1, 1, nullptr, nullptr);
}

}  // namespace
