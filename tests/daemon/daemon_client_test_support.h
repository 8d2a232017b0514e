// What tests of DaemonClient share.
#ifndef TESTS_DAEMON_DAEMON_CLIENT_TEST_SUPPORT_H
#define TESTS_DAEMON_DAEMON_CLIENT_TEST_SUPPORT_H

#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "halvane/daemon/daemon_client.h"

#include "tests/daemon/xpc_client_test_support.h"
#include "tests/support/bus_peer.h"
#include "tests/support/private_bus.h"
#include "tests/support/service_client.h"

namespace halvane::testing {

using DaemonKind = DaemonError::Kind;

inline const char* nameOf(DaemonState state) {
    switch (state) {
        case DaemonState::Connecting:
            return "connecting";
        case DaemonState::Connected:
            return "connected";
        case DaemonState::DaemonGone:
            return "daemon gone";
        case DaemonState::BusGone:
            return "bus gone";
        case DaemonState::Ending:
            break;
    }
    return "ending";
}

// "done", "status 5", or the text of another error.
template <typename T>
std::string outcomeOf(const DaemonResult<T>& result) {
    if (result) return "done";
    if (result.error().kind == DaemonKind::Refused) {
        return "status " + std::to_string(result.error().status);
    }
    return result.error().text();
}

inline std::string textOf(DaemonKind kind) {
    return DaemonError{kind}.text();
}

// Records what a client reports: "joined 02:00:00:00:01:2a wlan0", "connected", "renewal: done".
class EventRecorder : public Arrivals<std::string> {
  public:
    DaemonEvents events() {
        return {
            .station =
                [this](const StationChange& change) {
                    add(std::string(halvane::nameOf(change.kind)) + " " + change.address.text() +
                        " " + change.interface);
                },
            .state = [this](DaemonState state) { add(nameOf(state)); },
            .renewal =
                [this](const DaemonResult<void>& result) { add("renewal: " + outcomeOf(result)); }};
    }
};

// A client on a private bus, with a daemon that replies {"status": 0}.
class DaemonClientTest : public ::testing::Test {
  protected:
    template <typename Run>
    static auto inBackground(Run run) {
        return std::async(std::launch::async, std::move(run));
    }

    // Waits until the client has reported that it is connected.
    void connect() { EXPECT_EQ(events_.wait(0), "connected"); }

    // The client's name on the bus.
    std::string clientName() {
        const std::size_t before = daemon_->requests().size();
        EXPECT_TRUE(client_->enable("wlan0"));
        return daemon_->waitForRequest(before).sender;
    }

    void restartDaemon() { daemon_.emplace(bus_); }

    PrivateBus bus_;
    std::optional<BusPeer> daemon_{std::in_place, bus_};
    EventRecorder events_;
    std::unique_ptr<DaemonClient> client_ = std::make_unique<DaemonClient>(events_.events());
};

}  // namespace halvane::testing

#endif
