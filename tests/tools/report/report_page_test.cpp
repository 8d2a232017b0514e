#include "tools/halvane/report/report_page.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <pugixml.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/tools/report/report_for_tests.h"
#include "tools/halvane/networks/survey_reader.h"
#include "tools/halvane/report/report_assets.h"
#include "tools/halvane/report/source_hash.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::hostileNames;
using halvane::testing::ownNamed;
using halvane::testing::ReportMaker;
using halvane::testing::selected;
using halvane::testing::textOf;

namespace {

// What stands between two texts, once each.
std::string between(const std::string& page, std::string_view start, std::string_view end) {
    const auto from = page.find(start);
    const auto to = page.find(end, from);
    EXPECT_NE(to, page.npos) << start;
    EXPECT_EQ(page.find(start, from + 1), page.npos) << start;
    return page.substr(from + start.size(), to - from - start.size());
}

// The page without style and script, whose texts are no XML.
class ParsedPage {
  public:
    explicit ParsedPage(std::string page) {
        for (const std::string_view own : {reportStyle(), reportScript()}) {
            const auto place = page.find(own);
            EXPECT_NE(place, page.npos);
            page.erase(place, own.size());
        }
        const auto result =
            document_.load_string(page.c_str(), pugi::parse_full | pugi::parse_ws_pcdata);
        EXPECT_TRUE(result) << result.description() << " at "
                            << page.substr(static_cast<std::size_t>(result.offset), 80);
    }

    pugi::xml_node root() const { return document_.document_element(); }
    std::vector<pugi::xml_node> all(const char* path) const { return selected(root(), path); }

