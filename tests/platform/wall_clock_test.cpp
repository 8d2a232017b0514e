#include <gtest/gtest.h>

#include "halvane/platform/wall_clock_internal.h"

namespace {

using halvane::wallTime;

TEST(WallClock, IsTheSystemsUntilReplaced) {
    constexpr std::int64_t kYear2020 = 1577836800;
    EXPECT_GT(wallTime().seconds, kYear2020);
    EXPECT_LT(wallTime().microseconds, 1000000u);
    halvane::replaceWallClock([] { return halvane::WallTime{42, 7}; });
    EXPECT_EQ(wallTime().seconds, 42);
    EXPECT_EQ(wallTime().microseconds, 7u);
    halvane::replaceWallClock(nullptr);
    EXPECT_GT(wallTime().seconds, kYear2020);
}

}  // namespace
