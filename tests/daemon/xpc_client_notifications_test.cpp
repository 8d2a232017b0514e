// Notifications: their log messages, their receivers, and their order on the bus.
#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <thread>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/xpc_client_delegate.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/os/counting_semaphore.h"

#include "tests/daemon/xpc_client_test_support.h"
#include "tests/support/private_bus.h"
#include "tests/support/scoped_environment.h"

namespace {

using namespace halvane;
using namespace halvane::testing;

struct Event {
    std::string name;    // the last word of the notification's name
    std::string method;  // of its handler
    void (HalvaneXPCClient::*handle)(const IPCMessage&);
    HalvaneXPCClientDelegate::Call HalvaneXPCClientDelegate::*call;

    // In the names of tests.
    friend void PrintTo(const Event& event, std::ostream* stream) { *stream << event.name; }
};

const Event kEvents[] = {
    {"authorized",
     "handleNotificationClientAuthorized:", &HalvaneXPCClient::handleNotificationClientAuthorized,
     &HalvaneXPCClientDelegate::clientAuthorized_forInterface},
    {"joined", "handleNotificationClientJoined:", &HalvaneXPCClient::handleNotificationClientJoined,
     &HalvaneXPCClientDelegate::clientJoined_forInterface},
    {"kicked", "handleNotificationClientKicked:", &HalvaneXPCClient::handleNotificationClientKicked,
     &HalvaneXPCClientDelegate::clientKicked_forInterface},
    {"left", "handleNotificationClientLeft:", &HalvaneXPCClient::handleNotificationClientLeft,
     &HalvaneXPCClientDelegate::clientLeft_forInterface},
};

// On a bus without the service: the only notifications are the test's.
class XPCNotifications : public ::testing::TestWithParam<Event> {
  protected:
    XPCNotifications() { client_->setDelegate(stations_.delegate()); }

    // The log line of a handler.
    static std::string line(const std::string& text) {
        return "[," + GetParam().method + "@error] " + text + "\n";
    }
    static std::string commandLine() {
        return line("Command        : org.halvane.halvaned.status.client." + GetParam().name);
    }
    static IPCMessage withoutKey(const std::string& key) {
        IPCMessage message = notification(GetParam().name);
        message.entries().erase(key);
        return message;
    }
    static IPCMessage withValue(const std::string& key, const PropertyListValue& value) {
        IPCMessage message = notification(GetParam().name);
        message.entries().set(key, value);
        return message;
    }

