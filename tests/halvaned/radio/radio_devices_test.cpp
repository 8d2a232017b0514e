#include "tools/halvaned/radio/radio_devices.h"

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/nl80211.h>
#include <memory>
#include <optional>
#include <poll.h>
#include <string>
#include <utility>
#include <vector>

#include "halvane/platform/os/file_internal.h"

#include "tests/halvaned/radio/message_socket.h"
#include "tests/halvaned/radio/radio_samples.h"
#include "tests/support/hostile_bytes.h"
#include "tests/support/netlink_message.h"
#include "tests/support/scripted_nl80211.h"
#include "tests/support/temporary_folder.h"
#include "tools/halvane/input/nl80211_channel.h"
#include "tools/halvaned/radio/device_change.h"
#include "tools/halvaned/radio/link_events.h"
#include "tools/halvaned/radio/system_files.h"

using halvane::FileDescriptor;
using halvane::Unexpected;
using halvane::testing::Bytes;
using halvane::testing::MessageSocket;
using halvane::testing::NetlinkMessage;
using halvane::testing::radioMessage;
using halvane::testing::ScriptedNl80211;
using halvane::testing::TemporaryFolder;
using halvane::tool::Nl80211Answer;
using halvane::tool::Nl80211Channel;
using halvane::tool::Nl80211Fault;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace halvane::hosting;

namespace {

using Kind = DeviceChange::Kind;

Bytes interfaceMessage(const std::string& name, std::uint32_t index, std::uint32_t radio = 0) {
    NetlinkMessage message(NL80211_CMD_NEW_INTERFACE);
    message.addU32(NL80211_ATTR_IFINDEX, index).addText(NL80211_ATTR_IFNAME, name);
    message.addU32(NL80211_ATTR_WIPHY, radio).addU32(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_STATION);
    return message.add(NL80211_ATTR_MAC, {2, 0, 0, 0, 0, static_cast<std::uint8_t>(index)}).bytes();
}

Bytes domainMessage(const std::string& country) {
    return NetlinkMessage(NL80211_CMD_GET_REG).addText(NL80211_ATTR_REG_ALPHA2, country).bytes();
}

Bytes eventMessage(std::uint8_t command) {
    return NetlinkMessage(command).bytes();
}

// A kernel with nl80211, whose lists a test sets.
struct Kernel {
    std::vector<Bytes> radios{radioMessage()};
    std::vector<Bytes> interfaces{interfaceMessage("wlan0", 3)};
    std::vector<Bytes> domains{domainMessage("DE")};
    // If set, the answer to everything.
    std::optional<Nl80211Fault> fault{};
    std::vector<std::uint8_t> asked{};
    int interruptions = 0;

    ScriptedNl80211::Answer answer(std::uint8_t command) {
        asked.push_back(command);
        if (fault) return Unexpected(*fault);
        const bool isInterrupted = interruptions > 0 && interruptions-- > 0;
        switch (command) {
            case NL80211_CMD_GET_WIPHY:
                return Nl80211Answer{radios, isInterrupted};
            case NL80211_CMD_GET_INTERFACE:
                return Nl80211Answer{interfaces, isInterrupted};
            case NL80211_CMD_GET_REG:
                return Nl80211Answer{domains, isInterrupted};
            default:
                return ScriptedNl80211::refusal(EOPNOTSUPP);
        }
    }
};

class KernelChannel : public ScriptedNl80211 {
  public:
    explicit KernelChannel(Kernel& kernel) : kernel_(kernel) {}

    Answer ask(const halvane::tool::Nl80211Request& request) override {
        EXPECT_TRUE(request.isList);
        return kernel_.answer(request.command);
    }

  private:
    Kernel& kernel_;
};

class DevicesOfRadios : public ::testing::Test {
  protected:
    Nl80211Channel::Opened open() {
        ++openings_;
        if (openingFault_) return Unexpected(*openingFault_);
        auto channel = std::make_unique<KernelChannel>(kernel_);
        events_ = MessageSocket();
        eventEnd_ = events_.take();
        channel->descriptor = eventEnd_.number();
        channel_ = channel.get();
        return Nl80211Channel::Opened(std::move(channel));
    }

    RadioDevices devicesNamed(std::vector<std::string> only) {
        return RadioDevices(
            LinkEvents(links_.take()), std::move(only), [this] { return open(); },
            SystemFiles(folder_.path().string()));
    }

    static bool isReadable(const RadioDevices& devices) {
        pollfd polled{devices.descriptor(), POLLIN, 0};
        return ::poll(&polled, 1, 0) == 1;
    }

    void send(const Bytes& event) { channel_->events.emplace_back(event); }

