// How DaemonClient keeps the setting of notifications: whatever comes of the request, and while
// memory is short.
#include <atomic>
#include <chrono>
#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>

#include "halvane/daemon/daemon_client.h"

#include "tests/daemon/daemon_client_test_support.h"
#include "tests/support/scarce_memory.h"

namespace {

using namespace halvane;
using namespace halvane::testing;
using namespace std::chrono_literals;

class DaemonClientSubscription : public DaemonClientTest {
  protected:
    // The next event.
    std::string event() { return events_.wait(told_++); }

    void expectRenewal() {
        daemon_.reset();
        EXPECT_EQ(event(), "daemon gone");
        restartDaemon();
        EXPECT_EQ(event(), "connected");
        EXPECT_EQ(event(), "renewal: done");
        EXPECT_EQ(daemon_->waitForRequest().command(), "subscribe");
    }

    void expectNoRenewal() {
        daemon_.reset();
        EXPECT_EQ(event(), "daemon gone");
        restartDaemon();
        EXPECT_EQ(event(), "connected");
        EXPECT_TRUE(client_->enable("wlan0"));
        EXPECT_EQ(daemon_->requests().size(), 1u);
    }

  private:
    std::size_t told_ = 0;
};

TEST_F(DaemonClientSubscription, IsKeptThoughItsDeadlineHasPassed) {
    EXPECT_EQ(event(), "connected");
    EXPECT_EQ(outcomeOf(client_->subscribe(true, 0ms)), textOf(DaemonKind::DeadlinePassed));
    EXPECT_EQ(daemon_->requests().size(), 0u);
    expectRenewal();
    EXPECT_EQ(outcomeOf(client_->subscribe(false, 0ms)), textOf(DaemonKind::DeadlinePassed));
    expectNoRenewal();
}

TEST_F(DaemonClientSubscription, IsKeptThoughThereIsNoRoomForTheRequest) {
    EXPECT_EQ(event(), "connected");
    const auto subscribe = [this](std::size_t left) {
        const ScarceMemory memory(left);
        return client_->subscribe(true);
    };
    std::size_t left = 0;
    while (outcomeOf(subscribe(left)) == textOf(DaemonKind::OutOfMemory)) {
        expectRenewal();
        EXPECT_TRUE(client_->subscribe(false));
        ++left;
    }
    EXPECT_GE(left, 3u);
}

TEST_F(DaemonClientSubscription, IsKeptThoughThereIsNoRoomForTheRequestOfACompletion) {
    EXPECT_EQ(event(), "connected");
    const auto subscribe = [this](std::size_t left) {
        const DaemonCompletion<void> done = [](const DaemonResult<void>&) {};
        const ScarceMemory memory(left);
        client_->subscribe(true, done);
        return memory.hasEnded();
    };
    std::size_t left = 0;
    while (subscribe(left)) {
        expectRenewal();
        EXPECT_TRUE(client_->subscribe(false));
        ++left;
    }
    EXPECT_GE(left, 3u);
}

// Memory is short on the client's queue from the loss of the daemon until the next event.
TEST_F(DaemonClientSubscription, IsRenewedOrReportedWhileMemoryIsShort) {
    std::atomic<std::size_t> left = 0;
    std::optional<ScarceMemory> memory;
    Arrivals<std::string> events;
    DaemonClient client({.state =
                             [&](DaemonState state) {
                                 memory.reset();
                                 events.add(nameOf(state));
                                 if (state == DaemonState::DaemonGone) memory.emplace(left);
                             },
                         .renewal =
                             [&](const DaemonResult<void>& result) {
                                 memory.reset();
                                 events.add(outcomeOf(result));
                             }});
    EXPECT_TRUE(client.subscribe(true));
    EXPECT_EQ(events.wait(0), "connected");
    std::string outcome;
    for (std::size_t told = 1; outcome != "done"; told += 3, ++left) {
        daemon_.reset();
        EXPECT_EQ(events.wait(told), "daemon gone");
        restartDaemon();
        EXPECT_EQ(events.wait(told + 1), "connected");
        outcome = events.wait(told + 2);
        ASSERT_TRUE(outcome == "done" || outcome == textOf(DaemonKind::OutOfMemory)) << outcome;
    }
    EXPECT_GE(left, 3u);
}

}  // namespace
