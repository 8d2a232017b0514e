#include "halvane/platform/bus/service_connection.h"

#include <atomic>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>
#include <numeric>
#include <optional>
#include <string>
#include <systemd/sd-bus.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/date.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/daemon_service.h"
#include "halvane/platform/bus/pointers_internal.h"
#include "halvane/platform/os/counting_semaphore.h"

#include "tests/support/bus_peer.h"
#include "tests/support/child_process.h"
#include "tests/support/private_bus.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/serial_queue_waits.h"
#include "tests/support/service_client.h"
#include "tests/support/thread_names.h"

namespace {

using halvane::ByteBuffer;
using halvane::CountingSemaphore;
using halvane::IPCMessage;
using halvane::kDaemonServiceName;
using halvane::Number;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;
using halvane::SerialQueue;
using halvane::ServiceConnection;
using halvane::ServiceError;
using halvane::ServiceEvent;
using halvane::ServiceReply;
using halvane::testing::Arrivals;
using halvane::testing::BusPeer;
using halvane::testing::currentThreadName;
using halvane::testing::drain;
using halvane::testing::eventName;
using halvane::testing::ipcMessage;
using halvane::testing::isTrueInChild;
using halvane::testing::PeerAnswer;
using halvane::testing::PeerBody;
using halvane::testing::PeerError;
using halvane::testing::PeerLeaves;
using halvane::testing::PeerSilence;
using halvane::testing::PrivateBus;
using halvane::testing::ReceivedRequest;
using halvane::testing::ScopedEnvironment;
using halvane::testing::ServiceClient;
using halvane::testing::waitUntilIdle;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

IPCMessage command(const char* name) {
    return ipcMessage({{"command", name}});
}

IPCMessage event(const std::string& name) {
    return ipcMessage({{"name", name}});
}

ByteBuffer bytes(std::size_t count, std::uint8_t first) {
    std::vector<std::uint8_t> content(count);
    for (std::size_t i = 0; i < count; ++i) content[i] = static_cast<std::uint8_t>(first + i * 7);
    return ByteBuffer(content);
}

// Returns the entries of a reply. Fails the test if the reply is an error.
PropertyListDictionary entriesOf(const ServiceReply& reply) {
    if (!reply) ADD_FAILURE() << reply.error().text;
    return reply ? reply->entries() : PropertyListDictionary();
}

// Returns the error of a reply. Fails the test if the reply is a message.
ServiceError errorOf(const ServiceReply& reply) {
    EXPECT_FALSE(reply) << "a message";
    return reply ? ServiceError{} : reply.error();
}

ServiceError::Kind kindOf(const ServiceReply& reply) {
    return errorOf(reply).kind;
}

bool isAnswered(const ServiceReply& reply) {
    return reply.has_value();
}

TEST(ServiceConnection, SendsARequestAsItIs) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    const ByteBuffer data = {0x00, 0xFF, 0x7E};
    client.exchange(ipcMessage(
        {{"command", "configAdd"}, {"channel", -61}, {"isHidden", true}, {"bssconfig", data}}));

    const ReceivedRequest request = service.waitForRequest();
    EXPECT_EQ(request.path, "/org/halvane/halvaned");
    EXPECT_EQ(request.interface, "org.halvane.halvaned");
    EXPECT_EQ(request.member, "Request");
    EXPECT_EQ(request.signature, "a{sv}");
    EXPECT_EQ(request.keysAndTypes(), "command:s channel:x isHidden:b bssconfig:ay");
    EXPECT_EQ(request.command(), "configAdd");
    EXPECT_EQ(request.find("channel")->value, PropertyListValue(-61));
    EXPECT_EQ(request.find("isHidden")->value, PropertyListValue(true));
    EXPECT_EQ(request.find("bssconfig")->value, PropertyListValue(data));
}

TEST(ServiceConnection, HandsTheReplyToTheReplyQueue) {
    const PrivateBus bus;
    BusPeer service(bus);
    const IPCMessage answer = ipcMessage(
        {{"status", 5}, {"params", "text"}, {"isOn", false}, {"devices", ByteBuffer{1, 2, 3}}});
    service.answer(answer);
    ServiceClient client;
    CountingSemaphore done(0);
    bool isOnQueue = false;
    PropertyListDictionary entries;
    client.connection->sendMessageWithReply(command("x"), client.replyQueue,
                                            [&](const ServiceReply& reply) {
                                                isOnQueue = client.replyQueue.isCurrent();
                                                entries = entriesOf(reply);
                                                done.signal();
                                            });
    done.wait();
    EXPECT_TRUE(isOnQueue);
    EXPECT_EQ(entries, answer.entries());
}

TEST(ServiceConnection, HandsEventsToTheTargetQueue) {
    const PrivateBus bus;
    BusPeer service(bus);
    SerialQueue queue("events"), replies("replies");
    Arrivals<bool> arrivals;
    const auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    connection->setPrivileged(true);
    connection->setEventHandler([&](const ServiceEvent&) { arrivals.add(queue.isCurrent()); });
    connection->resume();
    EXPECT_TRUE(arrivals.wait(0));  // the service appears
    connection->sendMessageWithReply(command("subscribe"), replies, [](const ServiceReply&) {});
    service.sendEvent(event("joined"), service.waitForRequest().sender);
    EXPECT_TRUE(arrivals.wait(1));
}

