// The time in the headers of messages, beside the engine's "%N".
#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <optional>
#include <string>

#include "halvane/platform/os/wall_clock_internal.h"
#include "halvane/utils/log.h"
#include "halvane/utils/printf.h"

#include "tests/support/replaced_system.h"
#include "tests/support/scoped_environment.h"
#include "tests/utils/log/test_support.h"

namespace {

using halvane::WallTime;
using halvane::testing::LogRecorder;
using halvane::testing::LogTest;
using halvane::testing::ScopedEnvironment;
using halvane::testing::TestCategory;

WallTime now = {};

// While one lives, the zone is in use.
class Zone {
  public:
    explicit Zone(const char* zone) : environment_(std::in_place, "TZ", zone) { ::tzset(); }
    ~Zone() {
        environment_.reset();
        ::tzset();
    }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;

  private:
    std::optional<ScopedEnvironment> environment_;
};

class LogStampTest : public LogTest {
  protected:
    LogStampTest() {
        halvane::replaceWallClock([] { return now; });
        record(category_, recorder_);
        category_.flags = kLogHeaderTime;
    }
    ~LogStampTest() override { halvane::replaceWallClock(nullptr); }

    std::string stampAt(std::int64_t seconds, std::uint32_t microseconds = 0) {
        now = {seconds, microseconds};
        LogPrintF(&category_, "f", kLogLevelError, "|");
        return recorder_.take();
    }

    static std::string engineStamp() {
        std::array<char, 64> text;
        SNPrintF(text.data(), text.size(), "%N |");
        return text.data();
    }

  private:
    LogRecorder recorder_;
    TestCategory category_{"StampTest"};
};

TEST_F(LogStampTest, TellsMicrosecondsOfTheSameSecond) {
    const Zone zone("UTC0");
    EXPECT_EQ(stampAt(951868799, 123456), "2000-02-29 11:59:59.123456 PM |");
    EXPECT_EQ(stampAt(951868799, 0), "2000-02-29 11:59:59.000000 PM |");
    EXPECT_EQ(stampAt(951868799, 999999), "2000-02-29 11:59:59.999999 PM |");
    EXPECT_EQ(stampAt(951868799, 100001), "2000-02-29 11:59:59.100001 PM |");
}

TEST_F(LogStampTest, FollowsAClockThatGoesOnOrBack) {
    const Zone zone("UTC0");
    EXPECT_EQ(stampAt(43199, 999999), "1970-01-01 11:59:59.999999 AM |");
    EXPECT_EQ(stampAt(43200), "1970-01-01 12:00:00.000000 PM |");
    EXPECT_EQ(stampAt(43199), "1970-01-01 11:59:59.000000 AM |");
    EXPECT_EQ(stampAt(0), "1970-01-01 12:00:00.000000 AM |");
    EXPECT_EQ(stampAt(-1), "1969-12-31 11:59:59.000000 PM |");
}

TEST_F(LogStampTest, FollowsAChangeOfZoneWithinASecond) {
    const Zone zone("UTC0");
    EXPECT_EQ(stampAt(0), "1970-01-01 12:00:00.000000 AM |");
    {
        const Zone east("EAST-05:30");
        EXPECT_EQ(stampAt(0), "1970-01-01 05:30:00.000000 AM |");
        const Zone sameNameElsewhere("EAST-06:30");
        EXPECT_EQ(stampAt(0), "1970-01-01 06:30:00.000000 AM |");
        const Zone sameOffset("EAST-06:30SUMMER-07:30,J2/0,J365/23");
        EXPECT_EQ(stampAt(0), "1970-01-01 06:30:00.000000 AM |");
        EXPECT_EQ(stampAt(86400), "1970-01-02 07:30:00.000000 AM |");
    }
    EXPECT_EQ(stampAt(86400), "1970-01-02 12:00:00.000000 AM |");
}

TEST_F(LogStampTest, IsThatOfTheEngine) {
    std::uint32_t random = 1;
    const auto next = [&random] { return random = random * 1664525 + 1013904223; };
    for (const char* const name : {"UTC0", "CET-1CEST,M3.5.0,M10.5.0/3", "<-03>3", "X-14"}) {
        const Zone zone(name);
        for (int i = 0; i < 300; ++i) {
            const std::int64_t seconds = std::int64_t{next()} * (i % 7 - 1);
            const std::string stamp = stampAt(seconds, next() % 1000000);
            EXPECT_EQ(stamp, engineStamp());
        }
    }
}

}  // namespace
