// The daemon without a bus: what it asks of a backend, and when it replies and notifies.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/result.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/daemon_log_controls.h"
#include "halvane/model/daemon_status.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/service/backend_reply.h"
#include "halvane/service/dispatcher_internal.h"
#include "halvane/service/message_internal.h"

#include "tests/service/scripted_backend.h"
#include "tests/support/scarce_memory.h"

namespace halvane {

namespace {

using ::halvane::testing::joined;
using ::halvane::testing::ScriptedBackend;
using ::halvane::testing::ScriptedLogSettings;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Entries = std::initializer_list<PropertyListDictionary::Entry>;

constexpr const char kClient[] = ":1.5";

IPCMessage message(Entries entries) {
    PropertyListDictionary dictionary;
    for (const auto& [key, value] : entries) dictionary.set(key, value);
    return IPCMessage(std::move(dictionary));
}

std::int64_t statusIn(const IPCMessage& reply) {
    return skeleton::numberFor(reply.entries(), "status").value_or(-1).int64();
}

class DispatcherTest : public ::testing::Test {
  protected:
    ScriptedBackend backend_;
    ScriptedLogSettings logging_;
    Subscribers subscribers_;
    // What clients get, in order: ":1.5: status 0", ":1.5: joined wlan0 02...01".
    std::vector<std::string> sent_;
    std::vector<IPCMessage> replies_;
    bool isCongested_ = false;
    std::shared_ptr<Dispatcher> dispatcher_ = make({});

    std::shared_ptr<Dispatcher> make(const DaemonLimits& limits, DaemonFaults* faults = nullptr) {
        return Dispatcher::create(
            {backend_, logging_, subscribers_, faults, limits, [this] { return isCongested_; }},
            [this](const IPCMessage& event, const std::string& subscriber) {
                notified(event, subscriber);
            });
    }

    void remake(const DaemonLimits& limits, DaemonFaults* faults = nullptr) {
        dispatcher_.reset();
        dispatcher_ = make(limits, faults);
    }

    void notified(const IPCMessage& event, const std::string& subscriber) {
        const auto& entries = event.entries();
        const std::string command = skeleton::textFor(entries, "command").value();
        sent_.push_back(subscriber + ": " + command.substr(command.rfind('.') + 1) + ' ' +
                        skeleton::textFor(entries, "BSDName").value() + ' ' +
                        skeleton::dataFor(entries, "MAC").hex());
    }

