#include "tools/halvane/output/station_event.h"

#include <gtest/gtest.h>

using namespace halvane;
using namespace halvane::tool;

namespace {

using Kind = StationChange::Kind;

constexpr MacAddress kAddress({0x02, 0x00, 0x00, 0x00, 0x01, 0x2A});

TEST(StationEvent, IsALineInColumns) {
    EXPECT_EQ(lineOf({Kind::Authorized, kAddress, "wlan0"}, Format::Text),
              "authorized  02:00:00:00:01:2A  wlan0");
    EXPECT_EQ(lineOf({Kind::Joined, kAddress, "wlan0"}, Format::Text),
              "joined      02:00:00:00:01:2A  wlan0");
    EXPECT_EQ(lineOf({Kind::Kicked, kAddress, "wlan0"}, Format::Text),
              "kicked      02:00:00:00:01:2A  wlan0");
    EXPECT_EQ(lineOf({Kind::Left, kAddress, ""}, Format::Text), "left        02:00:00:00:01:2A  -");
}

TEST(StationEvent, ShowsNoControlCharactersOfAName) {
    EXPECT_EQ(lineOf({Kind::Left, kAddress, "a\x1B[2J\n"}, Format::Text),
              "left        02:00:00:00:01:2A  a\\x1B[2J\\x0A");
}

TEST(StationEvent, IsAnObjectOnOneLine) {
    EXPECT_EQ(lineOf({Kind::Kicked, kAddress, "wlan0\n"}, Format::JSONLines),
              R"({"event":"kicked","mac":"02:00:00:00:01:2A","interfaceName":"wlan0\n"})");
    EXPECT_EQ(lineOf({Kind::Left, kAddress, ""}, Format::JSONLines),
              R"({"event":"left","mac":"02:00:00:00:01:2A","interfaceName":""})");
}

}  // namespace
