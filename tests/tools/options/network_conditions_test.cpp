#include "tools/halvane/options/network_conditions.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/channel.h"
#include "halvane/air/finding.h"
#include "halvane/air/generation.h"
#include "halvane/air/security.h"

#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

class NetworkConditions : public ::testing::Test {
  protected:
    // Whether the condition that `text` makes holds; false if it makes none.
    bool holds(ConditionReader read, std::string_view text) {
        const auto condition = read(text);
        EXPECT_TRUE(condition) << text;
        return condition && (*condition)(network_);
    }

    NetworkMaker maker_;
    Network network_ = maker_.make({"home", 0x2A, -60, air::Band::Ghz5, 36});
};

TEST_F(NetworkConditions, ReadAddressesWithMasks) {
    for (const char* text :
         {"02:00:00:00:00:2a", "02-00-00-00-00-2A", "02000000002a", "02:00:00:00:00:00/40",
          "02:00:00:00:00:20/ff:ff:ff:ff:ff:f0", "ff:ff:ff:ff:ff:ff/0", "02:00:00:00:00:2a/48"}) {
        EXPECT_TRUE(holds(bssidCondition, text)) << text;
    }
    EXPECT_FALSE(holds(bssidCondition, "02:00:00:00:00:2b"));
    EXPECT_FALSE(holds(bssidCondition, "02:00:00:00:01:00/40"));
    for (const char* text : {"", "02:00", "02:00:00:00:00:2a/", "02:00:00:00:00:2a/49",
                             "02:00:00:00:00:2a/-1", "02:00:00:00:00:2a/8/8", "/8"}) {
        EXPECT_FALSE(bssidCondition(text)) << text;
    }
}

TEST_F(NetworkConditions, ReadNames) {
    EXPECT_TRUE(holds(ssidCondition, "home"));
    EXPECT_TRUE(holds(ssidCondition, "h*"));
    EXPECT_FALSE(holds(ssidCondition, "Home"));
    network_ = maker_.make({"a\xFF\\*"});
    EXPECT_TRUE(holds(ssidCondition, "a\\xFF\\\\*")) << "as it is shown";
    EXPECT_TRUE(holds(ssidCondition, "a\xFF\\\\\\*"));
    network_ = maker_.make({"a\\\\b"});
    EXPECT_TRUE(holds(ssidCondition, "a\\\\b")) << "its octets";
    EXPECT_TRUE(holds(ssidCondition, "a\\\\\\\\b")) << "as it is shown";
    network_.details.meshID = "mesh";
    EXPECT_TRUE(holds(ssidCondition, "mesh"));
}

TEST_F(NetworkConditions, ReadBandsAndChannels) {
    EXPECT_TRUE(holds(bandCondition, "5"));
    EXPECT_FALSE(holds(bandCondition, "2.4"));
    EXPECT_FALSE(bandCondition("2"));
    EXPECT_FALSE(bandCondition(""));
    EXPECT_TRUE(holds(channelCondition, "36"));
    EXPECT_FALSE(holds(channelCondition, "40"));
    EXPECT_FALSE(channelCondition("0"));
    EXPECT_FALSE(channelCondition("256"));
    network_.profile.channel.band.reset();
    network_.profile.channel.primaryChannel.reset();
    EXPECT_FALSE(holds(bandCondition, "5"));
    EXPECT_FALSE(holds(channelCondition, "36"));
}

std::vector<std::string> securitiesFor(std::string_view word) {
    NetworkMaker maker;
    const auto condition = securityCondition(word);
    std::vector<std::string> names;
    for (int i = 0; condition && i <= static_cast<int>(air::Security::Broken); ++i) {
        const auto security = static_cast<air::Security>(i);
        const Network network = maker.make({.name = "net", .security = security});
        if ((*condition)(network)) names.emplace_back(air::securityName(security));
    }
    return names;
}