TEST(ServiceConnection, ConnectsToNothingBeforeItIsResumed) {
    const PrivateBus bus;
    BusPeer service(bus);
    const std::size_t before = service.countConnections();
    SerialQueue queue("events"), replies("replies");
    Arrivals<ServiceReply> arrivals;
    const auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    connection->setPrivileged(true);
    connection->sendMessageWithReply(command("early"), replies,
                                     [&](ServiceReply reply) { arrivals.add(std::move(reply)); });
    EXPECT_EQ(service.countConnections(), before);

    connection->resume();
    EXPECT_TRUE(isAnswered(arrivals.wait(0)));
    EXPECT_EQ(service.countConnections(), before + 1);
    EXPECT_EQ(service.waitForRequest().command(), "early");
}

TEST(ServiceConnection, LeavesTheBusWhenDestroyed) {
    const PrivateBus bus;
    BusPeer service(bus);
    const std::size_t before = service.countConnections();
    std::optional<ServiceClient> client(std::in_place);
    client->exchange(command("x"));
    EXPECT_EQ(service.countConnections(), before + 1);
    client.reset();
    // The bus ends the client's connection some time after the client.
    while (service.countConnections() != before) std::this_thread::yield();
}

TEST(ServiceConnection, IsSetUpOnceAndForAll) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    client.connection->setPrivileged(false);
    client.connection->setEventHandler([](const ServiceEvent&) { ADD_FAILURE() << "too late"; });
    client.connection->resume();
    EXPECT_TRUE(isAnswered(client.request(command("x"))));
    EXPECT_EQ(client.events.wait(0), "appeared");
}

TEST(ServiceConnection, AnswersRequestsInTheOrderOfTheirReplies) {
    const PrivateBus bus;
    BusPeer service(bus);
    service.answerBy([](const ReceivedRequest& request) -> PeerAnswer {
        return ipcMessage({{"status", request.find("number")->value}});
    });
    ServiceClient client;
    constexpr int kRequests = 100;  // a bus lets 128 wait
    Arrivals<std::int64_t> arrivals;
    for (int i = 0; i < kRequests; ++i) {
        client.connection->sendMessageWithReply(
            ipcMessage({{"number", i}}), client.replyQueue, [&](const ServiceReply& reply) {
                arrivals.add(entriesOf(reply).find("status")->as<Number>()->int64());
            });
    }
    arrivals.wait(kRequests - 1);
    std::vector<std::int64_t> expected(kRequests);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(arrivals.all(), expected);
}

TEST(ServiceConnection, TakesRequestsOfManyThreads) {
    const PrivateBus bus;
    BusPeer service(bus);
    service.answerBy([](const ReceivedRequest& request) -> PeerAnswer {
        return ipcMessage({{"echo", request.find("text")->value}});
    });
    ServiceClient client;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&client, number] {
            for (int i = 0; i < 100; ++i) {
                const std::string text = std::to_string(number) + ":" + std::to_string(i);
                const auto entries = entriesOf(client.request(ipcMessage({{"text", text}})));
                ASSERT_EQ(*entries.find("echo"), PropertyListValue(text));
            }
        });
    }
    for (auto& thread : threads) thread.join();
}

// Error replies of a service or the bus.

TEST(ServiceConnection, PassesOnTheErrorOfTheService) {
    const PrivateBus bus;
    BusPeer service(bus);
    service.answer(PeerError{"org.example.Error.Busy", "try later"});
    ServiceClient client;
    const ServiceError error = errorOf(client.request(command("x")));
    EXPECT_EQ(error.kind, ServiceError::Kind::Other);
    EXPECT_EQ(error.text, "org.example.Error.Busy: try later");
}

TEST(ServiceConnection, TakesNothingButADictionaryForAReply) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    const std::vector<PeerBody> bodies = {
        [](sd_bus_message*) {},
        [](sd_bus_message* reply) { ::sd_bus_message_append(reply, "s", "text"); },
        [](sd_bus_message* reply) { ::sd_bus_message_append(reply, "a{ss}", 1, "a", "b"); },
        [](sd_bus_message* reply) { ::sd_bus_message_append(reply, "as", 1, "a"); },
    };
    for (const PeerBody& body : bodies) {
        service.answer(body);
        const ServiceError error = errorOf(client.request(command("x")));
        EXPECT_EQ(error.kind, ServiceError::Kind::Other);
        EXPECT_EQ(error.text, "the reply is no dictionary that can be read");
    }
}

TEST(ServiceConnection, AnswersWithAnErrorWhereThereIsNoService) {
    const PrivateBus bus;
    ServiceClient client;
    const ServiceError error = errorOf(client.request(command("x")));
    EXPECT_EQ(error.kind, ServiceError::Kind::Other);
    EXPECT_THAT(error.text, HasSubstr("org.halvane.halvaned"));

    BusPeer service(bus);
    EXPECT_TRUE(isAnswered(client.request(command("x"))));
}

TEST(ServiceConnection, StartsNoService) {
    const PrivateBus bus({{}, kDaemonServiceName});
    ServiceClient client;
    const ServiceError error = errorOf(client.request(command("x")));
    EXPECT_EQ(error.kind, ServiceError::Kind::Other);
    EXPECT_THAT(error.text, HasSubstr("NameHasNoOwner"));
}

TEST(ServiceConnection, TellsWhatBecameOfARequestAlone) {
    using Cause = ServiceError::Cause;
    const PrivateBus bus;
    ServiceClient client;
    EXPECT_EQ(errorOf(client.request(command("x"))).cause, Cause::NoService);
    BusPeer service(bus);
    service.answer(PeerError{"org.example.Error.Busy", "try later"});
    EXPECT_EQ(errorOf(client.request(command("x"))).cause, Cause::Refused);
    service.answer(PeerBody([](sd_bus_message*) {}));
    EXPECT_EQ(errorOf(client.request(command("x"))).cause, Cause::Unreadable);
    EXPECT_EQ(errorOf(client.request(command("\xFF"))).cause, Cause::Unsendable);
}

