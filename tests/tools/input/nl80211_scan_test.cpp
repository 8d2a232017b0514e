#include "tools/halvane/input/nl80211_scan.h"

#include <cerrno>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "halvane/base/mac_address.h"
#include "halvane/base/result.h"

#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"
#include "tests/support/scripted_nl80211.h"

using halvane::MacAddress;
using halvane::Unexpected;
using halvane::testing::Bytes;
using halvane::testing::NetlinkMessage;
using halvane::testing::ScriptedNl80211;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using namespace halvane::tool;

namespace {

using Clock = Nl80211Channel::Clock;

const WirelessInterface kManaged = {"wlan0", 5, InterfaceMode::Managed};
const WirelessInterface kMonitor = {"mon0", 2, InterfaceMode::Monitor};

Bytes networkMessage(std::uint8_t last) {
    NetlinkMessage message(NL80211_CMD_NEW_SCAN_RESULTS);
    message.addU32(NL80211_ATTR_IFINDEX, 5).begin(NL80211_ATTR_BSS);
    return message.add(NL80211_BSS_BSSID, {0x02, 0, 0, 0, 0, last}).end().bytes();
}

Bytes eventMessage(std::uint8_t command, std::uint32_t interface = 5) {
    return NetlinkMessage(command).addU32(NL80211_ATTR_IFINDEX, interface).bytes();
}

Nl80211Answer answer(std::vector<Bytes> messages, bool isInterrupted = false) {
    return {std::move(messages), isInterrupted};
}

std::vector<MacAddress> addressesOf(const ScanList& list) {
    std::vector<MacAddress> addresses;
    for (const ScannedNetwork& network : list.networks) addresses.push_back(network.bssid);
    return addresses;
}

MacAddress address(std::uint8_t last) {
    return MacAddress({0x02, 0, 0, 0, 0, last});
}

TEST(ChooseScanInterface, TakesAManagedOneFirst) {
    const std::vector<WirelessInterface> both = {kMonitor, kManaged};
    EXPECT_EQ(chooseScanInterface(both, std::nullopt)->name, "wlan0");
    EXPECT_EQ(chooseScanInterface(std::span(both).first(1), std::nullopt)->name, "mon0");
    EXPECT_EQ(chooseScanInterface(both, "mon0")->name, "mon0");
}

TEST(ChooseScanInterface, TellsWhyThereIsNone) {
    EXPECT_EQ(chooseScanInterface({}, std::nullopt).error(),
              ScanFault{.problem = ScanProblem::NoWirelessInterface});
    EXPECT_EQ(chooseScanInterface({}, "halvane-none").error(),
              (ScanFault{.problem = ScanProblem::NoSuchInterface, .interface = "halvane-none"}));
    EXPECT_EQ(chooseScanInterface({}, "lo").error(),
              (ScanFault{.problem = ScanProblem::NotWireless, .interface = "lo"}));
}

TEST(ScanListOfTheKernel, HasItsNetworksInOrder) {
    ScriptedNl80211 kernel;
    kernel.answers.emplace_back(answer({networkMessage(2), networkMessage(1)}));
    const auto list = scanList(kernel, kManaged);
    ASSERT_TRUE(list);
    EXPECT_THAT(addressesOf(*list), ElementsAre(address(2), address(1)));
    EXPECT_EQ(list->unreadable, 0U);

    ASSERT_THAT(kernel.asked, SizeIs(1));
    EXPECT_EQ(kernel.asked[0].command, NL80211_CMD_GET_SCAN);
    EXPECT_TRUE(kernel.asked[0].isList);
    NetlinkAttributes attributes(kernel.asked[0].attributes.bytes());
    const auto index = attributes.next();
    ASSERT_TRUE(index);
    EXPECT_EQ(index->type, NL80211_ATTR_IFINDEX);
    EXPECT_EQ(index->u32(), 5U);
    EXPECT_FALSE(attributes.next());
}

TEST(ScanListOfTheKernel, IsAskedAgainIfItChangesMeanwhile) {
    ScriptedNl80211 kernel;
    kernel.answers.emplace_back(answer({networkMessage(1)}, true));
    kernel.answers.emplace_back(answer({networkMessage(1), networkMessage(2)}));
    EXPECT_THAT(addressesOf(*scanList(kernel, kManaged)), ElementsAre(address(1), address(2)));
    EXPECT_THAT(kernel.asked, SizeIs(2));
}

TEST(ScanListOfTheKernel, IsTakenAsItIsIfItChangesAllTheTime) {
    ScriptedNl80211 kernel;
    for (int i = 0; i < 10; ++i) kernel.answers.emplace_back(answer({networkMessage(1)}, true));
    EXPECT_THAT(addressesOf(*scanList(kernel, kManaged)), ElementsAre(address(1)));
    EXPECT_THAT(kernel.asked, SizeIs(4));
}

TEST(ScanListOfTheKernel, CountsWhatItCannotRead) {
    ScriptedNl80211 kernel;
    Bytes cut = networkMessage(1);
    cut.resize(cut.size() - 4);
    kernel.answers.emplace_back(answer({cut, networkMessage(2), Bytes{1}}));
    const auto list = scanList(kernel, kManaged);
    EXPECT_THAT(addressesOf(*list), ElementsAre(address(2)));
    EXPECT_EQ(list->unreadable, 2U);
    EXPECT_EQ(list->fault, "it ends inside an attribute");
}

TEST(ScanFault, ComesFromTheKernelsError) {
    const std::pair<int, ScanProblem> cases[] = {
        {EPERM, ScanProblem::NotPermitted},
        {EACCES, ScanProblem::NotPermitted},
        {EBUSY, ScanProblem::Busy},
        {ENETDOWN, ScanProblem::Down},
        {ENODEV, ScanProblem::NoSuchInterface},
        {EOPNOTSUPP, ScanProblem::NotSupported},
    };
    for (const auto& [error, problem] : cases) {
        ScriptedNl80211 kernel;
        kernel.answers.push_back(ScriptedNl80211::refusal(error));
        EXPECT_EQ(scanList(kernel, kManaged).error(),
                  (ScanFault{.problem = problem, .interface = "wlan0"}));
    }
    ScriptedNl80211 kernel;
    kernel.answers.push_back(ScriptedNl80211::refusal(EINVAL));
    EXPECT_EQ(scanList(kernel, kManaged).error(),
              (ScanFault{.interface = "wlan0", .text = "Invalid argument"}));
    EXPECT_EQ(scanFaultOf({.kind = Nl80211Fault::Kind::NoFamily}, "wlan0").problem,
              ScanProblem::NoNl80211);
    EXPECT_EQ(scanFaultOf({.kind = Nl80211Fault::Kind::Lost, .text = "gone"}, "wlan0"),
              (ScanFault{.interface = "wlan0", .text = "gone"}));
}

class TriggeredScan : public ::testing::Test {
  protected:
    std::optional<ScanFault> trigger(Clock::time_point deadline = Clock::time_point::max()) {
        return triggerScan(kernel_, kManaged, deadline);
    }

