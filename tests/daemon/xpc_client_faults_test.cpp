// Faults around the client: a daemon or a bus that goes away, wrong replies, and an end at any
// moment.
#include <array>
#include <atomic>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <fcntl.h>
#include <ostream>
#include <string_view>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <thread>
#include <unistd.h>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/xpc_client_delegate.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/os/counting_semaphore.h"
#include "halvane/platform/os/file_internal.h"

#include "tests/daemon/xpc_client_test_support.h"
#include "tests/support/child_process.h"
#include "tests/support/private_bus.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/thread_names.h"

namespace {

using namespace halvane;
using namespace halvane::testing;

// A reply whose "status" is of any type: reply("u", 5u).
template <typename... Value>
PeerBody statusOfType(const char* type, Value... value) {
    return [=](sd_bus_message* message) {
        ::sd_bus_message_open_container(message, 'a', "{sv}");
        ::sd_bus_message_open_container(message, 'e', "sv");
        ::sd_bus_message_append(message, "s", "status");
        ::sd_bus_message_append(message, "v", type, value...);
        ::sd_bus_message_close_container(message);
        ::sd_bus_message_close_container(message);
    };
}

class XPCClientFaults : public XPCClientTest {
  protected:
    // The error of a request for a list.
    std::optional<Error> errorOfRequest() {
        std::optional<Error> error = daemonError(77);
        EXPECT_TRUE(client_->queryDeviceList(&error).empty());
        return error;
    }