TEST(ServiceConnection, TellsOnceThatNobodyIsThereAtTheStart) {
    const PrivateBus bus;
    SerialQueue queue("test.queue");
    Arrivals<std::string> events;
    const auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    connection->setPrivileged(true);
    connection->setEventHandler([&](ServiceEvent event) { events.add(eventName(event)); });
    connection->setAbsenceHandler([&] { events.add("absent"); });
    connection->resume();
    EXPECT_EQ(events.wait(0), "absent");
    {
        BusPeer service(bus);
        EXPECT_EQ(events.wait(1), "appeared");
    }
    EXPECT_EQ(events.wait(2), "interrupted");
    BusPeer service(bus);
    EXPECT_EQ(events.wait(3), "appeared");
}

TEST(ServiceConnection, ReachesTheBusThatItIsGiven) {
    const PrivateBus bus;
    BusPeer service(bus);
    const ScopedEnvironment nowhere("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    SerialQueue queue("test.queue");
    Arrivals<std::string> events;
    const auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    connection->setBusAddress(bus.address());
    connection->setEventHandler([&](ServiceEvent event) { events.add(eventName(event)); });
    connection->resume();
    EXPECT_EQ(events.wait(0), "appeared");
}

// The handler runs even while the queue of the events is busy.
TEST(ServiceConnection, HandlesRepliesAtOnceWithoutAQueue) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    CountingSemaphore entered(0), released(0);
    client.eventQueue.async([&] {
        entered.signal();
        released.wait();
    });
    entered.wait();
    Arrivals<bool> replies;
    const auto note = [&](const ServiceReply& reply) { replies.add(isAnswered(reply)); };
    client.connection->sendMessageWithReplyAtOnce(command("x"), note);
    EXPECT_TRUE(replies.wait(0));
    client.connection->sendMessageWithReplyAtOnce(command("\xFF"), note);
    ASSERT_EQ(replies.all().size(), 2u) << "on the calling thread";
    EXPECT_FALSE(replies.wait(1));
    client.connection->cancel();
    client.connection->sendMessageWithReplyAtOnce(command("x"), note);
    EXPECT_FALSE(replies.wait(2));
    released.signal();
}

// The service comes and goes.

TEST(ServiceConnection, TellsOfTheServiceComingUp) {
    const PrivateBus bus;
    ServiceClient client;
    errorOf(client.request(command("nobody")));
    EXPECT_THAT(client.events.all(), ElementsAre());
    BusPeer service(bus);
    EXPECT_EQ(client.events.wait(0), "appeared");
}

TEST(ServiceConnection, IsInterruptedWhenTheServiceIsKilled) {
    const PrivateBus bus;
    std::optional<BusPeer> service(std::in_place, bus);
    service->answer(PeerSilence{});
    ServiceClient client;
    Arrivals<ServiceReply> arrivals;
    client.connection->sendMessageWithReply(
        command("x"), client.replyQueue,
        [&](ServiceReply reply) { arrivals.add(std::move(reply)); });
    service->waitForRequest();
    service.reset();
    EXPECT_EQ(kindOf(arrivals.wait(0)), ServiceError::Kind::Interrupted);
    EXPECT_EQ(client.events.wait(1), "interrupted");
    EXPECT_THAT(client.events.all(), ElementsAre("appeared", "interrupted"));
}

TEST(ServiceConnection, AnswersTheRequestThatTheServiceDiesOf) {
    const PrivateBus bus;
    BusPeer service(bus);
    service.answer(PeerLeaves{});
    ServiceClient client;
    EXPECT_EQ(kindOf(client.request(command("x"))), ServiceError::Kind::Interrupted);
    EXPECT_EQ(client.events.wait(1), "interrupted");
}

TEST(ServiceConnection, WorksAgainWithARestartedService) {
    const PrivateBus bus;
    std::optional<BusPeer> service(std::in_place, bus);
    ServiceClient client;
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(isAnswered(client.request(command("x"))));
        service->sendEvent(event("event"), service->waitForRequest().sender);
        service.reset();
        service.emplace(bus);
    }
    client.events.wait(15);
    const auto events = client.events.all();
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(events[3 * i], "appeared");
        EXPECT_EQ(events[3 * i + 1], "event");
        EXPECT_EQ(events[3 * i + 2], "interrupted");
    }
}

TEST(ServiceConnection, FollowsTheNameToItsNextOwner) {
    const PrivateBus bus;
    BusPeer first(bus);
    ServiceClient client;
    client.exchange(command("x"));
    const std::string subscriber = first.waitForRequest().sender;
    BusPeer second(bus, "");
    second.ownName();
    second.sendEvent(event("second"), subscriber);
    EXPECT_EQ(client.events.wait(3), "second");
    EXPECT_THAT(client.events.all(), ElementsAre("appeared", "interrupted", "appeared", "second"));
    EXPECT_TRUE(isAnswered(client.request(command("y"))));
    EXPECT_EQ(second.waitForRequest().command(), "y");
}

TEST(ServiceConnection, TakesTheReplyOfWhoGaveUpTheNameAlone) {
    const PrivateBus bus;
    BusPeer service(bus);
    service.answer(PeerSilence{});
    ServiceClient client;
    Arrivals<ServiceReply> arrivals;
    client.connection->sendMessageWithReply(
        command("x"), client.replyQueue,
        [&](ServiceReply reply) { arrivals.add(std::move(reply)); });
    service.waitForRequest();
    service.releaseName();
    EXPECT_EQ(client.events.wait(1), "interrupted");
    service.answerHeld(ipcMessage({{"status", 7}}));
    EXPECT_EQ(*entriesOf(arrivals.wait(0)).find("status"), PropertyListValue(7));
}

// Events that are not the service's.

