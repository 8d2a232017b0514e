#include "tools/halvane/options/list_options.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/air/finding.h"

#include "tests/support/tool_command_line.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::ToolOptions;

namespace {

using Words = std::vector<std::string>;

ToolOptions<ListOptions> taken(Words words) {
    static std::vector<CLIOption> table = [] {
        std::vector<CLIOption> rows;
        for (const auto part : {filterOptions(), showOptions(), mannerOptions()}) {
            rows.insert(rows.end(), part.begin(), part.end());
        }
        rows.push_back({.type = kCLIEnd});
        return rows;
    }();
    return ToolOptions<ListOptions>(table.data(), takeListOptions, std::move(words));
}

ListOptions optionsOf(Words words) {
    return taken(std::move(words)).options();
}

std::string errorOf(Words words) {
    return taken(std::move(words)).error();
}

TEST(ListOptions, DefaultToTheStrongestFirst) {
    const ListOptions options = optionsOf({});
    EXPECT_FALSE(options.format || options.findings || options.width || options.isWide);
    ASSERT_EQ(options.order.keys.size(), 1u);
    EXPECT_STREQ(options.order.keys[0].column->layout.name, "signal");
    EXPECT_TRUE(options.order.keys[0].isFalling);
    EXPECT_FALSE(options.isSorted || options.order.isReversed || options.isQuiet);
    EXPECT_EQ(options.limit, 0u);
    EXPECT_EQ(options.mostNetworks, 65536u);
    EXPECT_EQ(options.color, ColorChoice::Auto);
}

TEST(ListOptions, ReadEverything) {
    const ListOptions options =
        optionsOf({"--columns=ssid,bssid", "--sort=band,-channel", "--reverse", "--limit=7",
                   "--findings", "--width=80", "--color=always", "--ascii", "--width-ambiguous=2",
                   "--max-networks=9", "--quiet", "--wide", "--format=table"});
    ASSERT_EQ(options.columns.size(), 2u);
    EXPECT_STREQ(options.columns[1]->layout.name, "bssid");
    ASSERT_EQ(options.order.keys.size(), 2u);
    EXPECT_FALSE(options.order.keys[0].isFalling);
    EXPECT_TRUE(options.order.keys[1].isFalling);
    EXPECT_TRUE(options.isSorted && options.order.isReversed && options.isQuiet && options.isWide);
    EXPECT_EQ(options.limit, 7u);
    EXPECT_EQ(options.findings, air::Severity::Note);
    EXPECT_EQ(options.width, 80u);
    EXPECT_EQ(options.color, ColorChoice::Always);
    EXPECT_TRUE(options.text.isASCII);
    EXPECT_EQ(options.text.ambiguous, AmbiguousWidth::Two);
    EXPECT_EQ(options.mostNetworks, 9u);
    EXPECT_EQ(options.format, Format::Table);
    EXPECT_EQ(optionsOf({"--findings=error"}).findings, air::Severity::Error);
    EXPECT_TRUE(optionsOf({"--columns=help"}).isColumnsHelp);
}

TEST(ListOptions, TakeFiltersSeveralTimes) {
    const ListOptions options = optionsOf({"--bssid=02:00:00:00:00:01", "--bssid=020000000002"});
    EXPECT_TRUE(options.filter.mayPass(*MacAddress::fromText("02:00:00:00:00:01")));
    EXPECT_TRUE(options.filter.mayPass(*MacAddress::fromText("02:00:00:00:00:02")));
    EXPECT_FALSE(options.filter.mayPass(*MacAddress::fromText("02:00:00:00:00:03")));
    EXPECT_EQ(options.bssid, MacAddress::fromText("02:00:00:00:00:01"));
}

TEST(ListOptions, AreRefusedWithWhatIsWrong) {
    EXPECT_EQ(errorOf({"--band=2"}), "--band: '2' is not 2.4, 5 or 6");
    EXPECT_EQ(errorOf({"--channel=x"}), "--channel: 'x' is not a channel number");
    EXPECT_EQ(errorOf({"--generation=8"}), "--generation: '8' is not 4, 5, 6, 6E, 7, a, b or g");
    EXPECT_EQ(errorOf({"--min-signal=strong"}),
              "--min-signal: 'strong' is not a signal of dBm (-70)");
    EXPECT_EQ(errorOf({"--findings=bad"}), "--findings: 'bad' is not error, warning or note");
    EXPECT_EQ(errorOf({"--color=red"}), "--color: 'red' is not auto, always or never");
    EXPECT_EQ(errorOf({"--width-ambiguous=3"}), "--width-ambiguous: '3' is not 1 or 2");
    EXPECT_EQ(errorOf({"--limit=-1"}), "--limit: '-1' is not a number from 0 on");
    EXPECT_EQ(errorOf({"--width=0"}), "--width: '0' is not a number from 1 on");
    EXPECT_EQ(errorOf({"--max-networks=0"}), "--max-networks: '0' is not a number from 1 on");
    EXPECT_EQ(errorOf({"--security=strong"}).find("--security: 'strong' is not Open, OWE"), 0u);
    EXPECT_EQ(errorOf({"--sort=ssid,,band"}), "--sort: '' is no column");
    EXPECT_EQ(errorOf({"--columns=bar"}), "--columns: 'bar' is no column");
    EXPECT_EQ(errorOf({"--min-signal=70"}), "--min-signal: '70' is not a signal of dBm (-70)");
    EXPECT_NE(errorOf({"--columns=-ssid"}), "");
}

TEST(ListOptions, SuggestTheWordThatWasMeant) {
    const std::pair<const char*, const char*> rows[] = {
        {"--band=2", "did you mean --band=2.4?"},
        {"--security=opne", "did you mean --security=Open?"},
        {"--security=enterprize", "did you mean --security=Enterprise?"},
        {"--security=WPA2-Personel", "did you mean --security=WPA2-Personal?"},
        {"--security=WPA3-Enterprise 192-bt", "did you mean --security='WPA3-Enterprise 192-bit'?"},
        {"--columns=ssid,bsid", "did you mean bssid?\n--columns=help lists them"},
        {"--sort=-sginal", "did you mean signal?\n--columns=help lists them"},
        {"--columns=xxxxxx", "--columns=help lists them"},
        {"--min-signal=70", "did you mean --min-signal=-70?"},
        {"--min-signal=70dBm", "did you mean --min-signal=-70dBm?"},
        {"--min-signal=strong", ""},
        {"--findings=warn", "did you mean --findings=warning?"},
        {"--color=alwyas", "did you mean --color=always?"},
        {"--group=ssd", "did you mean --group=ssid?"},
        {"--security=strong", ""},
        {"--channel=x", ""},
        {"--bssid=home", ""},
    };
    for (const auto& [word, hint] : rows) EXPECT_EQ(taken({word}).hint(), hint) << word;
}

}  // namespace
