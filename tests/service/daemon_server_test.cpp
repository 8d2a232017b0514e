// A daemon of the library as its clients meet it on a bus.
#include "halvane/service/daemon_server.h"

#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <systemd/sd-bus.h>
#include <unistd.h>
#include <vector>

#include "halvane/model/daemon_service.h"
#include "halvane/model/daemon_status.h"
#include "halvane/service/backend_reply.h"

#include "tests/service/running_server.h"
#include "tests/service/scripted_backend.h"
#include "tests/support/bus_caller.h"
#include "tests/support/private_bus.h"
#include "tests/support/scoped_environment.h"

namespace halvane {

namespace {

using ::halvane::testing::BusCaller;
using ::halvane::testing::command;
using ::halvane::testing::joined;
using ::halvane::testing::PrivateBus;
using ::halvane::testing::RunningServer;
using ::halvane::testing::WireMessage;
using ::halvane::testing::WireReply;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr const char* kName = kDaemonServiceName;
constexpr const char kPath[] = "/org/halvane/halvaned";

WireMessage subscribe() {
    return {{"command", "subscribe"}, {"notifyAP", true}};
}

class DaemonServerTest : public ::testing::Test {
  protected:
    PrivateBus bus_;
    BusCaller caller_{bus_.address()};

    static std::int64_t statusOf(BusCaller& caller, const WireMessage& request) {
        const WireReply reply = caller.request(request);
        EXPECT_EQ(reply.error, "");
        return reply.status();
    }
};

TEST_F(DaemonServerTest, ServesABackend) {
    RunningServer daemon;
    EXPECT_EQ(statusOf(caller_, command("queryDeviceList")), 0);
    EXPECT_EQ(statusOf(caller_, command("enable", "wlan0")), 0);
    EXPECT_EQ(statusOf(caller_, command("clientList")), 100);
    daemon.inLoop([&] {
        EXPECT_THAT(daemon.backend().calls, ElementsAre("devices", "enable wlan0", "stations"));
    });
}

TEST_F(DaemonServerTest, BlocksNobodyWhileTheBackendWaits) {
    RunningServer daemon;
    daemon.inLoop([&] { daemon.backend().keepReplies(); });
    const auto late = caller_.requestLater(command("bssStart", "wlan0"));
    BusCaller other(bus_.address());
    EXPECT_EQ(statusOf(other, command("queryDeviceList")), 0);
    EXPECT_EQ(statusOf(caller_, command("queryDeviceList")), 0);
    EXPECT_EQ(late->sender, "");
    daemon.inLoop([&] { daemon.backend().kept[0](Unexpected(DaemonStatus::WrongRole)); });
    caller_.waitFor(*late);
    EXPECT_EQ(late->status(), 7);
}

TEST_F(DaemonServerTest, RepliesThoughTheBackendLosesTheReply) {
    RunningServer daemon;
    daemon.inLoop([&] { daemon.backend().keepReplies(); });
    const auto lost = caller_.requestLater(command("bssStart", "wlan0"));
    statusOf(caller_, command("queryDeviceList"));
    daemon.inLoop([&] { daemon.backend().kept.clear(); });
    caller_.waitFor(*lost);
    EXPECT_EQ(lost->status(), 15);
}

TEST_F(DaemonServerTest, NotifiesAfterItsReply) {
    RunningServer daemon;
    daemon.inLoop([&] {
        daemon.backend().onAction = [&](BackendReply<void> reply) {
            daemon.backend().tell(joined(1));
            reply({});
        };
    });
    statusOf(caller_, subscribe());
    const auto reply = caller_.requestLater(command("bssStart", "wlan0"));
    EXPECT_EQ(caller_.nextEvent().summary(), "joined wlan0 020000000001");
    EXPECT_EQ(reply->sender, caller_.ownerOf(kName));
}

TEST_F(DaemonServerTest, NotifiesOfWhatHappensByItself) {
    RunningServer daemon;
    statusOf(caller_, subscribe());
    daemon.inLoop([&] {
        for (std::uint8_t i = 0; i < 200; ++i) daemon.backend().tell(joined(i));
        daemon.server().flush();
    });
    const auto events = caller_.nextEvents(200);
    EXPECT_EQ(events.front(), "joined wlan0 020000000000");
    EXPECT_EQ(events.back(), "joined wlan0 0200000000c7");
}

// A client that asks without waiting for replies cannot keep the others from the backend.
TEST_F(DaemonServerTest, IsBusyForAClientThatFloodsIt) {
    RunningServer daemon({.waitingOfOne = 3, .waiting = 100});
    daemon.inLoop([&] { daemon.backend().keepReplies(); });
    for (int i = 0; i < 50; ++i) {
        sd_bus_message* request = nullptr;
        ASSERT_GE(::sd_bus_message_new_method_call(caller_.bus(), &request, kName, kPath, kName,
                                                   "Request"),
                  0);
        ASSERT_GE(::sd_bus_message_set_expect_reply(request, 0), 0);
        ASSERT_GE(::sd_bus_message_append(request, "a{sv}", 2, "command", "s", "enable",
                                          "interface", "s", "wlan0"),
                  0);
        ASSERT_GE(::sd_bus_send(caller_.bus(), request, nullptr), 0);
        ::sd_bus_message_unref(request);
    }
    EXPECT_EQ(statusOf(caller_, command("enable", "wlan0")), 13);
    BusCaller other(bus_.address());
    const auto reply = other.requestLater(command("enable", "wlan1"));
    statusOf(other, command("queryDeviceList"));
    daemon.inLoop([&] {
        EXPECT_THAT(daemon.backend().calls, ElementsAre("enable wlan0", "enable wlan0",
                                                        "enable wlan0", "enable wlan1", "devices"));
        daemon.backend().kept.clear();
    });
    other.waitFor(*reply);
    EXPECT_EQ(statusOf(caller_, command("queryDeviceList")), 0);
}

TEST_F(DaemonServerTest, LimitsSubscribers) {
    RunningServer daemon({.subscribers = 1});
    auto first = std::make_unique<BusCaller>(bus_.address());
    EXPECT_EQ(statusOf(*first, subscribe()), 0);
    EXPECT_EQ(statusOf(caller_, subscribe()), 14);
    const std::string name = first->name();
    first.reset();
    caller_.waitUntilGone(name);
    EXPECT_EQ(statusOf(caller_, subscribe()), 0);
}

// Anybody can send a signal that says so, but only the bus is believed.
TEST_F(DaemonServerTest, BelievesTheBusAloneThatAClientLeft) {
    RunningServer daemon;
    statusOf(caller_, subscribe());
    BusCaller liar(bus_.address());
    sd_bus_message* signal = nullptr;
    ASSERT_GE(::sd_bus_message_new_signal(liar.bus(), &signal, "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus", "NameOwnerChanged"),
              0);
    ASSERT_GE(
        ::sd_bus_message_append(signal, "sss", caller_.name().c_str(), caller_.name().c_str(), ""),
        0);
    ASSERT_GE(::sd_bus_send_to(liar.bus(), signal, caller_.ownerOf(kName).c_str(), nullptr), 0);
    ::sd_bus_message_unref(signal);
    statusOf(liar, command("queryDeviceList"));  // by then the daemon has read the lie
    daemon.inLoop([&] { EXPECT_THAT(daemon.subscribers().names(), ElementsAre(caller_.name())); });
}

TEST_F(DaemonServerTest, RefusesWhatIsNoDictionary) {
    RunningServer daemon;
    EXPECT_THROW(caller_.call(kName, kPath, kName, "Request", "text"), std::runtime_error);
    EXPECT_EQ(statusOf(caller_, command("enable", "wlan0")), 0);
}

// Otherwise requests that wait could use up the daemon's descriptors.
TEST_F(DaemonServerTest, TakesNoDescriptors) {
    RunningServer daemon;
    sd_bus_message* request = nullptr;
    ASSERT_GE(
        ::sd_bus_message_new_method_call(caller_.bus(), &request, kName, kPath, kName, "Request"),
        0);
    ASSERT_GE(::sd_bus_message_append(request, "a{sv}", 2, "command", "s", "enable", "interface",
                                      "h", STDIN_FILENO),
              0);
    sd_bus_error error{};
    EXPECT_LT(::sd_bus_call(caller_.bus(), request, UINT64_MAX, &error, nullptr), 0);
    EXPECT_STREQ(error.name, "org.freedesktop.DBus.Error.NotSupported");
    ::sd_bus_error_free(&error);
    ::sd_bus_message_unref(request);
}

TEST_F(DaemonServerTest, ComesBackWithoutSubscribersOrWaitingRequests) {
    RunningServer daemon;
    statusOf(caller_, subscribe());
    daemon.inLoop([&] { daemon.backend().keepReplies(); });
    const auto waiting = caller_.requestLater(command("bssStart", "wlan0"));
    statusOf(caller_, command("queryDeviceList"));
    daemon.inLoop([&] {
        EXPECT_TRUE(daemon.server().restart());
        EXPECT_THAT(daemon.subscribers().names(), IsEmpty());
        daemon.backend().kept[0]({});  // to nobody
    });
    caller_.waitFor(*waiting);
    EXPECT_EQ(waiting->error, "org.freedesktop.DBus.Error.NoReply");
    EXPECT_EQ(statusOf(caller_, command("queryDeviceList")), 0);
}

TEST_F(DaemonServerTest, LetsABackendReplyAfterItsEnd) {
    RunningServer daemon;
    daemon.inLoop([&] { daemon.backend().keepReplies(); });
    const auto waiting = caller_.requestLater(command("bssStart", "wlan0"));
    statusOf(caller_, command("queryDeviceList"));
    daemon.endServer();
    daemon.inLoop([&] {
        daemon.backend().kept[0]({});
        daemon.backend().tell(joined(1));
    });
    caller_.waitFor(*waiting);
    EXPECT_EQ(waiting->error, "org.freedesktop.DBus.Error.NoReply");
}

TEST_F(DaemonServerTest, IsTheOnlyOne) {
    const RunningServer daemon;
    try {
        const RunningServer second;
        ADD_FAILURE() << "the name is taken";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "org.halvane.halvaned is there already: another daemon runs");
    }
}

TEST_F(DaemonServerTest, TellsThatTheBusIsGone) {
    RunningServer daemon;
    bus_.kill();
    daemon.waitForLoss();
}

TEST(DaemonServerWithoutABus, SaysSo) {
    const testing::ScopedEnvironment none("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    try {
        const RunningServer daemon;
        ADD_FAILURE() << "there is no bus";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("joining the bus: "));
    }
}

}  // namespace

}  // namespace halvane
