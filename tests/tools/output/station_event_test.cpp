#include "tools/halvane/output/station_event.h"

#include <gtest/gtest.h>
#include <vector>

using namespace halvane;
using namespace halvane::tool;

namespace {

const ByteBuffer kAddress = {0x02, 0x00, 0x00, 0x00, 0x01, 0x2A};

TEST(StationEvent, IsALineInColumns) {
    EXPECT_EQ(lineOf({"joined", kAddress, "wlan0"}, Format::Text),
              "joined      02:00:00:00:01:2A  wlan0");
    EXPECT_EQ(lineOf({"authorized", kAddress, "wlan0"}, Format::Text),
              "authorized  02:00:00:00:01:2A  wlan0");
    EXPECT_EQ(lineOf({"left", {}, "wlan0"}, Format::Text), "left        -                  wlan0");
    EXPECT_EQ(lineOf({"left", {}, ""}, Format::Text), "left        -                  -");
}

TEST(StationEvent, ShowsNoControlCharactersOfAName) {
    EXPECT_EQ(lineOf({"left", kAddress, "a\x1B[2J\n"}, Format::Text),
              "left        02:00:00:00:01:2A  a\\x1B[2J\\x0A");
}

TEST(StationEvent, IsAnObjectOnOneLine) {
    EXPECT_EQ(lineOf({"kicked", kAddress, "wlan0\n"}, Format::JSONLines),
              R"({"event":"kicked","mac":"02:00:00:00:01:2A","interfaceName":"wlan0\n"})");
    EXPECT_EQ(lineOf({"kicked", {}, ""}, Format::JSONLines),
              R"({"event":"kicked","interfaceName":""})");
}

TEST(StationEvent, ComesFromEveryCallOfTheDelegate) {
    std::vector<std::string> lines;
    const auto delegate = delegateFor(
        [&](const StationEvent& event) { lines.push_back(lineOf(event, Format::Text)); });
    delegate->clientAuthorized_forInterface(kAddress, "a");
    delegate->clientJoined_forInterface(kAddress, "b");
    delegate->clientKicked_forInterface(kAddress, "c");
    delegate->clientLeft_forInterface(kAddress, "d");
    EXPECT_EQ(lines, (std::vector<std::string>{
                         "authorized  02:00:00:00:01:2A  a", "joined      02:00:00:00:01:2A  b",
                         "kicked      02:00:00:00:01:2A  c", "left        02:00:00:00:01:2A  d"}));
}

}  // namespace
