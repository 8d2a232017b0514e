#include "halvane/air/rsn_override.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

TEST(AirRsnOverride, IsAnRsn) {
    const auto body = bytesOf("0100 000FAC04 0100 000FAC04 0100 000FAC18 C000");
    const auto first = RsnOverride::decode(body);
    const auto second = RsnOverride2::decode(body);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(akmText((*first->rsn.akms)[0]), "SAE-EXT-KEY");
    EXPECT_EQ(first->rsn, second->rsn);
    EXPECT_EQ(first->rsn, Rsn::decode(body));
    EXPECT_FALSE(RsnOverride::decode(bytesOf("0100 000FAC04 0200 000FAC04")));
    EXPECT_FALSE(RsnOverride2::decode(bytesOf("01")));
}

}  // namespace
