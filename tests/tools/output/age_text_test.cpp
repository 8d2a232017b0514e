#include "tools/halvane/output/age_text.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>

using halvane::tool::ageText;

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

TEST(AgeText, HasTenthsBelowTenSeconds) {
    EXPECT_EQ(ageText(0), "0.0s");
    EXPECT_EQ(ageText(-5 * kSecond), "0.0s");
    EXPECT_EQ(ageText(349'999'999), "0.3s");
    EXPECT_EQ(ageText(350'000'000), "0.4s");
    EXPECT_EQ(ageText(9'949'999'999), "9.9s");
    EXPECT_EQ(ageText(9'950'000'000), "10s");
}

TEST(AgeText, TakesTheUnitThatFits) {
    EXPECT_EQ(ageText(46 * kSecond), "46s");
    EXPECT_EQ(ageText(99 * kSecond), "99s");
    EXPECT_EQ(ageText(100 * kSecond), "1m");
    EXPECT_EQ(ageText(5999 * kSecond), "99m");
    EXPECT_EQ(ageText(6000 * kSecond), "1h");
    EXPECT_EQ(ageText(360000 * kSecond), "4d");
    EXPECT_EQ(ageText(8639999 * kSecond), "99d");
    EXPECT_EQ(ageText(8640000 * kSecond), ">99d");
    EXPECT_EQ(ageText(std::numeric_limits<std::int64_t>::max()), ">99d");
    EXPECT_EQ(ageText(std::numeric_limits<std::int64_t>::min()), "0.0s");
}

}  // namespace
