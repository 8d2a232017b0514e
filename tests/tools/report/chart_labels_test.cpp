#include "tools/halvane/report/chart_labels.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

using namespace halvane::tool;

namespace {

constexpr ChartWidths kWidths = {592, 1010, 1310};

TEST(TextWidth, CountsWhatIsSeen) {
    EXPECT_GT(textWidth("WWW"), textWidth("aaa"));
    EXPECT_GT(textWidth("aaa"), textWidth("iii"));
    EXPECT_DOUBLE_EQ(textWidth(""), 0);
    EXPECT_DOUBLE_EQ(textWidth("\u2068ab\u2069"), textWidth("ab"));
    EXPECT_DOUBLE_EQ(textWidth("e\u0301\u0302"), textWidth("e"));
    EXPECT_DOUBLE_EQ(textWidth("\u65E5\u672C"), 25);
    EXPECT_GE(textWidth("\uFDFA"), 30);
}

TEST(ChartLabels, StandAboveTheRoof) {
    const std::vector<LabelWish> wishes = {{.left = 20, .right = 40, .roof = 200, .width = 60}};
    const auto places = placeLabels(wishes, kWidths);
    ASSERT_TRUE(places[0]);
    EXPECT_DOUBLE_EQ(places[0]->x, 30);
    EXPECT_DOUBLE_EQ(places[0]->y, 195);
    EXPECT_FALSE(places[0]->hasLeader);
    EXPECT_EQ(places[0]->level, 0u);
}

TEST(ChartLabels, GiveWayToStrongerOnes) {
    const std::vector<LabelWish> wishes = {{.left = 48, .right = 52, .roof = 200, .width = 60},
                                           {.left = 52, .right = 56, .roof = 200, .width = 60},
                                           {.left = 48, .right = 52, .roof = 200, .width = 60}};
    const auto places = placeLabels(wishes, kWidths);
    ASSERT_TRUE(places[0]);
    EXPECT_FALSE(places[0]->hasLeader);
    ASSERT_TRUE(places[1]);
    EXPECT_TRUE(places[1]->hasLeader);
    EXPECT_DOUBLE_EQ(places[1]->y, 171);
    EXPECT_FALSE(places[2]) << "its leader would run through the first";
}

// Distances at a width, in pixels.
bool areFree(const LabelWish& a, const PlacedLabel& one, const LabelWish& b,
             const PlacedLabel& other, double width) {
    const double across = std::abs(one.x - other.x) / 100 * width;
    return across >= (a.width + b.width) / 2 || std::abs(one.y - other.y) >= 12.5;
}

TEST(ChartLabels, NeverMeetAtAnyWidth) {
    std::vector<LabelWish> wishes;
    unsigned state = 7;
    const auto next = [&](unsigned most) {
        state = state * 1664525u + 1013904223u;
        return static_cast<double>(state >> 16) / 65536 * most;
    };
    for (int i = 0; i < 200; ++i) {
        const double left = 5 + next(80);
        wishes.push_back({left, left + 3 + next(10), 60 + next(280), 20 + next(120)});
    }
    const auto places = placeLabels(wishes, kWidths);
    std::size_t placed = 0;
    for (std::size_t i = 0; i < wishes.size(); ++i) {
        if (!places[i]) continue;
        ++placed;
        EXPECT_GE(places[i]->y, 34);
        for (std::size_t j = 0; j < i; ++j) {
            if (!places[j]) continue;
            const std::size_t level = std::max(places[i]->level, places[j]->level);
            for (const double width : {kWidths[level], kWidths[level] + 100, 2000.0}) {
                EXPECT_TRUE(areFree(wishes[i], *places[i], wishes[j], *places[j], width))
                    << i << ' ' << j << ' ' << width;
            }
        }
    }
    EXPECT_GT(placed, 20u);
    EXPECT_LT(placed, wishes.size());
}

TEST(ChartLabels, FindRoomInWiderPictures) {
    const std::vector<LabelWish> wishes = {{.left = 40, .right = 44, .roof = 40, .width = 100},
                                           {.left = 50, .right = 54, .roof = 40, .width = 100},
                                           {.left = 60, .right = 64, .roof = 40, .width = 100}};
    const auto places = placeLabels(wishes, kWidths);
    ASSERT_TRUE(places[1]);
    EXPECT_GT(places[1]->level, 0u);
}

}  // namespace