    XPCLog log_;
    PrivateBus bus_;
    DelegateRecorder stations_;
    std::unique_ptr<HalvaneXPCClient> client_ = HalvaneXPCClient::init();
};

INSTANTIATE_TEST_SUITE_P(All, XPCNotifications, ::testing::ValuesIn(kEvents),
                         [](const auto& row) { return row.param.name; });

TEST_P(XPCNotifications, AreLoggedAndHandedToTheDelegate) {
    client_->handleNewXPCDictionary(notification(GetParam().name));
    EXPECT_EQ(log_.take(), commandLine() + line("Interface      : wlan0") +
                               line("Client MAC     : 02:00:00:00:01:2A"));
    EXPECT_EQ(log_.lastFunction(), "-[HalvaneXPCClient " + GetParam().method + "]");
    EXPECT_EQ(stations_.all(),
              std::vector<std::string>{GetParam().name + " 02:00:00:00:01:2A wlan0"});
}

TEST_P(XPCNotifications, AreTakenByTheirHandlersWhateverTheCommand) {
    (*client_.*GetParam().handle)(withoutKey("command"));
    EXPECT_EQ(log_.take(), commandLine() + line("Interface      : wlan0") +
                               line("Client MAC     : 02:00:00:00:01:2A"));
    EXPECT_EQ(stations_.all().size(), 1u);
}

TEST_P(XPCNotifications, EndBeforeAnInterfaceThatIsMissing) {
    client_->handleNewXPCDictionary(withoutKey("BSDName"));
    EXPECT_EQ(log_.take(), commandLine());
    client_->handleNewXPCDictionary(withValue("BSDName", 5));
    EXPECT_EQ(log_.take(), commandLine());
    EXPECT_TRUE(stations_.all().empty());
}

TEST_P(XPCNotifications, EndBeforeAnAddressThatIsMissing) {
    const std::string logged = commandLine() + line("Interface      : wlan0");
    client_->handleNewXPCDictionary(withoutKey("MAC"));
    EXPECT_EQ(log_.take(), logged);
    client_->handleNewXPCDictionary(withValue("MAC", "02:00:00:00:01:2A"));
    EXPECT_EQ(log_.take(), logged);
    EXPECT_TRUE(stations_.all().empty());
}

TEST_P(XPCNotifications, BringAddressesOfAnyLength) {
    std::vector<ByteBuffer> addresses;
    auto delegate = std::make_shared<HalvaneXPCClientDelegate>();
    *delegate.*GetParam().call = [&](const ByteBuffer& mac, const std::string&) {
        addresses.push_back(mac);
    };
    client_->setDelegate(delegate);
    const std::vector<ByteBuffer> sent = {ByteBuffer(), {0xAB}, {1, 2, 3, 4, 5, 6, 7, 8}};
    for (const auto& mac : sent) client_->handleNewXPCDictionary(withValue("MAC", mac));
    EXPECT_EQ(addresses, sent);
    const std::string before = commandLine() + line("Interface      : wlan0");
    EXPECT_EQ(log_.take(), before + line("Client MAC     : ") + before +
                               line("Client MAC     : AB") + before +
                               line("Client MAC     : 01:02:03:04:05:06"));
}

TEST_P(XPCNotifications, KeepAnInterfacesNameAsItIs) {
    client_->handleNewXPCDictionary(withValue("BSDName", "%s \xC3\xA4%n"));
    EXPECT_EQ(stations_.all().at(0), GetParam().name + " 02:00:00:00:01:2A %s \xC3\xA4%n");
    EXPECT_NE(log_.take().find(line("Interface      : %s \xC3\xA4%n")), std::string::npos);
}

TEST_P(XPCNotifications, ReachNobodyWithoutADelegate) {
    client_->setDelegate(nullptr);
    client_->handleNewXPCDictionary(notification(GetParam().name));
    EXPECT_TRUE(stations_.all().empty());
    EXPECT_NE(log_.take(), "");
}

TEST_P(XPCNotifications, AreNotHandedToADelegateThatHasNoCallForThem) {
    auto delegate = stations_.delegate();
    *delegate.*GetParam().call = nullptr;
    client_->setDelegate(delegate);
    for (const Event& event : kEvents) client_->handleNewXPCDictionary(notification(event.name));
    const auto calls = stations_.all();
    EXPECT_EQ(calls.size(), 3u);
    for (const auto& call : calls) EXPECT_FALSE(call.starts_with(GetParam().name)) << call;
}

TEST_P(XPCNotifications, AreLoggedBeforeTheDelegateIsCalled) {
    std::string logged;
    auto delegate = std::make_shared<HalvaneXPCClientDelegate>();
    *delegate.*GetParam().call = [&](const auto&...) { logged = log_.take(); };
    client_->setDelegate(std::move(delegate));
    client_->handleNewXPCDictionary(notification(GetParam().name));
    EXPECT_TRUE(logged.ends_with(line("Client MAC     : 02:00:00:00:01:2A"))) << logged;
    EXPECT_EQ(log_.take(), "");
}

TEST_P(XPCNotifications, InitialiseTheirCategory) {
    LogUtils_Finalize();
    const auto restored = gLogCategory_WiFiXPC;
    gLogCategory_WiFiXPC.initConfig = nullptr;  // no file
    gLogCategory_WiFiXPC.level = kLogLevelUninitialized;
    client_->handleNewXPCDictionary(notification(GetParam().name));
    EXPECT_NE(gLogCategory_WiFiXPC.level, kLogLevelUninitialized);
    LogUtils_Finalize();
    gLogCategory_WiFiXPC.initConfig = restored.initConfig;
}

TEST_P(XPCNotifications, AreNotLoggedAboveTheirLevel) {
    LogControl("^WiFiXPC$:level=error+1");
    client_->handleNewXPCDictionary(notification(GetParam().name));
    EXPECT_EQ(log_.take(), "");
    EXPECT_EQ(stations_.all().size(), 1u);
}

TEST_P(XPCNotifications, MayReplaceTheDelegate) {
    auto delegate = std::make_shared<HalvaneXPCClientDelegate>();
    *delegate.*GetParam().call = [this](const auto&...) { client_->setDelegate(nullptr); };
    client_->setDelegate(std::move(delegate));
    client_->handleNewXPCDictionary(notification(GetParam().name));
    EXPECT_EQ(client_->delegate(), nullptr);
}

using XPCDispatch = XPCNotifications;

TEST_P(XPCDispatch, IgnoresEveryOtherCommandSilently) {
    const std::string name = "org.halvane.halvaned.status.client." + GetParam().name;
    std::string upper = name;
    upper.back() = 'D';
    const PropertyListValue others[] = {
        "",
        name + "x",
        name + std::string("\0", 1),
        name.substr(0, name.size() - 1),
        " " + name,
        upper,
        GetParam().name,
        ".status.client." + GetParam().name,
        "org.halvane.halvaned",
        5,
        ByteBuffer::fromText(name),
        PropertyListValue(),
    };
    for (const auto& command : others) {
        client_->handleNewXPCDictionary(withValue("command", command));
        EXPECT_EQ(log_.take(), "");
    }
    client_->handleNewXPCDictionary(withoutKey("command"));
    client_->handleNewXPCDictionary(IPCMessage());
    EXPECT_EQ(log_.take(), "");
    EXPECT_TRUE(stations_.all().empty());
}

INSTANTIATE_TEST_SUITE_P(All, XPCDispatch, ::testing::ValuesIn(kEvents),
                         [](const auto& row) { return row.param.name; });

// --- Over the bus ---

// A station's address, which holds its number.
ByteBuffer numbered(unsigned number) {
    return {0x02,
            0x00,
            static_cast<std::uint8_t>(number >> 24),
            static_cast<std::uint8_t>(number >> 16),
            static_cast<std::uint8_t>(number >> 8),
            static_cast<std::uint8_t>(number)};
}

class XPCNotificationsOverTheBus : public XPCClientTest {
  protected:
    XPCNotificationsOverTheBus() { client_->setDelegate(stations_.delegate()); }
};

TEST_F(XPCNotificationsOverTheBus, ArriveInOrder) {
    const std::string client = clientName();
    for (const Event& event : kEvents) daemon_->sendEvent(notification(event.name), client);
    stations_.wait(3);
    EXPECT_EQ(stations_.all(),
              (std::vector<std::string>{
                  "authorized 02:00:00:00:01:2A wlan0", "joined 02:00:00:00:01:2A wlan0",
                  "kicked 02:00:00:00:01:2A wlan0", "left 02:00:00:00:01:2A wlan0"}));
}

TEST_F(XPCNotificationsOverTheBus, ArriveWhileARequestWaits) {
    const std::string client = clientName();
    daemon_->answer(PeerSilence());
    auto request = inBackground([this] { return client_->queryLogging(); });
    daemon_->waitForRequest(1);
    daemon_->sendEvent(notification("joined"), client);
    EXPECT_EQ(stations_.wait(0), "joined 02:00:00:00:01:2A wlan0");
    daemon_->answerHeld(ipcMessage({{"params", "text"}}));
    EXPECT_EQ(request.get(), "text");
}

TEST_F(XPCNotificationsOverTheBus, AreNotHeldUpOnTheWayOfReplies) {
    CountingSemaphore entered(0), left(0);
    client_->setDelegate(std::make_shared<HalvaneXPCClientDelegate>(
        HalvaneXPCClientDelegate{.clientJoined_forInterface = [&](const auto&, const auto&) {
            entered.signal();
            left.wait();
        }}));
    daemon_->sendEvent(notification("joined"), clientName());
    entered.wait();
    daemon_->answer(listReply<DeviceList>());
    EXPECT_EQ(client_->queryDeviceList(), DeviceList::records());
    left.signal();
    client_.reset();  // the call ends before the objects that it uses
}

TEST_F(XPCNotificationsOverTheBus, AreNotLostInABurstWhileRequestsRun) {
    constexpr unsigned kBurst = 10000;
    LogControl("^WiFiXPC$:level=off");
    daemon_->answer(listReply<DeviceList>());
    std::vector<ByteBuffer> seen;
    std::promise<void> all;
    client_->setDelegate(std::make_shared<HalvaneXPCClientDelegate>(HalvaneXPCClientDelegate{
        .clientJoined_forInterface = [&](const ByteBuffer& mac, const auto&) {
            seen.push_back(mac);
            if (seen.size() == kBurst) all.set_value();
        }}));
    const std::string client = clientName();
    std::atomic<bool> isOver = false;
    auto requests = inBackground([&] {
        int count = 0;
        for (; !isOver; ++count) EXPECT_EQ(client_->queryDeviceList(), DeviceList::records());
        return count;
    });
    for (unsigned i = 0; i < kBurst; ++i) {
        daemon_->sendEvent(notification("joined", numbered(i)), client);
    }
    all.get_future().wait();
    isOver = true;
    EXPECT_GT(requests.get(), 0);
    ASSERT_EQ(seen.size(), kBurst);
    for (unsigned i = 0; i < kBurst; ++i) ASSERT_EQ(seen[i], numbered(i));
}

TEST_F(XPCNotificationsOverTheBus, OfAnybodyButTheDaemonAreDropped) {
    const std::string client = clientName();
    BusPeer impostor(bus_, "");
    impostor.sendEvent(notification("kicked"), client);
    impostor.sendEvent(notification("kicked"), "");
    impostor.countConnections();  // the reply shows that the bus has accepted both
    daemon_->sendEvent(notification("joined"), client);
    EXPECT_EQ(stations_.wait(0), "joined 02:00:00:00:01:2A wlan0");
}

TEST_F(XPCNotificationsOverTheBus, ComeFromADaemonThatWasRestarted) {
    const std::string client = clientName();
    daemon_->disconnect();
    restartDaemon();
    EXPECT_EQ(clientName(), client);
    daemon_->sendEvent(notification("joined"), client);
    stations_.wait(0);
    EXPECT_EQ(log_.take(),
              "[,handleXPCEvent:@error] connection was interrupted\n"
              "[,handleNotificationClientJoined:@error] Command        : "
              "org.halvane.halvaned.status.client.joined\n"
              "[,handleNotificationClientJoined:@error] Interface      : wlan0\n"
              "[,handleNotificationClientJoined:@error] Client MAC     : 02:00:00:00:01:2A\n");
}

TEST_F(XPCNotificationsOverTheBus, MayFindTheDelegateBeingReplaced) {
    LogControl("^WiFiXPC$:level=off");
    const std::string client = clientName();
    std::atomic<bool> isOver = false;
    auto replacing = inBackground([&] {
        while (!isOver) {
            client_->setDelegate(nullptr);
            client_->setDelegate(stations_.delegate());
        }
    });
    for (unsigned i = 0; i < 200; ++i) {
        daemon_->sendEvent(notification("joined", numbered(i)), client);
    }
    isOver = true;
    replacing.get();
    daemon_->sendEvent(notification("left"), client);
    std::size_t count = 0;
    while (!stations_.wait(count).starts_with("left")) ++count;
    auto joined = stations_.all();
    joined.pop_back();
    EXPECT_TRUE(std::ranges::is_sorted(joined)) << "some may be lost, none comes out of turn";
}

}  // namespace