    const TemporaryFolder folder_{};  // without files of the system
    Kernel kernel_{};
    MessageSocket links_{};
    MessageSocket events_{};
    FileDescriptor eventEnd_{};
    KernelChannel* channel_ = nullptr;
    std::optional<Nl80211Fault> openingFault_{};
    int openings_ = 0;
    RadioDevices devices_ = devicesNamed({});
};

TEST_F(DevicesOfRadios, AreReadAtTheStart) {
    const auto started = devices_.start();
    ASSERT_TRUE(started) << started.error();
    EXPECT_THAT(started->faults, IsEmpty());
    EXPECT_THAT(started->changes, ElementsAre(DeviceChange{Kind::Came, 3, "wlan0", ""}));
    EXPECT_TRUE(devices_.isAvailable());
    EXPECT_EQ(devices_.subsystem(), "nl80211");
    const DeviceList& list = devices_.devices();
    ASSERT_EQ(list.radios.size(), 1U);
    EXPECT_EQ(list.radios[0].name, "phy0");
    const DeviceInterface* const interface = list.find("wlan0");
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(list.radioOf(*interface), &list.radios[0]);
    EXPECT_EQ(list.countryOf(*interface), "DE");
    // Events are asked for first, so that none is missed.
    EXPECT_THAT(channel_->steps, ElementsAre("subscribe config", "subscribe regulatory"));
    EXPECT_THAT(kernel_.asked,
                ElementsAre(NL80211_CMD_GET_WIPHY, NL80211_CMD_GET_INTERFACE, NL80211_CMD_GET_REG));
    EXPECT_FALSE(isReadable(devices_));
    EXPECT_THAT(devices_.update().changes, IsEmpty());
}

TEST_F(DevicesOfRadios, AreNoneWithoutNl80211) {
    openingFault_ = Nl80211Fault{.kind = Nl80211Fault::Kind::NoFamily};
    const auto started = devices_.start();
    ASSERT_TRUE(started) << started.error();
    EXPECT_THAT(started->changes, IsEmpty());
    EXPECT_THAT(started->faults, IsEmpty());
    EXPECT_FALSE(devices_.isAvailable());
    EXPECT_EQ(devices_.devices(), DeviceList());
    EXPECT_THAT(devices_.update().changes, IsEmpty());
    EXPECT_EQ(openings_, 1);  // nothing has changed since
    // A radio is plugged in, and its driver loads nl80211.
    openingFault_.reset();
    links_.send();
    EXPECT_TRUE(isReadable(devices_));
    EXPECT_THAT(devices_.update().changes, ElementsAre(DeviceChange{Kind::Came, 3, "wlan0", ""}));
    EXPECT_TRUE(devices_.isAvailable());
    EXPECT_FALSE(isReadable(devices_));
}

TEST_F(DevicesOfRadios, AreAnErrorIfTheKernelCannotBeAsked) {
    openingFault_ = Nl80211Fault{.kind = Nl80211Fault::Kind::Lost, .text = "out of sockets"};
    EXPECT_EQ(devices_.start().error(), "nl80211 does not answer: out of sockets");
}

TEST_F(DevicesOfRadios, FollowEvents) {
    ASSERT_TRUE(devices_.start());
    kernel_.asked.clear();
    kernel_.interfaces.push_back(interfaceMessage("wlan1", 7));
    events_.send();
    EXPECT_TRUE(isReadable(devices_));
    send(eventMessage(NL80211_CMD_NEW_INTERFACE));
    send(eventMessage(NL80211_CMD_NEW_INTERFACE));
    EXPECT_THAT(devices_.update().changes, ElementsAre(DeviceChange{Kind::Came, 7, "wlan1", ""}));
    // Once for both, and interfaces alone.
    EXPECT_THAT(kernel_.asked, ElementsAre(NL80211_CMD_GET_INTERFACE));
    kernel_.interfaces.clear();
    send(eventMessage(NL80211_CMD_DEL_INTERFACE));
    EXPECT_THAT(devices_.update().changes, ElementsAre(DeviceChange{Kind::Went, 3, "wlan0", ""},
                                                       DeviceChange{Kind::Went, 7, "wlan1", ""}));
}

TEST_F(DevicesOfRadios, FollowTheRegulatoryDomain) {
    ASSERT_TRUE(devices_.start());
    kernel_.asked.clear();
    kernel_.domains = {domainMessage("US")};
    Bytes part = NetlinkMessage(NL80211_CMD_NEW_WIPHY).addU32(NL80211_ATTR_WIPHY, 0).bytes();
    kernel_.radios = {radioMessage(), std::move(part)};
    send(eventMessage(NL80211_CMD_REG_CHANGE));
    EXPECT_THAT(devices_.update().changes,
                ElementsAre(DeviceChange{Kind::Country, 3, "wlan0", ""}));
    EXPECT_THAT(kernel_.asked, ElementsAre(NL80211_CMD_GET_WIPHY, NL80211_CMD_GET_REG));
}

TEST_F(DevicesOfRadios, AreRenamed) {
    ASSERT_TRUE(devices_.start());
    // The kernel tells of it as of all interfaces, and not by nl80211.
    kernel_.interfaces = {interfaceMessage("wlp2s0", 3)};
    links_.send();
    EXPECT_TRUE(isReadable(devices_));
    EXPECT_THAT(devices_.update().changes,
                ElementsAre(DeviceChange{Kind::Renamed, 3, "wlp2s0", "wlan0"}));
}

TEST_F(DevicesOfRadios, AreReadAgainIfEventsAreLost) {
    ASSERT_TRUE(devices_.start());
    kernel_.radios.clear();
    kernel_.interfaces.clear();
    channel_->areEventsLost = true;
    EXPECT_THAT(devices_.update().changes, ElementsAre(DeviceChange{Kind::Went, 3, "wlan0", ""}));
    EXPECT_THAT(devices_.devices().radios, IsEmpty());
}

TEST_F(DevicesOfRadios, AreReadAgainIfTheyChangeMeanwhile) {
    kernel_.interruptions = 1;
    ASSERT_TRUE(devices_.start());
    EXPECT_THAT(kernel_.asked, ElementsAre(NL80211_CMD_GET_WIPHY, NL80211_CMD_GET_WIPHY,
                                           NL80211_CMD_GET_INTERFACE, NL80211_CMD_GET_REG));
    kernel_.asked.clear();
    kernel_.interruptions = 1000;  // but not for ever
    send(eventMessage(NL80211_CMD_NEW_INTERFACE));
    EXPECT_THAT(devices_.update().faults, IsEmpty());
    EXPECT_EQ(kernel_.asked.size(), 3U);
}

TEST_F(DevicesOfRadios, StayAsTheyWereIfTheKernelRefuses) {
    ASSERT_TRUE(devices_.start());
    const DeviceList before = devices_.devices();
    kernel_.fault = Nl80211Fault{.kind = Nl80211Fault::Kind::Refused, .error = EPERM};
    kernel_.interfaces.clear();
    links_.send();
    DeviceUpdate update = devices_.update();
    EXPECT_THAT(update.changes, IsEmpty());
    EXPECT_THAT(update.faults, ElementsAre("nl80211 refuses: Operation not permitted"));
    EXPECT_EQ(devices_.devices(), before);
    // They are read with the next event, whatever it is.
    kernel_.fault.reset();
    EXPECT_THAT(devices_.update().changes, ElementsAre(DeviceChange{Kind::Went, 3, "wlan0", ""}));
}

TEST_F(DevicesOfRadios, GoWithNl80211) {
    ASSERT_TRUE(devices_.start());
    kernel_.fault = Nl80211Fault{.kind = Nl80211Fault::Kind::Refused, .error = ENOENT};
    links_.send();
    EXPECT_THAT(devices_.update().changes, ElementsAre(DeviceChange{Kind::Went, 3, "wlan0", ""}));
    EXPECT_FALSE(devices_.isAvailable());
    EXPECT_EQ(devices_.devices(), DeviceList());
}

TEST_F(DevicesOfRadios, StayIfTheChannelHasToBeOpenedAnew) {
    ASSERT_TRUE(devices_.start());
    channel_->events.emplace_back(
        Unexpected(Nl80211Fault{.kind = Nl80211Fault::Kind::Lost, .text = "broken"}));
    const DeviceUpdate update = devices_.update();
    EXPECT_THAT(update.changes, IsEmpty());
    EXPECT_THAT(update.faults, ElementsAre("nl80211 does not answer: broken"));
    EXPECT_EQ(openings_, 2);
    EXPECT_TRUE(devices_.isAvailable());
    EXPECT_NE(devices_.devices().find("wlan0"), nullptr);
}

TEST_F(DevicesOfRadios, AreNotThoseOfMessagesThatCannotBeRead) {
    kernel_.interfaces.push_back({1, 2});
    kernel_.radios.push_back({1, 2, 3});
    const auto started = devices_.start();
    ASSERT_TRUE(started);
    EXPECT_EQ(started->faults.size(), 2U);
    EXPECT_EQ(devices_.devices().interfaces.size(), 1U);
    send({1});
    EXPECT_THAT(devices_.update().faults,
                ElementsAre("a message of nl80211 cannot be read: it is shorter than its header"));
}

TEST_F(DevicesOfRadios, MayBeThoseOfSomeInterfacesAlone) {
    links_ = MessageSocket();
    RadioDevices devices = devicesNamed({"wlan1"});
    kernel_.interfaces.push_back(interfaceMessage("wlan1", 7));
    ASSERT_TRUE(devices.start());
    ASSERT_EQ(devices.devices().interfaces.size(), 1U);
    EXPECT_EQ(devices.devices().interfaces[0].name, "wlan1");
    EXPECT_EQ(devices.devices().radios.size(), 1U);
}

// Whatever the kernel has: no fault.
TEST(RadiosOfThisMachine, CanBeAskedFor) {
    auto links = LinkEvents::open();
    if (!links) GTEST_SKIP() << links.error();
    RadioDevices devices(*std::move(links));
    const auto started = devices.start();
    ASSERT_TRUE(started) << started.error();
    EXPECT_THAT(started->faults, IsEmpty());
    EXPECT_EQ(started->changes.size(), devices.devices().interfaces.size());
}

}  // namespace