    void ask(const IPCMessage& request, const std::string& sender = kClient) {
        dispatcher_->handle(sender, request, [this, sender](const DaemonAnswer& answer) {
            EXPECT_EQ(answer.kind, DaemonAnswer::Kind::Reply);
            sent_.push_back(sender + ": status " + std::to_string(statusIn(answer.reply)));
            replies_.push_back(answer.reply);
        });
    }
    void expectReply(const IPCMessage& expected) const {
        EXPECT_EQ(replies_.back().entries(), expected.entries());
    }
    void act(const char* command, const std::string& sender = kClient) {
        ask(message({{"command", command}, {"interface", "wlan0"}}), sender);
    }
    void subscribe(const std::string& sender = kClient) {
        ask(message({{"command", "subscribe"}, {"notifyAP", true}}), sender);
    }
};

TEST_F(DispatcherTest, AsksTheBackend) {
    const ByteBuffer mine = ByteBuffer::fromText(
        "<plist version=\"1.0\"><dict><key>SSID</key><data>bWluZQ==</data></dict></plist>");
    for (const char* command : {"queryDeviceList", "queryInterfaceList", "queryChannelList",
                                "queryBSSConfigList", "enable", "disable", "bssStart", "bssStop"}) {
        act(command);
    }
    ask(message({{"command", "queryBSSConfigList"}}));
    ask(message({{"command", "role"}, {"interface", "wlan0"}, {"role", "STA"}}));
    ask(message({{"command", "configAdd"}, {"interface", "wlan0"}, {"bssconfig", mine}}));
    ask(message({{"command", "configRemove"}, {"interface", "wlan0"}, {"bssconfig", mine}}));
    ask(message(
        {{"command", "kick"}, {"interface", "wlan0"}, {"MAC", ByteBuffer{2, 0, 0, 0, 1, 7}}}));
    EXPECT_THAT(backend_.calls,
                ElementsAre("devices", "interfaces", "channels wlan0", "configurations wlan0",
                            "enable wlan0", "disable wlan0", "start wlan0", "stop wlan0",
                            "configurations of all", "role wlan0 STA", "add wlan0 mine",
                            "remove wlan0 mine", "kick wlan0 02:00:00:00:01:07"));
    EXPECT_EQ(std::ranges::count(sent_, ":1.5: status 0"), 13);
    ask(message({{"command", "clientList"}}));
    EXPECT_EQ(sent_.back(), ":1.5: status 100");
}

TEST_F(DispatcherTest, AsksNothingForABadRequest) {
    ask(message({{"command", "dance"}}));
    ask(message({{"command", "enable"}}));
    ask(message({}));
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 1", ":1.5: status 2", ":1.5: status 2"));
    EXPECT_THAT(backend_.calls, IsEmpty());
}

TEST_F(DispatcherTest, SendsListsAsPropertyLists) {
    backend_.deviceList = {HalvaneDevice::initWithMACAddress_withIndex(ByteBuffer{2, 3}, 7)};
    act("queryDeviceList");
    const ByteBuffer list = skeleton::dataFor(replies_.back().entries(), "devices");
    EXPECT_THAT(std::string(list.bytes().begin(), list.bytes().end()),
                HasSubstr("<key>Index</key>\n\t\t<integer>7</integer>"));
    EXPECT_EQ(replies_.back().entries().size(), 2u);
}

TEST_F(DispatcherTest, RefusesAListThatCannotBeWritten) {
    backend_.interfaceList = {HalvaneInterface::initWithDevice_withMAC_withBSDName(
        nullptr, ByteBuffer(), std::string("wlan\x01"))};
    act("queryInterfaceList");
    expectReply(statusMessage(DaemonStatus::Unwritable));
}

TEST_F(DispatcherTest, RepliesWhenTheBackendDoes) {
    backend_.keepReplies();
    act("bssStart");
    EXPECT_THAT(sent_, IsEmpty());
    EXPECT_TRUE(backend_.kept[0]);
    backend_.kept[0](Unexpected(DaemonStatus::WrongRole));
    EXPECT_FALSE(backend_.kept[0]);
    backend_.kept[0]({});
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 7"));
    backend_.kept.clear();
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 7"));
}

TEST_F(DispatcherTest, RepliesInTheBackendsOrder) {
    backend_.keepReplies();
    act("bssStart", ":1.1");
    act("bssStop", ":1.2");
    backend_.kept[1]({});
    backend_.kept[0]({});
    EXPECT_THAT(sent_, ElementsAre(":1.2: status 0", ":1.1: status 0"));
}

TEST_F(DispatcherTest, SaysThatAReplyIsLost) {
    backend_.keepReplies();
    act("bssStart");
    act("bssStop");
    backend_.kept.pop_back();
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 15"));
    backend_.kept[0] = BackendReply<void>(nullptr);  // overwritten
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 15", ":1.5: status 15"));
}

TEST_F(DispatcherTest, LosesTheReplyOfABackendThatThrows) {
    backend_.onAction = [](BackendReply<void>) { throw std::bad_alloc(); };
    act("bssStart");
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 15"));
}

TEST_F(DispatcherTest, LetsAReplyOutliveIt) {
    backend_.keepReplies();
    act("bssStart");
    dispatcher_.reset();
    backend_.kept[0]({});
    backend_.tell(joined(1));
    EXPECT_THAT(sent_, IsEmpty());
}

TEST_F(DispatcherTest, RepliesBeforeItNotifiesOfTheEffects) {
    subscribe(":1.7");
    backend_.onAction = [this](BackendReply<void> reply) {
        backend_.tell(joined(1));
        reply({});
        backend_.tell(joined(2));
    };
    act("bssStart");
    EXPECT_THAT(sent_,
                ElementsAre(":1.7: status 0", ":1.5: status 0", ":1.7: joined wlan0 020000000001",
                            ":1.7: joined wlan0 020000000002"));
}

TEST_F(DispatcherTest, NotifiesInTheOrderOfEvents) {
    subscribe(":1.7");
    subscribe(":1.6");
    backend_.keepReplies();
    act("bssStart");
    sent_.clear();
    backend_.tell(joined(1));
    backend_.kept[0]({});
    backend_.tell({StationChange::Kind::Left, joined(1).address, "wlan0"});
    EXPECT_THAT(sent_,
                ElementsAre(":1.7: joined wlan0 020000000001", ":1.6: joined wlan0 020000000001",
                            ":1.5: status 0", ":1.7: left wlan0 020000000001",
                            ":1.6: left wlan0 020000000001"));
}

TEST_F(DispatcherTest, DropsANotificationThatNoBusTakes) {
    subscribe();
    backend_.tell(joined(1, "wlan\xFF"));
    backend_.tell(joined(2));
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 0", ":1.5: joined wlan0 020000000002"));
}

TEST_F(DispatcherTest, ForgetsSubscribers) {
    for (const char* sender : {":1.1", ":1.2", ":1.3"}) subscribe(sender);
    ask(message({{"command", "subscribe"}, {"notifyAP", false}}), ":1.1");
    dispatcher_->departed(":1.2");
    sent_.clear();
    backend_.tell(joined(1));
    EXPECT_THAT(sent_, ElementsAre(":1.3: joined wlan0 020000000001"));
    dispatcher_->left();
    backend_.tell(joined(2));
    EXPECT_EQ(sent_.size(), 1u);
}

TEST_F(DispatcherTest, LimitsSubscribers) {
    remake({.subscribers = 2});
    for (const char* sender : {":1.1", ":1.2", ":1.3", ":1.2"}) subscribe(sender);
    EXPECT_THAT(sent_, ElementsAre(":1.1: status 0", ":1.2: status 0", ":1.3: status 14",
                                   ":1.2: status 0"));
    dispatcher_->departed(":1.1");
    subscribe(":1.3");
    EXPECT_THAT(subscribers_.names(), ElementsAre(":1.2", ":1.3"));
}

TEST_F(DispatcherTest, LimitsTheWaitingRequestsOfOneClient) {
    remake({.waitingOfOne = 2, .waiting = 100});
    backend_.keepReplies();
    for (int i = 0; i < 3; ++i) act("bssStart", ":1.1");
    EXPECT_THAT(sent_, ElementsAre(":1.1: status 13"));
    EXPECT_EQ(backend_.calls.size(), 2u);
    act("bssStart", ":1.2");
    EXPECT_EQ(backend_.calls.size(), 3u);
    backend_.kept[0]({});
    act("bssStart", ":1.1");
    EXPECT_EQ(backend_.calls.size(), 4u);
    act("bssStart", ":1.1");
    EXPECT_THAT(sent_, ElementsAre(":1.1: status 13", ":1.1: status 0", ":1.1: status 13"));
}

TEST_F(DispatcherTest, LimitsTheWaitingRequestsOfAll) {
    remake({.waitingOfOne = 2, .waiting = 3});
    backend_.keepReplies();
    for (const char* sender : {":1.1", ":1.2", ":1.3", ":1.4"}) act("bssStart", sender);
    EXPECT_THAT(sent_, ElementsAre(":1.4: status 13"));
    backend_.kept.clear();
    act("bssStart", ":1.4");
    EXPECT_EQ(backend_.calls.size(), 4u);
}

// Only a backend can be busy.
TEST_F(DispatcherTest, RepliesToEverythingElseWhileTheBackendWaits) {
    remake({.waitingOfOne = 1, .waiting = 1});
    backend_.keepReplies();
    act("bssStart");
    subscribe();
    ask(message({{"command", "logging"}}));
    ask(message({{"command", "queryLogging"}}));
    ask(message({{"command", "enable"}}));  // refused before it is read
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 0", ":1.5: status 0", ":1.5: status -1",
                                   ":1.5: status 13"));
}