class ForgedEvents : public ::testing::Test {
  protected:
    ForgedEvents() {
        client_.exchange(command("subscribe"));
        subscriber_ = service_.waitForRequest().sender;
        EXPECT_EQ(client_.events.wait(0), "appeared");
    }

    // The service sends after the bus has accepted the attacker's message, so the service's message
    // arrives later.
    void expectNothingButTheServicesEvent() {
        attacker_.countConnections();
        service_.sendEvent(event("true"), subscriber_);
        EXPECT_EQ(client_.events.wait(1), "true");
        EXPECT_THAT(client_.events.all(), ElementsAre("appeared", "true"));
    }

    const PrivateBus bus_;
    BusPeer service_{bus_};
    BusPeer attacker_{bus_, ""};
    ServiceClient client_;
    std::string subscriber_;
};

PeerBody eventBody(const char* name) {
    return [name](sd_bus_message* message) {
        ::sd_bus_message_append(message, "a{sv}", 1, "name", "s", name);
    };
}

PeerBody ownerBody(const std::string& before, const std::string& now) {
    return [=](sd_bus_message* message) {
        ::sd_bus_message_append(message, "sss", kDaemonServiceName, before.c_str(), now.c_str());
    };
}

TEST_F(ForgedEvents, AreDroppedWhenSentToTheSubscriber) {
    attacker_.sendEvent(event("forged"), subscriber_);
    expectNothingButTheServicesEvent();
}

TEST_F(ForgedEvents, AreDroppedWhenSentToAll) {
    attacker_.sendEvent(event("forged"), "");
    expectNothingButTheServicesEvent();
}

TEST_F(ForgedEvents, AreDroppedWhoeverTheyClaimToBeFrom) {
    for (const std::string& sender : {std::string(kDaemonServiceName), service_.uniqueName()}) {
        attacker_.sendSignal(
            {"/org/halvane/halvaned", kDaemonServiceName, "Event", subscriber_, sender},
            eventBody("forged"));
    }
    expectNothingButTheServicesEvent();
}

TEST_F(ForgedEvents, AreDroppedWhenTheSenderOwnsAnotherName) {
    attacker_.ownName("org.halvane.halvaned.impostor");
    attacker_.sendEvent(event("forged"), subscriber_);
    expectNothingButTheServicesEvent();
}

TEST_F(ForgedEvents, AreDroppedAfterAForgedChangeOfOwner) {
    for (const char* sender : {"", "org.freedesktop.DBus"}) {
        attacker_.sendSignal({"/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged",
                              subscriber_, sender},
                             ownerBody(service_.uniqueName(), attacker_.uniqueName()));
        attacker_.sendEvent(event("forged"), subscriber_);
    }
    expectNothingButTheServicesEvent();
}

TEST_F(ForgedEvents, AreDroppedWhenTheyAreOtherSignals) {
    service_.sendSignal({"/org/halvane/other", kDaemonServiceName, "Event", subscriber_, {}},
                        eventBody("other path"));
    service_.sendSignal({"/org/halvane/halvaned", "org.example.Other", "Event", subscriber_, {}},
                        eventBody("other interface"));
    service_.sendSignal({"/org/halvane/halvaned", kDaemonServiceName, "Other", subscriber_, {}},
                        eventBody("other member"));
    service_.sendEventBody(
        [](sd_bus_message* message) { ::sd_bus_message_append(message, "s", "no dictionary"); },
        subscriber_);
    expectNothingButTheServicesEvent();
}

TEST_F(ForgedEvents, AreDroppedWhenTheirSenderHasGivenUpTheName) {
    service_.releaseName();
    service_.sendEvent(event("late"), subscriber_);
    service_.ownName();
    service_.sendEvent(event("true"), subscriber_);
    EXPECT_EQ(client_.events.wait(3), "true");
    EXPECT_THAT(client_.events.all(), ElementsAre("appeared", "interrupted", "appeared", "true"));
}

TEST(ServiceConnection, TakesEventsThatTheServiceSendsToAll) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    client.exchange(command("x"));
    service.sendEvent(event("to all"), "");
    EXPECT_EQ(client.events.wait(1), "to all");
}

// The bus goes away.

TEST(ServiceConnection, IsInvalidWithoutABus) {
    const ScopedEnvironment address("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    ServiceClient client;
    EXPECT_EQ(client.events.wait(0), "invalid");
    EXPECT_EQ(kindOf(client.request(command("x"))), ServiceError::Kind::Invalid);
    EXPECT_EQ(client.events.all().size(), 1u);
}

TEST(ServiceConnection, IsInvalidWithAnAddressThatIsNone) {
    const ScopedEnvironment address("DBUS_SYSTEM_BUS_ADDRESS", "nonsense");
    ServiceClient client;
    EXPECT_EQ(client.events.wait(0), "invalid");
}

TEST(ServiceConnection, IsInvalidWithAServiceNameThatIsNone) {
    const PrivateBus bus;
    for (const std::string& name :
         {std::string(), std::string("nodot"), std::string("org.ex ample"), std::string(":1.1"),
          std::string("org.x\0y", 7), std::string("a.") + std::string(300, 'b'),
          std::string("org.example'.x")}) {
        ServiceClient client(name);
        EXPECT_EQ(client.events.wait(0), "invalid") << name;
        EXPECT_EQ(kindOf(client.request(command("x"))), ServiceError::Kind::Invalid) << name;
    }
}

TEST(ServiceConnection, IsInvalidOnceTheBusIsKilled) {
    PrivateBus bus;
    BusPeer service(bus);
    service.answer(PeerSilence{});
    ServiceClient client;
    Arrivals<ServiceReply> arrivals;
    for (int i = 0; i < 3; ++i) {
        client.connection->sendMessageWithReply(
            command("x"), client.replyQueue,
            [&](ServiceReply reply) { arrivals.add(std::move(reply)); });
    }
    service.waitForRequest(2);
    bus.kill();
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(kindOf(arrivals.wait(i)), ServiceError::Kind::Invalid);
    }
    EXPECT_EQ(client.events.wait(1), "invalid");
    EXPECT_EQ(kindOf(client.request(command("later"))), ServiceError::Kind::Invalid);
    drain(client.eventQueue);
    EXPECT_THAT(client.events.all(), ElementsAre("appeared", "invalid"));
}