    void expectHealthy() {
        daemon_->answer(listReply<DeviceList>());
        std::optional<Error> error = daemonError(77);
        EXPECT_EQ(client_->queryDeviceList(&error), DeviceList::records());
        EXPECT_EQ(error, std::nullopt);
    }
};

TEST_F(XPCClientFaults, ReleasesTheCallerWhenTheDaemonDisconnects) {
    daemon_->answer(PeerSilence());
    auto request = inBackground([this] { return errorOfRequest(); });
    daemon_->waitForRequest();
    daemon_->disconnect();
    EXPECT_EQ(request.get(), kNoReply);
}

// Owns the daemon's name, and never replies. It runs in a child until a signal ends it. It writes
// to `progress` when it has the name, and for every request.
[[noreturn]] void runSilentDaemon(const std::string& address, int progress) {
    sd_bus* bus = nullptr;
    const auto tell = [](sd_bus_message* message, void* pipe, sd_bus_error*) noexcept {
        const bool isRequest = ::sd_bus_message_is_method_call(message, nullptr, "Request") > 0;
        return isRequest && ::write(*static_cast<int*>(pipe), "r", 1) == 1 ? 1 : 0;
    };
    const bool isReady =
        ::sd_bus_new(&bus) >= 0 && ::sd_bus_set_address(bus, address.c_str()) >= 0 &&
        ::sd_bus_set_bus_client(bus, 1) >= 0 && ::sd_bus_start(bus) >= 0 &&
        ::sd_bus_add_filter(bus, nullptr, tell, &progress) >= 0 &&
        ::sd_bus_request_name(bus, kDaemonServiceName, 0) >= 0 && ::write(progress, "n", 1) == 1;
    while (isReady && ::sd_bus_process(bus, nullptr) >= 0) ::sd_bus_wait(bus, UINT64_MAX);
    ::_exit(1);
}

TEST(XPCClientOfAnotherProcess, IsReleasedWhenThatIsKilled) {
    XPCLog log("off");
    PrivateBus bus;
    std::array<int, 2> progress{};
    ASSERT_EQ(::pipe2(progress.data(), O_CLOEXEC), 0);
    const FileDescriptor reading(progress[0]), writing(progress[1]);
    const pid_t daemon = startChild([&]() -> bool { runSilentDaemon(bus.address(), progress[1]); });
    char told = 0;
    ASSERT_EQ(::read(progress[0], &told, 1), 1);

    const auto client = HalvaneXPCClient::init();
    auto request = std::async(std::launch::async, [&] {
        std::optional<Error> error;
        client->queryDeviceList(&error);
        return error;
    });
    ASSERT_EQ(::read(progress[0], &told, 1), 1);
    EXPECT_EQ(told, 'r');
    ::kill(daemon, SIGKILL);
    ::waitpid(daemon, nullptr, 0);
    EXPECT_EQ(request.get(), kNoReply);
}

TEST_F(XPCClientFaults, FindsADaemonThatWasRestarted) {
    daemon_->answer(PeerLeaves());
    EXPECT_EQ(errorOfRequest(), kNoReply);
    EXPECT_EQ(errorOfRequest(), kNoReply) << "nobody is there";
    restartDaemon();
    expectHealthy();
}

TEST_F(XPCClientFaults, FindsADaemonThatComesLater) {
    daemon_.reset();
    const auto early = HalvaneXPCClient::init();
    std::optional<Error> error;
    early->queryDeviceList(&error);
    EXPECT_EQ(error, kNoReply);
    restartDaemon();
    early->queryDeviceList(&error);
    EXPECT_EQ(error, std::nullopt);
}

TEST_F(XPCClientFaults, ReleasesTheCallerWhenTheBusIsKilled) {
    daemon_->answer(PeerSilence());
    auto request = inBackground([this] { return errorOfRequest(); });
    daemon_->waitForRequest();
    bus_.kill();
    EXPECT_EQ(request.get(), kNoReply);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(errorOfRequest(), kNoReply);
    EXPECT_TRUE(client_->enableInterface_error("wlan0"));
    EXPECT_EQ(client_->queryLogging(), std::nullopt);
}

TEST_F(XPCClientFaults, LogsThatTheBusIsGoneOnce) {
    client_->queryLogging();
    bus_.kill();
    log_.waitFor("connection was invalidated\n");
    client_->queryLogging();
    client_.reset();
    EXPECT_EQ(log_.take(), "[,handleXPCEvent:@error] connection was invalidated\n");
}

TEST(XPCClientWithoutABus, FailsEveryRequest) {
    XPCLog log("off");
    const ScopedEnvironment nowhere("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    const auto client = HalvaneXPCClient::init();
    for (int i = 0; i < 3; ++i) {
        std::optional<Error> error;
        EXPECT_TRUE(client->queryInterfaceList(&error).empty());
        EXPECT_EQ(error, kNoReply);
        EXPECT_TRUE(client->bssStop_error("wlan0"));
        EXPECT_EQ(client->queryLogging(), std::nullopt);
    }
}

// --- Replies ---

TEST_F(XPCClientFaults, TakesAStatusOfAnotherTypeForAMissingOne) {
    for (const PeerBody& body : {statusOfType("s", "5"), statusOfType("d", 5.0),
                                 statusOfType("b", 1), statusOfType("o", "/five")}) {
        daemon_->answer(body);
        EXPECT_EQ(errorOfRequest(), std::nullopt);
    }
}

TEST_F(XPCClientFaults, TakesAStatusOfAnotherWidthForTheNumber) {
    for (const PeerBody& body :
         {statusOfType("x", std::int64_t{5}), statusOfType("i", 5), statusOfType("u", 5u)}) {
        daemon_->answer(body);
        EXPECT_EQ(errorOfRequest(), daemonError(5));
    }
}

TEST_F(XPCClientFaults, TakesAReplyThatIsNoDictionaryForAnError) {
    daemon_->answer(PeerBody(
        [](sd_bus_message* message) { ::sd_bus_message_append(message, "s", "no dictionary"); }));
    EXPECT_EQ(errorOfRequest(), kNoReply);
    daemon_->answer(PeerBody([](sd_bus_message*) {}));
    EXPECT_EQ(errorOfRequest(), kNoReply);
    expectHealthy();
}

TEST_F(XPCClientFaults, ReadsAListOf16Megabytes) {
    constexpr std::size_t kMegabyte = 1 << 20;
    PropertyListArray skeletons;
    const auto config = ByteBuffer(std::vector<std::uint8_t>(kMegabyte / 4, 0x5A));
    for (unsigned i = 0; i < 48; ++i) {
        auto skeleton = HalvaneClient::initWithMAC(kStation).skeletonRepresentation();
        skeleton.set("RawIEBuffer", config);
        skeleton.set("deauthReason", i);
        skeletons.emplace_back(skeleton);
    }
    const ByteBuffer data = xmlData(skeletons);
    ASSERT_GE(data.size(), 16 * kMegabyte);
    daemon_->answer(ipcMessage({{"status", 0}, {"clients", data}}));
    std::optional<Error> error;
    const auto clients = client_->queryClientList_error(std::nullopt, &error);
    EXPECT_EQ(error, std::nullopt);
    ASSERT_EQ(clients.size(), skeletons.size());
    for (unsigned i = 0; i < clients.size(); ++i) EXPECT_EQ(clients[i].deauthReason(), i);
}

TEST_F(XPCClientFaults, FailsForARequestThatNoBusTakes) {
    const std::string longName(40'000'000, 'a');
    std::optional<Error> error;
    EXPECT_TRUE(client_->queryChannelList_error(longName, &error).empty());
    EXPECT_EQ(error, kNoReply);
    EXPECT_EQ(daemon_->requests().size(), 0u);
    expectHealthy();
}

TEST(XPCClientOnASmallBus, FailsForAReplyBeyondTheBussLimit) {
    XPCLog log("off");
    constexpr long kLimit = 1 << 20;
    PrivateBus bus({.limits = {{"max_message_size", kLimit}}, .activatableService = {}});
    std::optional<BusPeer> daemon(std::in_place, bus);
    const auto client = HalvaneXPCClient::init();
    daemon->answer(ipcMessage({{"status", 0}, {"params", std::string(2 * kLimit, 'a')}}));
    std::optional<Error> error;
    client->queryDeviceList(&error);
    EXPECT_EQ(error, kNoReply);
    daemon->waitUntilDisconnected();
    daemon.emplace(bus);
    client->queryDeviceList(&error);
    EXPECT_EQ(error, std::nullopt);
}

TEST_F(XPCClientFaults, FailsForAReplyBeyondWhatABusUsuallyTakes) {
    constexpr std::size_t kLimit = 32 << 20;
    daemon_->answer(
        ipcMessage({{"status", 0}, {"devices", ByteBuffer(std::vector<std::uint8_t>(kLimit))}}));
    EXPECT_EQ(errorOfRequest(), kNoReply);
    daemon_->waitUntilDisconnected();
    restartDaemon();
    expectHealthy();
}

// --- Another process ---

TEST_F(XPCClientFaults, FailsAtOnceInAnotherProcess) {
    client_->queryLogging();
    EXPECT_TRUE(isTrueInChild([this] {
        std::optional<Error> error;
        client_->setDelegate(nullptr);
        return client_->queryDeviceList(&error).empty() && error == kNoReply &&
               client_->enableInterface_error("wlan0") && !client_->queryLogging();
    }));
    EXPECT_EQ(daemon_->requests().size(), 1u);
    expectHealthy();
}

TEST_F(XPCClientFaults, NeedsNoLockInAnotherProcess) {
    const auto delegate = stations_.delegate();
    std::atomic<bool> isOver = false;
    auto replacing = inBackground([&] {
        while (!isOver) client_->setDelegate(delegate);
    });
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(isTrueInChild([this] {
            client_->setDelegate(stations_.delegate());
            return client_->delegate() == nullptr;
        }));
    }
    isOver = true;
    replacing.get();
    EXPECT_EQ(client_->delegate(), delegate);
}

TEST_F(XPCClientFaults, MayEndInAnotherProcess) {
    client_->queryLogging();
    const auto end = [this] {
        client_.reset();
        return true;
    };
    EXPECT_TRUE(isTrueInChild(end));
    expectHealthy();
    bus_.kill();
    log_.waitFor("connection was invalidated\n");
    EXPECT_TRUE(isTrueInChild(end));
}

// --- The end ---

TEST_F(XPCClientFaults, MayEndRightAway) {
    for (int i = 0; i < 50; ++i) HalvaneXPCClient::init();
    EXPECT_EQ(log_.take(), "") << "an end is no fault";
}

TEST_F(XPCClientFaults, MayEndOnAnotherThread) {
    client_->queryLogging();
    inBackground([this] { client_.reset(); }).get();
}

TEST_F(XPCClientFaults, MakesNoCallAfterItsEnd) {
    LogControl("^WiFiXPC$:level=off");
    for (int i = 0; i < 20; ++i) {
        client_ = HalvaneXPCClient::init();
        std::atomic<bool> isThere = true;
        std::atomic<int> calls = 0;
        client_->setDelegate(std::make_shared<HalvaneXPCClientDelegate>(
            HalvaneXPCClientDelegate{.clientJoined_forInterface = [&](const auto&, const auto&) {
                EXPECT_TRUE(isThere);
                ++calls;
            }}));
        const std::string client = clientName();
        for (int j = 0; j < 20; ++j) daemon_->sendEvent(notification("joined"), client);
        client_.reset();
        isThere = false;
        EXPECT_LE(calls, 20);
    }
}

TEST_F(XPCClientFaults, WaitsForADelegateCallThatIsRunning) {
    CountingSemaphore entered(0);
    std::atomic<bool> hasLeft = false;
    daemon_->answer(ipcMessage({{"params", "text"}}));
    client_->setDelegate(std::make_shared<HalvaneXPCClientDelegate>(HalvaneXPCClientDelegate{
        .clientJoined_forInterface = [&, client = client_.get()](const auto&, const auto&) {
            entered.signal();
            while (client->queryLogging()) {  // until the end has begun
            }
            hasLeft = true;
        }}));
    daemon_->sendEvent(notification("joined"), clientName());
    entered.wait();
    client_.reset();
    EXPECT_TRUE(hasLeft);
}

TEST_F(XPCClientFaults, ReleasesADelegateCallThatWaitsForAReply) {
    std::promise<std::optional<Error>> failure;
    client_->setDelegate(std::make_shared<HalvaneXPCClientDelegate>(HalvaneXPCClientDelegate{
        .clientJoined_forInterface = [&, client = client_.get()](const auto&, const auto&) {
            std::optional<Error> error;
            client->queryDeviceList(&error);
            client->queryDeviceList(&error);  // the end may have begun by then
            failure.set_value(error);
        }}));
    const std::string client = clientName();
    daemon_->answer(PeerSilence());
    daemon_->sendEvent(notification("joined"), client);
    daemon_->waitForRequest(1);
    client_.reset();
    EXPECT_EQ(failure.get_future().get(), kNoReply);
}

TEST_F(XPCClientFaults, MayEndInADelegateCall) {
    std::promise<void> ended;
    client_->setDelegate(std::make_shared<HalvaneXPCClientDelegate>(
        HalvaneXPCClientDelegate{.clientJoined_forInterface = [&](const auto&, const auto&) {
            client_.reset();
            ended.set_value();
        }}));
    const std::string client = clientName();
    for (int i = 0; i < 3; ++i) daemon_->sendEvent(notification("joined"), client);
    ended.get_future().wait();
    EXPECT_EQ(client_, nullptr);
}

// A line of the client's log, and what makes it.
struct LineRow {
    std::string name;
    const char* line;
    void (*happen)(BusPeer& daemon, PrivateBus& bus);

