#include "halvane/air/p2p.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "tests/air/element_samples.h"

using halvane::ByteBuffer;
using halvane::testing::bytesOf;
using namespace halvane::air;

namespace {

constexpr std::string_view kInfo =
    "0D 2200 020000000002 0188 0006 0050F204 0001 01 0001 0050F204 0001 1011 0005 68656C6C6F";

TEST(AirP2p, TellsItsCapabilityAndDevice) {
    const auto p2p = P2p::decode(bytesOf(std::string("02 0200 2541 ") + std::string(kInfo)));
    ASSERT_TRUE(p2p);
    EXPECT_TRUE(p2p->has(P2pCapability::ServiceDiscovery));
    EXPECT_FALSE(p2p->has(P2pCapability::ClientDiscoverability));
    EXPECT_TRUE(p2p->has(P2pCapability::InvitationProcedure));
    EXPECT_TRUE(p2p->has(P2pCapability::GroupOwner));
    EXPECT_FALSE(p2p->has(P2pCapability::PersistentGroup));
    EXPECT_TRUE(p2p->has(P2pCapability::GroupFormation));
    const auto info = p2p->deviceInfo();
    ASSERT_TRUE(info);
    EXPECT_EQ(info->address.text(), "02:00:00:00:00:02");
    EXPECT_EQ(info->configMethods, 0x0188);
    EXPECT_EQ(info->primaryDeviceType[1], 6);
    EXPECT_EQ(info->secondaryDeviceTypes.size(), 1u);
    EXPECT_EQ(info->name, ByteBuffer::fromText("hello"));
    EXPECT_EQ(p2p->deviceAddress(), info->address);
}

TEST(AirP2p, LacksWhatIsNotThere) {
    const auto id = P2p::decode(bytesOf("03 0600 020000000001"));
    ASSERT_TRUE(id);
    EXPECT_EQ(id->deviceAddress().value().text(), "02:00:00:00:00:01");
    EXPECT_FALSE(id->deviceInfo() || id->has(P2pCapability::GroupOwner));
    EXPECT_FALSE(P2p::decode({})->deviceAddress());
    const auto cut = P2p::decode(bytesOf("0D 0700 020000000002 01"));
    ASSERT_TRUE(cut);
    EXPECT_FALSE(cut->deviceInfo());
    EXPECT_FALSE(P2p::decode(bytesOf("02 0300 2541")));
}

}  // namespace