TEST(ServiceConnection, IsOnTheBusOfTheSessionUnlessPrivileged) {
    const PrivateBus bus;
    const ScopedEnvironment session("DBUS_SESSION_BUS_ADDRESS", bus.address());
    const ScopedEnvironment system("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    BusPeer service(bus);
    SerialQueue queue("events"), replies("replies");
    Arrivals<ServiceReply> arrivals;
    const auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    connection->resume();
    connection->sendMessageWithReply(command("x"), replies,
                                     [&](ServiceReply reply) { arrivals.add(std::move(reply)); });
    EXPECT_TRUE(isAnswered(arrivals.wait(0)));
}

// Messages that cannot be sent, and large messages.

TEST(ServiceConnection, AnswersWithAnErrorWhatCannotBeSent) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    struct Row {
        PropertyListDictionary::Entry entry;
        const char* text;
    };
    const std::vector<Row> rows = {
        {{"key", std::string("a\0b", 3)}, "a string holds U+0000"},
        {{std::string("a\0b", 3), 1}, "a string holds U+0000"},
        {{"key", "\xFF"}, "a string is not UTF-8"},
        {{"\xC3", 1}, "a string is not UTF-8"},
        {{"key", PropertyListValue()}, "a value has no type on the bus"},
        {{"key", halvane::Date()}, "a value has no type on the bus"},
        {{"key", PropertyListArray{1, halvane::Date()}}, "a value has no type on the bus"},
        {{"key", PropertyListValue::Object()}, "a value has no type on the bus"},
    };
    for (const Row& row : rows) {
        const ServiceError error = errorOf(client.request(ipcMessage({row.entry})));
        EXPECT_EQ(error.kind, ServiceError::Kind::Other);
        EXPECT_EQ(error.text, row.text);
    }
    EXPECT_TRUE(isAnswered(client.request(command("good"))));
    EXPECT_EQ(service.waitForRequest().command(), "good");
}

// {"command": {"": {"": ... true}}}, `count` dictionaries below the message.
IPCMessage nested(int count) {
    PropertyListValue value = true;
    PropertyListDictionary entries;
    for (int i = 0; i < count; ++i) {
        PropertyListDictionary outer;
        outer.set("", std::move(value));
        value = std::move(outer);
    }
    entries.set("command", std::move(value));  // moved: a copy would recurse
    return IPCMessage(std::move(entries));
}

TEST(ServiceConnection, SendsWhatNestsAsDeepAsABusAllows) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    EXPECT_TRUE(isAnswered(client.request(nested(20))));
    EXPECT_EQ(service.waitForRequest().keysAndTypes(), "command:a{sv}");
    EXPECT_EQ(errorOf(client.request(nested(21))).text, "the message nests too deep");
    EXPECT_EQ(errorOf(client.request(nested(100000))).text, "the message nests too deep");
    EXPECT_TRUE(isAnswered(client.request(command("x"))));
}

// A message of one data value that is `size` bytes on the wire, without its header.
IPCMessage messageOfSize(std::size_t size) {
    // Array length and padding 8, key "data" 9, signature "ay" 4, padding 3, data length 4.
    return ipcMessage({{"data", bytes(size - 28, 1)}});
}

TEST(ServiceConnection, SendsMessagesUpToTheLimit) {
    constexpr std::size_t kLimit = halvane::kServiceMessageLimit - 2048;
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    const IPCMessage largest = messageOfSize(kLimit);
    EXPECT_TRUE(isAnswered(client.request(largest)));
    EXPECT_TRUE(service.waitForRequest().entries[0].value == *largest.entries().find("data"));
    const ServiceError error = errorOf(client.request(messageOfSize(kLimit + 1)));
    EXPECT_EQ(error.kind, ServiceError::Kind::Other);
    EXPECT_EQ(error.text, "the message is too long");
    EXPECT_TRUE(isAnswered(client.request(command("x"))));
}

TEST(ServiceConnection, PassesListsOfSixteenMegabytes) {
    const PrivateBus bus;
    BusPeer service(bus);
    const PropertyListValue list = bytes(16777216, 3);
    service.answer(ipcMessage({{"status", 0}, {"devices", list}}));
    ServiceClient client;
    const auto entries = entriesOf(client.request(ipcMessage({{"bssconfig", list}})));
    EXPECT_TRUE(*entries.find("devices") == list);
    EXPECT_TRUE(service.waitForRequest().entries[0].value == list);
}

TEST(ServiceConnection, AnswersWithAnErrorWhatIsTooLongForTheBus) {
    const PrivateBus bus({{{"max_message_size", 1 << 20}}, {}});
    BusPeer service(bus);
    service.answer(ipcMessage({{"devices", bytes(1 << 20, 1)}}));
    ServiceClient client;
    EXPECT_EQ(kindOf(client.request(command("large"))), ServiceError::Kind::Interrupted);
    EXPECT_EQ(client.events.wait(1), "interrupted");
    service.waitUntilDisconnected();

    BusPeer restarted(bus);
    EXPECT_TRUE(isAnswered(client.request(command("x"))));
}

