#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <set>

#include "halvane/platform/os/random_internal.h"

#include "tests/support/replaced_system.h"

namespace halvane {
namespace {

TEST(FillRandom, GivesOtherValuesEachTime) {
    std::array<std::uint32_t, 1000> values{};
    fillRandom(values);
    // Among 1000 random 32-bit values, two are equal about once in 8600 runs. Ten are never equal.
    EXPECT_GT(std::set<std::uint32_t>(values.begin(), values.end()).size(), 990u);
    std::array<std::uint32_t, 1000> others{};
    fillRandom(others);
    EXPECT_NE(values, others);
}

TEST(FillRandom, FillsNothingButTheValues) {
    std::array<std::uint32_t, 3> values{7, 8, 9};
    fillRandom(std::span(values).first(0));
    EXPECT_EQ(values, (std::array<std::uint32_t, 3>{7, 8, 9}));
    fillRandom(std::span(values).first(2));
    EXPECT_EQ(values[2], 9u);
}

TEST(FillRandom, AsksTheSourceInItsPlace) {
    replaceRandomSource([](std::span<std::uint32_t> values) { std::ranges::fill(values, 5u); });
    std::array<std::uint32_t, 2> values{};
    fillRandom(values);
    EXPECT_EQ(values, (std::array<std::uint32_t, 2>{5, 5}));
    replaceRandomSource(nullptr);
    std::array<std::uint32_t, 16> again;
    again.fill(5);
    fillRandom(again);
    EXPECT_FALSE(std::ranges::all_of(again, [](std::uint32_t value) { return value == 5; }));
}

}  // namespace
}  // namespace halvane
