#include "tools/halvane/options/report_options.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/air/finding.h"

#include "tests/support/tool_command_line.h"
#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::NetworkMaker;
using halvane::testing::ToolOptions;

namespace {

using Words = std::vector<std::string>;

ReportCommandOptions optionsOf(Words words) {
    return ToolOptions<ReportCommandOptions>(reportOptions(), takeReportOptions, std::move(words))
        .options();
}

std::string errorOf(Words words) {
    return ToolOptions<ReportCommandOptions>(reportOptions(), takeReportOptions, std::move(words))
        .error();
}

TEST(ReportOptions, HaveDefaults) {
    const auto options = optionsOf({"a.pcap", "b.pcap"});
    EXPECT_EQ(options.files, (Words{"a.pcap", "b.pcap"}));
    EXPECT_FALSE(options.output);
    EXPECT_EQ(options.ifThere, IfThere::Keep);
    EXPECT_TRUE(options.filter.isEmpty());
    EXPECT_EQ(options.page.details, ReportDetails::Auto);
    EXPECT_FALSE(options.page.isOwn);
    EXPECT_EQ(options.mostNetworks, 65536u);
    EXPECT_GE(options.jobs, 1u);
}

TEST(ReportOptions, NameThePage) {
    const auto options = optionsOf({"a", "-o", "survey.html", "--force", "--title=First floor",
                                    "--details=own", "--jobs=3", "--max-networks=7", "--quiet"});
    EXPECT_EQ(options.output, "survey.html");
    EXPECT_EQ(options.ifThere, IfThere::Replace);
    EXPECT_EQ(options.page.title, "First floor");
    EXPECT_EQ(options.page.details, ReportDetails::Own);
    EXPECT_EQ(options.jobs, 3u);
    EXPECT_EQ(options.mostNetworks, 7u);
    EXPECT_TRUE(options.isQuiet);
    EXPECT_FALSE(optionsOf({"a", "-o", "-"}).output);
    EXPECT_EQ(optionsOf({"a", "--output=x"}).output, "x");
}

TEST(ReportOptions, KnowOwnNetworksByNameOrAddress) {
    NetworkMaker maker;
    const auto home = maker.make({.name = "home-5", .lastOctet = 1});
    const auto other = maker.make({.name = "other", .lastOctet = 0x42});
    const auto byName = optionsOf({"a", "--own=home*"});
    EXPECT_TRUE(byName.page.isOwn(home));
    EXPECT_FALSE(byName.page.isOwn(other));
    EXPECT_EQ(byName.page.own, Words{"home*"});
    const auto byAddress = optionsOf({"a", "--own=02:00:00:00:00:40/44"});
    EXPECT_FALSE(byAddress.page.isOwn(home));
    EXPECT_TRUE(byAddress.page.isOwn(other));
    const auto both = optionsOf({"a", "--own=home*", "--own=02:00:00:00:00:42"});
    EXPECT_TRUE(both.page.isOwn(home) && both.page.isOwn(other));
}

TEST(ReportOptions, FilterNetworks) {
    NetworkMaker maker;
    const auto options = optionsOf({"a", "--ssid=home"});
    EXPECT_TRUE(options.filter.passes(maker.make({.name = "home"})));
    EXPECT_FALSE(options.filter.passes(maker.make({.name = "other"})));
}

TEST(ReportOptions, FilterNetworksByFindings) {
    NetworkMaker maker;
    auto network = maker.make({.name = "home"});
    const auto passes = [&](const char* word) {
        return optionsOf({"a", word}).filter.passes(network);
    };
    EXPECT_FALSE(passes("--findings"));
    network.profile.findings = {{air::findingInfo("wps-on")->kind, {}}};
    EXPECT_TRUE(passes("--findings"));
    EXPECT_TRUE(passes("--findings=warning"));
    EXPECT_FALSE(passes("--findings=error"));
    EXPECT_EQ(errorOf({"a", "--findings=bad"}), "--findings: 'bad' is not error, warning or note");
}

TEST(ReportOptions, RefuseWhatMakesNoSense) {
    EXPECT_EQ(errorOf({}), "no file to read ('-' is standard input)");
    EXPECT_EQ(errorOf({"-", "-"}), "'-' can be read once only");
    EXPECT_EQ(errorOf({"a", "--details=some"}), "--details: 'some' is not all, own or none");
    EXPECT_EQ(errorOf({"a", "--jobs=0"}), "--jobs: '0' is not a number from 1 to 1024");
    EXPECT_EQ(errorOf({"a", "--output="}), "--output: '' is no file");
    EXPECT_EQ(errorOf({"a", "--band=7"}), "--band: '7' is not 2.4, 5 or 6");
}

}  // namespace
