#include <cstddef>
#include <cstdint>
#include <future>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/daemon/xpc_link_internal.h"

#include "tests/daemon/xpc_client_test_support.h"
#include "tests/support/bus_peer.h"
#include "tests/support/private_bus.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/service_client.h"

namespace {

using namespace halvane;
using namespace halvane::testing;

// The reply queue's result of a request: "message" or "error".
std::string nameOf(const ServiceReply& reply) {
    return reply ? "message" : "error";
}

TEST(XPCLink, HandlesTheRepliesThatCameBeforeItWasReleased) {
    PrivateBus bus;
    BusPeer daemon(bus);
    daemon.answer(ipcMessage({{"data", ByteBuffer(std::vector<std::uint8_t>(65537))}}));
    Arrivals<std::string> events;
    std::unique_ptr<XPCLink> link;
    link = std::make_unique<XPCLink>([&](const ServiceEvent& event) {
        const std::string name = eventName(event);
        if (name == "invalid") link->releaseConnection();
        events.add(name);
    });
    link->resume();

    // The first reply occupies the queue while the second arrives and the bus goes. Before that
    // request has a reply, the link calls its handler on the caller's thread.
    CountingSemaphore entered(0), released(0);
    auto first = std::async(std::launch::async, [&] {
        return link->request(ipcMessage({{"command", "first"}}), [&](const ServiceReply& reply) {
            if (!reply) return 0;
            entered.signal();
            released.wait();
            return 1;
        });
    });
    entered.wait();
    Arrivals<std::string> replies;
    auto second = std::async(std::launch::async, [&] {
        return link->request(ipcMessage({{"command", "second"}}), [&](const ServiceReply& reply) {
            replies.add(nameOf(reply));
            return 0;
        });
    });
    daemon.sendEvent(ipcMessage({{"name", "behind"}}), daemon.waitForRequest(1).sender);
    EXPECT_EQ(events.wait(1), "behind");
    bus.kill();
    EXPECT_EQ(events.wait(2), "invalid");
    released.signal();
    first.get();
    second.get();
    EXPECT_EQ(replies.all(), (std::vector<std::string>{"error", "message"}));
}

TEST(XPCLink, TellsOfNoEventOnceReleased) {
    PrivateBus bus;
    BusPeer daemon(bus);
    Arrivals<std::string> events;
    XPCLink link([&](const ServiceEvent& event) { events.add(eventName(event)); });
    link.resume();
    EXPECT_EQ(events.wait(0), "appeared");
    link.releaseConnection();
    link.end();
    EXPECT_EQ(events.all().size(), 1u);
    EXPECT_EQ(link.request(ipcMessage({{"command", "late"}}), nameOf), "error");
    EXPECT_EQ(daemon.requests().size(), 0u);
}

TEST(XPCLink, HandlesRepliesWithoutWakingTheQueue) {
    PrivateBus bus;
    BusPeer daemon(bus);
    XPCLink link([](const ServiceEvent&) {});
    link.resume();
    for (const std::size_t size : {1u, 1000000u}) {
        daemon.answer(ipcMessage({{"data", ByteBuffer(std::vector<std::uint8_t>(size))}}));
        std::thread::id thread;
        // The queue's thread may yet be on its way to wait.
        for (int i = 0; i < 1000 && thread != std::this_thread::get_id(); ++i) {
            link.request(ipcMessage({{"command", "x"}}), [&](const ServiceReply& reply) {
                if (reply) thread = std::this_thread::get_id();
                return 0;
            });
        }
        EXPECT_EQ(thread, std::this_thread::get_id());
    }
    link.end();
}

TEST(XPCLink, FailsARequestWhoseReplyThereIsNoRoomFor) {
    PrivateBus bus;
    BusPeer daemon(bus);
    XPCLink link([](const ServiceEvent&) {});
    link.resume();
    const auto parse = [](const ServiceReply& reply) {
        if (reply) throw std::bad_alloc();
        return nameOf(reply);
    };
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(link.request(ipcMessage({{"command", "x"}}), parse), "error");
    }
    EXPECT_EQ(link.request(ipcMessage({{"command", "x"}}), nameOf), "message");
    link.end();
}

TEST(XPCLink, DropsAnEventThatThereIsNoRoomFor) {
    PrivateBus bus;
    BusPeer daemon(bus);
    XPCLink link([&](const ServiceEvent&) { throw std::bad_alloc(); });
    link.resume();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(link.request(ipcMessage({{"command", "x"}}), nameOf), "message");
    }
    link.end();
}

}  // namespace
