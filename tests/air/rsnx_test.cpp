#include "halvane/air/rsnx.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.241: the four lowest bits are the length minus 1.
TEST(AirRsnx, NamesTheCapabilities) {
    const auto rsnx = Rsnx::decode(bytesOf("3101"));
    ASSERT_TRUE(rsnx);
    EXPECT_TRUE(rsnx->has(RsnxCapability::ProtectedTwt));
    EXPECT_TRUE(rsnx->has(RsnxCapability::SaeHashToElement));
    EXPECT_FALSE(rsnx->has(RsnxCapability::SaePk));
    EXPECT_TRUE(rsnx->has(RsnxCapability::SecureLtf));
    EXPECT_FALSE(rsnx->has(RsnxCapability::SsidProtection));
}

TEST(AirRsnx, HasNoCapabilityPastItsLength) {
    const auto rsnx = Rsnx::decode(bytesOf("20FF"));
    ASSERT_TRUE(rsnx);
    EXPECT_TRUE(rsnx->has(RsnxCapability::SaeHashToElement));
    EXPECT_FALSE(rsnx->has(RsnxCapability::SecureLtf));
    EXPECT_EQ(rsnx->rest, ByteBuffer({0xFF}));
    EXPECT_FALSE(Rsnx::decode(bytesOf("21")));
    EXPECT_FALSE(Rsnx::decode({}));
}

TEST(AirRsnx, GrowsWithItsCapabilities) {
    Rsnx rsnx;
    EXPECT_EQ(rsnx.encode(), bytesOf("00"));
    rsnx.setCapability(RsnxCapability::SaeHashToElement);
    EXPECT_EQ(rsnx.encode(), bytesOf("20"));
    rsnx.setCapability(RsnxCapability::SsidProtection);
    EXPECT_EQ(rsnx.encode(), bytesOf("220020"));
    rsnx.setCapability(RsnxCapability::SaePk);
    EXPECT_EQ(rsnx.encode(), bytesOf("620020"));
}

TEST(AirRsnx, IsTheBodyOfItsOverride) {
    const auto override = RsnxOverride::decode(bytesOf("6099"));
    ASSERT_TRUE(override);
    EXPECT_TRUE(override->rsnx.has(RsnxCapability::SaePk));
    EXPECT_EQ(override->rsnx.rest, ByteBuffer({0x99}));
}

}  // namespace