    ScriptedNl80211 kernel_;
};

TEST_F(TriggeredScan, WaitsForItsOwnEnd) {
    kernel_.events.emplace_back(std::optional(eventMessage(NL80211_CMD_TRIGGER_SCAN)));
    kernel_.events.emplace_back(std::optional(eventMessage(NL80211_CMD_NEW_SCAN_RESULTS, 6)));
    kernel_.events.emplace_back(std::optional(Bytes{0xFF}));
    kernel_.events.emplace_back(std::optional(eventMessage(NL80211_CMD_NEW_SCAN_RESULTS)));
    EXPECT_EQ(trigger(), std::nullopt);
    EXPECT_THAT(kernel_.events, IsEmpty());
    // The events are asked for before the scan: none is missed.
    EXPECT_THAT(kernel_.steps,
                ElementsAre("subscribe scan", "ask 33", "wait", "wait", "wait", "wait"));
}

TEST_F(TriggeredScan, AsksForEveryNetwork) {
    kernel_.events.emplace_back(std::optional(eventMessage(NL80211_CMD_NEW_SCAN_RESULTS)));
    EXPECT_EQ(trigger(), std::nullopt);
    ASSERT_THAT(kernel_.asked, SizeIs(1));
    EXPECT_FALSE(kernel_.asked[0].isList);
    // As libnl writes the same request.
    NetlinkMessage expected(NL80211_CMD_TRIGGER_SCAN);
    expected.addU32(NL80211_ATTR_IFINDEX, 5).begin(NL80211_ATTR_SCAN_SSIDS).add(1, {}).end();
    const Bytes bytes = expected.bytes();
    EXPECT_EQ(kernel_.asked[0].attributes.bytes(), Bytes(bytes.begin() + 4, bytes.end()));
}

TEST_F(TriggeredScan, MayBeBrokenOff) {
    kernel_.events.emplace_back(std::optional(eventMessage(NL80211_CMD_SCAN_ABORTED)));
    EXPECT_EQ(trigger()->problem, ScanProblem::Aborted);
}

TEST_F(TriggeredScan, EndsItsWait) {
    EXPECT_EQ(trigger(Clock::now())->problem, ScanProblem::TimedOut);
    EXPECT_EQ(trigger()->problem, ScanProblem::Interrupted);
}

TEST_F(TriggeredScan, TellsItsFaults) {
    kernel_.answers.push_back(ScriptedNl80211::refusal(EBUSY));
    EXPECT_EQ(trigger()->problem, ScanProblem::Busy);
    kernel_.answers.push_back(ScriptedNl80211::refusal(EPERM));
    EXPECT_EQ(trigger()->problem, ScanProblem::NotPermitted);
    const Nl80211Fault lost{.kind = Nl80211Fault::Kind::Lost, .text = "gone"};
    kernel_.events.emplace_back(Unexpected(lost));
    EXPECT_EQ(trigger()->text, "gone");
    kernel_.subscriptionFault = lost;
    EXPECT_EQ(trigger()->text, "gone");
}

}  // namespace
