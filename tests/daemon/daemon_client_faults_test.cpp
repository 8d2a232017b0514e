// What goes wrong around DaemonClient: a daemon or a bus that goes and comes back, and an end at
// any moment.
#include <atomic>
#include <cstddef>
#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <vector>

#include "halvane/daemon/daemon_client.h"
#include "halvane/platform/os/counting_semaphore.h"
#include "halvane/platform/os/file_internal.h"

#include "tests/daemon/daemon_client_test_support.h"
#include "tests/support/child_process.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace halvane;
using namespace halvane::testing;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

using DaemonClientFaults = DaemonClientTest;

DaemonCompletion<void> noting(Arrivals<std::string>& outcomes) {
    return [&outcomes](DaemonResult<void> result) { outcomes.add(outcomeOf(result)); };
}

// --- The daemon ---

TEST_F(DaemonClientFaults, ReleasesWhatWaitsWhenTheDaemonGoes) {
    connect();
    daemon_->answer(PeerSilence());
    Arrivals<std::string> outcomes;
    client_->enable("wlan0", noting(outcomes));
    auto blocked = inBackground([this] { return outcomeOf(client_->disable("wlan0")); });
    daemon_->waitForRequest(1);
    daemon_.reset();
    EXPECT_EQ(blocked.get(), textOf(DaemonKind::DaemonLeft));
    EXPECT_EQ(outcomes.wait(0), textOf(DaemonKind::DaemonLeft));
    EXPECT_EQ(events_.wait(1), "daemon gone");
    EXPECT_EQ(client_->state(), DaemonState::DaemonGone);
}

TEST_F(DaemonClientFaults, TellsThatThereIsNoDaemon) {
    daemon_.reset();
    EventRecorder events;
    DaemonClient client(events.events());
    EXPECT_EQ(outcomeOf(client.enable("wlan0")), textOf(DaemonKind::NoDaemon));
    EXPECT_EQ(events.wait(0), "daemon gone");
    Arrivals<std::string> outcomes;
    client.enable("wlan0", noting(outcomes));
    EXPECT_EQ(outcomes.wait(0), textOf(DaemonKind::NoDaemon));
    restartDaemon();
    EXPECT_EQ(events.wait(1), "connected");
    EXPECT_TRUE(client.enable("wlan0"));
    EXPECT_EQ(events.all().size(), 2u);
}

TEST_F(DaemonClientFaults, FindsTheDaemonThatIsBack) {
    connect();
    for (int i = 0; i < 3; ++i) {
        daemon_.reset();
        const auto told = static_cast<std::size_t>(2 * i + 1);
        EXPECT_EQ(events_.wait(told), "daemon gone");
        EXPECT_EQ(outcomeOf(client_->enable("wlan0")), textOf(DaemonKind::NoDaemon));
        restartDaemon();
        EXPECT_EQ(events_.wait(told + 1), "connected");
        EXPECT_TRUE(client_->enable("wlan0"));
        EXPECT_EQ(daemon_->requests().size(), 1u) << "nothing was asked for, nothing is renewed";
    }
}

TEST_F(DaemonClientFaults, SubscribesAnewWhenTheDaemonIsBack) {
    connect();
    EXPECT_TRUE(client_->subscribe(true));
    daemon_.reset();
    EXPECT_EQ(events_.wait(1), "daemon gone");
    restartDaemon();
    EXPECT_EQ(events_.wait(2), "connected");
    EXPECT_EQ(events_.wait(3), "renewal: done");
    const auto request = daemon_->waitForRequest();
    EXPECT_EQ(request.keysAndTypes(), "command:s notifyAP:b");
    EXPECT_EQ(request.find("notifyAP")->value, PropertyListValue(true));
    daemon_->sendEvent(notification("joined"), request.sender);
    EXPECT_EQ(events_.wait(4), "joined 02:00:00:00:01:2a wlan0");
    EXPECT_EQ(daemon_->requests().size(), 1u);
}

TEST_F(DaemonClientFaults, TellsThatTheDaemonThatIsBackDoesNotAgree) {
    connect();
    EXPECT_TRUE(client_->subscribe(true));
    BusPeer other(bus_, "");
    other.answer(ipcMessage({{"status", 6}}));
    other.ownName();
    EXPECT_EQ(events_.wait(1), "daemon gone");
    EXPECT_EQ(events_.wait(2), "connected");
    EXPECT_EQ(events_.wait(3), "renewal: status 6");
}

TEST_F(DaemonClientFaults, RenewsNoSubscriptionThatWasGivenUp) {
    connect();
    EXPECT_TRUE(client_->subscribe(true));
    EXPECT_TRUE(client_->subscribe(false));
    daemon_.reset();
    EXPECT_EQ(events_.wait(1), "daemon gone");
    restartDaemon();
    EXPECT_EQ(events_.wait(2), "connected");
    EXPECT_TRUE(client_->enable("wlan0"));
    EXPECT_EQ(daemon_->requests().size(), 1u);
}

