#include "tools/halvane/input/scan_messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace halvane::tool;

namespace {

const std::vector<WirelessInterface> kInterfaces = {{"wlan0", 3, InterfaceMode::Managed},
                                                    {"wlan1", 4, InterfaceMode::AP}};
const std::string kThereAre = "there are: wlan0 (managed), wlan1 (AP)";

ScanFault fault(ScanProblem problem, const std::string& interface = "wlan1") {
    return {.problem = problem, .interface = interface};
}

std::vector<std::string> adviceOn(ScanProblem problem) {
    return advice(fault(problem), kInterfaces);
}

TEST(ScanMessages, TellWhatIsWrong) {
    EXPECT_EQ(headline(fault(ScanProblem::NoNl80211)), "this kernel has no Wi-Fi (nl80211)");
    EXPECT_EQ(headline(fault(ScanProblem::NoWirelessInterface, "")),
              "this machine has no Wi-Fi interface");
    EXPECT_EQ(headline(fault(ScanProblem::NoSuchInterface)), "no interface 'wlan1'");
    EXPECT_EQ(headline(fault(ScanProblem::NotWireless)), "wlan1: is no Wi-Fi interface");
    EXPECT_EQ(headline(fault(ScanProblem::NotPermitted)), "wlan1: not permitted to scan");
    EXPECT_EQ(headline(fault(ScanProblem::Busy)), "wlan1: another scan is under way");
    EXPECT_EQ(headline(fault(ScanProblem::Down)), "wlan1: is down");
    EXPECT_EQ(headline(fault(ScanProblem::NotSupported)), "wlan1: cannot scan in its mode");
    EXPECT_EQ(headline(fault(ScanProblem::Aborted)), "wlan1: the scan was broken off");
    EXPECT_EQ(headline(fault(ScanProblem::TimedOut)), "wlan1: the scan did not end in time");
    EXPECT_EQ(headline(fault(ScanProblem::Interrupted)), "wlan1: the scan was interrupted");
    EXPECT_EQ(headline({.interface = "wlan1", .text = "no reason"}),
              "wlan1: cannot scan: no reason");
    EXPECT_EQ(headline({.text = "no reason"}), "cannot scan: no reason");
}

TEST(ScanMessages, TellWhatToDo) {
    EXPECT_THAT(adviceOn(ScanProblem::NoNl80211),
                ElementsAre("captures of other machines: halvane decode FILE"));
    EXPECT_THAT(adviceOn(ScanProblem::NoSuchInterface), ElementsAre(kThereAre));
    EXPECT_THAT(adviceOn(ScanProblem::NotWireless), ElementsAre(kThereAre));
    EXPECT_THAT(adviceOn(ScanProblem::NotPermitted),
                ElementsAre("sudo halvane scan --trigger wlan1",
                            "or, the list that the kernel has: halvane scan wlan1"));
    EXPECT_THAT(adviceOn(ScanProblem::Busy),
                ElementsAre("the list that the kernel has: halvane scan wlan1"));
    EXPECT_THAT(adviceOn(ScanProblem::Down), ElementsAre("sudo ip link set wlan1 up"));
    EXPECT_THAT(adviceOn(ScanProblem::NotSupported),
                ElementsAre("it is in AP mode: sudo iw dev wlan1 set type managed"));
    EXPECT_THAT(adviceOn(ScanProblem::Interrupted), IsEmpty());
    EXPECT_THAT(adviceOn(ScanProblem::Other), IsEmpty());
}

}  // namespace
