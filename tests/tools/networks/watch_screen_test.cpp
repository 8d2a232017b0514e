#include "tools/halvane/networks/watch_screen.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/security.h"

#include "tests/tools/networks/networks_for_tests.h"
#include "tools/halvane/networks/group_table.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/watch_choices.h"
#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/theme.h"
#include "tools/halvane/survey/network.h"
#include "tools/halvane/survey/network_moment.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Lines = std::vector<std::string>;

namespace {

using State = NetworkMoment::State;
using Trend = NetworkMoment::Trend;

constexpr std::int64_t kSecond = 1'000'000'000;

CellSurroundings utf8Surroundings() {
    CellSurroundings surroundings = asciiSurroundings();
    return {.glyphs = glyphsOf(GlyphSet::UTF8),
            .rules = {},
            .makers = surroundings.makers,
            .list = ListKind::Watch};
}

class WatchScreen : public ::testing::Test {
  protected:
    void add(const MadeNetwork& made, const NetworkMoment& moment) {
        moments_.push_back(moment);
        rows_.push_back(maker_.make(made));
        rows_.back().moment = &moments_.back();
    }

    // Some rows of a walk, at 66 s.
    void addWalk() {
        NetworkMoment loud{.age = 12 * kSecond / 10, .signal = -19};
        loud.history.fill(-19);
        add({"WPA3", 1, -19, air::Band::Ghz2, 1, air::Security::Wpa2Wpa3Personal}, loud);
        NetworkMoment fresh{.state = State::New, .age = 71 * kSecond / 10, .signal = -67};
        fresh.history[10] = -67;
        add({"Krishna", 2, -67}, fresh);
        NetworkMoment rising{.age = 4 * kSecond / 10, .signal = -73, .trend = Trend::Rising};
        for (const std::size_t i : {0u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, 10u, 11u}) {
            rising.history.at(i) = -73;
        }
        add({"VVM", 3, -50, air::Band::Ghz2, 11}, rising);
        add({"Pradnya", 4, -79, air::Band::Ghz2, 11},
            {.age = 5 * kSecond / 10, .signal = -79, .trend = Trend::Falling});
        NetworkMoment lost{.state = State::Lost, .age = 46 * kSecond, .signal = -73};
        lost.history[2] = -73;
        add({"", 5, -73, air::Band::Ghz2, 13, air::Security::Wpa2Enterprise}, lost);
    }

    Lines drawn(std::size_t width, std::size_t height, const Theme& theme = {}) {
        return watchScreen({.rows = rows_,
                            .all = all_,
                            .columns = columns_,
                            .choices = choices_,
                            .first = first_,
                            .width = width,
                            .height = height},
                           status_, utf8Surroundings(), theme);
    }

