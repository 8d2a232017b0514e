#include "halvane/utils/scan/up_ticks.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <optional>
#include <thread>
#include <vector>

#include "halvane/platform/os/up_time_internal.h"
#include "halvane/utils/scan/up_ticks_internal.h"

#include "tests/support/replaced_system.h"

using halvane::ScopedUpTime;
using halvane::ticksPerSecondOf;
using halvane::Timebase;

namespace {

constexpr std::uint64_t kSecond = 1'000'000'000;

TEST(UpTicks, CountNanosecondsHere) {
    EXPECT_EQ(UpTicksPerSecond(), kSecond);
}

TEST(UpTicks, NeverGoBack) {
    std::uint64_t last = UpTicks();
    for (int i = 0; i < 1000; ++i) {
        const std::uint64_t now = UpTicks();
        ASSERT_GE(now, last);
        last = now;
    }
    EXPECT_GT(last, 0u);
}

TEST(UpTicks, FollowASimulatedClock) {
    {
        ScopedUpTime time(41);
        EXPECT_EQ(UpTicks(), 41u);
        time.advance(1);
        EXPECT_EQ(UpTicks(), 42u);
        time.set(UINT64_MAX);
        EXPECT_EQ(UpTicks(), UINT64_MAX);
    }
    EXPECT_NE(UpTicks(), UINT64_MAX);
}

TEST(UpTicks, PerSecondComeFromTheTimebase) {
    struct Row {
        std::optional<Timebase> timebase;
        std::uint64_t perSecond;
    };
    const std::vector<Row> rows = {
        {Timebase{1, 1}, kSecond},
        {Timebase{125, 3}, 24'000'000},
        {Timebase{1, 1000}, 1000 * kSecond},
        {Timebase{7, 2}, 285'714'285},  // truncated
        {Timebase{1, UINT32_MAX}, UINT32_MAX * kSecond},
        {Timebase{0, 1}, kSecond},
        {Timebase{1, 0}, kSecond},
        {Timebase{0, 0}, kSecond},
        {std::nullopt, kSecond},
    };
    for (const Row& row : rows) EXPECT_EQ(ticksPerSecondOf(row.timebase), row.perSecond);
}

struct Conversion {
    const char* name;
    std::uint64_t (*convert)(std::uint64_t);
    std::uint64_t from;
    std::uint64_t to;
};

TEST(UpTicks, ConvertByTruncatedDoubles) {
    const std::vector<Conversion> rows = {
        {"ticks to s", UpTicksToSeconds, 0, 0},
        {"ticks to s", UpTicksToSeconds, kSecond - 1, 0},
        {"ticks to s", UpTicksToSeconds, kSecond, 1},
        {"ticks to s", UpTicksToSeconds, 2 * kSecond - 1, 1},
        {"ticks to s", UpTicksToSeconds, UINT64_MAX, 18'446'744'073},
        {"ticks to ms", UpTicksToMilliseconds, 999'999, 0},
        {"ticks to ms", UpTicksToMilliseconds, 1'000'000, 1},
        {"ticks to ms", UpTicksToMilliseconds, 90 * kSecond, 90'000},
        {"ticks to us", UpTicksToMicroseconds, 999, 0},
        {"ticks to us", UpTicksToMicroseconds, 1'000, 1},
        {"ticks to us", UpTicksToMicroseconds, 90 * kSecond, 90'000'000},
        {"ticks to ns", UpTicksToNanoseconds, 1, 1},
        {"ticks to ns", UpTicksToNanoseconds, 1ull << 53, 1ull << 53},
        {"ticks to ns", UpTicksToNanoseconds, (1ull << 53) + 1, 1ull << 53},  // no double holds it
        {"s to ticks", SecondsToUpTicks, 3, 3 * kSecond},
        {"ms to ticks", MillisecondsToUpTicks, 3, 3'000'000},
        {"us to ticks", MicrosecondsToUpTicks, 3, 3'000},
        {"ns to ticks", NanosecondsToUpTicks, 3, 3},
    };
    for (const Conversion& row : rows) {
        EXPECT_EQ(row.convert(row.from), row.to) << row.name << " " << row.from;
    }
}

TEST(UpTicks, ConversionsSaturateBeyond64Bits) {
    const std::vector<Conversion> rows = {
        {"ticks to ns", UpTicksToNanoseconds, UINT64_MAX, UINT64_MAX},
        {"s to ticks", SecondsToUpTicks, 18'446'744'074, UINT64_MAX},
        {"s to ticks", SecondsToUpTicks, UINT64_MAX, UINT64_MAX},
        {"ms to ticks", MillisecondsToUpTicks, UINT64_MAX, UINT64_MAX},
        {"us to ticks", MicrosecondsToUpTicks, UINT64_MAX, UINT64_MAX},
        {"ns to ticks", NanosecondsToUpTicks, UINT64_MAX, UINT64_MAX},
        {"ns to ticks", NanosecondsToUpTicks, UINT64_MAX - 2048, UINT64_MAX - 2047},
    };
    for (const Conversion& row : rows) {
        EXPECT_EQ(row.convert(row.from), row.to) << row.name << " " << row.from;
    }
}

// Clocks of a timebase of 125 / 3 and of 7 / 2 nanoseconds a tick.
TEST(UpTicks, ConvertAtAnyRate) {
    namespace rate = halvane::up_ticks;
    struct Row {
        const char* name;
        std::uint64_t (*convert)(std::uint64_t value, std::uint64_t perSecond);
        std::uint64_t value;
        std::uint64_t at24MHz;
        std::uint64_t at285714285Hz;
    };
    constexpr std::uint64_t kTicks = 123'456'789'012;
    constexpr std::uint64_t kUnits = 1'234'567;
    const std::vector<Row> rows = {
        {"ticks to s", rate::UpTicksToSeconds, kTicks, 5'144, 432},
        {"ticks to ms", rate::UpTicksToMilliseconds, kTicks, 5'144'032, 432'098},
        {"ticks to us", rate::UpTicksToMicroseconds, kTicks, 5'144'032'875, 432'098'762},
        {"ticks to ns", rate::UpTicksToNanoseconds, kTicks, 5'144'032'875'500, 432'098'762'622},
        {"s to ticks", rate::SecondsToUpTicks, kUnits, 29'629'608'000'000, 352'733'427'689'595},
        {"ms to ticks", rate::MillisecondsToUpTicks, kUnits, 29'629'608'000, 352'733'427'689},
        {"us to ticks", rate::MicrosecondsToUpTicks, kUnits, 29'629'608, 352'733'427},
        {"ns to ticks", rate::NanosecondsToUpTicks, kUnits, 29'629, 352'733},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.convert(row.value, 24'000'000), row.at24MHz) << row.name;
        EXPECT_EQ(row.convert(row.value, 285'714'285), row.at285714285Hz) << row.name;
    }
    EXPECT_EQ(rate::SecondsToUpTicks(UINT64_MAX, 24'000'000), UINT64_MAX);
}

TEST(UpTicks, ConvertToAndFromNtpAtAnyRate) {
    namespace rate = halvane::up_ticks;
    struct Row {
        std::uint64_t perSecond;
        std::uint64_t ticks;
        std::uint64_t ntp;
        std::uint64_t back;  // one tick less if the fraction was truncated
    };
    const std::vector<Row> rows = {
        {24'000'000, 1, 0xB2, 0},  // 2^32 / 24000000 is 178.96
        {24'000'000, 6'000'000, 0x0000000040000000, 6'000'000},
        {24'000'000, 36'000'000, 0x0000000180000000, 36'000'000},
        {24'000'000, 47'999'999, 0x00000001FFFFFF4D, 47'999'998},
        {24'000'000, 24'000'000ull * 0xFFFFFFFF, 0xFFFFFFFF00000000, 24'000'000ull * 0xFFFFFFFF},
        {24'000'000, 24'000'000ull * 0x100000001, 0x0000000100000000, 24'000'000},
        {285'714'285, 1, 0x0F, 0},
        {285'714'285, 71'428'571, 0x000000003FFFFFFC, 71'428'570},
        {285'714'285, 428'571'427, 0x000000017FFFFFF8, 428'571'426},
        {285'714'285, 571'428'569, 0x00000001FFFFFFF0, 571'428'568},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(rate::UpTicksToNTP(row.ticks, row.perSecond), row.ntp) << row.ticks;
        EXPECT_EQ(rate::NTPtoUpTicks(row.ntp, row.perSecond), row.back) << row.ticks;
    }
    EXPECT_EQ(rate::NTPtoUpTicks(0x12345678ABCDEF01, 24'000'000), 7'330'077'520'106'665u);
    EXPECT_EQ(rate::NTPtoUpTicks(0x12345678ABCDEF01, 285'714'285), 87'262'827'402'160'373u);
}

TEST(UpTicks, SplitASleepAtAnyRate) {
    struct Row {
        std::uint64_t perSecond;
        std::uint64_t ticks;
        std::int64_t seconds;
        std::int64_t nanoseconds;
    };
    const std::vector<Row> rows = {
        {24'000'000, 0, 0, 0},
        {24'000'000, 1, 0, 41},
        {24'000'000, 72'000'007, 3, 291},
        {24'000'000, 24'000'000ull * 0x100000003 - 1, 2, 999'999'958},  // 32 bits of seconds
        {285'714'285, 1, 0, 3},
        {285'714'285, 857'142'862, 3, 24},
        {285'714'285, 285'714'285ull * 0x100000003 - 1, 2, 999'999'996},
    };
    for (const Row& row : rows) {
        const timespec duration = halvane::up_ticks::sleepOf(row.ticks, row.perSecond);
        EXPECT_EQ(duration.tv_sec, row.seconds) << row.ticks;
        EXPECT_EQ(duration.tv_nsec, row.nanoseconds) << row.ticks;
    }
}

TEST(UpTicks, ConvertFromSeveralThreadsAtOnce) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            EXPECT_EQ(UpTicksToMilliseconds(SecondsToUpTicks(5)), 5000u);
            EXPECT_EQ(UpTicksToMicroseconds(MillisecondsToUpTicks(5)), 5000u);
        });
    }
    for (auto& thread : threads) thread.join();
}

TEST(UpTicks, ToNtpIsSecondsAndBinaryFraction) {
    struct Row {
        std::uint64_t ticks;
        std::uint64_t ntp;
    };
    const std::vector<Row> rows = {
        {0, 0},
        {1, 4},  // 2^32 / 10^9, truncated
        {kSecond / 4, 0x0000000040000000},
        {kSecond * 3 / 2, 0x0000000180000000},
        {2 * kSecond - 1, 0x00000001FFFFFFFB},
        {kSecond * 0xFFFFFFFF, 0xFFFFFFFF00000000},
        {kSecond * 0x100000001, 0x0000000100000000},  // the seconds are 32 bits wide
        {UINT64_MAX, 0x4B82FA09B5A52CB5},
    };
    for (const Row& row : rows) EXPECT_EQ(UpTicksToNTP(row.ticks), row.ntp) << row.ticks;
}

TEST(UpTicks, FromNtpIsTruncatedToATick) {
    struct Row {
        std::uint64_t ntp;
        std::uint64_t ticks;
    };
    const std::vector<Row> rows = {
        {0, 0},
        {4, 0},
        {5, 1},
        {0x0000000080000000, kSecond / 2},
        {0x0000000180000000, kSecond * 3 / 2},
        {0x00000000FFFFFFFF, kSecond - 1},
        {UINT64_MAX, kSecond * 0xFFFFFFFF + kSecond - 1},
    };
    for (const Row& row : rows) EXPECT_EQ(NTPtoUpTicks(row.ntp), row.ticks) << row.ntp;
}

TEST(UpTicks, SleepForTheWholeSecondsAndTheRest) {
    ScopedUpTime time(100);
    EXPECT_EQ(SleepForUpTicks(3 * kSecond + 7), 0);
    EXPECT_EQ(time.lastSleep().tv_sec, 3);
    EXPECT_EQ(time.lastSleep().tv_nsec, 7);
    EXPECT_EQ(UpTicks(), 3 * kSecond + 107);
}

TEST(UpTicks, SleepTakesSecondsAsA32BitNumber) {
    ScopedUpTime time;
    EXPECT_EQ(SleepForUpTicks(0x100000002 * kSecond + 999'999'999), 0);
    EXPECT_EQ(time.lastSleep().tv_sec, 2);
    EXPECT_EQ(time.lastSleep().tv_nsec, 999'999'999);
}

TEST(UpTicks, SleepAnswersWhatTheSystemDoes) {
    ScopedUpTime time;
    time.failSleepsWith(EINTR);
    errno = 0;
    EXPECT_EQ(SleepForUpTicks(kSecond), -1);
    EXPECT_EQ(errno, EINTR);
    EXPECT_EQ(time.now(), 0u);
}

TEST(UpTicks, SleepForNothingReturnsAtOnce) {
    EXPECT_EQ(SleepForUpTicks(0), 0);
}

TEST(UpTicks, SleepUntilADeadlineSleepsForWhatIsLeft) {
    ScopedUpTime time(kSecond);
    SleepUntilUpTicks(3 * kSecond + 5);
    EXPECT_EQ(time.sleepCount(), 1u);
    EXPECT_EQ(time.lastSleep().tv_sec, 2);
    EXPECT_EQ(time.lastSleep().tv_nsec, 5);
    EXPECT_EQ(UpTicks(), 3 * kSecond + 5);
}

TEST(UpTicks, SleepUntilAPastDeadlineReturnsAtOnce) {
    ScopedUpTime time(kSecond);
    for (const std::uint64_t deadline : {std::uint64_t{0}, kSecond - 1, kSecond}) {
        SleepUntilUpTicks(deadline);
    }
    EXPECT_EQ(time.sleepCount(), 0u);
    EXPECT_EQ(UpTicks(), kSecond);
}

}  // namespace
