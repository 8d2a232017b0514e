#include "tools/halvane/networks/watch_choices.h"

#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/base/mac_address.h"

#include "tools/halvane/input/key.h"
#include "tools/halvane/networks/group_table.h"
#include "tools/halvane/networks/network_columns.h"
#include "tools/halvane/networks/network_order.h"

using halvane::MacAddress;
using halvane::air::Band;
using namespace halvane::tool;
using ::testing::ElementsAre;

namespace {

MacAddress address(std::uint8_t last) {
    return MacAddress({0x02, 0, 0, 0, 0, last});
}

class WatchChoicesTest : public ::testing::Test {
  protected:
    WatchChoicesTest() {
        for (std::uint8_t row = 0; row < 10; ++row) rows_.push_back(address(row));
    }

    void press(std::u32string_view keys) {
        for (const Key key : keys) press(key);
    }
    void press(Key key) {
        choices_ = pressed(choices_, key, {.rows = rows_, .page = 4, .columns = columns_});
    }

    std::string sortedBy() const { return choices_.order.keys.front().column->layout.name; }

    std::vector<MacAddress> rows_;
    std::vector<const NetworkColumn*> columns_ = sortColumns({}, 80);
    WatchChoices choices_;
};

std::vector<std::string> namesOf(const std::vector<const NetworkColumn*>& columns) {
    std::vector<std::string> names;
    for (const NetworkColumn* const column : columns) names.emplace_back(column->layout.name);
    return names;
}

TEST_F(WatchChoicesTest, EndsWithQ) {
    press(U"q");
    EXPECT_TRUE(choices_.isEnded);
}

TEST_F(WatchChoicesTest, IsNotChangedByOtherKeys) {
    const WatchChoices before = choices_;
    for (Key key = 0; key < 0x180; ++key) {
        if (std::u32string_view(U"q/sSrbgf?jk").find(key) == std::u32string_view::npos) press(key);
    }
    press(kKeyLeft);
    press(kKeyRight);
    press(kKeyBackspace);
    EXPECT_EQ(choices_, before);
}

TEST_F(WatchChoicesTest, TakesAFilterAsItIsTyped) {
    press(U"/qb\u00E9x");
    EXPECT_TRUE(choices_.isTyping);
    EXPECT_EQ(choices_.filterText(), "qb\u00E9x");  // keys are letters here
    press(kKeyBackspace);
    press(kKeyBackspace);
    EXPECT_EQ(choices_.filterText(), "qb");
    press(kKeyUp);
    press(kKeyEnter);
    EXPECT_FALSE(choices_.isTyping);
    EXPECT_EQ(choices_.filterText(), "qb");
    EXPECT_FALSE(choices_.isEnded);
    press(U"/c");
    EXPECT_EQ(choices_.filterText(), "qbc");  // goes on where it was
    press(kKeyEscape);
    EXPECT_FALSE(choices_.isTyping);
    EXPECT_EQ(choices_.filterText(), "");
}

TEST_F(WatchChoicesTest, HasNothingLeftToDelete) {
    press(U"/a");
    for (int i = 0; i < 3; ++i) press(kKeyBackspace);
    EXPECT_EQ(choices_.filterText(), "");
    EXPECT_TRUE(choices_.isTyping);
}

TEST_F(WatchChoicesTest, KeepsAPastedFilterShort) {
    press(U"/" + std::u32string(1'000'000, U'a'));
    EXPECT_EQ(choices_.filterText().size(), 255u);
}

TEST_F(WatchChoicesTest, DropsAKeptFilterWithEscape) {
    press(U"/a");
    press(kKeyEnter);
    press(U"j");
    press(kKeyEscape);
    EXPECT_EQ(choices_.chosen, std::nullopt);
    EXPECT_EQ(choices_.filterText(), "a");
    press(kKeyEscape);
    EXPECT_EQ(choices_.filterText(), "");
}

TEST_F(WatchChoicesTest, SortsByTheColumnsThatStand) {
    EXPECT_THAT(namesOf(columns_), ElementsAre("ssid", "signal", "band", "channel", "width",
                                               "generation", "security", "last", "bssid"));
    EXPECT_EQ(sortedBy(), "signal");
    press(U"s");
    EXPECT_EQ(sortedBy(), "band");
    EXPECT_FALSE(choices_.order.keys.front().isFalling);
    press(U"SS");
    EXPECT_EQ(sortedBy(), "ssid");
    press(U"S");
    EXPECT_EQ(sortedBy(), "bssid");
    press(U"ss");
    EXPECT_EQ(sortedBy(), "signal");
    EXPECT_TRUE(choices_.order.keys.front().isFalling);
    press(U"r");
    EXPECT_TRUE(choices_.order.isReversed);
    press(U"sr");
    EXPECT_FALSE(choices_.order.isReversed);
}

TEST_F(WatchChoicesTest, SortsByTheFirstColumnWhereItsOwnDoesNotStand) {
    choices_.order.keys = {{networkColumnNamed("maker", ListKind::Watch)}};
    press(U"s");
    EXPECT_EQ(sortedBy(), "ssid");
    choices_.order.keys.clear();
    press(U"S");
    EXPECT_EQ(sortedBy(), "ssid");
}

TEST_F(WatchChoicesTest, SortsByTheColumnsOfTheUser) {
    columns_ = sortColumns(std::vector{networkColumnNamed("maker", ListKind::Watch),
                                       networkColumnNamed("state", ListKind::Watch)},
                           80);
    EXPECT_THAT(namesOf(columns_), ElementsAre("maker"));
    press(U"s");
    EXPECT_EQ(sortedBy(), "maker");
    columns_.clear();
    press(U"sS");
    EXPECT_EQ(sortedBy(), "maker");
}

TEST_F(WatchChoicesTest, GoesThroughBandsAndGroups) {
    std::vector<std::optional<Band>> bands;
    std::vector<Grouping> groups;
    for (int i = 0; i < 4; ++i) {
        press(U"bg");
        bands.push_back(choices_.band);
        groups.push_back(choices_.grouping);
    }
    EXPECT_THAT(bands, ElementsAre(Band::Ghz2, Band::Ghz5, Band::Ghz6, std::nullopt));
    EXPECT_THAT(groups,
                ElementsAre(Grouping::Name, Grouping::Radio, Grouping::None, Grouping::Name));
}

TEST_F(WatchChoicesTest, HoldsTheRowsWhileOneIsChosenOrTheyAreFrozen) {
    EXPECT_FALSE(choices_.holdRows());
    press(U"f");
    EXPECT_TRUE(choices_.holdRows());
    press(U"fj");
    EXPECT_FALSE(choices_.isFrozen);
    EXPECT_TRUE(choices_.holdRows());
    press(kKeyEscape);
    EXPECT_FALSE(choices_.holdRows());
}

TEST_F(WatchChoicesTest, ChoosesRows) {
    struct Step {
        Key key;
        std::uint8_t row;
    };
    for (const auto& [key, row] :
         {Step{U'j', 0}, Step{U'j', 1}, Step{kKeyDown, 2}, Step{U'k', 1}, Step{kKeyUp, 0},
          Step{kKeyUp, 0}, Step{kKeyPageDown, 4}, Step{kKeyPageDown, 8}, Step{kKeyPageDown, 9},
          Step{kKeyDown, 9}, Step{kKeyPageUp, 5}, Step{kKeyPageUp, 1}, Step{kKeyPageUp, 0},
          Step{kKeyEnd, 9}, Step{kKeyHome, 0}}) {
        press(key);
        EXPECT_EQ(choices_.chosen, address(row)) << static_cast<std::uint32_t>(key);
    }
    press(kKeyEscape);
    press(kKeyUp);
    EXPECT_EQ(choices_.chosen, address(3));  // the last one that is seen
}

TEST_F(WatchChoicesTest, ChoosesNothingWithoutRows) {
    rows_.clear();
    for (const Key key : {kKeyUp, kKeyDown, kKeyPageUp, kKeyPageDown, kKeyHome, kKeyEnd}) {
        press(key);
        EXPECT_EQ(choices_.chosen, std::nullopt);
    }
    press(kKeyEnter);
    EXPECT_EQ(choices_.page, WatchPage::List);
}

TEST_F(WatchChoicesTest, ShowsOneNetwork) {
    press(U"jj");
    press(kKeyEnter);
    EXPECT_EQ(choices_.page, WatchPage::OneNetwork);
    EXPECT_EQ(choices_.chosen, address(1));
    press(U"sbgf/");
    EXPECT_EQ(choices_.page, WatchPage::OneNetwork);
    press(kKeyEscape);
    EXPECT_EQ(choices_.page, WatchPage::List);
    EXPECT_EQ(choices_.chosen, address(1));
    press(kKeyEscape);
    press(kKeyEnter);
    EXPECT_EQ(choices_.chosen, address(0));  // the first one where none was chosen
    press(U"q");
    EXPECT_TRUE(choices_.isEnded);
}

TEST_F(WatchChoicesTest, ShowsItsKeys) {
    press(U"?");
    EXPECT_EQ(choices_.page, WatchPage::Keys);
    press(U"q");
    EXPECT_EQ(choices_.page, WatchPage::List);
    EXPECT_FALSE(choices_.isEnded);
    press(kKeyEnter);
    press(U"?");
    press(kKeyEscape);
    EXPECT_EQ(choices_.page, WatchPage::OneNetwork);
}

TEST(FirstRow, KeepsTheChosenRowOnTheScreen) {
    EXPECT_EQ(firstRow(0, std::nullopt, 10, 4), 0u);
    EXPECT_EQ(firstRow(5, std::nullopt, 10, 4), 0u);
    EXPECT_EQ(firstRow(0, 3, 10, 4), 0u);
    EXPECT_EQ(firstRow(0, 4, 10, 4), 1u);
    EXPECT_EQ(firstRow(1, 1, 10, 4), 1u);  // moves only as far as it has to
    EXPECT_EQ(firstRow(1, 0, 10, 4), 0u);
    EXPECT_EQ(firstRow(0, 9, 10, 4), 6u);
    EXPECT_EQ(firstRow(6, 3, 4, 4), 0u);
    for (std::size_t rows = 0; rows < 6; ++rows) {
        for (std::size_t page = 0; page < 4; ++page) {
            for (std::size_t chosen = 0; chosen < rows; ++chosen) {
                for (std::size_t first = 0; first < 6; ++first) {
                    const std::size_t now = firstRow(first, chosen, rows, page);
                    if (page == 0) continue;
                    EXPECT_LE(now, chosen);
                    EXPECT_LT(chosen, now + page);
                    EXPECT_LE(now, rows > page ? rows - page : 0);
                }
            }
        }
    }
}

}  // namespace
