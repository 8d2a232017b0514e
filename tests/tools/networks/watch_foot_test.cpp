#include "tools/halvane/networks/watch_foot.h"

#include <cstddef>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "halvane/air/channel.h"

#include "tests/tools/networks/networks_for_tests.h"
#include "tools/halvane/networks/group_table.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/watch_choices.h"
#include "tools/halvane/networks/watch_keys_screen.h"
#include "tools/halvane/output/cell_text.h"
#include "tools/halvane/output/glyphs.h"
#include "tools/halvane/output/theme.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;
using ::testing::Each;
using ::testing::HasSubstr;

namespace {

std::string foot(const WatchChoices& choices, std::size_t width, std::string_view message = {}) {
    CellSurroundings surroundings = asciiSurroundings();
    surroundings.rules = {};
    return watchFoot(choices, message, width, surroundings, {});
}

TEST(WatchFoot, LosesWordsAsTheWidthDoes) {
    EXPECT_EQ(foot({}, 120),
              " q quit   / filter   s sort: signal   b band: all   g group   f freeze   "
              "Enter one network   ? keys");
    EXPECT_EQ(foot({}, 80),
              " q quit  / filter  s sort: signal  b band: all  g group  f freeze  ? keys");
    EXPECT_EQ(foot({}, 60), " q quit  / filter  s sort  b band  ? keys");
    EXPECT_EQ(foot({}, 40), " q quit  / filter  s sort  ? keys");
    EXPECT_EQ(foot({}, 20), " q quit  ? keys");
    EXPECT_EQ(foot({}, 10), " q quit");
    EXPECT_EQ(foot({}, 3), "");
}

TEST(WatchFoot, TellsWhatIsSet) {
    WatchChoices choices{.filter = U"Den speaker.o", .band = air::Band::Ghz5};
    choices.grouping = Grouping::Radio;
    choices.order = {.keys = {{networkColumnNamed("channel")}}, .isReversed = true};
    choices.isFrozen = true;
    EXPECT_EQ(foot(choices, 140),
              " q quit   / filter: Den speaker~   s sort: channel reversed   b band: 5   "
              "g group: radio   f go on   Enter one network   ? keys");
    choices.order.keys.clear();
    EXPECT_THAT(foot(choices, 140), HasSubstr("s sort: none reversed "));
}

TEST(WatchFoot, ShowsTheEndOfWhatIsTyped) {
    WatchChoices choices{.filter = U"a\\b \u00E9", .isTyping = true};
    EXPECT_EQ(foot(choices, 80), " /a\\b \u00E9_  Enter keeps  Escape drops");
    EXPECT_EQ(foot(choices, 8), " /a\\b \u00E9_");
    EXPECT_EQ(foot(choices, 6), " /b \u00E9_");
    EXPECT_EQ(foot(choices, 3), " /_");
    choices.filter = U"\u4E2D\u6587";  // two cells each
    EXPECT_EQ(foot(choices, 6), " /\u6587_");
    EXPECT_EQ(foot(choices, 80, "a message"), " /\u4E2D\u6587_  Enter keeps  Escape drops");
}

TEST(WatchFoot, GivesItsPlaceToAMessage) {
    EXPECT_EQ(foot({}, 80, "wlan1mon: went away"), " wlan1mon: went away");
    EXPECT_EQ(foot({}, 10, "wlan1mon: went away"), " wlan1mon~");
}

TEST(WatchFoot, NamesTheKeysOfEachPage) {
    EXPECT_EQ(foot({.page = WatchPage::OneNetwork}, 80), " q quit  Escape back  ? keys");
    EXPECT_EQ(foot({.page = WatchPage::OneNetwork}, 27), " q quit  Escape back");
    EXPECT_EQ(foot({.page = WatchPage::Keys}, 80), " any key goes back");
}

TEST(WatchFoot, IsNeverTooWide) {
    WatchChoices choices{.filter = U"\u4E2D\u6587 \u05D0\u0301 abcdefghijklmnop"};
    for (std::size_t width = 1; width <= 240; ++width) {
        for (const bool isTyping : {false, true}) {
            choices.isTyping = isTyping;
            EXPECT_LE(cellsOf(foot(choices, width), {}), width) << width;
        }
        for (const WatchPage page : {WatchPage::OneNetwork, WatchPage::Keys}) {
            EXPECT_LE(foot({.page = page}, width).size(), width) << width;
        }
    }
}

TEST(WatchKeysScreen, NamesEachKey) {
    const auto lines = watchKeysScreen(80, 24, {});
    std::string all;
    for (const std::string& line : lines) all += line + '\n';
    EXPECT_THAT(all, HasSubstr(" KEYS\n q            quit"));
    for (const char* const key :
         {" / ", " s S ", " r ", " b ", " g ", " f ", " j k, arrows ", " Enter ", " ? "}) {
        EXPECT_THAT(all, HasSubstr(std::string("\n") + key));
    }
    EXPECT_LE(lines.size(), 11u);  // with a foot, the lines of a small terminal
}

TEST(WatchKeysScreen, FitsTheTerminal) {
    for (std::size_t width = 1; width <= 240; ++width) {
        for (const std::size_t height : {1u, 5u, 24u}) {
            const auto lines = watchKeysScreen(width, height, {});
            EXPECT_LE(lines.size(), height);
            EXPECT_THAT(lines, Each(::testing::SizeIs(::testing::Le(width))));
        }
    }
}

}  // namespace