  private:
    pugi::xml_document document_;
};

void expectSafe(const std::string& page) {
    const ParsedPage parsed(page);
    EXPECT_EQ(parsed.all("//script").size(), 1u);
    EXPECT_EQ(parsed.all("//style").size(), 1u);
    EXPECT_TRUE(
        parsed.all("//img|//link|//iframe|//object|//embed|//base|//image|//use|//video").empty());
    std::set<std::string> ids;
    for (const auto& element : parsed.all("//*")) {
        for (const auto& attribute : element.attributes()) {
            const std::string name = attribute.name();
            EXPECT_FALSE(name.starts_with("on")) << name;
            EXPECT_NE(name, "style");
            EXPECT_NE(name, "src");
            if (name == "href") {
                EXPECT_EQ(std::string(attribute.value()).front(), '#');
            }
            if (name == "id") {
                EXPECT_TRUE(ids.insert(attribute.value()).second);
            }
        }
    }
    for (const auto& link : parsed.all("//a[@href]")) {
        EXPECT_TRUE(ids.contains(std::string(link.attribute("href").value()).substr(1)))
            << link.attribute("href").value();
    }
    for (const auto& filled : parsed.all("//*[@fill]")) {
        const std::string fill = filled.attribute("fill").value();
        EXPECT_TRUE(ids.contains(fill.substr(5, fill.size() - 6))) << fill;
    }
}

void expectHashes(const std::string& page) {
    const std::string policy = between(page, "\"Content-Security-Policy\" content=\"", "\"");
    const std::string script = between(page, "<script>", "</script>");
    const std::string style = between(page, "<style>", "</style>");
    EXPECT_NE(policy.find("default-src 'none'"), policy.npos);
    EXPECT_NE(policy.find("script-src '" + sourceHash(script) + "';"), policy.npos);
    EXPECT_NE(policy.find("style-src '" + sourceHash(style) + "';"), policy.npos);
    EXPECT_EQ(policy.find("unsafe"), policy.npos);
}

TEST(ReportPage, IsSafeWithHostileNames) {
    ReportMaker maker;
    std::uint8_t octet = 0;
    for (const auto name : hostileNames()) {
        octet = static_cast<std::uint8_t>(octet + 8);
        auto& network = maker.add({.name = name, .lastOctet = octet, .signal = -40}, 2412, 20);
        network.profile.country =
            halvane::testing::derived<air::CountryProfile>({.code = "<\\x00"});
    }
    maker.files = {"folder/<script>alert(1)</script>\x1B.pcap"};
    maker.captures.resize(1);
    ReportOptions options = ownNamed("\"><script>");
    options.title = "</title><script>alert(1)</script>";
    const std::string page = reportPage(maker.data(options));
    expectSafe(page);
    expectHashes(page);
    EXPECT_EQ(page.find("<script>alert"), page.npos);
    // Controls of the terminal or of the direction stand nowhere.
    EXPECT_EQ(page.find('\x1B'), page.npos);
    EXPECT_EQ(page.find("\u202E"), page.npos);
}

TEST(ReportPage, IsSafeWithoutNetworks) {
    const std::string page = reportPage(ReportMaker().data());
    expectSafe(page);
    expectHashes(page);
}

TEST(ReportPage, SaysWhyThereAreNoNetworks) {
    ReportData data = ReportMaker().data();
    const auto text = [&] { return textOf(ParsedPage(reportPage(data)).all("//main").at(0)); };
    EXPECT_TRUE(text().starts_with("\nNetworksNo network was heard: ")) << text();
    data.all = 3;
    EXPECT_TRUE(text().starts_with("\nNetworksNo network passes the filter.")) << text();
    EXPECT_TRUE(ParsedPage(reportPage(data)).all("//svg|//nav|//figure").empty());
}

// The pages of the samples, each in itself.
TEST(ReportPage, ShowsTheSamples) {
    for (const auto& entry : std::filesystem::directory_iterator(HALVANE_SAMPLES)) {
        const std::string file = entry.path().string();
        if (file.find(".pcap") == file.npos) continue;
        SCOPED_TRACE(file);
        const SurveyOfFiles survey = surveyFiles({file}, {.keepsHistory = true});
        const auto networks = survey.survey.networks();
        const ReportData data = reportData({.networks = networks,
                                            .files = {file},
                                            .captures = survey.captures,
                                            .all = networks.size()},
                                           {.details = ReportDetails::All});
        const std::string page = reportPage(data);
        expectSafe(page);
        const ParsedPage parsed(page);
        EXPECT_EQ(parsed.all("//tbody[@data-t]").size(), networks.size());
        EXPECT_EQ(textOf(parsed.all("//h1").at(0)),
                  std::to_string(networks.size()) +
                      (networks.size() == 1 ? " network in 1 capture" : " networks in 1 capture"));
    }
}

TEST(ReportPage, HasOctetsOfElementsAsAskedFor) {
    const std::string file = HALVANE_SAMPLES "/neighbourhood.pcap";
    const SurveyOfFiles survey = surveyFiles({file}, {});
    const auto networks = survey.survey.networks();
    const auto count = [&](ReportDetails details) {
        const ReportData data = reportData({.networks = networks,
                                            .files = {file},
                                            .captures = survey.captures,
                                            .all = networks.size()},
                                           {.details = details});
        return ParsedPage(reportPage(data)).all("//details[@class='els']").size();
    };
    EXPECT_EQ(count(ReportDetails::All), networks.size());
    EXPECT_EQ(count(ReportDetails::Auto), networks.size());
    EXPECT_EQ(count(ReportDetails::None), 0u);
    EXPECT_LT(count(ReportDetails::Own), networks.size());
    EXPECT_GT(count(ReportDetails::Own), 0u);
}

TEST(ReportPage, HasNoMoreOctetsOfElementsThanItsLimits) {
    const std::string file = HALVANE_SAMPLES "/neighbourhood.pcap";
    const SurveyOfFiles survey = surveyFiles({file}, {});
    const auto networks = survey.survey.networks();
    const auto page = [&](const ReportLimits& limits, ReportDetails details) {
        return ParsedPage(reportPage(reportData({.networks = networks,
                                                 .files = {file},
                                                 .captures = survey.captures,
                                                 .all = networks.size()},
                                                {.details = details}, limits)));
    };
    const auto octets = [&](const ReportLimits& limits, ReportDetails details) {
        return page(limits, details).all("//details[@class='els']").size();
    };
    ReportLimits few;
    few.withOctets = 2;
    ReportLimits small;
    small.octets = 300;
    EXPECT_EQ(octets(few, ReportDetails::Auto), 2u);
    EXPECT_EQ(octets(small, ReportDetails::Auto), 2u);
    EXPECT_EQ(octets(few, ReportDetails::All), networks.size());
    EXPECT_NE(textOf(page(few, ReportDetails::Auto).root())
                  .find("6 rows have no octets of elements; --details=all puts all there."),
              std::string::npos);

    ReportLimits narrow;
    narrow.rowOctets = 300;
    const ParsedPage parsed = page(narrow, ReportDetails::Auto);
    EXPECT_EQ(parsed.all("//tbody[@data-t]").size(), 2u);
    EXPECT_NE(textOf(parsed.root()).find("The table holds the strongest 2 networks of 8."),
              std::string::npos);
    expectSafe(reportPage(reportData({.networks = networks, .captures = {}}, {}, narrow)));
}

TEST(ReportPage, SaysWhatAFilterAndALimitLeft) {
    ReportMaker maker;
    maker.add({.name = "x", .signal = -40});
    ReportData data = maker.data();
    data.all = 12;
    data.letGo = 3;
    const std::string text = textOf(ParsedPage(reportPage(data)).root());
    EXPECT_NE(text.find("a filter shows 1 of 12 networks"), text.npos);
    EXPECT_NE(text.find("3 networks were forgotten"), text.npos);
}

}  // namespace