TEST(ServiceConnection, AnswersWithAnErrorWhatIsLongerThanABusUsuallyTakes) {
    const PrivateBus bus;
    BusPeer service(bus);
    service.answer(ipcMessage({{"devices", bytes(halvane::kServiceMessageLimit, 1)}}));
    ServiceClient client;
    EXPECT_EQ(kindOf(client.request(command("large"))), ServiceError::Kind::Interrupted);
    service.waitUntilDisconnected();
}

TEST(ServiceConnection, IsInvalidWhereTheBusTakesLessThanUsual) {
    const PrivateBus bus({{{"max_message_size", 1 << 20}}, {}});
    BusPeer service(bus);
    ServiceClient client;
    client.events.wait(0);
    EXPECT_EQ(kindOf(client.request(messageOfSize(2 << 20))), ServiceError::Kind::Invalid);
    EXPECT_EQ(client.events.wait(1), "invalid");
}

TEST(ServiceConnection, LosesNoEventOfABurstWhileRequestsRun) {
    constexpr int kEvents = 10000;
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    client.exchange(command("subscribe"));
    const std::string subscriber = service.waitForRequest().sender;
    CountingSemaphore released(0);
    client.eventQueue.async([&] { released.wait(); });  // the queue is behind

    std::atomic<bool> isDone = false;
    std::thread requests([&] {
        while (!isDone) EXPECT_TRUE(isAnswered(client.request(command("x"))));
    });
    for (int i = 0; i < kEvents; ++i) service.sendEvent(event(std::to_string(i)), subscriber);
    // The service's replies follow its events, so all events have arrived. None has been handled.
    EXPECT_TRUE(isAnswered(client.request(command("last"))));
    isDone = true;
    requests.join();
    released.signal();
    client.events.wait(kEvents);
    const auto events = client.events.all();
    ASSERT_EQ(events.size(), kEvents + 1u);
    for (int i = 0; i < kEvents; ++i) {
        ASSERT_EQ(events[static_cast<std::size_t>(i) + 1], std::to_string(i));
    }
}

// The end of a connection.

// Sends a request to which the service does not reply. Its handler must not be called.
std::weak_ptr<int> sendPending(ServiceClient& client) {
    auto token = std::make_shared<int>(0);
    std::weak_ptr<int> watch = token;
    client.connection->sendMessageWithReply(
        command("pending"), client.replyQueue,
        [token = std::move(token)](const ServiceReply&) { ADD_FAILURE() << "called"; });
    return watch;
}

TEST(ServiceConnection, DropsPendingRequestsWhenDestroyed) {
    const PrivateBus bus;
    BusPeer service(bus);
    service.answer(PeerSilence{});
    ServiceClient client;
    const auto watch = sendPending(client);
    service.waitForRequest();
    client.connection.reset();
    EXPECT_TRUE(watch.expired());
    drain(client.replyQueue);
}

TEST(ServiceConnection, DropsRequestsThatWereNeverSent) {
    SerialQueue queue("events"), replies("replies");
    auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    auto token = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = token;
    connection->sendMessageWithReply(
        command("x"), replies,
        [token = std::move(token)](const ServiceReply&) { ADD_FAILURE() << "called"; });
    connection.reset();
    EXPECT_TRUE(watch.expired());
    drain(replies);
}

TEST(ServiceConnection, CallsNoHandlerOnceDestroyed) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    client.exchange(command("subscribe"));
    client.events.wait(0);
    CountingSemaphore released(0);
    client.eventQueue.async([&] { released.wait(); });
    service.sendEvent(event("waiting"), service.waitForRequest().sender);
    client.exchange(command("behind the event"));
    client.connection.reset();
    released.signal();
    drain(client.eventQueue);
    EXPECT_THAT(client.events.all(), ElementsAre("appeared"));
}

// --- Replies that the connection's thread handles instead of the queue's thread ---

class AnyThreadReplies : public ::testing::Test {
  protected:
    // Sends a request while the queue's thread is waiting, and returns the name of the thread that
    // calls the handler.
    std::string threadOfReply() {
        waitUntilIdle(client_.replyQueue);
        std::string name;
        CountingSemaphore done(0);
        client_.connection->sendMessageWithReply(
            command("x"), client_.replyQueue,
            [&](const ServiceReply&) {
                EXPECT_TRUE(client_.replyQueue.isCurrent());
                name = currentThreadName();
                done.signal();
            },
            ServiceConnection::ReplyThread::Any);
        done.wait();
        return name;
    }

    // A reply that holds an array of one string.
    static PeerBody arrayOf(std::string text) {
        return [text = std::move(text)](sd_bus_message* reply) {
            ::sd_bus_message_append(reply, "a{sv}", 1, "value", "as", 1, text.c_str());
        };
    }

    const PrivateBus bus_;
    BusPeer service_{bus_};
    ServiceClient client_;
};

TEST_F(AnyThreadReplies, AreHandledByTheConnectionWhereTheyAreSmall) {
    EXPECT_EQ(threadOfReply(), "alvane.halvaned");
    service_.answer(PeerError{"org.example.Error", "text"});
    EXPECT_EQ(threadOfReply(), "alvane.halvaned");
    service_.answer(ipcMessage({{"data", bytes(65000, 1)}}));
    EXPECT_EQ(threadOfReply(), "alvane.halvaned");
    service_.answer(arrayOf("small"));
    EXPECT_EQ(threadOfReply(), "alvane.halvaned");
}