    // In the names of tests.
    friend void PrintTo(const LineRow& row, std::ostream* stream) { *stream << row.name; }
};

void sendJoined(BusPeer& daemon, PrivateBus&) {
    daemon.sendEvent(notification("joined"), daemon.requests().back().sender);
}

const LineRow kLines[] = {
    {"Dictionary", "Halvane Notification RX DICTIONARY", sendJoined},
    {"Command", "Command  ", sendJoined},
    {"Interface", "Interface  ", sendJoined},
    {"Address", "Client MAC  ", sendJoined},
    {"Interrupted", "connection was interrupted",
     [](BusPeer& daemon, PrivateBus&) { daemon.disconnect(); }},
    {"Invalidated", "connection was invalidated", [](BusPeer&, PrivateBus& bus) { bus.kill(); }},
};

class XPCClientLine : public XPCClientTest, public ::testing::WithParamInterface<LineRow> {
  protected:
    // Ends the client at the line of the test.
    static void record(const LogMessage*, const char* text, std::size_t length, void* arg) {
        auto& test = *static_cast<XPCClientLine*>(arg);
        const std::string_view line(text, length);
        if (!test.client_ || line.find(GetParam().line) == std::string_view::npos) return;
        test.client_.reset();
        test.hasEnded_.signal();
    }