// The wish counts, not what came of it.
TEST_F(DaemonClientFaults, SubscribesWhenTheFirstDaemonComes) {
    daemon_.reset();
    EventRecorder events;
    DaemonClient client(events.events());
    EXPECT_EQ(events.wait(0), "daemon gone");
    EXPECT_EQ(outcomeOf(client.subscribe(true)), textOf(DaemonKind::NoDaemon));
    restartDaemon();
    EXPECT_EQ(events.wait(1), "connected");
    EXPECT_EQ(events.wait(2), "renewal: done");
    EXPECT_EQ(daemon_->waitForRequest().command(), "subscribe");
}

TEST_F(DaemonClientFaults, SubscribesOnceAtTheStart) {
    for (int i = 0; i < 20; ++i) {
        const auto before = daemon_->requests().size();
        DaemonClient client;
        EXPECT_TRUE(client.subscribe(true));
        EXPECT_TRUE(client.enable("wlan0"));
        EXPECT_EQ(daemon_->requests().size(), before + 2);
    }
}

// --- The bus ---

TEST_F(DaemonClientFaults, ReleasesWhatWaitsWhenTheBusGoes) {
    connect();
    daemon_->answer(PeerSilence());
    Arrivals<std::string> outcomes;
    client_->enable("wlan0", noting(outcomes));
    auto blocked = inBackground([this] { return outcomeOf(client_->disable("wlan0")); });
    daemon_->waitForRequest(1);
    bus_.kill();
    EXPECT_EQ(blocked.get(), textOf(DaemonKind::BusGone));
    EXPECT_EQ(outcomes.wait(0), textOf(DaemonKind::BusGone));
    EXPECT_EQ(events_.wait(1), "bus gone");
    EXPECT_EQ(outcomeOf(client_->enable("wlan0")), textOf(DaemonKind::BusGone));
    client_->enable("wlan0", noting(outcomes));
    EXPECT_EQ(outcomes.wait(1), textOf(DaemonKind::BusGone));
}

// Requests reach the connection after its end, and before the client handles its last event.
TEST_F(DaemonClientFaults, TellsRequestsThatComeTooLateForAConnectionThatTheBusIsGone) {
    connect();
    CountingSemaphore isRunning(0), mayEnd(0);
    client_->enable("wlan0", [&](DaemonResult<void>) {
        isRunning.signal();
        mayEnd.wait();
    });
    isRunning.wait();
    bus_.kill();
    EXPECT_EQ(outcomeOf(client_->disable("wlan0")), textOf(DaemonKind::BusGone));
    Arrivals<std::string> outcomes;
    constexpr std::size_t kRequests = 50;
    for (std::size_t i = 0; i < kRequests; ++i) {
        client_->enable("wlan0", noting(outcomes));
        EXPECT_EQ(outcomeOf(client_->disable("wlan0")), textOf(DaemonKind::BusGone));
    }
    mayEnd.signal();
    for (std::size_t i = 0; i < kRequests; ++i) {
        EXPECT_EQ(outcomes.wait(i), textOf(DaemonKind::BusGone));
    }
}

TEST_F(DaemonClientFaults, ComesBackWithTheBusAndSubscribesAnew) {
    connect();
    EXPECT_TRUE(client_->subscribe(true));
    bus_.kill();
    EXPECT_EQ(events_.wait(1), "bus gone");
    bus_.restart();
    EXPECT_EQ(events_.wait(2), "daemon gone") << "it is the bus alone that is back";
    EXPECT_EQ(outcomeOf(client_->enable("wlan0")), textOf(DaemonKind::NoDaemon));
    restartDaemon();
    EXPECT_EQ(events_.wait(3), "connected");
    EXPECT_EQ(events_.wait(4), "renewal: done");
    daemon_->sendEvent(notification("left"), daemon_->waitForRequest().sender);
    EXPECT_EQ(events_.wait(5), "left 02:00:00:00:01:2a wlan0");
}

TEST_F(DaemonClientFaults, FindsABusThatComesLater) {
    bus_.kill();
    EventRecorder events;
    DaemonClient client(events.events());
    EXPECT_EQ(events.wait(0), "bus gone");
    EXPECT_EQ(outcomeOf(client.subscribe(true)), textOf(DaemonKind::BusGone));
    bus_.restart();
    restartDaemon();
    std::size_t told = 1;
    if (events.wait(told) == "daemon gone") ++told;
    EXPECT_EQ(events.wait(told), "connected");
    EXPECT_EQ(events.wait(told + 1), "renewal: done");
}

