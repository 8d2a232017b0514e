#include "tools/halvane/networks/network_groups.h"

#include <gtest/gtest.h>
#include <vector>

#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

class NetworkGroups : public ::testing::Test {
  protected:
    NetworkMaker maker_;
};

TEST_F(NetworkGroups, HaveOneName) {
    std::vector<Network> networks = {maker_.make({"a", 1, -70}), maker_.make({"b", 2}),
                                     maker_.make({"a", 3, -50}), maker_.make({"", 4}),
                                     maker_.make({"", 5}),       maker_.make({"b", 6})};
    networks[5].details.meshID = "b";
    const auto groups = groupsByName(networks);
    ASSERT_EQ(groups.size(), 4u);
    EXPECT_EQ(groups[0], (NetworkGroup{&networks[0], &networks[2]}));
    EXPECT_EQ(signalOf(groups[0]), -50);
    EXPECT_FALSE(signalOf(groups[1]));
    EXPECT_EQ(groups[2].size(), 2u);
}

// Who keeps a name secret, has none, or lost it to a cut adds no name.
TEST_F(NetworkGroups, CountNames) {
    std::vector<Network> networks = {maker_.make({"a", 1}), maker_.make({"a", 2}),
                                     maker_.make({"", 3}),  maker_.make({"", 4}),
                                     maker_.make({"", 5}),  maker_.make({"b", 6})};
    networks[3].profile.ssid.reset();
    networks[3].profile.isHidden = false;
    networks[4].profile.ssid.reset();
    networks[4].profile.isHidden = false;
    networks[4].profile.isCut = true;
    EXPECT_EQ(nameCount(networks), 2u);
    EXPECT_EQ(groupsByName(networks).size(), 5u);
    EXPECT_TRUE(isHidden(networks[2]));
    EXPECT_TRUE(isHidden(networks[3]));
    EXPECT_FALSE(isHidden(networks[4]));
    EXPECT_TRUE(isNameCutOff(networks[4]));
}

TEST_F(NetworkGroups, HaveOneRadio) {
    const std::vector<Network> networks = {maker_.make({"a", 0x10}), maker_.make({"b", 0x1F}),
                                           maker_.make({"c", 0x20}),
                                           maker_.make({"d", 0x11, -50, air::Band::Ghz2, 6}),
                                           maker_.make({"e", 0x12, -50, air::Band::Ghz5, 36})};
    const auto groups = groupsByRadio(networks);
    ASSERT_EQ(groups.size(), 4u);
    EXPECT_EQ(groups[0], (NetworkGroup{&networks[0], &networks[1]}));
}

TEST_F(NetworkGroups, HaveOneNameOfAnAccessPoint) {
    std::vector<Network> networks = {maker_.make({"a", 0x10}), maker_.make({"b", 0x80}),
                                     maker_.make({"c", 0x90, -50, air::Band::Ghz5, 36})};
    for (Network& network : networks) network.details.accessPoint = "AP#1";
    EXPECT_EQ(groupsByRadio(networks).size(), 2u);
    EXPECT_EQ(accessPointCount({&networks[0], &networks[1], &networks[2]}), 1u);
}

TEST_F(NetworkGroups, CountAccessPoints) {
    std::vector<Network> networks = {maker_.make({"a", 1}), maker_.make({"a", 2}),
                                     maker_.make({"a", 3}), maker_.make({"a", 4})};
    networks[1].statistics = networks[0].statistics;
    networks[2].profile.mld = air::MldProfile{.address = networks[2].bssid};
    networks[3].profile.mld = air::MldProfile{.address = networks[2].bssid};
    EXPECT_EQ(accessPointCount({&networks[0], &networks[1], &networks[2], &networks[3]}), 2u);
}

TEST_F(NetworkGroups, ListChannelsOnceAndRising) {
    const std::vector<Network> networks = {maker_.make({"a", 1, {}, air::Band::Ghz5, 100}),
                                           maker_.make({"a", 2, {}, air::Band::Ghz5, 36}),
                                           maker_.make({"a", 3, {}, air::Band::Ghz5, 36}),
                                           maker_.make({"a", 4})};
    const NetworkGroup group = {&networks[0], &networks[1], &networks[2], &networks[3]};
    EXPECT_EQ(channelsOf(group, air::Band::Ghz5), (std::vector<int>{36, 100}));
    EXPECT_TRUE(channelsOf(group, air::Band::Ghz6).empty());
}

}  // namespace
