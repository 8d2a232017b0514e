// Threads that wait for replies and serve the connection meanwhile.
#include <chrono>
#include <cstddef>
#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <pthread.h>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/service_connection.h"
#include "halvane/platform/bus/shared_link_internal.h"

#include "tests/support/bus_peer.h"
#include "tests/support/child_process.h"
#include "tests/support/sanitizers.h"
#include "tests/support/scripted_bus.h"
#include "tests/support/serial_queue_waits.h"
#include "tests/support/service_client.h"
#include "tests/support/thread_names.h"

namespace {

using namespace halvane;
using namespace halvane::testing;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

constexpr const char* kOwner = ":1.5";
constexpr const char* kOwnThread = "alvane.halvaned";

// "reply NAME" for {"name": NAME}, "interrupted", "invalid", "failed", "none" for no reply, or "too
// late".
std::string outcomeOf(ServiceConnection::Request& request, const WaitEnd& end) {
    if (!request.wait(end)) return "too late";
    const auto reply = request.takeReply();
    if (!reply) return "none";
    if (*reply) return "reply " + eventName(**reply);
    return reply->error().kind == ServiceError::Kind::Other ? "failed" : eventName(reply->error());
}

// A thread of the program that waits for a reply.
class Waiting {
  public:
    explicit Waiting(ServiceConnection::Request request, const WaitEnd& end = {})
        : request_(std::move(request)),
          thread_([this, end] { outcome_.set_value(outcomeOf(request_, end)); }) {}
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() { thread_.join(); }

    std::string outcome() { return result_.get(); }
    std::thread::id id() const { return thread_.get_id(); }

  private:
    ServiceConnection::Request request_;
    std::promise<std::string> outcome_;
    std::future<std::string> result_ = outcome_.get_future();
    std::thread thread_;
};

// The test's thread is the bus and the service. A thread takes its place before its request is on
// the bus, so a request that has arrived is one whose thread waits.
class SharedLinkTest : public ::testing::Test {
  protected:
    SharedLinkTest() {
        bus_.accept();
        serve(4);
        bus_.answer(0, "s", ":1.1");
        bus_.answer(1, "");
        bus_.answer(2, "s", kOwner);
        bus_.answer(3, "");
    }

    // Handles the client's messages until it has made that many calls, the first four included.
    void serve(std::size_t calls) {
        while (bus_.members().size() < calls) {
            if (!bus_.process()) std::this_thread::yield();
        }
    }

    // The link is shared once two requests have been served, one after the other.
    void share() {
        for (int i = 0; i < 2; ++i) EXPECT_EQ(threadOfHandler(), kOwnThread);
    }

    ServiceConnection::Request request() {
        return client_.connection->request(ipcMessage({{"command", "x"}}));
    }

    // Starts a thread that waits for a reply, and returns when it waits.
    std::unique_ptr<Waiting> waiting(const WaitEnd& end = {}) {
        auto thread = std::make_unique<Waiting>(request(), end);
        serve(++calls_);
        return thread;
    }

    // Replies to the request number `index` of all requests after those of share(), counted from 0.
    void reply(std::size_t index, const char* name = "done") {
        bus_.answer(kFirst + index, "a{sv}", 1, "name", "s", name);
    }

    void sendEvent(const std::string& name) {
        bus_.signal(kOwner, {"/org/halvane/halvaned", kDaemonServiceName, "Event"}, "a{sv}", 1,
                    "name", "s", name.c_str());
    }

    // The name of the thread that handles what arrives at present, and its ID.
    std::string threadOfHandler() {
        std::promise<std::string> name;
        client_.connection->sendMessageWithReplyAtOnce(ipcMessage({{"command", "probe"}}),
                                                       [&](const ServiceReply&) {
                                                           leader_ = std::this_thread::get_id();
                                                           name.set_value(currentThreadName());
                                                       });
        serve(++calls_);
        bus_.answer(calls_ - 1, "a{sv}", 0);
        return name.get_future().get();
    }
    std::thread::id leader() {
        threadOfHandler();
        return leader_;
    }

    static constexpr std::size_t kFirst = 6;  // the call that is that request

