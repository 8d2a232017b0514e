#include "tools/halvaned/hosting/retries.h"

#include <cstdint>
#include <ctime>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <vector>

#include "tests/halvaned/hostapd/test_loop.h"

namespace halvane::hosting {
namespace {

using ::halvane::testing::TestLoop;
using ::testing::ElementsAre;

std::uint64_t nowOf(const TestLoop& loop) {
    std::uint64_t now = 0;
    ::sd_event_now(loop.get(), CLOCK_MONOTONIC, &now);
    return now;
}

TEST(Retries, TriesAgainOnceAfterAPause) {
    TestLoop loop;
    std::vector<std::string> tried;
    Retries retries(loop.get(), 1000, 1000, [&](const auto& name) { tried.push_back(name); });
    retries.later("wlan0");
    retries.later("wlan0");
    retries.later("wlan1");
    EXPECT_TRUE(tried.empty());
    loop.runUntil([&] { return tried.size() == 2; });
    loop.settle();
    EXPECT_THAT(tried, ElementsAre("wlan0", "wlan1"));
}

TEST(Retries, WaitsLongerEachTimeUpToALimit) {
    TestLoop loop;
    constexpr std::uint64_t kPauses[] = {2000, 4000, 6000, 6000};
    std::vector<std::uint64_t> times;
    Retries retries(loop.get(), 2000, 6000, [&](const auto& name) {
        times.push_back(nowOf(loop));
        if (times.size() < std::size(kPauses)) retries.later(name);
    });
    std::uint64_t before = nowOf(loop);
    retries.later("wlan0");
    loop.runUntil([&] { return times.size() == std::size(kPauses); });
    for (std::size_t i = 0; i < times.size(); ++i) {
        EXPECT_GE(times[i] - before, kPauses[i]);
        before = times[i];
    }
}

TEST(Retries, BeginsAnewAfterASuccess) {
    TestLoop loop;
    int tried = 0;
    constexpr std::uint64_t kHour = 3'600'000'000;
    Retries retries(loop.get(), 1000, kHour, [&](const auto& name) {
        retries.forget(name);  // as after a success
        ++tried;
    });
    // Doubled each time, the last of these pauses would take days.
    for (int i = 1; i <= 40; ++i) {
        retries.later("wlan0");
        loop.runUntil([&] { return tried == i; });
    }
}

TEST(Retries, DoesNotTryWhatIsForgotten) {
    TestLoop loop;
    std::vector<std::string> tried;
    Retries retries(loop.get(), 1000, 1000, [&](const auto& name) { tried.push_back(name); });
    retries.later("wlan0");
    retries.later("wlan1");
    retries.forget("wlan0");
    retries.forget("wlan7");
    loop.runUntil([&] { return !tried.empty(); });
    loop.settle();
    EXPECT_THAT(tried, ElementsAre("wlan1"));
}

}  // namespace
}  // namespace halvane::hosting