    // The queue's thread, on which the client ends, runs on for a while. The lock of the log makes
    // its work up to its last line visible.
    static void waitUntilTheQueueIsGone() {
        while (threadNames().count("onnection.queue") > 0) std::this_thread::yield();
        LogControl("^WiFiXPC$:level=off");
    }

    CountingSemaphore hasEnded_{0};
};

TEST_P(XPCClientLine, MayEndTheClient) {
    client_->setDelegate(stations_.delegate());
    client_->queryLogging();
    char output[100];
    SNPrintF(output, sizeof(output), "^WiFiXPC$:output=callback;func=%p;arg=%p",
             reinterpret_cast<const void*>(&XPCClientLine::record), this);
    LogControl(output);
    LogControl("^WiFiXPC$:level=verbose");
    GetParam().happen(*daemon_, bus_);
    hasEnded_.wait();
    waitUntilTheQueueIsGone();
    EXPECT_TRUE(stations_.all().empty()) << "no call after the end";
}

INSTANTIATE_TEST_SUITE_P(All, XPCClientLine, ::testing::ValuesIn(kLines),
                         [](const auto& row) { return row.param.name; });

TEST_F(XPCClientFaults, MayEndWhenTheBusIsGone) {
    bus_.kill();
    client_.reset();
}

TEST_F(XPCClientFaults, LeavesTheBusWhenItEnds) {
    client_->queryLogging();
    const auto before = daemon_->countConnections();
    client_.reset();
    while (daemon_->countConnections() == before) std::this_thread::yield();
    EXPECT_EQ(daemon_->countConnections(), before - 1);
}

}  // namespace
