#include "tools/halvane/networks/network_order.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

class NetworkOrderTest : public ::testing::Test {
  protected:
    std::string sorted(std::string_view keys, bool isReversed = false) {
        std::vector<Network> networks;
        networks.push_back(maker_.make({"beta", 1, -70, air::Band::Ghz5, 36}));
        networks.push_back(maker_.make({"Alpha", 2, std::nullopt, air::Band::Ghz2, 11}));
        networks.push_back(maker_.make({"gamma", 3, -40, air::Band::Ghz2, 6}));
        networks.push_back(maker_.make({"", 4, -40, air::Band::Ghz5, 149}));
        NetworkOrder order = defaultOrder();
        if (!keys.empty()) order.keys = *orderKeysOf(keys);
        order.isReversed = isReversed;
        sortNetworks(networks, order, asciiSurroundings());
        std::string text;
        for (const Network& network : networks) text += std::to_string(network.bssid.octets()[5]);
        return text;
    }

    NetworkMaker maker_;
};

TEST_F(NetworkOrderTest, BeginsWithTheStrongest) {
    EXPECT_EQ(sorted(""), "3412");
}

TEST_F(NetworkOrderTest, PutsWhatIsAbsentLastEitherWay) {
    EXPECT_EQ(sorted("signal"), "1342");
    EXPECT_EQ(sorted("-signal"), "3412");
    EXPECT_EQ(sorted("ssid"), "2134");
    EXPECT_EQ(sorted("-ssid"), "3124");
}

TEST_F(NetworkOrderTest, TakesSeveralKeys) {
    EXPECT_EQ(sorted("band,-channel"), "2341");
    EXPECT_EQ(sorted("band,channel"), "3214");
}

TEST_F(NetworkOrderTest, TurnsTheWholeOrder) {
    EXPECT_EQ(sorted("signal", true), "2431");
}

TEST_F(NetworkOrderTest, NamesTheColumnThatThereIsNot) {
    EXPECT_EQ(orderKeysOf("band,colour").error(), "colour");
    EXPECT_EQ(orderKeysOf("").error(), "");
    EXPECT_EQ(orderKeysOf("band,").error(), "");
    EXPECT_EQ(orderKeysOf("--band").error(), "-band");
}

TEST_F(NetworkOrderTest, SortsByEveryColumn) {
    for (const NetworkColumn& column : networkColumns()) {
        if (column.value == nullptr) continue;
        EXPECT_EQ(sorted(column.layout.name).size(), 4u) << column.layout.name;
    }
}

}  // namespace
