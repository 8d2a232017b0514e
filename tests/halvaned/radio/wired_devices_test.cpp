#include "tools/halvaned/radio/wired_devices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <net/if_arp.h>
#include <optional>
#include <poll.h>
#include <utility>

#include "tests/support/private_network.h"
#include "tools/halvaned/radio/device_change.h"
#include "tools/halvaned/radio/link_events.h"

using halvane::testing::HeardInterface;
using halvane::testing::inPrivateNetwork;
using ::testing::IsEmpty;
using namespace halvane::hosting;

namespace {

using Kind = DeviceChange::Kind;

TEST(WiredDevices, AreTheNamedInterfacesThatAreThere) {
    inPrivateNetwork([] {
        const HeardInterface other("eth0", ARPHRD_ETHER), meant("eth1", ARPHRD_ETHER);
        auto links = LinkEvents::open();
        ASSERT_TRUE(links);
        WiredDevices devices(*std::move(links), {"eth2", "eth1", "lo"});
        EXPECT_TRUE(devices.isAvailable());
        EXPECT_EQ(devices.subsystem(), "wired");
        const auto started = devices.start();
        ASSERT_TRUE(started);
        ASSERT_EQ(started->changes.size(), 2U);
        EXPECT_EQ(started->changes[0].kind, Kind::Came);
        const DeviceInterface* const interface = devices.devices().find("eth1");
        ASSERT_NE(interface, nullptr);
        EXPECT_GT(interface->index, 0U);
        EXPECT_TRUE(interface->address);
        EXPECT_EQ(interface->radio, std::nullopt);
        EXPECT_EQ(devices.devices().find("lo")->address, std::nullopt);
        EXPECT_EQ(devices.devices().find("eth0"), nullptr);
        EXPECT_THAT(devices.devices().radios, IsEmpty());
        EXPECT_THAT(devices.update().changes, IsEmpty());
    });
}

TEST(WiredDevices, ComeAndGo) {
    inPrivateNetwork([] {
        auto links = LinkEvents::open();
        ASSERT_TRUE(links);
        WiredDevices devices(*std::move(links), {"eth1"});
        ASSERT_TRUE(devices.start());
        EXPECT_THAT(devices.devices().interfaces, IsEmpty());
        HeardInterface interface("eth1", ARPHRD_ETHER);
        pollfd polled{devices.descriptor(), POLLIN, 0};
        EXPECT_EQ(::poll(&polled, 1, 0), 1);
        const auto came = devices.update().changes;
        ASSERT_EQ(came.size(), 1U);
        EXPECT_EQ(came[0].kind, Kind::Came);
        EXPECT_EQ(came[0].interface, "eth1");
        interface.setUp(true);  // nothing that a list tells
        EXPECT_THAT(devices.update().changes, IsEmpty());
        interface.remove();
        const auto went = devices.update().changes;
        ASSERT_EQ(went.size(), 1U);
        EXPECT_EQ(went[0], (DeviceChange{Kind::Went, came[0].index, "eth1", ""}));
        EXPECT_THAT(devices.devices().interfaces, IsEmpty());
    });
}

}  // namespace