    NetworkMaker maker_;
    std::deque<NetworkMoment> moments_;
    std::vector<Network> rows_;
    std::vector<const NetworkColumn*> columns_;
    WatchChoices choices_;
    std::size_t first_ = 0;
    std::size_t all_ = 14;
    WatchStatus status_{.interfaces = "wlan1mon",
                        .channel = 1,
                        .counts = {.networks = 14, .isNew = 1, .lost = 1},
                        .frames = 1077,
                        .elapsed = std::chrono::seconds(66)};
};

TEST_F(WatchScreen, IsDrawnForEightyColumns) {
    addWalk();
    EXPECT_THAT(
        drawn(80, 10),
        ElementsAre(
            "wlan1mon  channel 1    14 networks, 1 new, 1 lost  1077 frames  0 dropped  01:06",
            "   SSID         dBm        GHz  CH  MHz GEN SECURITY  LAST BSSID",
            "   WPA3         -19   \u2588\u2588\u2588\u2588 2.4   1  20  b   WPA2/WPA3 1.2s "
            "02:00:00:00:00:01",
            "+  Krishna      -67   \u2588\u2589   2.4   1  20  b   WPA2      7.1s "
            "02:00:00:00:00:02",
            "   VVM          -73 \u2191 \u2588\u258C   2.4  11  20  b   WPA2      0.4s "
            "02:00:00:00:00:03",
            "   Pradnya      -79 \u2193 \u2588\u258F   2.4  11  20  b   WPA2      0.5s "
            "02:00:00:00:00:04",
            "-  (hidden)     -73   \u2588\u258C   2.4  13  20  b   WPA2-Ent   46s "
            "02:00:00:00:00:05",
            "", "", " q quit  / filter  s sort: signal  b band: all  g group  f freeze  ? keys"));
}

TEST_F(WatchScreen, ShowsTheLastMinuteOnWideTerminals) {
    addWalk();
    const Lines lines = drawn(120, 10);
    EXPECT_EQ(lines[0],
              "wlan1mon  channel 1                                            14 networks, "
              "1 new, 1 lost  1077 frames  0 dropped  01:06");
    EXPECT_EQ(lines[1],
              "   SSID         dBm        60 s         GHz  CH  MHz GEN SECURITY  PMF LAST BSSID"
              "             MAKER");
    EXPECT_THAT(
        lines[2],
        HasSubstr(" -19   \u2588\u2588\u2588\u2588 "
                  "\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588\u2588 2.4 "));
    EXPECT_THAT(lines[3], HasSubstr(" -67   \u2588\u2589             \u2584  2.4 "));
    EXPECT_THAT(lines[4], HasSubstr(" -73 \u2191 \u2588\u258C   \u2583  "
                                    "\u2583\u2583\u2583\u2583\u2583\u2583\u2583\u2583\u2583 2.4 "));
    EXPECT_THAT(lines[6], HasSubstr(" -73   \u2588\u258C     \u2583          2.4 "));
    EXPECT_EQ(lines[9],
              " q quit   / filter   s sort: signal   b band: all   g group   f freeze   "
              "Enter one network   ? keys");
}

TEST_F(WatchScreen, LosesColumnsOnNarrowTerminals) {
    addWalk();
    Lines lines = drawn(60, 10);
    EXPECT_EQ(lines[0], "14 networks, 1 new, 1 lost                             01:06");
    EXPECT_EQ(lines[1], "   SSID         dBm   GHz  CH  MHz SECURITY  LAST BSSID");
    EXPECT_EQ(lines[4], "   VVM          -73 \u2191 2.4  11  20  WPA2      0.4s 00:00:03");
    lines = drawn(40, 10);
    EXPECT_EQ(lines[0], "14 networks, 1 new, 1 lost         01:06");
    EXPECT_EQ(lines[1], "   SSID         dBm   GHz  CH SECURITY");
    EXPECT_EQ(lines[6], "-  (00:00:05)   -73   2.4  13 WPA2-Ent");
}

TEST_F(WatchScreen, HasTheLinesOfTheTerminalAndNoneIsTooWide) {
    addWalk();
    for (std::size_t width = 20; width <= 240; ++width) {
        for (const std::size_t height : {1u, 2u, 4u, 10u}) {
            for (const Grouping grouping : {Grouping::None, Grouping::Name, Grouping::Radio}) {
                choices_.grouping = grouping;
                const Lines lines = drawn(width, height);
                EXPECT_EQ(lines.size(), height);
                for (const std::string& line : lines) {
                    EXPECT_LE(cellsOf(line, {}), width) << width << " x " << height << ": " << line;
                }
            }
        }
    }
}

TEST_F(WatchScreen, CutsLinesOnVeryNarrowTerminals) {
    addWalk();
    EXPECT_EQ(drawn(24, 5)[1], "   WPA3         -19   2\u2026");
    const Lines painted = drawn(24, 5, Theme(Palette::Colors16, true));
    EXPECT_THAT(painted[1], HasSubstr("\x1B[1;36m-19\x1B[m"));
    EXPECT_THAT(painted[1], HasSubstr("\u2026"));
    EXPECT_THAT(painted[1], Not(HasSubstr("WPA2")));
}

TEST_F(WatchScreen, MarksTheChosenRow) {
    addWalk();
    choices_.chosen = rows_[1].bssid;
    Lines lines = drawn(80, 10);
    EXPECT_THAT(lines[2], ::testing::StartsWith("   WPA3 "));
    EXPECT_THAT(lines[3], ::testing::StartsWith("+ >Krishna "));
    lines = drawn(80, 10, Theme(Palette::Colors16, true));
    EXPECT_THAT(lines[3],
                ::testing::StartsWith("\x1B[1;32m+\x1B[m \x1B[1m>\x1B[m\x1B[1;32mKrishna"));
    choices_.grouping = Grouping::Name;
    EXPECT_THAT(drawn(80, 10)[3], ::testing::StartsWith(" >Krishna "));
}

TEST_F(WatchScreen, HasAMarginForTheMarkBesideColumnsOfTheUsersChoice) {
    addWalk();
    columns_ = {networkColumnNamed("ssid", ListKind::Watch),
                networkColumnNamed("signal", ListKind::Watch)};
    EXPECT_THAT(drawn(80, 10)[1], "  SSID         dBm");
    EXPECT_THAT(drawn(80, 10)[2], "  WPA3         -19");
    choices_.chosen = rows_[0].bssid;
    EXPECT_THAT(drawn(80, 10)[2], "> WPA3         -19");
}

TEST_F(WatchScreen, ShowsRowsFromTheFirstOneOn) {
    addWalk();
    first_ = 2;
    const Lines lines = drawn(80, 6);
    EXPECT_THAT(lines[1], HasSubstr("VVM"));
    EXPECT_THAT(lines[3], HasSubstr("(hidden)"));
    EXPECT_THAT(lines[4], HasSubstr(" 2 more: "));
    first_ = 99;
    EXPECT_EQ(drawn(80, 6), lines);
}

TEST_F(WatchScreen, ShowsGroups) {
    addWalk();
    add({"WPA3", 6, -40, air::Band::Ghz5, 36}, {.signal = -40});
    choices_.grouping = Grouping::Name;
    const Lines lines = drawn(80, 10);
    EXPECT_THAT(lines[1], ::testing::StartsWith("  SSID         dBm      BSS  AP 2.4 GHz"));
    EXPECT_THAT(lines[2], HasSubstr("  WPA3         -19 \u2588\u2588\u2588\u2588   2 "));
    EXPECT_THAT(lines[6], HasSubstr("(hidden)"));
    EXPECT_EQ(watchRows(rows_, Grouping::Name).size(), 5u);
    EXPECT_EQ(watchRows(rows_, Grouping::None).size(), 6u);
    EXPECT_THAT(lines[9], HasSubstr("g group: name"));
}

TEST_F(WatchScreen, SaysThatNothingPasses) {
    EXPECT_EQ(drawn(80, 10)[2], "   no network of 14 passes the filter");
    EXPECT_EQ(drawn(20, 10)[1], "   no network of 14 ");
    all_ = 0;  // it is quiet
    EXPECT_EQ(drawn(80, 10)[2], "");
}

TEST_F(WatchScreen, ShowsWhatIsTypedEvenOnFewLines) {
    addWalk();
    choices_.isTyping = true;
    choices_.filter = U"Kri";
    EXPECT_EQ(drawn(80, 10).back(), " /Kri_  Enter keeps  Escape drops");
    EXPECT_EQ(drawn(80, 3).back(), " /Kri_  Enter keeps  Escape drops");
    EXPECT_EQ(drawn(20, 3).back(), " /Kri_");
}

TEST_F(WatchScreen, CountsTheRowsThatDoNotFit) {
    addWalk();
    const Lines lines = drawn(80, 6);
    EXPECT_THAT(lines[0], HasSubstr("   SSID"));  // no head on so few lines
    EXPECT_THAT(lines[3], HasSubstr("VVM"));
    EXPECT_EQ(lines[4], "\u2026 2 more: wheel or arrow keys");
    EXPECT_THAT(lines[5], HasSubstr(" q quit"));
    EXPECT_EQ(drawn(80, 4).back(), "\u2026 3 more: wheel or arrow keys");
    EXPECT_EQ(drawn(28, 4).back(), "\u2026 3 more");
}

TEST_F(WatchScreen, PaintsWhatIsNewAndWhatIsLost) {
    addWalk();
    status_.dropped = 3;
    const Lines lines = drawn(80, 10, Theme(Palette::Colors16, true));
    EXPECT_THAT(lines[0], HasSubstr("  \x1B[33m3 dropped\x1B[m  01:06"));
    EXPECT_THAT(lines[3], HasSubstr("\x1B[1;32m+\x1B[m  \x1B[1;32mKrishna\x1B[m"));
    EXPECT_THAT(lines[6], HasSubstr("\x1B[2m46s\x1B[m"));
    EXPECT_THAT(lines[6], Not(HasSubstr("\x1B[36m")));
}

TEST_F(WatchScreen, TellsHowItGoesOn) {
    choices_.isFrozen = true;
    EXPECT_THAT(drawn(80, 10).back(), HasSubstr("  f go on  "));
    status_.message = "wlan1mon: went away";
    EXPECT_EQ(drawn(80, 10).back(), " wlan1mon: went away");
    status_.elapsed = std::chrono::seconds(3661);
    status_.counts = {.networks = 1};
    EXPECT_THAT(drawn(80, 10).front(),
                ::testing::EndsWith(" 1 network  1077 frames  0 dropped  1:01:01"));
}

}  // namespace