TEST_F(AnyThreadReplies, AreNeverHandledByTheCaller) {
    const auto askIn = [this](auto act) {
        waitUntilIdle(client_.replyQueue);
        std::mutex heldByTheCaller;
        CountingSemaphore done(0);
        std::unique_lock lock(heldByTheCaller);
        act([&](const ServiceReply& reply) {
            const std::lock_guard waits(heldByTheCaller);
            EXPECT_FALSE(reply);
            done.signal();
        });
        lock.unlock();
        done.wait();
    };
    constexpr auto kAny = ServiceConnection::ReplyThread::Any;
    const auto idle = ServiceConnection::create(kDaemonServiceName, client_.eventQueue);
    askIn([&](auto handler) {  // refused
        idle->sendMessageWithReply(ipcMessage({{"x", "\xFF"}}), client_.replyQueue, handler, kAny);
    });
    askIn([&](auto handler) {  // cancelled
        idle->sendMessageWithReply(command("x"), client_.replyQueue, handler, kAny);
        idle->cancel();
    });
    askIn([&](auto handler) {  // late
        idle->sendMessageWithReply(command("x"), client_.replyQueue, handler, kAny);
    });
}

TEST_F(AnyThreadReplies, AreHandledByTheQueueWhereTheyAreLarge) {
    PropertyListDictionary entries;
    for (int i = 0; i < 4000; ++i) entries.set(std::to_string(i), i);
    const IPCMessage manyEntries(std::move(entries));
    const PeerAnswer large[] = {
        ipcMessage({{"value", bytes(65537, 1)}}),
        ipcMessage({{"value", std::string(65537, 'x')}}),
        ipcMessage({{std::string(65537, 'x'), 1}}),
        arrayOf(std::string(65537, 'x')),
        manyEntries,
        PeerError{"org.example.Error", std::string(65537, 'x')},
    };
    for (const auto& answer : large) {
        service_.answer(answer);
        EXPECT_EQ(threadOfReply(), "est.reply.queue");
    }
}

TEST_F(AnyThreadReplies, MayDestroyTheConnection) {
    waitUntilIdle(client_.replyQueue);
    CountingSemaphore done(0);
    client_.connection->sendMessageWithReply(
        command("x"), client_.replyQueue,
        [&](const ServiceReply&) {
            client_.connection.reset();
            done.signal();
        },
        ServiceConnection::ReplyThread::Any);
    done.wait();
    EXPECT_EQ(client_.connection, nullptr);
}

TEST(ServiceConnection, IsPassedNoDescriptors) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    client.exchange(command("x"));
    const std::string name = service.waitForRequest().sender;

    sd_bus* opened = nullptr;
    ASSERT_GE(::sd_bus_open_system(&opened), 0);
    const halvane::BusPointer stranger(opened);
    sd_bus_error error{};
    EXPECT_LT(::sd_bus_call_method(opened, name.c_str(), "/", "org.example", "Take", &error,
                                   nullptr, "h", STDERR_FILENO),
              0);
    EXPECT_STREQ(error.name, SD_BUS_ERROR_NOT_SUPPORTED);
    ::sd_bus_error_free(&error);
}

// Returns after the destruction of the connection has begun. From then on the connection drops
// replies.
void waitUntilEnding(ServiceConnection& connection, const SerialQueue& queue) {
    for (bool isHandled = true; isHandled;) {
        isHandled = false;
        CountingSemaphore gone(0);
        std::shared_ptr<void> token(nullptr, [&](void*) { gone.signal(); });
        connection.sendMessageWithReply(
            command("y"), queue,
            [&, token = std::move(token)](const ServiceReply&) { isHandled = true; });
        gone.wait();
    }
}

TEST(ServiceConnection, WaitsForARunningHandlerWhenDestroyed) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    const SerialQueue probeQueue("probe");
    CountingSemaphore started(0);
    std::atomic<bool> isDone = false;
    client.connection->sendMessageWithReply(
        command("x"), client.replyQueue,
        [&, &connection = *client.connection](const ServiceReply&) {
            started.signal();
            waitUntilEnding(connection, probeQueue);
            isDone = true;
        });
    started.wait();
    client.connection.reset();
    EXPECT_TRUE(isDone);
}

TEST(ServiceConnection, MayBeDestroyedByItsReplyHandler) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    CountingSemaphore done(0);
    client.connection->sendMessageWithReply(command("x"), client.replyQueue,
                                            [&](const ServiceReply&) {
                                                client.connection.reset();
                                                done.signal();
                                            });
    done.wait();
    EXPECT_EQ(client.connection, nullptr);
}

TEST(ServiceConnection, MayBeDestroyedByItsEventHandler) {
    const PrivateBus bus;
    BusPeer service(bus);
    SerialQueue queue("events");
    CountingSemaphore done(0);
    auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    connection->setPrivileged(true);
    connection->setEventHandler([&, token = std::make_shared<int>(42)](const ServiceEvent&) {
        connection.reset();
        EXPECT_EQ(*token, 42);  // the objects of the handler live until it returns
        done.signal();
    });
    connection->resume();
    done.wait();
}

TEST(ServiceConnection, MayBeOwnedByAHandlerThatIsDropped) {
    // The queue is gone when the reply arrives. So the thread that serves the connection destroys
    // the handler and everything that it owns.
    const PrivateBus bus;
    BusPeer service(bus);
    service.answer(PeerSilence{});
    struct Owner {
        SerialQueue queue{"events"};
        std::unique_ptr<ServiceConnection> connection;
        CountingSemaphore* gone;
        ~Owner() {
            connection.reset();
            gone->signal();
        }
    };
    CountingSemaphore gone(0);
    auto owner = std::make_shared<Owner>();
    owner->gone = &gone;
    owner->connection = ServiceConnection::create(kDaemonServiceName, owner->queue);
    ServiceConnection& connection = *owner->connection;
    connection.setPrivileged(true);
    connection.resume();
    auto replies = std::make_unique<SerialQueue>("replies");
    connection.sendMessageWithReply(
        command("x"), *replies,
        [owner = std::move(owner)](const ServiceReply&) { ADD_FAILURE() << "called"; });
    service.waitForRequest();
    replies.reset();
    service.answerHeld(ipcMessage({}));
    gone.wait();
}

