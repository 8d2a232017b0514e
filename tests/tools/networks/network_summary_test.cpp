#include "tools/halvane/networks/network_summary.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/finding.h"
#include "halvane/capture/beacon_frame.h"

#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

class NetworkSummary : public ::testing::Test {
  protected:
    NetworkMaker maker_;
    std::vector<Network> networks_ = {maker_.make({"a", 1, -50}),
                                      maker_.make({"", 2, -60, air::Band::Ghz5, 36}),
                                      maker_.make({"c", 3, -60, air::Band::Ghz2, 6})};
};

TEST_F(NetworkSummary, CountsNetworksByBand) {
    EXPECT_EQ(networksLine({.networks = networks_}),
              "3 networks: 2 on 2.4 GHz, 1 on 5 GHz; 1 hidden");
    EXPECT_EQ(networksLine({.networks = {networks_.data(), 1}}), "1 network: 1 on 2.4 GHz");
    EXPECT_EQ(networksLine({.networks = {networks_.data(), 1}, .all = 3}),
              "1 of 3 networks: 1 on 2.4 GHz");
    EXPECT_EQ(networksLine({.networks = {}}), "no networks");
    EXPECT_EQ(networksLine({.networks = {networks_.data(), 1}, .letGo = 1204, .most = 65536}),
              "1 network: 1 on 2.4 GHz; 1204 let go (--max-networks=65536)");
}

TEST_F(NetworkSummary, CountsNetworksOfNoKnownBand) {
    networks_[0].profile.channel.band.reset();
    EXPECT_EQ(networksLine({.networks = networks_}),
              "3 networks: 1 on 2.4 GHz, 1 on 5 GHz, 1 on no known band; 1 hidden");
    EXPECT_EQ(networksLine({.networks = {networks_.data(), 1}}), "1 network: 1 on no known band");
}

TEST_F(NetworkSummary, CountsNamesAndRadios) {
    EXPECT_EQ(networksLine({.networks = networks_, .grouping = Grouping::Name}),
              "3 networks of 2 names: 2 on 2.4 GHz, 1 on 5 GHz; 1 hidden");
    networks_.push_back(maker_.make({"twin", 4, -50}));
    EXPECT_EQ(networksLine({.networks = networks_, .grouping = Grouping::Radio}),
              "3 radios with 4 networks: 2 on 2.4 GHz, 1 on 5 GHz; 1 hidden");
}

TEST_F(NetworkSummary, CountsFindingsBySeverity) {
    EXPECT_EQ(findingsLine(networks_), "");
    networks_[0].profile.findings = {{air::findingInfo("wps-on")->kind, {}}};
    networks_[1].profile.findings = {{air::findingInfo("pmf-missing")->kind, {}},
                                     {air::findingInfo("wps-on")->kind, {}}};
    EXPECT_EQ(findingsLine(networks_), "1 error, 2 warnings (--findings)");
    EXPECT_EQ(findingsLine(networks_, air::Severity::Error), "1 error, 2 warnings (--findings)");
}

TEST_F(NetworkSummary, SaysThatNothingIsAsBadAsWasAskedFor) {
    EXPECT_EQ(findingsLine({}, air::Severity::Error), "");
    EXPECT_EQ(findingsLine(networks_, air::Severity::Note), "no findings");
    EXPECT_EQ(findingsLine(networks_, air::Severity::Warning), "no errors or warnings found");
    networks_[0].profile.findings = {{air::findingInfo("wps-on")->kind, {}}};
    EXPECT_EQ(findingsLine(networks_, air::Severity::Error),
              "no errors found; 1 warning (--findings)");
}

TEST_F(NetworkSummary, CountsFrames) {
    CaptureSummary frames;
    EXPECT_EQ(framesLine(frames, 0, std::nullopt), "0 frames");
    frames.frames = 10;
    frames.beacons = 4;
    frames.probeResponses = 1;
    const auto skipped = [&](capture::SkipReason reason) -> std::uint64_t& {
        return frames.skipped[static_cast<std::size_t>(reason)];
    };
    skipped(capture::SkipReason::OtherFrame) = 1;
    skipped(capture::SkipReason::Fragment) = 1;
    skipped(capture::SkipReason::Encrypted) = 1;
    skipped(capture::SkipReason::Short) = 1;
    skipped(capture::SkipReason::Damaged) = 1;
    EXPECT_EQ(framesLine(frames, 0, 5'849'000'000),
              "10 frames in 5.8 s: 4 beacons, 1 probe response, 3 others, 2 damaged");
    // These are beacons and probe responses, which are counted already.
    EXPECT_EQ(framesLine(frames, 1, std::nullopt),
              "10 frames: 4 beacons, 1 probe response, 3 others, 2 damaged; 1 is cut");
    EXPECT_TRUE(framesLine(frames, 2, std::nullopt).ends_with("; 2 are cut"));
}

TEST_F(NetworkSummary, TellsWhatEachFilterLetsThrough) {
    NetworkFilter filter;
    filter.add("--ssid", "x*", [](const Network&) { return false; });
    filter.add("--band", "5", [](const Network& network) {
        return network.profile.channel.band->value == air::Band::Ghz5;
    });
    EXPECT_EQ(emptyFilterLines(filter, networks_),
              (std::vector<std::string>{"no network of 3 passes the filter",
                                        "  --ssid='x*' alone lets none through",
                                        "  --band=5    alone lets 1 through"}));
}

TEST_F(NetworkSummary, SuggestsWhatAFilterMeant) {
    networks_.push_back(maker_.make({"KITRI_BoB", 4}));
    NetworkFilter filter;
    filter.add("--ssid", "kitri_bob", [](const Network&) { return false; });
    EXPECT_EQ(emptyFilterLines(filter, networks_),
              (std::vector<std::string>{
                  "no network of 4 passes the filter",
                  "  --ssid=kitri_bob alone lets none through; did you mean 'KITRI_BoB' (1)?"}));
    NetworkFilter passing;
    passing.add("--ssid", "kitri_bob", [](const Network&) { return true; });
    EXPECT_EQ(emptyFilterLines(passing, networks_)[1], "  --ssid=kitri_bob alone lets 4 through");
}

TEST_F(NetworkSummary, BreaksLinesBehindCommas) {
    const std::string line = "3 networks: 2 on 2.4 GHz, 1 on 5 GHz; 1 hidden";
    EXPECT_EQ(brokenLine(line, std::nullopt), line);
    EXPECT_EQ(brokenLine(line, line.size()), line);
    EXPECT_EQ(brokenLine(line, 40), "3 networks: 2 on 2.4 GHz, 1 on 5 GHz;\n  1 hidden");
    EXPECT_EQ(brokenLine(line, 30), "3 networks: 2 on 2.4 GHz,\n  1 on 5 GHz; 1 hidden");
    EXPECT_EQ(brokenLine(line, 1), "3 networks: 2 on 2.4 GHz,\n  1 on 5 GHz;\n  1 hidden");
    EXPECT_EQ(brokenLine("without any sign", 3), "without any sign");
    EXPECT_EQ(brokenLine("ends so,", 3), "ends so,");
}

}  // namespace
