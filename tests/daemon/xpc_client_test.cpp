// The client without a daemon's help: its life, its delegate, and the events of its connection.
#include "halvane/daemon/xpc_client.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <type_traits>

#include "halvane/base/property_list_value.h"
#include "halvane/model/daemon_service.h"

#include "tests/daemon/xpc_client_test_support.h"
#include "tests/support/private_bus.h"
#include "tests/support/scoped_environment.h"

namespace {

using namespace halvane;
using namespace halvane::testing;

static_assert(!std::is_copy_constructible_v<HalvaneXPCClient>);
static_assert(!std::is_copy_assignable_v<HalvaneXPCClient>);

constexpr const char* kFunction = "-[HalvaneXPCClient handleXPCEvent:]";

// On a bus without the service: the only events are the test's.
class XPCClientEvents : public ::testing::Test {
  protected:
    XPCLog log_{"verbose"};
    PrivateBus bus_;
    std::unique_ptr<HalvaneXPCClient> client_ = HalvaneXPCClient::init();
};

TEST_F(XPCClientEvents, StartsWithoutDelegateAndSubscription) {
    EXPECT_EQ(client_->delegate(), nullptr);
    EXPECT_FALSE(client_->subscribeAP());
}

TEST_F(XPCClientEvents, FillsNoSharedSlot) {
    client_->queryLogging();
    EXPECT_EQ(gHalvaneXPCClient, nullptr);
}

// Runs in its own process, which ends with the slot filled.
TEST(XPCClientDeathTest, InTheSharedSlotGoesWithTheProcess) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            const ScopedEnvironment nowhere("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
            gHalvaneXPCClient = HalvaneXPCClient::init();
            std::exit(gHalvaneXPCClient->queryLogging() ? 1 : 0);
        },
        ::testing::ExitedWithCode(0), "");
}

TEST_F(XPCClientEvents, HoldsItsDelegate) {
    auto delegate = std::make_shared<HalvaneXPCClientDelegate>();
    const std::weak_ptr<HalvaneXPCClientDelegate> watched = delegate;
    client_->setDelegate(delegate);
    EXPECT_EQ(client_->delegate(), delegate);
    delegate.reset();
    EXPECT_FALSE(watched.expired());
    client_->setDelegate(nullptr);
    EXPECT_EQ(client_->delegate(), nullptr);
    EXPECT_TRUE(watched.expired());
}

TEST_F(XPCClientEvents, ReleasesItsDelegateWhenItGoes) {
    auto delegate = std::make_shared<HalvaneXPCClientDelegate>();
    const std::weak_ptr<HalvaneXPCClientDelegate> watched = delegate;
    client_->setDelegate(std::move(delegate));
    client_.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(XPCClientEvents, LogsADictionaryAndHandsItOn) {
    DelegateRecorder stations;
    client_->setDelegate(stations.delegate());
    client_->handleXPCEvent(notification("joined"));
    EXPECT_EQ(stations.all(), std::vector<std::string>{"joined 02:00:00:00:01:2A wlan0"});
    EXPECT_EQ(log_.take(),
              "[,handleXPCEvent:@verbose] Halvane Notification RX DICTIONARY\n"
              "[,handleNotificationClientJoined:@error] Command        : "
              "org.halvane.halvaned.status.client.joined\n"
              "[,handleNotificationClientJoined:@error] Interface      : wlan0\n"
              "[,handleNotificationClientJoined:@error] Client MAC     : 02:00:00:00:01:2A\n");
}

TEST_F(XPCClientEvents, HandsADictionaryOnWhereItsLineIsHeldBack) {
    LogControl("^WiFiXPC$:level=verbose+1");
    DelegateRecorder stations;
    client_->setDelegate(stations.delegate());
    client_->handleXPCEvent(notification("joined"));
    EXPECT_EQ(stations.all().size(), 1u);
    EXPECT_EQ(log_.take().find("DICTIONARY"), std::string::npos);
}

TEST_F(XPCClientEvents, LogsAnUnknownDictionaryAlone) {
    client_->handleXPCEvent(ipcMessage({{"command", "unknown"}}));
    EXPECT_EQ(log_.take(), "[,handleXPCEvent:@verbose] Halvane Notification RX DICTIONARY\n");
    EXPECT_EQ(log_.lastFunction(), kFunction);
}

TEST_F(XPCClientEvents, LogsAndIgnoresAConnection) {
    client_->handleXPCEvent(ServiceAppeared());
    EXPECT_EQ(log_.take(), "[,handleXPCEvent:@verbose] Halvane Notification RX CONNECTION\n");
    EXPECT_EQ(log_.lastFunction(), kFunction);
}

TEST_F(XPCClientEvents, LogsErrorsAtTheirLevel) {
    const std::pair<ServiceError::Kind, const char*> rows[] = {
        {ServiceError::Kind::Interrupted, "[,handleXPCEvent:@error] connection was interrupted\n"},
        {ServiceError::Kind::Other, "[,handleXPCEvent:@error] unknown event\n"},
        {ServiceError::Kind::Invalid, "[,handleXPCEvent:@error] connection was invalidated\n"},
    };
    for (const auto& [kind, line] : rows) {
        client_->handleXPCEvent(ServiceError{kind, "text for people"});
        EXPECT_EQ(log_.take(), line);
        EXPECT_EQ(log_.lastFunction(), kFunction);
    }
}

TEST_F(XPCClientEvents, LogsAnEventOfNoType) {
    struct Refusing {
        operator PropertyListDictionary() const { throw 1; }
    };
    ServiceEvent event;
    EXPECT_THROW(event.emplace<IPCMessage>(Refusing()), int);
    ASSERT_TRUE(event.valueless_by_exception());
    client_->handleXPCEvent(event);
    EXPECT_EQ(log_.take(), "[,handleXPCEvent:@error] RX EVENT Unexpected Type\n");
}

TEST_F(XPCClientEvents, KeepsItsConnectionWhenInterrupted) {
    BusPeer daemon(bus_);
    client_->handleXPCEvent(ServiceError{ServiceError::Kind::Interrupted, ""});
    client_->handleXPCEvent(ServiceError{ServiceError::Kind::Other, ""});
    std::optional<Error> error = daemonError(1);
    client_->queryDeviceList(&error);
    EXPECT_EQ(error, std::nullopt);
}

TEST_F(XPCClientEvents, ReleasesItsConnectionWhenInvalid) {
    BusPeer daemon(bus_);
    client_->handleXPCEvent(ServiceError{ServiceError::Kind::Invalid, ""});
    client_->handleXPCEvent(ServiceError{ServiceError::Kind::Invalid, ""});
    for (int i = 0; i < 3; ++i) {
        std::optional<Error> error;
        EXPECT_TRUE(client_->queryDeviceList(&error).empty());
        EXPECT_EQ(error, kNoReply);
    }
    EXPECT_TRUE(client_->enableInterface_error("wlan0"));
    EXPECT_EQ(client_->queryLogging(), std::nullopt);
    client_->setSubscribeAP(true);
    EXPECT_TRUE(client_->subscribeAP());
    EXPECT_EQ(daemon.requests().size(), 0u);
}

TEST_F(XPCClientEvents, LogsNothingWhenItGoes) {
    client_.reset();
    EXPECT_EQ(log_.take(), "");
}

}  // namespace
