#include "tools/halvane/report/findings_part.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "halvane/air/finding.h"

#include "tests/tools/report/report_for_tests.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::ownNamed;
using halvane::testing::ParsedPart;
using halvane::testing::ReportMaker;
using halvane::testing::textOf;
using halvane::testing::written;

namespace {

TEST(FindingsPart, GroupsFindingsBySeverityAndNetworks) {
    ReportMaker maker;
    maker.add({.name = "one", .lastOctet = 1, .signal = -40}).profile.findings = {
        {.kind = air::FindingKind::WepOnly}, {.kind = air::FindingKind::WpsOn}};
    maker.add({.name = "two", .lastOctet = 2, .signal = -50}).profile.findings = {
        {.kind = air::FindingKind::WpsOn}, {.kind = air::FindingKind::WpsOn}};
    const ReportData data = maker.data(ownNamed("two"));
    const auto counts = findingCounts(data);
    EXPECT_EQ(counts[0] + counts[1] + counts[2], 4u);

    const ParsedPart part(written(writeFindings, data));
    ASSERT_TRUE(part.isWellFormed());
    const auto lines = part.all("//ul[@class='finds']/li");
    ASSERT_EQ(lines.size(), 2u);
    const auto& wep = air::findingInfo(air::FindingKind::WepOnly);
    EXPECT_EQ(textOf(lines[0].select_node(".//*[@class='fs']").node()), wep.sentence);
    EXPECT_EQ(textOf(lines[0].select_node(".//*[@class='cnt']").node()), "1 network");
    EXPECT_NE(textOf(lines[0]).find(wep.advice), std::string::npos);
    EXPECT_NE(textOf(lines[0]).find(wep.id), std::string::npos);
    EXPECT_EQ(textOf(lines[1].select_node(".//*[@class='cnt']").node()), "2 networks");
    EXPECT_EQ(textOf(lines[1].select_node(".//*[@class='fo']").node()), "1 is yours");
    // Own ones stand first.
    EXPECT_EQ(textOf(lines[1].select_node(".//ul/li").node()), "two 02:00:00:00:00:02");
}

TEST(FindingsPart, NamesNoMoreNetworksThanItsLimit) {
    ReportMaker maker;
    for (std::uint8_t i = 0; i < 5; ++i) {
        maker.add({.name = "x", .lastOctet = i}).profile.findings = {
            {.kind = air::FindingKind::WepOnly}};
    }
    ReportLimits limits;
    limits.findingNames = 2;
    const ParsedPart part(written(writeFindings, maker.data({}, limits)));
    EXPECT_EQ(part.all("//ul[@class='nl']/li").size(), 3u);
    EXPECT_NE(part.text("//ul[@class='nl']").find("and 3 more"), std::string::npos);
}

TEST(FindingsPart, SaysThatThereIsNothing) {
    ReportMaker maker;
    maker.add({.name = "x"});
    EXPECT_NE(written(writeFindings, maker.data()).find("Nothing found."), std::string::npos);
}

}  // namespace
