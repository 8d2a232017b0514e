#include "tools/halvane/output/signal_bar.h"

#include <gtest/gtest.h>
#include <limits>

#include "tools/halvane/output/cell_text.h"

using namespace halvane::tool;

namespace {

std::string bar(int dBm, GlyphSet set = GlyphSet::UTF8) {
    return signalBar(dBm, glyphsOf(set));
}

std::string level(int dBm, GlyphSet set = GlyphSet::UTF8) {
    return signalLevel(dBm, glyphsOf(set));
}

// U+2588 so many times, and then one part.
std::string whole(int count, const char* part = "") {
    std::string text;
    for (int i = 0; i < count; ++i) text += "\u2588";
    return text + part;
}

struct Row {
    int dBm;
    std::string expected;
};

TEST(SignalBar, IsLinearInEighths) {
    for (const Row& row : {
             Row{-31, whole(4)},           Row{-44, whole(3, "\u258D")},
             Row{-46, whole(3, "\u258E")}, Row{-48, whole(3, "\u258F")},
             Row{-50, whole(3)},           Row{-52, whole(2, "\u2589")},
             Row{-53, whole(2, "\u258A")}, Row{-55, whole(2, "\u258B")},
             Row{-58, whole(2, "\u258C")}, Row{-60, whole(2, "\u258D")},
             Row{-61, whole(2, "\u258E")}, Row{-64, whole(2, "\u258F")},
             Row{-67, whole(1, "\u2589")}, Row{-70, whole(1, "\u258B")},
             Row{-73, whole(1, "\u258C")}, Row{-75, whole(1, "\u258D")},
             Row{-78, whole(1, "\u258F")}, Row{-80, whole(1)},
             Row{-82, "\u2589"},           Row{-84, "\u258A"},
             Row{-86, "\u258B"},           Row{-88, "\u258C"},
             Row{-92, "\u258E"},           Row{-94, "\u258F"},
         }) {
        EXPECT_EQ(bar(row.dBm), row.expected) << row.dBm;
    }
}

TEST(SignalBar, HasItsEnds) {
    for (const int strong : {-35, -14, 0, 127, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(bar(strong), whole(4));
    }
    EXPECT_EQ(bar(-36), whole(3, "\u2589"));
    for (const int weak : {-95, -100, -128, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(bar(weak), "\u258F");
        EXPECT_EQ(bar(weak, GlyphSet::ASCII), "#...");
        EXPECT_EQ(bar(weak, GlyphSet::LinuxConsole), "\u258C");
    }
}

TEST(SignalBar, RoundsToWholeCellsInASCII) {
    for (const Row& row : {Row{-14, "####"}, Row{-19, "####"}, Row{-53, "###."}, Row{-59, "##.."},
                           Row{-67, "##.."}, Row{-78, "#..."}, Row{-80, "#..."}, Row{-82, "#..."},
                           Row{-84, "#..."}, Row{-92, "#..."}}) {
        EXPECT_EQ(bar(row.dBm, GlyphSet::ASCII), row.expected) << row.dBm;
    }
}

TEST(SignalBar, HasHalvesOnTheLinuxConsole) {
    EXPECT_EQ(bar(-35, GlyphSet::LinuxConsole), whole(4));
    EXPECT_EQ(bar(-58, GlyphSet::LinuxConsole), whole(2, "\u258C"));
    EXPECT_EQ(bar(-80, GlyphSet::LinuxConsole), whole(1));
}

TEST(SignalBar, NeverShrinksAsTheSignalRises) {
    for (const GlyphSet set : {GlyphSet::UTF8, GlyphSet::LinuxConsole}) {
        std::size_t before = 0;
        for (int dBm = -128; dBm <= 0; ++dBm) {
            const std::size_t cells = cellsOf(bar(dBm, set), {});
            EXPECT_GE(cells, before);
            EXPECT_LE(cells, 4u);
            before = cells;
        }
        EXPECT_EQ(before, 4u);
    }
}

TEST(SignalLevel, IsOneOfEqualBands) {
    for (const Row& row :
         {Row{-19, "\u2588"}, Row{-39, "\u2588"}, Row{-42, "\u2588"}, Row{-43, "\u2587"},
          Row{-53, "\u2586"}, Row{-59, "\u2585"}, Row{-67, "\u2584"}, Row{-73, "\u2583"},
          Row{-79, "\u2583"}, Row{-80, "\u2583"}, Row{-81, "\u2582"}, Row{-88, "\u2581"},
          Row{-95, "\u2581"}, Row{-128, "\u2581"}}) {
        EXPECT_EQ(level(row.dBm), row.expected) << row.dBm;
    }
}

TEST(SignalLevel, FollowsTheGlyphs) {
    EXPECT_EQ(level(-95, GlyphSet::ASCII), "_");
    EXPECT_EQ(level(-85, GlyphSet::ASCII), ".");
    EXPECT_EQ(level(-46, GlyphSet::ASCII), "*");
    EXPECT_EQ(level(-35, GlyphSet::ASCII), "#");
    EXPECT_EQ(level(-66, GlyphSet::LinuxConsole), "\u2584");
    EXPECT_EQ(level(-65, GlyphSet::LinuxConsole), "\u2588");
}

}  // namespace
