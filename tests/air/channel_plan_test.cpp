#include "halvane/air/channel_plan.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/operating_class.h"

using namespace halvane::air;

namespace {

using Numbers = std::vector<int>;

std::optional<PlannedChannel> find(Band band, int number, int width) {
    for (const PlannedChannel& channel : channelPlan()) {
        if (channel.band == band && channel.number == number && channel.width == width) {
            return channel;
        }
    }
    return std::nullopt;
}

Numbers classesOf(Band band, int number, int width) {
    const auto channel = find(band, number, width);
    return channel ? Numbers(channel->classes.begin(), channel->classes.end()) : Numbers{-1};
}

Numbers usableClasses(Band band, int number) {
    const auto channel = find(band, number, 20);
    if (!channel) return {-1};
    const auto list = usableClassesOf(*channel);
    return {list.begin(), list.end()};
}

// How many there are of each width, counted by hand in table E-4.
TEST(AirChannelPlan, HasEveryChannelOnce) {
    std::map<std::pair<Band, int>, int> counts;
    const auto plan = channelPlan();
    for (const PlannedChannel& channel : plan) ++counts[{channel.band, channel.width}];
    const std::map<std::pair<Band, int>, int> expected = {
        {{Band::Ghz2, 20}, 14},   {{Band::Ghz2, 40}, 9},    {{Band::Ghz3, 5}, 8},
        {{Band::Ghz3, 10}, 4},    {{Band::Ghz3, 20}, 2},    {{Band::Ghz4, 5}, 26},
        {{Band::Ghz4, 10}, 15},   {{Band::Ghz4, 20}, 8},    {{Band::Ghz4, 40}, 2},
        {{Band::Ghz5, 5}, 6},     {{Band::Ghz5, 10}, 4},    {{Band::Ghz5, 20}, 35},
        {{Band::Ghz5, 40}, 14},   {{Band::Ghz5, 80}, 7},    {{Band::Ghz5, 160}, 3},
        {{Band::Ghz6, 20}, 60},   {{Band::Ghz6, 40}, 29},   {{Band::Ghz6, 80}, 14},
        {{Band::Ghz6, 160}, 7},   {{Band::Ghz6, 320}, 6},   {{Band::Ghz60, 2160}, 6},
        {{Band::Ghz60, 4320}, 5}, {{Band::Ghz60, 6480}, 4}, {{Band::Ghz60, 8640}, 3},
    };
    EXPECT_EQ(counts, expected);
    EXPECT_EQ(std::ranges::adjacent_find(plan), plan.end());
}

TEST(AirChannelPlan, IsInTheOrderOfFrequencies) {
    const auto plan = channelPlan();
    const auto place = [](const PlannedChannel& channel) {
        return std::pair(channel.band, channel.frequency);
    };
    EXPECT_TRUE(std::ranges::is_sorted(plan, {}, place));
}

TEST(AirChannelPlan, HasTheClassesOfAChannel) {
    EXPECT_EQ(classesOf(Band::Ghz2, 6, 20), Numbers{81});
    EXPECT_EQ(classesOf(Band::Ghz2, 14, 20), Numbers{82});
    EXPECT_EQ(classesOf(Band::Ghz2, 7, 40), (Numbers{83, 84}));
    EXPECT_EQ(classesOf(Band::Ghz5, 38, 40), (Numbers{116, 117}));
    EXPECT_EQ(classesOf(Band::Ghz5, 157, 20), (Numbers{124, 125}));
    EXPECT_EQ(classesOf(Band::Ghz5, 177, 20), Numbers{125});
    EXPECT_EQ(classesOf(Band::Ghz5, 42, 80), (Numbers{128, 130}));
    EXPECT_EQ(classesOf(Band::Ghz5, 42, 20), Numbers());
    EXPECT_EQ(classesOf(Band::Ghz6, 2, 20), Numbers{136});
    EXPECT_EQ(classesOf(Band::Ghz6, 63, 320), Numbers{137});
    EXPECT_EQ(classesOf(Band::Ghz6, 63, 160), Numbers{-1});
}

TEST(AirChannelPlan, HasTheCentreFrequency) {
    const struct {
        Band band;
        int number;
        int width;
        std::uint32_t frequency;
    } kRows[] = {
        {Band::Ghz2, 3, 40, 2422000},    {Band::Ghz4, 1, 5, 4942500},
        {Band::Ghz4, 186, 40, 4930000},  {Band::Ghz4, 21, 20, 4955000},
        {Band::Ghz5, 6, 5, 5032500},     {Band::Ghz5, 175, 40, 5875000},
        {Band::Ghz5, 163, 160, 5815000}, {Band::Ghz6, 2, 20, 5935000},
        {Band::Ghz6, 31, 320, 6105000},  {Band::Ghz60, 9, 4320, 59400000},
    };
    for (const auto& row : kRows) {
        const auto channel = find(row.band, row.number, row.width);
        ASSERT_TRUE(channel) << row.number;
        EXPECT_EQ(channel->frequency, row.frequency) << row.number;
    }
}

TEST(AirChannelPlan, TellsRadarDetectionOfEveryPart) {
    const auto needs = [](int number, int width) {
        return find(Band::Ghz5, number, width)->needsRadarDetection;
    };
    EXPECT_FALSE(needs(48, 20));
    EXPECT_TRUE(needs(52, 20));
    EXPECT_TRUE(needs(54, 40));
    EXPECT_FALSE(needs(42, 80));
    EXPECT_TRUE(needs(58, 80));
    EXPECT_TRUE(needs(50, 160)) << "its upper half";
    EXPECT_FALSE(needs(163, 160));
    EXPECT_TRUE(needs(144, 20));
    EXPECT_FALSE(find(Band::Ghz6, 5, 20)->needsRadarDetection);
}

TEST(AirChannelPlan, TellsTheSegmentsOf80Plus80) {
    EXPECT_TRUE(find(Band::Ghz5, 155, 80)->isSegment);
    EXPECT_TRUE(find(Band::Ghz6, 7, 80)->isSegment);
    EXPECT_FALSE(find(Band::Ghz6, 15, 160)->isSegment);
}

TEST(AirChannelPlan, TellsTheClassesOfAPrimaryChannel) {
    EXPECT_EQ(usableClasses(Band::Ghz2, 6), (Numbers{81, 83, 84}));
    EXPECT_EQ(usableClasses(Band::Ghz2, 13), (Numbers{81, 84}));
    EXPECT_EQ(usableClasses(Band::Ghz5, 36), (Numbers{115, 116, 128, 129, 130}));
    EXPECT_EQ(usableClasses(Band::Ghz5, 165), (Numbers{125, 126, 128, 129, 130}));
    EXPECT_EQ(usableClasses(Band::Ghz5, 144), (Numbers{121, 123, 128, 130}));
    EXPECT_EQ(usableClasses(Band::Ghz6, 1), (Numbers{131, 132, 133, 134, 135, 137}));
    EXPECT_EQ(usableClasses(Band::Ghz6, 233), Numbers{131});
    EXPECT_EQ(usableClasses(Band::Ghz4, 184), (Numbers{104, 109}));
    // 21 counts from 4850 MHz, so it is no primary channel of a class that counts from 4000 MHz.
    EXPECT_EQ(usableClasses(Band::Ghz4, 21), Numbers{101});
}

}  // namespace
