#include "halvane/air/mesh_configuration.h"

#include <gtest/gtest.h>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

// 9.4.2.97: 5 peerings, connected to a gate; accepting, forwarding.
TEST(AirMeshConfiguration, DecodesEveryField) {
    const auto mesh = MeshConfiguration::decode(bytesOf("0101000101 0B 49 01"));
    ASSERT_TRUE(mesh);
    EXPECT_EQ(mesh->pathSelection, 1);
    EXPECT_EQ(mesh->metric, 1);
    EXPECT_EQ(mesh->congestionControl, 0);
    EXPECT_EQ(mesh->synchronization, 1);
    EXPECT_EQ(mesh->authentication, 1);
    EXPECT_TRUE(mesh->isConnectedToGate());
    EXPECT_EQ(mesh->peerings(), 5);
    EXPECT_FALSE(mesh->isConnectedToAuthenticationServer());
    EXPECT_TRUE(mesh->acceptsPeerings());
    EXPECT_FALSE(mesh->isMccaSupported() || mesh->isMccaEnabled());
    EXPECT_TRUE(mesh->isForwarding());
    EXPECT_FALSE(mesh->isMbcaEnabled() || mesh->isAdjustingTbtt());
    EXPECT_TRUE(mesh->isPowerSaving());
    EXPECT_EQ(mesh->rest, ByteBuffer({1}));
    EXPECT_FALSE(MeshConfiguration::decode(bytesOf("0101000101 0B")));
}

}  // namespace