TEST(ServiceConnection, OutlivesItsQueues) {
    const PrivateBus bus;
    BusPeer service(bus);
    auto queue = std::make_unique<SerialQueue>("events");
    SerialQueue replies("replies");
    const auto connection = ServiceConnection::create(kDaemonServiceName, *queue);
    connection->setPrivileged(true);
    connection->setEventHandler([](const ServiceEvent&) { ADD_FAILURE() << "called"; });
    queue.reset();
    connection->resume();
    Arrivals<ServiceReply> arrivals;
    connection->sendMessageWithReply(command("x"), replies,
                                     [&](ServiceReply reply) { arrivals.add(std::move(reply)); });
    service.sendEvent(event("nobody"), service.waitForRequest().sender);
    EXPECT_TRUE(isAnswered(arrivals.wait(0)));
}

TEST(ServiceConnection, AnswersEverythingWhenCancelled) {
    const PrivateBus bus;
    BusPeer service(bus);
    service.answer(PeerSilence{});
    ServiceClient client;
    Arrivals<ServiceReply> arrivals;
    const auto record = [&](ServiceReply reply) { arrivals.add(std::move(reply)); };
    client.connection->sendMessageWithReply(command("x"), client.replyQueue, record);
    service.waitForRequest();
    client.events.wait(0);
    client.connection->cancel();
    client.connection->sendMessageWithReply(command("y"), client.replyQueue, record);
    client.connection->cancel();
    EXPECT_EQ(kindOf(arrivals.wait(0)), ServiceError::Kind::Invalid);
    EXPECT_EQ(kindOf(arrivals.wait(1)), ServiceError::Kind::Invalid);
    EXPECT_EQ(client.events.wait(1), "invalid");
    client.connection->resume();
    EXPECT_EQ(kindOf(client.request(command("z"))), ServiceError::Kind::Invalid);
    client.connection.reset();
    drain(client.eventQueue);
    EXPECT_THAT(client.events.all(), ElementsAre("appeared", "invalid"));
}

TEST(ServiceConnection, MayBeCancelledBeforeItIsResumed) {
    SerialQueue queue("events"), replies("replies");
    Arrivals<ServiceReply> arrivals;
    Arrivals<std::string> events;
    const auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    connection->setEventHandler(
        [&](const ServiceEvent& event) { events.add(halvane::testing::eventName(event)); });
    connection->sendMessageWithReply(command("x"), replies,
                                     [&](ServiceReply reply) { arrivals.add(std::move(reply)); });
    connection->cancel();
    connection->resume();
    EXPECT_EQ(kindOf(arrivals.wait(0)), ServiceError::Kind::Invalid);
    EXPECT_EQ(events.wait(0), "invalid");
    drain(queue);
    EXPECT_EQ(events.all().size(), 1u);
}

TEST(ServiceConnection, LetsGoOfTheEventHandlerAfterTheLastEvent) {
    SerialQueue queue("events");
    auto token = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = token;
    const auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    connection->setEventHandler([token = std::move(token)](const ServiceEvent&) {});
    EXPECT_FALSE(watch.expired());
    connection->cancel();
    drain(queue);
    EXPECT_TRUE(watch.expired());
}

TEST(ServiceConnection, NeedsNoHandlers) {
    const PrivateBus bus;
    BusPeer service(bus);
    SerialQueue queue("events");
    const auto connection = ServiceConnection::create(kDaemonServiceName, queue);
    connection->setPrivileged(true);
    connection->setEventHandler(nullptr);
    connection->resume();
    connection->sendMessageWithReply(command("x"), queue, nullptr);
    EXPECT_EQ(service.waitForRequest().command(), "x");
}

TEST(ServiceConnection, MayBeDestroyedAtAnyMoment) {
    const PrivateBus bus;
    BusPeer service(bus);
    for (int i = 0; i < 100; ++i) {
        std::atomic<bool> isGone = false;
        ServiceClient client;
        for (int j = 0; j < i % 5; ++j) {
            client.connection->sendMessageWithReply(
                command("x"), client.replyQueue,
                [&](const ServiceReply&) { EXPECT_FALSE(isGone); });
        }
        if (i % 3 == 0) client.exchange(command("y"));
        client.connection.reset();
        isGone = true;
    }
}

// A child process has no thread that could call a handler.

TEST(ServiceConnection, DropsRequestsInAnotherProcess) {
    const PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    client.exchange(command("before"));
    const bool isDropped = isTrueInChild([&] {
        auto token = std::make_shared<int>(0);
        const std::weak_ptr<int> watch = token;
        client.connection->sendMessageWithReply(command("child"), client.replyQueue,
                                                [token = std::move(token)](const ServiceReply&) {});
        return watch.expired();
    });
    EXPECT_TRUE(isDropped);
    client.exchange(command("after"));
    ASSERT_EQ(service.requests().size(), 2u);
    EXPECT_EQ(service.waitForRequest(1).command(), "after");
}

TEST(ServiceConnection, MayBeEndedInAnotherProcess) {
    PrivateBus bus;
    BusPeer service(bus);
    ServiceClient client;
    client.exchange(command("before"));
    const auto end = [&] {
        client.connection->cancel();
        client.connection->resume();
        client.connection.reset();
        return true;
    };
    EXPECT_TRUE(isTrueInChild(end));
    EXPECT_TRUE(isAnswered(client.request(command("after"))));
    bus.kill();
    EXPECT_EQ(client.events.wait(1), "invalid");
    EXPECT_TRUE(isTrueInChild(end));
}

}  // namespace
