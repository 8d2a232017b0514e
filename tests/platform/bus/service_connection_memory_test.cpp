// What a connection reports while memory is short on its own thread.
#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>

#include "halvane/platform/bus/service_connection.h"
#include "halvane/platform/os/counting_semaphore.h"

#include "tests/support/bus_peer.h"
#include "tests/support/private_bus.h"
#include "tests/support/replaced_new.h"
#include "tests/support/service_client.h"

namespace {

using namespace halvane;
using namespace halvane::testing;

// From the reply of a request on, the connection's next `count` allocations fail.
void failAllocations(ServiceClient& client, std::size_t count) {
    thread_local std::size_t left = 0;
    CountingSemaphore done(0);
    client.connection->sendMessageWithReplyAtOnce(
        ipcMessage({{"command", "x"}}), [&, count](const ServiceReply&) {
            left = count;
            memoryHooks().mayAllocate = [](std::size_t) { return left == 0 || left-- == 0; };
            done.signal();
        });
    done.wait();
}

TEST(ServiceConnectionMemory, ReportsThatTheBusIsGone) {
    PrivateBus bus;
    for (std::size_t count = 0; count < 20; ++count) {
        const BusPeer daemon(bus);
        ServiceClient client;
        EXPECT_EQ(client.events.wait(0), "appeared");
        failAllocations(client, count);
        bus.kill();
        EXPECT_EQ(client.events.wait(1), "invalid") << count;
        bus.restart();
    }
}

// The connection may end instead.
TEST(ServiceConnectionMemory, ReportsThatTheServiceIsGoneAndBack) {
    const PrivateBus bus;
    for (std::size_t count = 0; count < 20; ++count) {
        std::optional<BusPeer> daemon(std::in_place, bus);
        ServiceClient client;
        EXPECT_EQ(client.events.wait(0), "appeared");
        failAllocations(client, count);
        daemon.reset();
        const std::string event = client.events.wait(1);
        if (event == "invalid") continue;
        EXPECT_EQ(event, "interrupted") << count;
        failAllocations(client, count);
        daemon.emplace(bus);
        const std::string next = client.events.wait(2);
        EXPECT_TRUE(next == "appeared" || next == "invalid") << next;
    }
}

}  // namespace
