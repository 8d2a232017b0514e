#include "tools/halvane/output/signal_picture.h"

#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/glyphs.h"

using namespace halvane::tool;
using ::testing::ElementsAre;
using Values = std::vector<std::optional<int>>;

namespace {

const Glyphs& utf8() {
    return glyphsOf(GlyphSet::UTF8);
}

// Each value as often as it says.
Values values(const std::vector<std::pair<int, std::optional<int>>>& runs) {
    Values values;
    for (const auto& [count, value] : runs) {
        values.insert(values.end(), static_cast<std::size_t>(count), value);
    }
    return values;
}

TEST(SignalPicture, FillsALineWithTheSignalBesideIt) {
    const Values walk = {-43, -41, -39, -47, -63, std::nullopt, -53, -94, -95};
    EXPECT_THAT(signalPicture(walk, 7, utf8()),
                ElementsAre(" -39 \u2584\u2586\u2588",                     //
                            "     \u2588\u2588\u2588\u2588  \u2582",       //
                            " -55 \u2588\u2588\u2588\u2588  \u2588",       //
                            "     \u2588\u2588\u2588\u2588\u2588 \u2588",  //
                            " -71 \u2588\u2588\u2588\u2588\u2588 \u2588",  //
                            "     \u2588\u2588\u2588\u2588\u2588 \u2588",  //
                            " -87 \u2588\u2588\u2588\u2588\u2588 \u2588\u2581\u2581"));
}

TEST(SignalPicture, ShowsAllThatIsStrongerAsWholeAndAllThatIsWeakerAsAStep) {
    const auto lines = signalPicture(Values{0, -30, -120}, 2, utf8());
    EXPECT_THAT(lines, ElementsAre(" -79 \u2588\u2588", "     \u2588\u2588\u2581"));
}

TEST(SignalPicture, HasLinesWithoutValues) {
    EXPECT_THAT(signalPicture(Values(3), 3, utf8()), ElementsAre(" -71", "", " -87"));
    EXPECT_THAT(signalPicture({}, 1, utf8()), ElementsAre(" -87"));
    EXPECT_THAT(signalPicture({}, 0, utf8()), ElementsAre());
}

TEST(SignalPicture, HasOnlySignalsThatAreBelieved) {
    EXPECT_EQ(signalPicture({}, kMostSignalLines, utf8()).front(), "  -7");
}

TEST(SignalPicture, TakesFewerLevelsWhereTheTerminalHasNoMore) {
    const Values walk = values({{1, -87}, {1, -88}, {1, -91}, {1, -92}, {1, -94}});
    EXPECT_THAT(signalPicture(walk, 1, glyphsOf(GlyphSet::LinuxConsole)),
                ElementsAre(" -87 \u2588\u2588\u2584\u2584\u2584"));
    EXPECT_THAT(signalPicture(walk, 1, glyphsOf(GlyphSet::ASCII)), ElementsAre(" -87 ##--_"));
}

TEST(SignalPicture, RisesWithTheSignal) {
    for (const GlyphSet set : {GlyphSet::UTF8, GlyphSet::LinuxConsole, GlyphSet::ASCII}) {
        std::string before;
        for (int dBm = -94; dBm <= -87; ++dBm) {
            const std::string line = signalPicture(Values{dBm}, 1, glyphsOf(set)).front();
            EXPECT_EQ(cellsOf(line, {}), kSignalLabelCells + 1);
            before = line;
        }
        EXPECT_EQ(before, std::string(" -87 ") + glyphsOf(set).historySteps.back());
    }
}

}  // namespace