    std::optional<ScriptedBus> scripted_{std::in_place};
    ScriptedBus& bus_ = *scripted_;
    ServiceClient client_;
    std::size_t calls_ = 4;
    std::thread::id leader_;
};

TEST_F(SharedLinkTest, IsServedByTheThreadThatWaits) {
    share();
    const auto thread = waiting();
    EXPECT_EQ(leader(), thread->id());
    reply(0);
    EXPECT_EQ(thread->outcome(), "reply done");
    EXPECT_EQ(threadOfHandler(), kOwnThread);
}

TEST_F(SharedLinkTest, PutsEventsOnTheirQueueInOrderWhileAThreadWaits) {
    share();
    EXPECT_EQ(client_.events.wait(0), "appeared");
    const auto thread = waiting();
    for (int i = 1; i <= 200; ++i) sendEvent(std::to_string(i));
    for (std::size_t i = 1; i <= 200; ++i) EXPECT_EQ(client_.events.wait(i), std::to_string(i));
    reply(0);
    EXPECT_EQ(thread->outcome(), "reply done");
    sendEvent("after");
    EXPECT_EQ(client_.events.wait(201), "after");
}

TEST_F(SharedLinkTest, IsHandedToTheThreadThatWaitsLongest) {
    share();
    const auto first = waiting(), second = waiting(), third = waiting();
    EXPECT_EQ(leader(), first->id());
    reply(1, "second");  // which does not lead
    EXPECT_EQ(second->outcome(), "reply second");
    const auto fourth = waiting();
    EXPECT_EQ(leader(), first->id());
    reply(0, "first");
    EXPECT_EQ(first->outcome(), "reply first");
    EXPECT_EQ(leader(), third->id());
    reply(2, "third");
    EXPECT_EQ(third->outcome(), "reply third");
    EXPECT_EQ(leader(), fourth->id());
    reply(4, "fourth");
    EXPECT_EQ(fourth->outcome(), "reply fourth");
    EXPECT_EQ(threadOfHandler(), kOwnThread);
}

TEST_F(SharedLinkTest, IsHandedOnAtTheLeadersDeadline) {
    share();
    const auto leading = waiting(std::chrono::steady_clock::now() + 200ms);
    const auto next = waiting();
    EXPECT_EQ(leading->outcome(), "too late");
    EXPECT_EQ(leader(), next->id());
    reply(0, "late");
    reply(1);
    EXPECT_EQ(next->outcome(), "reply done");
}

TEST_F(SharedLinkTest, GoesBackToItsOwnThreadAtTheLeadersDeadline) {
    share();
    const auto leading = waiting(std::chrono::steady_clock::now() + 20ms);
    EXPECT_EQ(leading->outcome(), "too late");
    EXPECT_EQ(threadOfHandler(), kOwnThread);
}

TEST_F(SharedLinkTest, LetsThreadsGiveUpThatDoNotLead) {
    share();
    const auto leading = waiting();
    const auto behind = waiting(std::chrono::steady_clock::now() + 20ms);
    EXPECT_EQ(behind->outcome(), "too late");
    EXPECT_EQ(leader(), leading->id());
    reply(0);
    EXPECT_EQ(leading->outcome(), "reply done");
    EXPECT_EQ(threadOfHandler(), kOwnThread);
}

TEST_F(SharedLinkTest, SendsRequestsWithoutAWaitWhileAThreadWaits) {
    share();
    const auto thread = waiting();
    Arrivals<std::string> replies;
    for (int i = 0; i < 3; ++i) {
        client_.connection->sendMessageWithReply(
            ipcMessage({{"command", "x"}}), client_.replyQueue,
            [&](const ServiceReply& reply) { replies.add(eventName(*reply)); });
    }
    serve(calls_ += 3);
    for (const std::size_t i : {3u, 1u, 2u}) reply(i, std::to_string(i).c_str());
    replies.wait(2);
    EXPECT_THAT(replies.all(), ElementsAre("3", "1", "2"));
    reply(0);
    EXPECT_EQ(thread->outcome(), "reply done");
}

// The sockets hold far less than these messages. The bus reads only when all of them wait.
TEST_F(SharedLinkTest, SendsMessagesThatTheBusIsSlowToRead) {
    share();
    const auto first = waiting();
    const std::string text(1000000, 'x');
    Waiting second(client_.connection->request(ipcMessage({{"text", text}})));
    client_.connection->sendMessageWithReply(ipcMessage({{"text", text}}), client_.replyQueue,
                                             nullptr);
    serve(calls_ += 2);
    reply(1);
    reply(2);
    reply(0);
    EXPECT_THAT(second.outcome(), ::testing::StartsWith("reply"));
    EXPECT_EQ(first->outcome(), "reply done");
}

TEST_F(SharedLinkTest, ServesThreadsThatWaitBeforeTheBusAdmitsThem) {
    SerialQueue queue("events");
    const auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    connection->setPrivileged(true);
    Waiting first(connection->request(ipcMessage({{"command", "x"}})));
    Waiting second(connection->request(ipcMessage({{"command", "x"}})));
    ScriptedBus bus;
    connection->resume();
    bus.accept();
    const auto serveUntil = [&](std::size_t calls) {
        while (bus.members().size() < calls) {
            if (!bus.process()) std::this_thread::yield();
        }
    };
    serveUntil(4);
    bus.answer(0, "s", ":1.1");
    serveUntil(6);
    bus.answer(4, "a{sv}", 1, "name", "s", "early");
    bus.answer(5, "a{sv}", 1, "name", "s", "early");
    EXPECT_EQ(first.outcome(), "reply early");
    EXPECT_EQ(second.outcome(), "reply early");
}

// --- The end ---

TEST_F(SharedLinkTest, TellsAllThreadsThatTheBusIsGone) {
    share();
    const auto first = waiting(), second = waiting();
    scripted_.reset();
    EXPECT_EQ(first->outcome(), "invalid");
    EXPECT_EQ(second->outcome(), "invalid");
    EXPECT_EQ(client_.events.wait(1), "invalid");
    auto late = request();
    EXPECT_EQ(outcomeOf(late, {}), "invalid");
}

TEST_F(SharedLinkTest, TellsTheLeaderThatTheServiceIsGone) {
    share();
    EXPECT_EQ(client_.events.wait(0), "appeared");
    const auto thread = waiting();
    bus_.tellOwner(kDaemonServiceName, kOwner, "");
    bus_.answerError(kFirst, "org.freedesktop.DBus.Error.NoReply");
    EXPECT_EQ(thread->outcome(), "interrupted");
    EXPECT_EQ(client_.events.wait(1), "interrupted");
}

TEST_F(SharedLinkTest, ReleasesAllThreadsWhenCancelled) {
    share();
    const auto first = waiting(), second = waiting();
    client_.connection->cancel();
    EXPECT_EQ(first->outcome(), "invalid");
    EXPECT_EQ(second->outcome(), "invalid");
}

TEST_F(SharedLinkTest, ReleasesAllThreadsWhenDestroyed) {
    share();
    const auto first = waiting(), second = waiting();
    auto unsent = request();
    client_.connection.reset();
    EXPECT_EQ(first->outcome(), "none");
    EXPECT_EQ(second->outcome(), "none");
    EXPECT_EQ(outcomeOf(unsent, {}), "none");
}

// A handler that is dropped on the leader's thread destroys what it owns there.
TEST_F(SharedLinkTest, MayBeDestroyedByItsLeader) {
    share();
    const auto thread = waiting();
    auto replies = std::make_unique<SerialQueue>("replies");
    std::promise<std::thread::id> destroyer;
    std::shared_ptr<void> owner(nullptr, [&](void*) {
        client_.connection.reset();
        destroyer.set_value(std::this_thread::get_id());
    });
    client_.connection->sendMessageWithReply(
        ipcMessage({{"command", "x"}}), *replies,
        [owner = std::move(owner)](const ServiceReply&) { ADD_FAILURE() << "called"; });
    serve(++calls_);
    replies.reset();
    reply(1);
    EXPECT_EQ(destroyer.get_future().get(), thread->id());
    EXPECT_EQ(thread->outcome(), "none");
}

// --- Threads that are cancelled, and other processes ---

// Cancels a thread that waits for a reply. The thread's own code does not run to its end.
class CancelledThread {
  public:
    explicit CancelledThread(ServiceConnection::Request request) : request_(std::move(request)) {
        ::pthread_create(&thread_, nullptr, &CancelledThread::run, this);
    }
    CancelledThread(const CancelledThread&) = delete;
    CancelledThread& operator=(const CancelledThread&) = delete;

