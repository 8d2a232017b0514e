#include "tools/halvane/output/network_name.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "halvane/air/bss_profile.h"
#include "halvane/base/ssid.h"

#include "tests/tools/networks/networks_for_tests.h"

using namespace halvane;
using namespace halvane::tool;
using halvane::testing::derived;

namespace {

std::string shownNameOf(std::string_view name) {
    air::BssProfile profile;
    profile.ssid = derived(Ssid::fromText(name).value_or(Ssid()));
    return networkName(profile, {}).octets();
}

TEST(NetworkName, IsTheNameAsItIsShown) {
    EXPECT_EQ(shownNameOf("home"), "home");
    EXPECT_EQ(shownNameOf(""), "(hidden)");
    EXPECT_EQ(shownNameOf("a\x1B[2J"), "a\\x1B[2J");
    EXPECT_EQ(shownNameOf("(hidden)"), "\"(hidden)\"");
}

TEST(NetworkName, TellsThatThereIsNone) {
    EXPECT_EQ(networkName(air::BssProfile(), {}).octets(), "(no name)");
    air::BssProfile cut;
    cut.isCut = true;
    EXPECT_EQ(networkName(cut, {}).octets(), "(cut)");
}

}  // namespace
