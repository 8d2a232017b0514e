// What the channels command stores between runs, and the channels of all bands.
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/tool_command_line.h"
#include "tools/halvane/commands/command.h"
#include "tools/halvane/options/channel_options.h"

using namespace halvane::tool;
using nlohmann::json;

namespace {

std::string outputOf(std::vector<std::string> words) {
    return halvane::testing::outputOf(gChannelsOptions, channelsCommand, std::move(words));
}

TEST(ChannelsCommand, ForgetsTheFormatOnceTaken) {
    EXPECT_EQ(outputOf({"--format=jsonl", "14"}),
              "{\"channelNumber\":14,\"channelFrequency\":2484}\n");
    EXPECT_EQ(outputOf({"14"}),
              "Channel  Frequency  Extension\n"
              "     14   2484 MHz          -\n");
}

// The channels that the words choose, as "width:number" each.
std::string chosenBy(std::vector<std::string> words) {
    words.emplace_back("--format=json");
    std::string text;
    for (const auto& channel : json::parse(outputOf(std::move(words)))) {
        text += (text.empty() ? "" : " ") + channel["width"].dump() + ":" +
                channel["channelNumber"].dump();
    }
    return text;
}

TEST(ChannelsCommand, ForgetsTheBandOnceTaken) {
    EXPECT_EQ(chosenBy({"--band=6", "1"}), "20:1");
    EXPECT_EQ(outputOf({"1"}),
              "Channel  Frequency  Extension\n"
              "      1   2412 MHz          -\n");
}

TEST(ChannelsCommand, TellsTheWiderChannels) {
    EXPECT_EQ(outputOf({"--band=6", "33", "2"}),
              "Band   Channel  Frequency   Width  40 MHz     80 MHz     160 MHz    320 MHz"
              "               Classes\n"
              "6 GHz       33   6115 MHz  20 MHz  35 (6125)  39 (6145)  47 (6185)  "
              "31 (6105), 63 (6265)  131, 132, 133, 134, 135, 137\n"
              "6 GHz        2   5935 MHz  20 MHz  -          -          -          "
              "-                     136\n");
}

TEST(ChannelsCommand, LeavesOutEmptyColumns) {
    EXPECT_EQ(outputOf({"--channel=14"}),
              "Band     Channel  Frequency   Width  Classes\n"
              "2.4 GHz       14   2484 MHz  20 MHz  82\n");
    EXPECT_EQ(outputOf({"--width=160", "--band=5"}),
              "Band   Channel  Frequency    Width  20 MHz   Classes  Notes\n"
              "5 GHz       50   5250 MHz  160 MHz  36-64    129      DFS\n"
              "5 GHz      114   5570 MHz  160 MHz  100-128  129      DFS\n"
              "5 GHz      163   5815 MHz  160 MHz  149-177  129      -\n");
}

TEST(ChannelsCommand, HasAllPropertiesForPrograms) {
    EXPECT_EQ(outputOf({"--frequency=5975", "--format=jsonl"}),
              "{\"band\":\"6\",\"channelNumber\":5,\"channelFrequency\":5975,\"width\":20,"
              "\"parts\":[5],\"widerChannels\":["
              "{\"channelNumber\":3,\"channelFrequency\":5965,\"width\":40},"
              "{\"channelNumber\":7,\"channelFrequency\":5985,\"width\":80},"
              "{\"channelNumber\":15,\"channelFrequency\":6025,\"width\":160},"
              "{\"channelNumber\":31,\"channelFrequency\":6105,\"width\":320}],"
              "\"operatingClasses\":[131,132,133,134,135,137],\"isPSC\":true,"
              "\"isRadarProne\":false}\n");
    const auto narrow = json::parse(outputOf({"--width=5", "--band=5", "6", "--format=json"}));
    EXPECT_EQ(narrow, json::parse(R"([{"band": "5", "channelNumber": 6, "channelFrequency": 5032.5,
        "width": 5, "widerChannels": [], "operatingClasses": [114], "isPSC": false,
        "isRadarProne": false}])"));
}

