#include "tools/halvane/report/shares.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/tools/report/report_for_tests.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::derived;
using halvane::testing::ownNamed;
using halvane::testing::ParsedPart;
using halvane::testing::ReportMaker;
using halvane::testing::textOf;
using halvane::testing::written;

namespace {

// The names and counts of a table.
std::vector<std::string> rowsOf(const ParsedPart& part, std::size_t card) {
    std::vector<std::string> rows;
    const auto cards = part.all("//section[contains(@class,'card')]");
    for (const auto& row : halvane::testing::selected(cards[card], "table/tbody/tr")) {
        rows.push_back(textOf(row.select_node("th/span[not(@class)]").node()) + ": " +
                       textOf(row.select_node("td/b").node()));
    }
    return rows;
}

TEST(Shares, CountNetworksFromTheWeakestOn) {
    ReportMaker maker;
    using air::Security;
    for (const auto security : {Security::Wpa3Personal, Security::Wpa2Personal,
                                Security::Wpa2Personal, Security::Wep, Security::Open}) {
        maker.add({.name = "x", .security = security});
    }
    const ParsedPart part(written(writeShares, maker.data()));
    ASSERT_TRUE(part.isWellFormed());
    EXPECT_EQ(rowsOf(part, 0), (std::vector<std::string>{"WEP: 1", "Open: 1", "WPA2-Personal: 2",
                                                         "WPA3-Personal: 1"}));
    EXPECT_EQ(rowsOf(part, 2), (std::vector<std::string>{"(local address): 5"}));
    EXPECT_TRUE(part.all("//*[@class='key']").empty());
}

TEST(Shares, TellOwnOnesFromOthers) {
    ReportMaker maker;
    maker.add({.name = "mine"});
    for (int i = 0; i < 3; ++i) maker.add({.name = "other"});
    const ParsedPart part(written(writeShares, maker.data(ownNamed("mine"))));
    const auto bars = part.all("(//svg[@class='bar'])[1]/rect");
    ASSERT_EQ(bars.size(), 2u);
    EXPECT_STREQ(bars[0].attribute("width").value(), "25.00%");
    EXPECT_STREQ(bars[0].attribute("class").value(), "own");
    EXPECT_STREQ(bars[1].attribute("x").value(), "25.40%");
    EXPECT_STREQ(bars[1].attribute("width").value(), "74.60%");
    EXPECT_STREQ(bars[1].attribute("class").value(), "oth");
}

TEST(Shares, TellTheLoadOfRadios) {
    ReportMaker maker;
    const auto add = [&](std::uint8_t octet, int utilization, int stations) {
        maker.add({.name = "x", .lastOctet = octet, .channel = 6}).profile.load =
            derived<air::BssLoadProfile>({.stations = stations, .utilization = utilization});
    };
    add(0x10, 51, 2);
    add(0x11, 102, 3);
    add(0x20, 255, 1);
    const ParsedPart part(written(writeShares, maker.data()));
    const auto rows = part.all("//table[@class='bars load']/tbody/tr");
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(textOf(rows[0]), "x100\u00A0%1 stach 6");
    EXPECT_EQ(textOf(rows[1]), "x +140\u00A0%5 stach 6");
}

TEST(Shares, LeaveOutWhatNobodyTells) {
    ReportMaker maker;
    maker.add({.name = "x"});
    EXPECT_EQ(written(writeShares, maker.data()).find("Channel load"), std::string::npos);
    EXPECT_TRUE(ParsedPart(written(writeShares, ReportMaker().data())).isWellFormed());
}

}  // namespace
