#include "tools/halvane/output/station_event.h"

#include <chrono>
#include <ctime>
#include <gtest/gtest.h>
#include <string>

#include "tests/support/scoped_environment.h"

using namespace halvane;
using namespace halvane::tool;
using namespace std::chrono_literals;
using halvane::testing::ScopedEnvironment;

namespace {

using Kind = StationChange::Kind;

constexpr MacAddress kAddress({0x02, 0x00, 0x00, 0x00, 0x01, 0x2A});
constexpr EventTime kTime = 1673039404117ms;  // 2023-01-06 21:10:04.117 UTC

// Half an hour east of whole hours.
class StationEvent : public ::testing::Test {
  protected:
    StationEvent() { ::tzset(); }

    static std::string lineOf(const StationChange& change, Format format) {
        return StationEventLines(format, Theme()).linesOf(change, kTime);
    }

    const ScopedEnvironment zone_{"TZ", "<+0130>-1:30"};
};

TEST_F(StationEvent, IsALineInColumns) {
    EXPECT_EQ(lineOf({Kind::Authorized, kAddress, "wlan0"}, Format::Text),
              "22:40:04.117 authorized 02:00:00:00:01:2A wlan0\n");
    EXPECT_EQ(lineOf({Kind::Joined, kAddress, "wlan0"}, Format::Text),
              "22:40:04.117 joined     02:00:00:00:01:2A wlan0\n");
    EXPECT_EQ(lineOf({Kind::Kicked, kAddress, "wlan0"}, Format::Text),
              "22:40:04.117 kicked     02:00:00:00:01:2A wlan0\n");
    EXPECT_EQ(lineOf({Kind::Left, kAddress, ""}, Format::Text),
              "22:40:04.117 left       02:00:00:00:01:2A -\n");
}

TEST_F(StationEvent, ShowsNoControlCharactersOfAName) {
    EXPECT_EQ(lineOf({Kind::Left, kAddress, "a\x1B[2J\n"}, Format::Text),
              "22:40:04.117 left       02:00:00:00:01:2A a\\x1B[2J\\x0A\n");
}

TEST_F(StationEvent, IsAnObjectOnOneLine) {
    EXPECT_EQ(lineOf({Kind::Kicked, kAddress, "wlan0\n"}, Format::JSONLines),
              R"({"event":"kicked","mac":"02:00:00:00:01:2A","interfaceName":"wlan0\n",)"
              R"("time":"2023-01-06T21:10:04.117Z"})"
              "\n");
    EXPECT_EQ(lineOf({Kind::Left, kAddress, ""}, Format::JSONLines),
              R"({"event":"left","mac":"02:00:00:00:01:2A","interfaceName":"",)"
              R"("time":"2023-01-06T21:10:04.117Z"})"
              "\n");
}

TEST_F(StationEvent, HasTheDateInFrontOfTheFirstOfADay) {
    const StationChange change{Kind::Left, kAddress, "wlan0"};
    StationEventLines lines(Format::Text, Theme());
    EXPECT_EQ(lines.begin(kTime), "-- 2023-01-06 --\n");
    EXPECT_EQ(lines.linesOf(change, kTime + 79min + 55s + 882ms),
              "23:59:59.999 left       02:00:00:00:01:2A wlan0\n");
    EXPECT_EQ(lines.linesOf(change, kTime + 79min + 55s + 883ms),
              "-- 2023-01-07 --\n"
              "00:00:00.000 left       02:00:00:00:01:2A wlan0\n");
    EXPECT_EQ(lines.linesOf(change, kTime + 80min),
              "00:00:04.117 left       02:00:00:00:01:2A wlan0\n");
}

TEST_F(StationEvent, HasNoDateInJSON) {
    StationEventLines lines(Format::JSONLines, Theme());
    EXPECT_EQ(lines.begin(kTime), "");
    const std::string line = lines.linesOf({Kind::Left, kAddress, "wlan0"}, kTime + 48h);
    EXPECT_EQ(line.substr(0, 16), R"({"event":"left",)");
}

TEST_F(StationEvent, IsColouredByItsKind) {
    StationEventLines lines(Format::Text, Theme(Palette::Colors16, true));
    EXPECT_EQ(lines.begin(kTime), "\x1B[2m-- 2023-01-06 --\x1B[m\n");
    EXPECT_EQ(lines.linesOf({Kind::Joined, kAddress, "wlan0"}, kTime),
              "22:40:04.117 \x1B[32mjoined\x1B[m     02:00:00:00:01:2A wlan0\n");
    EXPECT_EQ(lines.linesOf({Kind::Kicked, kAddress, "wlan0"}, kTime),
              "22:40:04.117 \x1B[33mkicked\x1B[m     02:00:00:00:01:2A wlan0\n");
    EXPECT_EQ(lines.linesOf({Kind::Left, kAddress, "wlan0"}, kTime),
              "22:40:04.117 \x1B[2mleft\x1B[m       02:00:00:00:01:2A wlan0\n");
}

TEST(UTCText, HoldsTimesBeforeTheEpoch) {
    EXPECT_EQ(utcText(0ms), "1970-01-01T00:00:00.000Z");
    EXPECT_EQ(utcText(-1ms), "1969-12-31T23:59:59.999Z");
}

}  // namespace