    // Returns whether the thread was cancelled.
    bool cancel() {
        void* result = nullptr;
        ::pthread_cancel(thread_);
        ::pthread_join(thread_, &result);
        return result == PTHREAD_CANCELED;
    }

  private:
    static void* run(void* self) {
        static_cast<CancelledThread*>(self)->request_.wait();
        return nullptr;
    }

    ServiceConnection::Request request_;
    ::pthread_t thread_{};
};

TEST_F(SharedLinkTest, IsHandedOnByALeaderThatIsCancelled) {
    if (HALVANE_IS_SANITIZED) GTEST_SKIP() << "a sanitizer cannot follow a cancelled thread";
    share();
    CancelledThread leading(request());
    serve(++calls_);
    const auto next = waiting();
    EXPECT_TRUE(leading.cancel());
    EXPECT_EQ(leader(), next->id());
    CancelledThread behind(request());
    serve(++calls_);
    EXPECT_TRUE(behind.cancel());
    reply(1);
    EXPECT_EQ(next->outcome(), "reply done");
    EXPECT_EQ(threadOfHandler(), kOwnThread);
}

TEST_F(SharedLinkTest, IsLeftAloneByAnotherProcess) {
    share();
    const auto thread = waiting();
    auto made = request();
    ++calls_;  // the next request sends it too
    EXPECT_TRUE(isTrueInChild([&] {
        auto late = request();
        const bool isLost = outcomeOf(late, {}) == "none" && !made.wait();
        client_.connection.reset();
        return isLost;
    }));
    EXPECT_EQ(leader(), thread->id());
    reply(0);
    EXPECT_EQ(thread->outcome(), "reply done");
}

// --- Everything at once ---

TEST(SharedLinkOfManyThreads, GivesEachItsReplyAndLosesNoEvent) {
    constexpr int kThreads = 8, kRequests = 100;
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    client.exchange(ipcMessage({{"command", "subscribe"}}));
    const std::string subscriber = service.waitForRequest().sender;
    service.answerBy([](const ReceivedRequest& request) {
        return PeerAnswer(ipcMessage({{"name", request.command()}}));
    });
    std::vector<std::future<int>> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.push_back(std::async(std::launch::async, [&, i] {
            int wrong = 0;
            for (int j = 0; j < kRequests; ++j) {
                const std::string name = std::to_string(i * kRequests + j);
                auto request = client.connection->request(ipcMessage({{"command", name}}));
                // Some give up while they wait or lead.
                const bool isShort = j % 10 == 9;
                const auto end = isShort ? WaitEnd(std::chrono::steady_clock::now()) : WaitEnd();
                const auto outcome = outcomeOf(request, end);
                if (outcome != "reply " + name && !(isShort && outcome == "too late")) ++wrong;
            }
            return wrong;
        }));
    }
    constexpr std::size_t kEvents = 1000;
    for (std::size_t i = 1; i <= kEvents; ++i) {
        service.sendEvent(ipcMessage({{"name", std::to_string(i)}}), subscriber);
    }
    for (auto& thread : threads) EXPECT_EQ(thread.get(), 0);
    for (std::size_t i = 1; i <= kEvents; ++i) EXPECT_EQ(client.events.wait(i), std::to_string(i));
}

TEST(SharedLinkOfManyThreads, ReleasesThemWhateverGoes) {
    PrivateBus bus;
    for (int round = 0; round < 20; ++round) {
        auto service = std::make_unique<BusPeer>(bus);
        ServiceClient client;
        std::vector<std::future<void>> threads;
        for (int i = 0; i < 4; ++i) {
            threads.push_back(std::async(std::launch::async, [&] {
                for (std::string outcome; outcome != "invalid" && outcome != "none";) {
                    auto request = client.connection->request(ipcMessage({{"command", "x"}}));
                    outcome = outcomeOf(request, {});
                }
            }));
        }
        client.events.wait(0);
        service->disconnect();
        service = std::make_unique<BusPeer>(bus);
        client.exchange(ipcMessage({{"command", "y"}}));
        if (round % 2 == 0) {
            client.connection->cancel();
        } else {
            service.reset();  // which cannot send to a bus that is gone
            bus.kill();
        }
        for (auto& thread : threads) thread.get();
        service.reset();
        bus.restart();
    }
}

}  // namespace
