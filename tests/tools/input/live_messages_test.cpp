#include "tools/halvane/input/live_messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace halvane::tool;

namespace {

const std::vector<WirelessInterface> kInterfaces = {{"wlan0", 3, InterfaceMode::Managed},
                                                    {"wlan1mon", 4, InterfaceMode::Monitor}};

std::vector<std::string> adviceOn(const LiveFault& fault) {
    return advice(fault, kInterfaces, "/opt/halvane");
}

TEST(LiveMessages, AnInterfaceThatThereIsNot) {
    const LiveFault fault{.problem = LiveProblem::NoSuchInterface, .interface = "wlan7"};
    EXPECT_EQ(headline(fault), "no interface 'wlan7'");
    EXPECT_THAT(adviceOn(fault), ElementsAre("there are: wlan0 (managed), wlan1mon (monitor)"));
    EXPECT_THAT(advice(fault, {}, ""), ElementsAre("there is no Wi-Fi interface"));
}

TEST(LiveMessages, MissingRights) {
    const LiveFault fault{.problem = LiveProblem::NotPermitted, .interface = "wlan1"};
    EXPECT_EQ(headline(fault), "wlan1: not permitted to capture");
    EXPECT_THAT(
        adviceOn(fault),
        ElementsAre("sudo halvane watch wlan1",
                    "or once and for all: sudo setcap cap_net_raw,cap_net_admin=ep /opt/halvane"));
}

TEST(LiveMessages, AnotherMode) {
    const LiveFault fault{.problem = LiveProblem::NotMonitor, .interface = "wlan0", .linkType = 1};
    EXPECT_EQ(headline(fault, kInterfaces),
              "wlan0: is in managed mode and hears its own network alone");
    EXPECT_THAT(
        adviceOn(fault),
        ElementsAre("sudo ip link set wlan0 down && sudo iw dev wlan0 set type monitor &&",
                    "sudo ip link set wlan0 up", "or, without monitor mode: halvane scan wlan0"));
}

TEST(LiveMessages, AnInterfaceOfAnotherKind) {
    const LiveFault fault{.problem = LiveProblem::NotMonitor, .interface = "eth0", .linkType = 1};
    EXPECT_EQ(headline(fault, kInterfaces),
              "eth0: its frames are not 802.11, but of link type EN10MB (Ethernet)");
    EXPECT_THAT(adviceOn(fault), ElementsAre("there are: wlan0 (managed), wlan1mon (monitor)"));
}

TEST(LiveMessages, AnInterfaceThatIsDown) {
    const LiveFault fault{.problem = LiveProblem::Down, .interface = "wlan1"};
    EXPECT_EQ(headline(fault), "wlan1: is down");
    EXPECT_THAT(adviceOn(fault), ElementsAre("sudo ip link set wlan1 up"));
}

TEST(LiveMessages, EndsOfACapture) {
    const LiveFault gone{.problem = LiveProblem::WentAway, .interface = "wlan1"};
    EXPECT_EQ(headline(gone), "wlan1: went away while it was listened to");
    EXPECT_THAT(adviceOn(gone), IsEmpty());
    const LiveFault left{.problem = LiveProblem::LeftMonitor, .interface = "wlan1"};
    EXPECT_EQ(headline(left), "wlan1: left monitor mode while it was listened to");
    EXPECT_EQ(adviceOn(left).size(), 3U);
    const LiveFault other{.interface = "wlan1", .text = "no reason"};
    EXPECT_EQ(headline(other), "wlan1: cannot be listened to: no reason");
    EXPECT_THAT(adviceOn(other), IsEmpty());
}

}  // namespace