TEST_F(NetworkConditions, ReadSecurityByNameAndKind) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(securitiesFor("open"), Names{"Open"});
    EXPECT_EQ(securitiesFor("OWE"), Names{"Enhanced Open"});
    EXPECT_EQ(securitiesFor("Enhanced Open transition"), Names{"Enhanced Open transition"});
    EXPECT_EQ(securitiesFor("WPA3-192"), Names{"WPA3-Enterprise 192-bit"});
    EXPECT_EQ(securitiesFor("wpa"), (Names{"WPA-Personal", "WPA/WPA2-Personal", "WPA-Enterprise",
                                           "WPA/WPA2-Enterprise"}));
    EXPECT_EQ(securitiesFor("WPA3"),
              (Names{"WPA2/WPA3-Personal", "WPA3-Personal", "WPA2/WPA3-Enterprise",
                     "WPA3-Enterprise", "WPA3-Enterprise 192-bit"}));
    EXPECT_EQ(securitiesFor("WPA2").size(), 6u);
    EXPECT_EQ(securitiesFor("enterprise").size(), 6u);
    EXPECT_EQ(securitiesFor("Personal").size(), 5u);
    EXPECT_FALSE(securityCondition("strong"));
    EXPECT_FALSE(securityCondition(""));
}

TEST_F(NetworkConditions, ReadGenerations) {
    network_.profile.generation.value = air::Generation::WiFi6;
    EXPECT_TRUE(holds(generationCondition, "6"));
    EXPECT_FALSE(holds(generationCondition, "6E"));
    EXPECT_TRUE(holds(generationCondition, "5+"));
    EXPECT_TRUE(holds(generationCondition, "6+"));
    EXPECT_FALSE(holds(generationCondition, "6e+"));
    network_.profile.channel.band = derived(air::Band::Ghz6);
    EXPECT_TRUE(holds(generationCondition, "6e"));
    EXPECT_TRUE(holds(generationCondition, "6+"));
    network_.profile.generation.value = air::Generation::Legacy;
    EXPECT_TRUE(holds(generationCondition, "b"));
    EXPECT_FALSE(holds(generationCondition, "4+"));
    for (const char* text : {"", "+", "3", "8", "b+", "66"}) {
        EXPECT_FALSE(generationCondition(text)) << text;
    }
}

TEST_F(NetworkConditions, ReadSignals) {
    EXPECT_TRUE(holds(signalCondition, "-60"));
    EXPECT_TRUE(holds(signalCondition, "-70dBm"));
    EXPECT_FALSE(holds(signalCondition, "-59"));
    EXPECT_FALSE(signalCondition(""));
    EXPECT_FALSE(signalCondition("-6x"));
    EXPECT_FALSE(signalCondition("60"));
    EXPECT_TRUE(signalCondition("0"));
    network_ = maker_.make({"untold"});
    EXPECT_FALSE(holds(signalCondition, "-127"));
}

TEST_F(NetworkConditions, ReadSeverities) {
    EXPECT_EQ(severityNamed("warning"), air::Severity::Warning);
    EXPECT_FALSE(severityNamed("Warning"));
    EXPECT_FALSE(findingsCondition(air::Severity::Note)(network_));
    network_.profile.findings.push_back({air::findingInfo("wps-on")->kind, {}});
    EXPECT_TRUE(findingsCondition(air::Severity::Note)(network_));
    EXPECT_TRUE(findingsCondition(air::Severity::Warning)(network_));
    EXPECT_FALSE(findingsCondition(air::Severity::Error)(network_));
}

TEST_F(NetworkConditions, KnowHiddenNetworks) {
    EXPECT_FALSE(hiddenCondition()(network_));
    network_ = maker_.make({""});
    EXPECT_TRUE(hiddenCondition()(network_));
    network_.details.meshID = "mesh";
    EXPECT_FALSE(hiddenCondition()(network_));
}

}  // namespace