TEST_F(DispatcherTest, PassesLogControlsOn) {
    logging_.status = static_cast<DaemonStatus>(200);
    ask(message({{"command", "logging"}, {"WiFiWPS", "?WiFiWPS:level=info"}}));
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 200"));
    DaemonLogControls expected;
    expected[7] = "?WiFiWPS:level=info";
    EXPECT_EQ(logging_.applied, expected);
    logging_.applied = {};
    ask(message({{"command", "logging"}, {"WiFi", "x"}, {"WiFiWPS", 7}}));
    EXPECT_EQ(sent_.back(), ":1.5: status 2");
    EXPECT_EQ(logging_.applied, DaemonLogControls());
    ask(message({{"command", "queryLogging"}}));
    expectReply(message({{"params", "all is logged\n"}}));
}

TEST_F(DispatcherTest, SaysWhatABusWouldNotTake) {
    logging_.settings = std::string(kLargestDaemonReply, 'x');
    ask(message({{"command", "queryLogging"}}));
    expectReply(statusMessage(DaemonStatus::TooLarge));
    logging_.settings = "\xFF";
    ask(message({{"command", "queryLogging"}}));
    expectReply(statusMessage(DaemonStatus::Unwritable));
}

// Spoils everything, and records what it sees.
class RecordingFaults final : public DaemonFaults {
  public:
    std::vector<std::string> seen;