TEST(ChannelsCommand, FindsANumberInEveryBandAndWidth) {
    EXPECT_EQ(chosenBy({"--channel=7"}), "20:7 40:7 5:7 10:7 5:7 80:7");
    EXPECT_EQ(chosenBy({"--channel=42"}), "20:42 80:42");
    EXPECT_EQ(chosenBy({"--frequency=5210"}), "20:42 80:42");
    EXPECT_EQ(chosenBy({"--channel=7", "--band=6"}), "80:7");
    EXPECT_EQ(chosenBy({"--width=all", "--band=5", "50", "5180"}), "160:50 20:36");
}

TEST(ChannelsCommand, FindsTheWideChannelOfAPart) {
    EXPECT_EQ(chosenBy({"--width=80", "36", "5500"}), "80:42 80:106");
    EXPECT_EQ(chosenBy({"--width=80+80", "--band=6", "5"}), "80:7");
    EXPECT_EQ(chosenBy({"--width=320", "33"}), "320:31 320:63");
    EXPECT_EQ(chosenBy({"--width=40", "--channel=6", "--band=2.4"}), "40:4 40:6 40:8");
}

TEST(ChannelsCommand, ListsThePreferredScanningChannels) {
    EXPECT_EQ(chosenBy({"--psc"}),
              "20:5 20:21 20:37 20:53 20:69 20:85 20:101 20:117 20:133 20:149 20:165 20:181 "
              "20:197 20:213 20:229");
    EXPECT_EQ(chosenBy({"--psc", "--band=6", "21"}), "20:21");
}

TEST(ChannelsCommand, ExplainsAnOperatingClass) {
    EXPECT_EQ(outputOf({"--class=119"}),
              "Operating class   119\n"
              "Band              5 GHz\n"
              "Width             40 MHz\n"
              "Spacing           40 MHz\n"
              "Start frequency   5000 MHz\n"
              "Numbers           of the primary channels\n"
              "Behaviour limits  PrimaryChannelLowerBehavior, DFS_50_100_Behavior\n"
              "\n"
              "Channel  Frequency  Centre     20 MHz\n"
              "     52   5260 MHz  54 (5270)  52-56\n"
              "     60   5300 MHz  62 (5310)  60-64\n");
    EXPECT_EQ(outputOf({"--class=130", "--format=jsonl"}),
              "{\"operatingClass\":130,\"band\":\"5\",\"width\":80,\"spacing\":80,"
              "\"startFrequency\":5000,\"isPair\":true,\"hasCenters\":true,"
              "\"behaviorLimits\":[\"80+\"],\"channels\":["
              "{\"channelNumber\":42,\"channelFrequency\":5210},"
              "{\"channelNumber\":58,\"channelFrequency\":5290},"
              "{\"channelNumber\":106,\"channelFrequency\":5530},"
              "{\"channelNumber\":122,\"channelFrequency\":5610},"
              "{\"channelNumber\":138,\"channelFrequency\":5690},"
              "{\"channelNumber\":155,\"channelFrequency\":5775},"
              "{\"channelNumber\":171,\"channelFrequency\":5855}]}\n");
    const auto dsss = json::parse(outputOf({"--class=82", "--format=json"})).at(0);
    EXPECT_EQ(dsss["width"], 20);
    EXPECT_EQ(dsss["spacing"], 25);
}

TEST(ChannelsCommand, ListsOperatingClasses) {
    EXPECT_EQ(outputOf({"--class=all", "--band=6", "--width=40"}),
              "Class  Band    Width     Start  Channels\n"
              "  132  6 GHz  40 MHz  5950 MHz  3, 11, ..., 227\n");
    EXPECT_EQ(outputOf({"--class=all", "--band=5", "--width=80"}),
              "Class  Band    Width     Start  Channels\n"
              "  128  5 GHz  80 MHz  5000 MHz  42, 58, 106, 122, 138, 155, 171\n");
}

}  // namespace