TEST_F(DaemonClientFaults, StaysWithItsBusWhateverTheEnvironmentSaysLater) {
    connect();
    const ScopedEnvironment nowhere("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    bus_.kill();
    EXPECT_EQ(events_.wait(1), "bus gone");
    bus_.restart();
    EXPECT_EQ(events_.wait(2), "daemon gone");
}

TEST(DaemonClientWithoutABus, FailsAtOnce) {
    const ScopedEnvironment nowhere("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    DaemonClient client;
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(outcomeOf(client.interfaces()), textOf(DaemonKind::BusGone));
    }
    EXPECT_EQ(outcomeOf(client.enable("wlan0", 1h)), textOf(DaemonKind::BusGone));
}

// A socket that accepts connections and says nothing.
class SilentBus {
  public:
    explicit SilentBus(const std::string& path) {
        sockaddr_un address = {.sun_family = AF_UNIX, .sun_path = {}};
        path.copy(address.sun_path, sizeof(address.sun_path) - 1);
        EXPECT_EQ(::bind(listener_.number(), reinterpret_cast<const sockaddr*>(&address),
                         sizeof(address)),
                  0);
        EXPECT_EQ(::listen(listener_.number(), 1), 0);
    }

    // Waits for a client that connects.
    FileDescriptor accept() const {
        return FileDescriptor(::accept4(listener_.number(), nullptr, nullptr, SOCK_CLOEXEC));
    }

  private:
    const FileDescriptor listener_{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
};

TEST(DaemonClientWithoutABus, FailsAtOnceWhileItTriesAgain) {
    const TemporaryFolder folder;
    const std::string path = (folder.path() / "bus").string();
    const ScopedEnvironment address("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + path);
    EventRecorder events;
    DaemonClient client(events.events());
    EXPECT_EQ(events.wait(0), "bus gone");
    const SilentBus bus(path);
    const FileDescriptor attempt = bus.accept();
    EXPECT_EQ(client.state(), DaemonState::BusGone);
    EXPECT_EQ(outcomeOf(client.enable("wlan0", 1s)), textOf(DaemonKind::BusGone));
    Arrivals<std::string> outcomes;
    client.enable("wlan0", noting(outcomes));
    EXPECT_EQ(outcomes.wait(0), textOf(DaemonKind::BusGone));
}

// --- The end ---

TEST_F(DaemonClientFaults, MayEndRightAway) {
    for (int i = 0; i < 50; ++i) DaemonClient();
}

TEST_F(DaemonClientFaults, ReleasesWhatIsBlockedAtItsEnd) {
    connect();
    daemon_->answer(PeerSilence());
    std::vector<std::future<std::string>> blocked;
    for (int i = 0; i < 4; ++i) {
        blocked.push_back(
            inBackground([client = client_.get()] { return outcomeOf(client->enable("wlan0")); }));
    }
    blocked.push_back(
        inBackground([client = client_.get()] { return outcomeOf(client->stop("wlan0", 1h)); }));
    daemon_->waitForRequest(4);
    client_.reset();
    for (auto& request : blocked) EXPECT_EQ(request.get(), textOf(DaemonKind::Ending));
}

TEST_F(DaemonClientFaults, CallsWhatIsLeftAtItsEndInOrder) {
    connect();
    daemon_->answer(PeerSilence());
    std::vector<std::string> outcomes;
    const auto here = std::this_thread::get_id();
    for (const char* name : {"first ", "second ", "third "}) {
        client_->enable("wlan0", [&, name](DaemonResult<void> result) {
            EXPECT_EQ(std::this_thread::get_id(), here);
            outcomes.push_back(name + outcomeOf(result));
        });
    }
    daemon_->waitForRequest(2);
    client_.reset();
    const std::string ending = textOf(DaemonKind::Ending);
    EXPECT_THAT(outcomes, ElementsAre("first " + ending, "second " + ending, "third " + ending));
}

// Each is called once, whatever the moment.
TEST_F(DaemonClientFaults, LosesNoCompletionAtItsEnd) {
    for (int i = 0; i < 30; ++i) {
        std::atomic<int> calls = 0;
        auto client = std::make_unique<DaemonClient>();
        for (int j = 0; j < 30; ++j) client->enable("wlan0", [&](DaemonResult<void>) { ++calls; });
        if (i % 2 == 0) {
            EXPECT_TRUE(client->disable("wlan0"));
        }
        client.reset();
        EXPECT_EQ(calls, 30);
    }
}

TEST_F(DaemonClientFaults, AnswersACompletionThatAsksAtTheEnd) {
    connect();
    daemon_->answer(PeerSilence());
    std::vector<std::string> outcomes;
    client_->enable("wlan0", [&, client = client_.get()](DaemonResult<void>) {
        outcomes.push_back(outcomeOf(client->disable("wlan0")));
        client->stop("wlan0",
                     [&](DaemonResult<void> result) { outcomes.push_back(outcomeOf(result)); });
    });
    daemon_->waitForRequest();
    client_.reset();
    const std::string ending = textOf(DaemonKind::Ending);
    EXPECT_THAT(outcomes, ElementsAre(ending, ending));
}

TEST_F(DaemonClientFaults, MayEndInEachOfItsEvents) {
    connect();
    const auto endAt = [](const std::string& when, auto happen) {
        std::unique_ptr<DaemonClient> client;
        CountingSemaphore isMade(0), hasEnded(0);
        std::atomic<int> later = 0;
        std::atomic<bool> isThere = true;
        const auto end = [&](const std::string& what) {
            if (!isThere) ++later;
            if (what != when || !isThere) return;
            isMade.wait();
            client.reset();
            isThere = false;
            hasEnded.signal();
        };
        client = std::make_unique<DaemonClient>(
            DaemonEvents{.station = [&](const StationChange&) { end("station"); },
                         .state = [&](DaemonState state) { end(nameOf(state)); },
                         .renewal = [&](const DaemonResult<void>&) { end("renewal"); }});
        isMade.signal();
        if (when != "connected") {
            EXPECT_TRUE(client->subscribe(true));
        }
        happen();
        hasEnded.wait();
        EXPECT_EQ(client, nullptr);
        EXPECT_EQ(later, 0) << when;
    };
    const auto sendTwo = [this] {
        const std::string name = daemon_->requests().back().sender;
        for (int i = 0; i < 2; ++i) daemon_->sendEvent(notification("joined"), name);
    };
    const auto replaceDaemon = [this] {
        daemon_.reset();
        restartDaemon();
    };
    endAt("station", sendTwo);
    endAt("connected", [] {});
    endAt("daemon gone", replaceDaemon);
    endAt("renewal", replaceDaemon);
    endAt("bus gone", [this] { bus_.kill(); });
}

TEST_F(DaemonClientFaults, MayEndInACompletion) {
    connect();
    const std::string ending = textOf(DaemonKind::Ending);
    std::vector<std::string> outcomes;
    std::promise<void> ended;
    daemon_->answerBy([](const ReceivedRequest& request) {
        if (request.command() == "disable") return PeerAnswer(PeerSilence());
        return PeerAnswer(ipcMessage({{"status", 0}}));
    });
    client_->disable("wlan0",
                     [&](DaemonResult<void> result) { outcomes.push_back(outcomeOf(result)); });
    client_->enable("wlan0", [&](DaemonResult<void>) {
        client_.reset();
        ended.set_value();
    });
    ended.get_future().wait();
    EXPECT_THAT(outcomes, ElementsAre(ending));
}

TEST_F(DaemonClientFaults, WaitsForAnEventThatIsRunning) {
    CountingSemaphore entered(0);
    std::atomic<bool> hasLeft = false;
    DaemonClient* made = nullptr;
    CountingSemaphore isMade(0);
    auto client = std::make_unique<DaemonClient>(DaemonEvents{.state = [&](DaemonState) {
        isMade.wait();
        entered.signal();
        while (made->enable("wlan0")) {  // until the end has begun
        }
        hasLeft = true;
    }});
    made = client.get();
    isMade.signal();
    entered.wait();
    client.reset();
    EXPECT_TRUE(hasLeft);
}

TEST_F(DaemonClientFaults, MayEndWhileItTriesToComeBack) {
    connect();
    bus_.kill();
    EXPECT_EQ(events_.wait(1), "bus gone");
    client_.reset();
}

TEST_F(DaemonClientFaults, LeavesTheBusAtItsEnd) {
    connect();
    const auto before = daemon_->countConnections();
    client_.reset();
    while (daemon_->countConnections() == before) std::this_thread::yield();
    EXPECT_EQ(daemon_->countConnections(), before - 1);
}

// --- Another process ---

TEST_F(DaemonClientFaults, FailsAtOnceInAnotherProcess) {
    connect();
    EXPECT_TRUE(isTrueInChild([this] {
        std::string outcome;
        client_->enable("wlan0", [&](DaemonResult<void> done) { outcome = outcomeOf(done); });
        return outcome == textOf(DaemonKind::Ending) && client_->state() == DaemonState::Ending &&
               outcomeOf(client_->devices()) == outcome;
    }));
    EXPECT_TRUE(isTrueInChild([this] {
        client_.reset();
        return true;
    }));
    EXPECT_TRUE(client_->enable("wlan0"));
    EXPECT_EQ(daemon_->requests().size(), 1u);
}

}  // namespace
