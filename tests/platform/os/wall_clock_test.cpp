#include <chrono>
#include <gtest/gtest.h>

#include "halvane/platform/os/wall_clock_internal.h"

#include "tests/support/replaced_system.h"

namespace {

using halvane::wallTime;

// Compares with the system's clock, whatever year that shows.
void expectSystemTime() {
    using std::chrono::floor, std::chrono::seconds, std::chrono::system_clock;
    const auto now = [] { return floor<seconds>(system_clock::now()).time_since_epoch().count(); };
    const auto before = now();
    const auto seen = wallTime().seconds;
    EXPECT_GE(seen, before);
    EXPECT_LE(seen, now());
}

TEST(WallClock, IsTheSystemsUntilReplaced) {
    expectSystemTime();
    EXPECT_LT(wallTime().microseconds, 1000000u);
    halvane::replaceWallClock([] { return halvane::WallTime{42, 7}; });
    EXPECT_EQ(wallTime().seconds, 42);
    EXPECT_EQ(wallTime().microseconds, 7u);
    halvane::replaceWallClock(nullptr);
    expectSystemTime();
}

}  // namespace
