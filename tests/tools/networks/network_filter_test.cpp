#include "tools/halvane/networks/network_filter.h"

#include <gtest/gtest.h>
#include <vector>

#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

NetworkCondition named(const char* name) {
    return [name](const Network& network) { return nameOf(network) == name; };
}

NetworkCondition strong() {
    return [](const Network& network) {
        return network.statistics->signal.median().value_or(-100) > -60;
    };
}

class NetworkFilterTest : public ::testing::Test {
  protected:
    NetworkMaker maker_;
    const std::vector<Network> networks_ = {maker_.make({"a", 1, -50}), maker_.make({"b", 2, -80}),
                                            maker_.make({"c", 3, -50})};
};

TEST_F(NetworkFilterTest, LetsAllThroughWithoutConditions) {
    const NetworkFilter filter;
    EXPECT_TRUE(filter.isEmpty());
    EXPECT_TRUE(filter.passes(networks_[1]));
    EXPECT_TRUE(filter.mayPass(networks_[1].bssid));
}

TEST_F(NetworkFilterTest, TakesConditionsOfOneOptionAsAlternatives) {
    NetworkFilter filter;
    filter.add("--ssid", "a", named("a"));
    filter.add("--ssid", "b", named("b"));
    filter.add("--strong", {}, strong());
    EXPECT_FALSE(filter.isEmpty());
    EXPECT_TRUE(filter.passes(networks_[0]));
    EXPECT_FALSE(filter.passes(networks_[1]));
    EXPECT_FALSE(filter.passes(networks_[2]));
}

TEST_F(NetworkFilterTest, CountsWhatEachOptionLetsThrough) {
    NetworkFilter filter;
    filter.add("--ssid", "a*", named("a"));
    filter.add("--ssid", "b", named("b"));
    filter.add("--strong", {}, strong());
    const auto shares = filter.sharesOf(networks_);
    ASSERT_EQ(shares.size(), 2u);
    EXPECT_EQ(shares[0].typed, "--ssid='a*' --ssid=b");
    EXPECT_EQ(shares[0].count, 2u);
    EXPECT_EQ(shares[1].typed, "--strong");
    EXPECT_EQ(shares[1].count, 2u);
}

TEST_F(NetworkFilterTest, TellsByTheAddressAlone) {
    NetworkFilter filter;
    filter.add("--ssid", "nobody", named("nobody"));
    EXPECT_TRUE(filter.mayPass(networks_[0].bssid));
    filter.add(
        "--bssid", "1",
        [this](const Network& network) { return network.bssid == networks_[0].bssid; },
        NetworkFilter::Subject::Address);
    EXPECT_TRUE(filter.mayPass(networks_[0].bssid));
    EXPECT_FALSE(filter.mayPass(networks_[1].bssid));
}

}  // namespace
