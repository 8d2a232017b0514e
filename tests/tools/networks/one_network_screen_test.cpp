#include "tools/halvane/networks/one_network_screen.h"

#include <chrono>
#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/security.h"

#include "tests/tools/networks/networks_for_tests.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/watched_signal.h"
#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/survey/network.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;
using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Lines = std::vector<std::string>;

namespace {

std::string times(std::size_t count, const std::string& text) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) all += text;
    return all;
}

class OneNetworkScreen : public ::testing::Test {
  protected:
    OneNetworkScreen() {
        network_ =
            maker_.make({"Den speaker.o", 0x2F, -53, air::Band::Ghz2, 6, air::Security::Open});
        view_ = {.address = network_.bssid,
                 .network = &network_,
                 .signal = &signal_,
                 .now = 60s,
                 .width = 80,
                 .height = 12};
    }

    // Ten times a second.
    void hear(int dBm, WatchedSignal::Time begin, WatchedSignal::Time end) {
        for (auto time = begin; time <= end; time += 100ms) signal_.add(dBm, time);
    }

    Lines drawn(const Theme& theme = {}) const {
        CellSurroundings surroundings = asciiSurroundings();
        return oneNetworkScreen(view_,
                                {.glyphs = glyphsOf(GlyphSet::UTF8),
                                 .rules = {},
                                 .makers = surroundings.makers,
                                 .list = ListKind::Watch},
                                theme);
    }

    NetworkMaker maker_;
    Network network_;
    WatchedSignal signal_;
    OneNetworkView view_;
};

TEST_F(OneNetworkScreen, IsDrawnForEightyColumns) {
    hear(-39, 100ms, 30s);
    hear(-53, 42100ms, 60s);
    const std::string full = "\u2588", quarter = "\u2582";
    // 60 s are 70 cells: the first 30 s, held for 6 s, a gap up to 42 s, and the rest.
    const std::string first = times(41, full), gap(8, ' ');
    EXPECT_THAT(drawn(), ElementsAre("Den speaker.o  02:00:00:00:00:2F  (local)  channel 6/20", "",
                                     "   -53 dBm   best -39  (last 60 s)", "",  //
                                     " -39 " + first,                           //
                                     "     " + first + gap + times(21, quarter),
                                     " -55 " + first + gap + times(21, full),
                                     "     " + first + gap + times(21, full),
                                     " -71 " + first + gap + times(21, full),
                                     "     " + first + gap + times(21, full),
                                     " -87 " + first + gap + times(21, full),
                                     "     60 s ago" + std::string(59, ' ') + "now"));
}

TEST_F(OneNetworkScreen, KeepsTheNumberWithoutRoomForThePicture) {
    hear(-53, 1s, 60s);
    view_.height = 11;
    EXPECT_THAT(drawn(), ElementsAre(StartsWith("Den speaker.o  "), "",
                                     "   -53 dBm   best -53  (last 60 s)"));
    view_.height = 3;
    EXPECT_THAT(drawn(), ElementsAre("   -53 dBm   best -53  (last 60 s)"));
    view_.height = 1;
    EXPECT_THAT(drawn(), ElementsAre("   -53 dBm   best -53  (last 60 s)"));
}

TEST_F(OneNetworkScreen, TakesTheHeightOfTheTerminal) {
    hear(-53, 1s, 60s);
    view_.height = 24;
    const Lines lines = drawn();
    EXPECT_EQ(lines.size(), 16u);  // eleven of the picture
    EXPECT_EQ(lines[4], "  -7");
    for (std::size_t height = 1; height <= 30; ++height) {
        view_.height = height;
        const std::size_t foot = oneNetworkHasFoot(height) ? 1 : 0;
        EXPECT_LE(drawn().size() + foot, height) << height;
    }
    EXPECT_FALSE(oneNetworkHasFoot(13));
    EXPECT_TRUE(oneNetworkHasFoot(14));
    EXPECT_TRUE(oneNetworkHasFoot(11));
    EXPECT_FALSE(oneNetworkHasFoot(4));
}

TEST_F(OneNetworkScreen, SaysThatNothingIsHeardNow) {
    hear(-53, 1s, 2s);
    view_.now = 30s;
    EXPECT_EQ(drawn()[2], "     - dBm   best -53  (last 60 s)");
    view_.now = 70s;
    EXPECT_EQ(drawn()[2], "     - dBm");
}

TEST_F(OneNetworkScreen, WaitsForANetworkThatWasNeverHeard) {
    view_.network = nullptr;
    view_.signal = nullptr;
    const Lines lines = drawn();
    EXPECT_EQ(lines[0], "-  02:00:00:00:00:2F");
    EXPECT_EQ(lines[2], "   not heard yet");
    EXPECT_EQ(lines[4], " -39");
}

TEST_F(OneNetworkScreen, StandsStillBetweenTheStepsOfThePicture) {
    hear(-39, 100ms, 30s);
    hear(-53, 42100ms, 60s);
    view_.now = 59900ms;
    const std::string before = drawn()[4];
    view_.now = 59200ms;  // a step is 857 ms
    EXPECT_EQ(drawn()[4], before);
    view_.now = 61s;
    EXPECT_EQ(cellsOf(drawn()[4], {}) + 2, cellsOf(before, {}));
}

TEST_F(OneNetworkScreen, LosesWordsAsTheWidthDoes) {
    hear(-53, 1s, 60s);
    view_.width = 46;
    EXPECT_EQ(drawn()[0], "Den speaker.o  02:00:00:00:00:2F  channel 6/20");
    view_.width = 40;
    EXPECT_EQ(drawn()[0], "Den speaker.o  02:00:00:00:00:2F");
    view_.width = 24;
    EXPECT_EQ(drawn()[0], "Den speaker.o");
    EXPECT_EQ(drawn()[2], "   -53 dBm   best -53");
}

TEST_F(OneNetworkScreen, IsNeverTooWide) {
    hear(-53, 1s, 60s);
    for (std::size_t width = 1; width <= 240; ++width) {
        for (const std::size_t height : {1u, 11u, 12u, 14u, 24u}) {
            view_.width = width;
            view_.height = height;
            for (const std::string& line : drawn()) {
                if (width < 12 && line.find("dBm") != std::string::npos) continue;  // stays whole
                EXPECT_LE(cellsOf(line, {}), width) << width << ": " << line;
            }
        }
    }
}

TEST_F(OneNetworkScreen, PaintsTheNumber) {
    hear(-53, 1s, 60s);
    EXPECT_THAT(drawn(Theme(Palette::Colors16, true))[2], HasSubstr("\x1B[1;36m-53 dBm\x1B[m"));
}

}  // namespace
