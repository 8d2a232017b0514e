#include "tools/halvane/options/channel_options.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/air/channel.h"

#include "tests/support/tool_command_line.h"

using namespace halvane::tool;
using halvane::air::Band;
using halvane::testing::ToolOptions;

namespace {

using Words = std::vector<std::string>;

ToolOptions<ChannelOptions> read(Words words) {
    return {gChannelsOptions, takeChannelOptions, std::move(words)};
}

ChannelOptions optionsOf(Words words) {
    return read(std::move(words)).options();
}

std::string errorOf(Words words) {
    return read(std::move(words)).error();
}

TEST(ChannelOptions, DefaultToTheChannelMap) {
    for (const Words& words : {Words{}, {"36", "2437"}, {"--format=plist"}, {"--no-band"}}) {
        EXPECT_FALSE(optionsOf(words).isPlan);
    }
    const auto options = optionsOf({"36", "2437"});
    ASSERT_EQ(options.asked.size(), 2u);
    EXPECT_TRUE(options.asked[0].isNumber);
    EXPECT_FALSE(options.asked[1].isNumber);
    EXPECT_EQ(options.asked[1].value, 2437u);
}

TEST(ChannelOptions, AskForThePlan) {
    for (const char* word :
         {"--band=all", "--width=all", "--class=all", "--channel=1", "--frequency=5955", "--psc"}) {
        EXPECT_TRUE(optionsOf({word}).isPlan) << word;
        EXPECT_FALSE(optionsOf({}).isPlan) << "stays from " << word;
    }
}

TEST(ChannelOptions, NameEveryBand) {
    EXPECT_EQ(optionsOf({"--band=2.4"}).band, Band::Ghz2);
    EXPECT_EQ(optionsOf({"--band=3.6"}).band, Band::Ghz3);
    EXPECT_EQ(optionsOf({"--band=4.9"}).band, Band::Ghz4);
    EXPECT_EQ(optionsOf({"--band", "5"}).band, Band::Ghz5);
    EXPECT_EQ(optionsOf({"--band=5.9"}).band, Band::Vehicles);
    EXPECT_EQ(optionsOf({"--band=6"}).band, Band::Ghz6);
    EXPECT_EQ(optionsOf({"--band=60"}).band, Band::Ghz60);
    EXPECT_EQ(optionsOf({"--band=S1g"}).band, Band::SubOneGhz);
    EXPECT_FALSE(optionsOf({"--band=ALL"}).band);
    for (const std::string name : {"", "2", "5ghz", "6 ", "all "}) {
        EXPECT_EQ(errorOf({"--band", name}),
                  "--band: '" + name + "' is not 2.4, 3.6, 4.9, 5, 5.9, 6, 60, s1g or all");
    }
}

TEST(ChannelOptions, NameEveryWidth) {
    for (const int width : {5, 10, 20, 40, 80, 160, 320, 2160, 8640}) {
        const auto options = optionsOf({"--width", std::to_string(width)});
        ASSERT_TRUE(options.width) << width;
        EXPECT_EQ(options.width->megahertz, width);
        EXPECT_FALSE(options.width->isPair);
    }
    const auto pair = optionsOf({"--width=80+80"});
    ASSERT_TRUE(pair.width);
    EXPECT_EQ(pair.width->megahertz, 80);
    EXPECT_TRUE(pair.width->isPair);
    EXPECT_TRUE(optionsOf({"--width=all"}).hasEveryWidth);
    for (const std::string name : {"", "0", "25", "30", "20MHz", "160+160", "-20"}) {
        EXPECT_EQ(errorOf({"--width", name}),
                  "--width: '" + name + "' is not 5, 10, 20, 40, 80, 160, 80+80, 320 or all");
    }
}

TEST(ChannelOptions, ReadNumbers) {
    EXPECT_EQ(optionsOf({"--class=131"}).operatingClass, 131);
    EXPECT_FALSE(optionsOf({"--class=all"}).operatingClass);
    EXPECT_EQ(errorOf({"--class=256"}),
              "--class: '256' is not an operating class (0 to 255) or all");
    EXPECT_EQ(errorOf({"--channel=256"}), "--channel: '256' is not a channel number (0 to 255)");
    EXPECT_EQ(errorOf({"--channel=x"}), "--channel: 'x' is not a channel number (0 to 255)");
    EXPECT_EQ(errorOf({"--frequency=100000"}), "--frequency: '100000' is not a frequency in MHz");
    EXPECT_EQ(errorOf({"--band=5", "x"}), "'x' is no channel number and no frequency in MHz");
    EXPECT_FALSE(optionsOf({"--frequency=200"}).asked[0].isNumber);
}

TEST(ChannelOptions, ContradictNothing) {
    const struct {
        Words words;
        const char* message;
    } kRows[] = {
        {{"--channel=1", "--frequency=5955"}, "--channel and --frequency do not go together"},
        {{"--channel=1", "6"}, "--channel and --frequency do not go with NUMBER or FREQUENCY"},
        {{"--frequency=5955", "6"}, "--channel and --frequency do not go with NUMBER or FREQUENCY"},
        {{"--class=131", "6"}, "--class goes with --band, --width and --format alone"},
        {{"--class=all", "--psc"}, "--class goes with --band, --width and --format alone"},
        {{"--class=81", "--channel=6"}, "--class goes with --band, --width and --format alone"},
        {{"--psc", "--band=5"}, "--psc is for the 6 GHz band"},
        {{"--psc", "--width=40"}, "--psc is for channels of 20 MHz"},
        {{"--band=2.4", "--width=80"}, "the 2.4 GHz band has no channels of 80 MHz"},
        {{"--band=5", "--width=320"}, "the 5 GHz band has no channels of 320 MHz"},
        {{"--band=4.9", "--width=80+80"}, "the 4.9 GHz band has no channels of 80+80 MHz"},
        {{"--class=131", "--band=5"}, "operating class 131 is in the 6 GHz band"},
        {{"--class=81", "--width=40"}, "operating class 81 has channels of 20 MHz"},
        {{"--class=130", "--width=80"}, "operating class 130 has channels of 80+80 MHz"},
        {{"--class=128", "--width=80+80"}, "operating class 128 has channels of 80 MHz"},
        {{"--band=6", "--format=plist"}, "--format=plist goes with NUMBER and FREQUENCY alone"},
    };
    for (const auto& [words, message] : kRows) EXPECT_EQ(errorOf(words), message);
    for (const Words& words : {Words{"--psc", "--band=6", "--width=20"},
                               {"--psc", "--width=all", "5"},
                               {"--class=81", "--width=20", "--band=2.4"},
                               {"--class=130", "--width=80+80"},
                               {"--class=all", "--band=6", "--width=40"},
                               {"--band=s1g", "--width=20"},
                               {"--band=5", "--width=80", "36", "5180"}}) {
        EXPECT_EQ(errorOf(words), "");
    }
}

}  // namespace
