#include "tools/halvane/options/watch_filter.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/air/channel.h"

#include "tests/tools/networks/networks_for_tests.h"
#include "tools/halvane/networks/network_filter.h"
#include "tools/halvane/networks/watch_choices.h"
#include "tools/halvane/options/network_conditions.h"
#include "tools/halvane/survey/network.h"

using namespace halvane;
using namespace halvane::testing;
using namespace halvane::tool;

namespace {

class WatchFilter : public ::testing::Test {
  protected:
    // The names of those that pass.
    static std::string passing(const NetworkFilter& filter) {
        NetworkMaker maker;
        std::string names;
        for (const MadeNetwork& made :
             {MadeNetwork{"alpha", 0x1A}, MadeNetwork{"beta", 0x1B}, MadeNetwork{"Alpha 2", 0x2A},
              MadeNetwork{"al*", 3, -50, air::Band::Ghz5, 36}}) {
            const Network network = maker.make(made);
            if (filter.passes(network)) names += std::string(made.name) + ';';
        }
        return names;
    }

    static std::string passing(std::u32string_view typed) {
        return passing(watchFilter({}, {.filter = std::u32string(typed)}));
    }
};

TEST_F(WatchFilter, LetsAllPassBeforeAnythingIsTyped) {
    EXPECT_TRUE(watchFilter({}, {}).isEmpty());
}

TEST_F(WatchFilter, TakesTheBeginningOfAName) {
    EXPECT_EQ(passing(U"a"), "alpha;al*;");
    EXPECT_EQ(passing(U"alp"), "alpha;");
    EXPECT_EQ(passing(U"Alpha 2"), "Alpha 2;");
    EXPECT_EQ(passing(U"lpha"), "");
}

TEST_F(WatchFilter, TakesWildcards) {
    EXPECT_EQ(passing(U"*ph"), "alpha;Alpha 2;");
    EXPECT_EQ(passing(U"?lpha"), "alpha;Alpha 2;");
    EXPECT_EQ(passing(U"al\\*"), "al*;");
    EXPECT_EQ(passing(U"al\\"), "al*;");  // on its way to the same
}

TEST_F(WatchFilter, TakesAddressesOfAnyCaseWithAMaskAndTheirBeginnings) {
    EXPECT_EQ(passing(U"02:00:00:00:00:1a"), "alpha;");
    EXPECT_EQ(passing(U"02:00:00:00:00:1A/44"), "alpha;beta;");
    EXPECT_EQ(passing(U"02:00:00:00:00:1"), "alpha;beta;");
    EXPECT_EQ(passing(U"02"), "alpha;beta;Alpha 2;al*;");
    EXPECT_EQ(passing(U"03"), "");
}

TEST_F(WatchFilter, GoesOnTopOfTheOptions) {
    NetworkFilter options;
    options.add("--ssid", "alpha", *ssidCondition("alpha"));
    options.add("--ssid", "beta", *ssidCondition("beta"));
    EXPECT_EQ(passing(watchFilter(options, {.filter = U"a"})), "alpha;");
    EXPECT_EQ(passing(watchFilter(options, {.band = air::Band::Ghz2})), "alpha;beta;");
    EXPECT_EQ(passing(watchFilter(options, {.band = air::Band::Ghz5})), "");
    EXPECT_EQ(passing(watchFilter({}, {.band = air::Band::Ghz5})), "al*;");
}

}  // namespace
