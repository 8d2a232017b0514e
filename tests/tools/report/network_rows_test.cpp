#include "tools/halvane/report/network_rows.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "tests/tools/report/report_for_tests.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::derived;
using halvane::testing::hostileNames;
using halvane::testing::ownNamed;
using halvane::testing::ParsedPart;
using halvane::testing::ReportMaker;
using halvane::testing::textOf;
using halvane::testing::written;

namespace {

TEST(NetworkRows, HaveValuesToReadAndToSortBy) {
    ReportMaker maker;
    auto& network = maker.add({.name = "Home",
                               .lastOctet = 0xAB,
                               .signal = -42,
                               .band = air::Band::Ghz5,
                               .channel = 36,
                               .security = air::Security::Wpa3Personal},
                              5210, 80);
    network.profile.load = derived<air::BssLoadProfile>({.stations = 3, .utilization = 51});
    network.details.highestRate = 108;
    const ParsedPart part(written(writeNetworks, maker.data()));
    ASSERT_TRUE(part.isWellFormed());
    const auto row = part.root().select_node("//tbody").node();
    EXPECT_STREQ(row.attribute("id").value(), "n-0200000000ab");
    EXPECT_STREQ(row.attribute("data-b").value(), "5");
    EXPECT_STREQ(row.attribute("data-o").value(), "0");
    const std::string words = row.attribute("data-t").value();
    for (const char* const word : {"home", "02:00:00:00:00:ab", "wpa3-personal", "ch36"}) {
        EXPECT_NE(words.find(word), words.npos) << word;
    }
    std::string values;
    for (const auto& cell : halvane::testing::selected(row, "tr[1]/*")) {
        values += std::string(cell.attribute("data-v").value()) + '|' + textOf(cell) + '\n';
    }
    EXPECT_EQ(values,
              "home|Home02:00:00:00:00:AB5 GHz \u00B7 36/80 \u00B7 WPA3\n"
              "-42|\u221242\n"
              "5|5\n"
              "4036|36\n"
              "80|80\n"
              "0|b\n"
              "17|WPA3-Personal\n"
              "0|none\n"
              "54.0|54\n"
              "51|20\n"
              "3|3\n"
              "1|1\n"
              "|local address\n"
              "0|\u2013\n");
}

TEST(NetworkRows, LeaveOutWhatIsNotTold) {
    ReportMaker maker;
    maker.add({.name = ""});
    const ParsedPart part(written(writeNetworks, maker.data()));
    const auto row = part.root().select_node("//tbody").node();
    EXPECT_EQ(textOf(row.select_node("tr[1]/th/a").node()), "(hidden)");
    EXPECT_STREQ(row.select_node("tr[1]/th").node().attribute("data-v").value(), "");
    EXPECT_STREQ(row.select_node("tr[1]/td[1]").node().attribute("data-v").value(), "");
    EXPECT_NE(textOf(row.select_node("tr[2]").node()).find("not told"), std::string::npos);
}

TEST(NetworkRows, OfferOwnOnesWhereTheyAreKnown) {
    ReportMaker maker;
    maker.add({.name = "mine", .lastOctet = 1, .signal = -50});
    maker.add({.name = "other", .lastOctet = 2, .signal = -60});
    const ParsedPart part(written(writeNetworks, maker.data(ownNamed("mine"))));
    EXPECT_EQ(part.all("//input[@id='fo']").size(), 1u);
    const auto rows = part.all("//tbody[@data-o]");
    EXPECT_STREQ(rows[0].attribute("class").value(), "net own");
    EXPECT_STREQ(rows[0].attribute("data-o").value(), "1");
    EXPECT_STREQ(rows[1].attribute("class").value(), "net");
    EXPECT_TRUE(ParsedPart(written(writeNetworks, maker.data())).all("//input[@id='fo']").empty());
}

TEST(NetworkRows, SayWhatTheyLeaveOut) {
    ReportMaker maker;
    for (std::uint8_t i = 0; i < 6; ++i) {
        maker.add({.name = "x", .lastOctet = i, .signal = -30 - i});
    }
    ReportLimits limits;
    limits.rows = 2;
    limits.briefRows = 3;
    const ParsedPart part(written(writeNetworks, maker.data({}, limits)));
    EXPECT_EQ(part.all("//tbody[contains(@class,'net')]").size(), 2u);
    EXPECT_EQ(part.all("//tr[@id]").size(), 3u);
    const std::string text = textOf(part.root());
    EXPECT_NE(text.find("The table holds the strongest 2 networks of 6."), text.npos);
    EXPECT_NE(text.find("3 further networks, a line each"), text.npos);
    EXPECT_NE(text.find("1 weaker one is counted above"), text.npos);
}

TEST(NetworkRows, HaveRoomForOwnOnesFirst) {
    ReportMaker maker;
    for (std::uint8_t i = 0; i < 6; ++i) {
        maker.add({.name = i == 5 ? "mine" : "x", .lastOctet = i, .signal = -30 - i});
    }
    ReportLimits limits;
    limits.rows = 2;
    limits.briefRows = 3;
    const ParsedPart part(written(writeNetworks, maker.data(ownNamed("mine"), limits)));
    const auto rows = part.all("//tbody[contains(@class,'net')]");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_STREQ(rows[0].attribute("id").value(), "n-020000000000");
    EXPECT_STREQ(rows[1].attribute("id").value(), "n-020000000005");
    const std::string text = textOf(part.root());
    EXPECT_NE(text.find("The table holds your networks and the strongest others, 2 of 6."),
              text.npos);
}

TEST(NetworkRows, StandHostileNames) {
    ReportMaker maker;
    std::uint8_t octet = 0;
    for (const auto name : hostileNames()) {
        auto& network = maker.add({.name = name, .lastOctet = ++octet, .signal = -40});
        network.details.accessPoint = std::string(name);
    }
    const ParsedPart part(written(writeNetworks, maker.data()));
    ASSERT_TRUE(part.isWellFormed());
    EXPECT_TRUE(part.all("//script|//img|//b|//@onmouseover|//@onerror").empty());
    const auto rows = part.all("//tbody[@data-t]");
    ASSERT_EQ(rows.size(), hostileNames().size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto name = rows[i].select_node("tr[1]/th/a/bdi").node();
        ASSERT_TRUE(name) << i;
        EXPECT_EQ(textOf(name), shownName(hostileNames()[i], {}).octets());
    }
}

}  // namespace