    std::optional<DaemonAnswer> insteadOf(std::string_view command) override {
        seen.emplace_back(command);
        if (command == "disable") return DaemonAnswer{.reply = statusMessage(42)};
        return std::nullopt;
    }
    IPCMessage reply(std::string_view command, IPCMessage reply) override {
        seen.push_back("reply to " + std::string(command));
        reply.entries().set("status", 43);
        return reply;
    }
    std::optional<IPCMessage> event(IPCMessage) override {
        seen.emplace_back("event");
        return std::nullopt;
    }
};

TEST_F(DispatcherTest, MisbehavesOnRequest) {
    RecordingFaults faults;
    remake({}, &faults);
    ask(message({{"command", "dance"}}));
    act("disable");
    act("enable");
    subscribe();
    backend_.tell(joined(1));
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 1", ":1.5: status 42", ":1.5: status 43",
                                   ":1.5: status 43"));
    EXPECT_THAT(faults.seen, ElementsAre("disable", "enable", "reply to enable", "subscribe",
                                         "reply to subscribe", "event"));
    EXPECT_THAT(backend_.calls, ElementsAre("enable wlan0"));
}

// Every request is answered once, or its exception tells the bus that it was not.
TEST_F(DispatcherTest, AnswersOnceHoweverShortMemoryIs) {
    backend_.deviceList = {HalvaneDevice::initWithMACAddress_withIndex(ByteBuffer{2, 3}, 7)};
    const IPCMessage request = message({{"command", "queryDeviceList"}});
    const std::string sender = kClient;
    int answers = 0;
    bool hasThrown = false;
    bool isWhole = false;
    testing::withEverLessScarceMemory(
        [&] {
            answers = 0;
            hasThrown = false;
            try {
                dispatcher_->handle(sender, request, [&](const DaemonAnswer& answer) {
                    ++answers;
                    isWhole = answer.kind == DaemonAnswer::Kind::Reply &&
                              answer.reply.entries().size() == 2;
                });
            } catch (const std::bad_alloc&) {
                hasThrown = true;
            }
        },
        [&](bool) { EXPECT_EQ(answers, hasThrown ? 0 : 1); });
    EXPECT_TRUE(isWhole);
    backend_.calls.clear();
    act("enable");  // nothing counts as waiting
    EXPECT_THAT(backend_.calls, ElementsAre("enable wlan0"));
}

// --- A bus that takes messages more slowly than they come ---

TEST_F(DispatcherTest, LetsNotificationsWaitButNoReplies) {
    subscribe(":1.1");
    subscribe(":1.2");
    sent_.clear();
    isCongested_ = true;
    backend_.tell(joined(1));
    backend_.tell({StationChange::Kind::Left, joined(1).address, "wlan0"});
    EXPECT_TRUE(dispatcher_->holdsNotifications());
    act("enable");
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 0"));
    dispatcher_->sendHeld();
    EXPECT_THAT(sent_, ElementsAre(":1.5: status 0"));
    sent_.clear();
    isCongested_ = false;
    backend_.tell(joined(2));  // behind the others
    EXPECT_THAT(sent_, IsEmpty());
    dispatcher_->sendHeld();
    EXPECT_FALSE(dispatcher_->holdsNotifications());
    EXPECT_THAT(sent_,
                ElementsAre(":1.1: joined wlan0 020000000001", ":1.2: joined wlan0 020000000001",
                            ":1.1: left wlan0 020000000001", ":1.2: left wlan0 020000000001",
                            ":1.1: joined wlan0 020000000002", ":1.2: joined wlan0 020000000002"));
    backend_.tell({StationChange::Kind::Left, joined(2).address, "wlan0"});
    EXPECT_EQ(sent_.back(), ":1.2: left wlan0 020000000002");
}

TEST_F(DispatcherTest, HoldsNoMoreThanItsLimit) {
    isCongested_ = true;
    backend_.tell(joined(1));
    EXPECT_FALSE(dispatcher_->holdsNotifications()) << "nobody wants it";
    subscribe(":1.1");
    sent_.clear();
    for (std::size_t i = 0; i < Dispatcher::kMostHeld + 5; ++i) {
        backend_.tell(joined(1));
    }
    isCongested_ = false;
    dispatcher_->sendHeld();
    EXPECT_EQ(sent_.size(), Dispatcher::kMostHeld);
}

TEST_F(DispatcherTest, ForgetsWhatWaitsWhenItLeavesTheBus) {
    subscribe(":1.1");
    isCongested_ = true;
    backend_.tell(joined(1));
    dispatcher_->left();
    EXPECT_FALSE(dispatcher_->holdsNotifications());
}

}  // namespace

}  // namespace halvane
