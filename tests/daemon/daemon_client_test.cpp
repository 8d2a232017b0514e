#include "halvane/daemon/daemon_client.h"

#include <chrono>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/xpc_client.h"
#include "halvane/model/bss_config.h"

#include "tests/daemon/daemon_client_test_support.h"
#include "tests/support/bus_peer.h"

namespace {

using namespace halvane;
using namespace halvane::testing;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

static_assert(!std::is_copy_constructible_v<DaemonClient>);

// A configuration that has no XML form.
HalvaneBSSConfig unsendableConfig() {
    return configNamed("\x01");
}

// --- Requests: the same bytes as those of HalvaneXPCClient ---

struct RequestRow {
    const char* name;
    std::function<std::string(DaemonClient&)> call;                    // blocking; its outcome
    std::function<void(DaemonClient&, Arrivals<std::string>&)> begin;  // with a completion
    std::function<void(HalvaneXPCClient&)> stated;

    // In the names of tests.
    friend void PrintTo(const RequestRow& row, std::ostream* stream) { *stream << row.name; }
};

template <typename T>
DaemonCompletion<T> noting(Arrivals<std::string>& outcomes) {
    return [&outcomes](DaemonResult<T> result) { outcomes.add(outcomeOf(result)); };
}

const DaemonLogControls kControls = {"a", {}, "c", {}, {}, {}, {}, {}, "i"};

const RequestRow kRequests[] = {
    {"devices", [](auto& c) { return outcomeOf(c.devices()); },
     [](auto& c, auto& o) { c.devices(noting<DaemonClient::Devices>(o)); },
     [](auto& c) { c.queryDeviceList(); }},
    {"interfaces", [](auto& c) { return outcomeOf(c.interfaces()); },
     [](auto& c, auto& o) { c.interfaces(noting<DaemonClient::Interfaces>(o)); },
     [](auto& c) { c.queryInterfaceList(); }},
    {"channels", [](auto& c) { return outcomeOf(c.channels("wlan0")); },
     [](auto& c, auto& o) { c.channels("wlan0", noting<DaemonClient::Channels>(o)); },
     [](auto& c) { c.queryChannelList_error("wlan0"); }},
    {"configurations", [](auto& c) { return outcomeOf(c.configurations("wlan1")); },
     [](auto& c, auto& o) { c.configurations("wlan1", noting<DaemonClient::Configurations>(o)); },
     [](auto& c) { c.queryBSSConfigList_error("wlan1"); }},
    {"allConfigurations", [](auto& c) { return outcomeOf(c.configurations(std::nullopt)); },
     [](auto& c, auto& o) {
         c.configurations(std::nullopt, noting<DaemonClient::Configurations>(o));
     },
     [](auto& c) { c.queryBSSConfigList_error(std::nullopt); }},
    {"stations", [](auto& c) { return outcomeOf(c.stations()); },
     [](auto& c, auto& o) { c.stations(noting<DaemonClient::Stations>(o)); },
     [](auto& c) { c.queryClientList_error(std::nullopt); }},
    {"add", [](auto& c) { return outcomeOf(c.add("wlan0", configNamed("x"))); },
     [](auto& c, auto& o) { c.add("wlan0", configNamed("x"), noting<void>(o)); },
     [](auto& c) { c.bssConfigAdd_forInterface_error(configNamed("x"), "wlan0"); }},
    {"remove", [](auto& c) { return outcomeOf(c.remove("wlan0", configNamed("x"))); },
     [](auto& c, auto& o) { c.remove("wlan0", configNamed("x"), noting<void>(o)); },
     [](auto& c) { c.bssConfigRemove_forInterface_error(configNamed("x"), "wlan0"); }},
    {"enable", [](auto& c) { return outcomeOf(c.enable("wlan0")); },
     [](auto& c, auto& o) { c.enable("wlan0", noting<void>(o)); },
     [](auto& c) { c.enableInterface_error("wlan0"); }},
    {"disable", [](auto& c) { return outcomeOf(c.disable("wlan0")); },
     [](auto& c, auto& o) { c.disable("wlan0", noting<void>(o)); },
     [](auto& c) { c.disableInterface_error("wlan0"); }},
    {"setRole", [](auto& c) { return outcomeOf(c.setRole("wlan0", "AP")); },
     [](auto& c, auto& o) { c.setRole("wlan0", "AP", noting<void>(o)); },
     [](auto& c) { c.changeInterfaceRole_role_error("wlan0", "AP"); }},
    {"start", [](auto& c) { return outcomeOf(c.start("wlan0")); },
     [](auto& c, auto& o) { c.start("wlan0", noting<void>(o)); },
     [](auto& c) { c.bssStart_error("wlan0"); }},
    {"stop", [](auto& c) { return outcomeOf(c.stop("wlan0")); },
     [](auto& c, auto& o) { c.stop("wlan0", noting<void>(o)); },
     [](auto& c) { c.bssStop_error("wlan0"); }},
    {"subscribe", [](auto& c) { return outcomeOf(c.subscribe(true)); },
     [](auto& c, auto& o) { c.subscribe(true, noting<void>(o)); },
     [](auto& c) { c.setSubscribeAP(true); }},
    {"setLogging", [](auto& c) { return outcomeOf(c.setLogging(kControls)); },
     [](auto& c, auto& o) { c.setLogging(kControls, noting<void>(o)); },
     [](auto& c) {
         c.setLogging_inBPF_inEAPOL_inIE_inIO80211_inJoin_inScan_inWPS_inXPC_error(
             "a", {}, "c", {}, {}, {}, {}, {}, "i");
     }},
    {"logging", [](auto& c) { return outcomeOf(c.logging()); },
     [](auto& c, auto& o) { c.logging(noting<std::string>(o)); },
     [](auto& c) { c.queryLogging(); }},
};

class DaemonClientRequest : public DaemonClientTest,
                            public ::testing::WithParamInterface<RequestRow> {
  protected:
    // Replies that hold all that any request reads.
    void answerAll(int status) {
        const auto empty = xmlData(PropertyListArray());
        daemon_->answer(ipcMessage({{"status", status},
                                    {"devices", empty},
                                    {"interfaces", empty},
                                    {"channels", empty},
                                    {"configs", empty},
                                    {"clients", empty},
                                    {"params", "text"}}));
    }

    // What was sent: "command:s interface:s", and the values.
    static std::vector<PropertyListValue> valuesOf(const ReceivedRequest& request) {
        std::vector<PropertyListValue> values;
        for (const auto& entry : request.entries) values.push_back(entry.value);
        return values;
    }
};

TEST_P(DaemonClientRequest, IsTheOneOfTheStatedClient) {
    answerAll(0);
    EXPECT_EQ(GetParam().call(*client_), "done");
    Arrivals<std::string> outcomes;
    GetParam().begin(*client_, outcomes);
    EXPECT_EQ(outcomes.wait(0), "done");
    const XPCLog log("off");
    GetParam().stated(*HalvaneXPCClient::init());
    const auto requests = daemon_->requests();
    ASSERT_EQ(requests.size(), 3u);
    for (const auto& request : requests) {
        EXPECT_EQ(request.keysAndTypes(), requests[2].keysAndTypes());
        EXPECT_EQ(valuesOf(request), valuesOf(requests[2]));
    }
}

TEST_P(DaemonClientRequest, TellsWithWhichStatusItWasRefused) {
    daemon_->answer(ipcMessage({{"status", 5}}));
    EXPECT_EQ(GetParam().call(*client_), "status 5");
    Arrivals<std::string> outcomes;
    GetParam().begin(*client_, outcomes);
    EXPECT_EQ(outcomes.wait(0), "status 5");
}

TEST_P(DaemonClientRequest, FindsTheAnswerOfAnotherProtocolUndecodable) {
    daemon_->answer(ipcMessage({{"state", 0}}));
    EXPECT_EQ(GetParam().call(*client_), textOf(DaemonKind::Undecodable));
    Arrivals<std::string> outcomes;
    GetParam().begin(*client_, outcomes);
    EXPECT_EQ(outcomes.wait(0), textOf(DaemonKind::Undecodable));
}

INSTANTIATE_TEST_SUITE_P(All, DaemonClientRequest, ::testing::ValuesIn(kRequests),
                         [](const auto& row) { return row.param.name; });

// --- A request that the stated client has not ---

TEST_F(DaemonClientTest, KicksAStationOfAnInterface) {
    const MacAddress station({2, 0, 0, 0, 1, 7});
    daemon_->answer(ipcMessage({{"status", 0}}));
    EXPECT_EQ(outcomeOf(client_->kick("wlan0", station)), "done");
    Arrivals<std::string> outcomes;
    client_->kick("wlan0", station, noting<void>(outcomes));
    EXPECT_EQ(outcomes.wait(0), "done");
    const auto requests = daemon_->requests();
    ASSERT_EQ(requests.size(), 2u);
    for (const auto& request : requests) {
        EXPECT_EQ(request.keysAndTypes(), "command:s interface:s MAC:ay");
        EXPECT_EQ(request.find("command")->value, PropertyListValue("kick"));
        EXPECT_EQ(request.find("interface")->value, PropertyListValue("wlan0"));
        EXPECT_EQ(request.find("MAC")->value, PropertyListValue(station.buffer()));
    }
}

TEST_F(DaemonClientTest, TellsWithWhichStatusAKickWasRefused) {
    daemon_->answer(ipcMessage({{"status", 10}}));
    EXPECT_EQ(outcomeOf(client_->kick("wlan0", MacAddress())), "status 10");
    Arrivals<std::string> outcomes;
    client_->kick("wlan0", MacAddress(), noting<void>(outcomes));
    EXPECT_EQ(outcomes.wait(0), "status 10");
    daemon_->answer(ipcMessage({{"state", 0}}));
    EXPECT_EQ(outcomeOf(client_->kick("wlan0", MacAddress())), textOf(DaemonKind::Undecodable));
}

// --- What comes of it ---

template <typename List>
class DaemonClientList : public DaemonClientTest {};
TYPED_TEST_SUITE(DaemonClientList, HALVANE_TEST_LISTS);

template <typename List>
auto listOf(DaemonClient& client) {
    if constexpr (std::is_same_v<List, DeviceList>) return client.devices();
    if constexpr (std::is_same_v<List, InterfaceList>) return client.interfaces();
    if constexpr (std::is_same_v<List, ChannelList>) return client.channels("wlan0");
    if constexpr (std::is_same_v<List, BSSConfigList>) return client.configurations("wlan0");
    if constexpr (std::is_same_v<List, ClientList>) return client.stations();
}

TYPED_TEST(DaemonClientList, HoldsTheRecordsInOrder) {
    this->daemon_->answer(listReply<TypeParam>());
    const auto records = listOf<TypeParam>(*this->client_);
    ASSERT_TRUE(records);
    EXPECT_EQ(*records, TypeParam::records());
}

TYPED_TEST(DaemonClientList, IsUndecodableWhereItIsNoList) {
    for (const auto& data : {PropertyListValue(ByteBuffer::fromText("no XML")),
                             PropertyListValue("text"), PropertyListValue(xmlData("text"))}) {
        this->daemon_->answer(ipcMessage({{"status", 0}, {TypeParam::kKey, data}}));
        EXPECT_EQ(outcomeOf(listOf<TypeParam>(*this->client_)), textOf(DaemonKind::Undecodable));
    }
}

TEST_F(DaemonClientTest, TellsTheSettingsOfTheDaemonsLogging) {
    daemon_->answer(ipcMessage({{"params", "text"}, {"status", 7}}));
    const auto settings = client_->logging();
    ASSERT_TRUE(settings);
    EXPECT_EQ(*settings, "text");
}

TEST_F(DaemonClientTest, KeepsAStatusOf64Bits) {
    daemon_->answer(ipcMessage({{"status", std::int64_t{1} << 32}}));
    EXPECT_EQ(outcomeOf(client_->enable("wlan0")), "status 4294967296");
}

TEST_F(DaemonClientTest, FindsAStatusThatIsNoIntegerUndecodable) {
    for (const auto& status : {PropertyListValue("0"), PropertyListValue(true)}) {
        daemon_->answer(ipcMessage({{"status", status}}));
        EXPECT_EQ(outcomeOf(client_->enable("wlan0")), textOf(DaemonKind::Undecodable));
    }
}

TEST_F(DaemonClientTest, FindsAnAnswerThatIsNoDictionaryUndecodable) {
    daemon_->answer(PeerBody([](sd_bus_message*) {}));
    EXPECT_EQ(outcomeOf(client_->enable("wlan0")), textOf(DaemonKind::Undecodable));
}

TEST_F(DaemonClientTest, IsDeniedByAnErrorOfTheBus) {
    daemon_->answer(PeerError{"org.freedesktop.DBus.Error.AccessDenied", "no"});
    EXPECT_EQ(outcomeOf(client_->enable("wlan0")), textOf(DaemonKind::Denied));
}

TEST_F(DaemonClientTest, SendsNothingThatTheBusDoesNotTake) {
    EXPECT_EQ(outcomeOf(client_->enable("\xFF")), textOf(DaemonKind::Unsendable));
    EXPECT_EQ(outcomeOf(client_->enable(std::string_view("a\0b", 3))),
              textOf(DaemonKind::Unsendable));
    EXPECT_EQ(outcomeOf(client_->setRole("wlan0", std::string(40'000'000, 'a'))),
              textOf(DaemonKind::Unsendable));
    EXPECT_EQ(outcomeOf(client_->add("wlan0", unsendableConfig())), textOf(DaemonKind::Unsendable));
    Arrivals<std::string> outcomes;
    client_->enable("\xFF", noting<void>(outcomes));
    EXPECT_EQ(outcomes.wait(0), textOf(DaemonKind::Unsendable));
    EXPECT_EQ(daemon_->requests().size(), 0u);
}

// --- Deadlines ---

TEST_F(DaemonClientTest, GivesUpAtTheDeadline) {
    connect();
    daemon_->answer(PeerSilence());
    // On a busy machine a deadline may pass before anything is sent.
    for (auto allowed = 1ms; daemon_->requests().empty(); allowed *= 2) {
        EXPECT_EQ(outcomeOf(client_->enable("wlan0", allowed)), textOf(DaemonKind::DeadlinePassed));
    }
    daemon_->answer(ipcMessage({{"status", 3}}));
    daemon_->answerHeld(ipcMessage({{"status", 4}}));
    EXPECT_EQ(outcomeOf(client_->enable("wlan0", 1h)), "status 3") << "not the late answer";
}

TEST_F(DaemonClientTest, SendsNothingPastTheDeadline) {
    EXPECT_EQ(outcomeOf(client_->enable("wlan0", 0ms)), textOf(DaemonKind::DeadlinePassed));
    EXPECT_EQ(outcomeOf(client_->enable("wlan0", -1h)), textOf(DaemonKind::DeadlinePassed));
    EXPECT_EQ(outcomeOf(client_->enable("wlan0", std::chrono::steady_clock::now())),
              textOf(DaemonKind::DeadlinePassed));
    EXPECT_TRUE(client_->enable("wlan1"));
    EXPECT_EQ(daemon_->requests().size(), 1u);
}

TEST(DaemonDeadline, IsNeverWhereTheClockDoesNotReach) {
    EXPECT_EQ(DaemonDeadline().end(), std::nullopt);
    EXPECT_EQ(DaemonDeadline(std::chrono::hours::max()).end(), std::nullopt);
    EXPECT_EQ(DaemonDeadline(std::chrono::nanoseconds::max()).end(), std::nullopt);
    EXPECT_FALSE(DaemonDeadline(1h).hasPassed());
    EXPECT_TRUE(DaemonDeadline(std::chrono::hours::min()).hasPassed());
}

// --- Events ---

TEST_F(DaemonClientTest, TellsOfStationsInOrder) {
    connect();
    const std::string client = clientName();
    for (const char* event : {"authorized", "joined", "kicked", "left"}) {
        daemon_->sendEvent(notification(event), client);
    }
    EXPECT_EQ(events_.wait(1), "authorized 02:00:00:00:01:2a wlan0");
    EXPECT_EQ(events_.wait(2), "joined 02:00:00:00:01:2a wlan0");
    EXPECT_EQ(events_.wait(3), "kicked 02:00:00:00:01:2a wlan0");
    EXPECT_EQ(events_.wait(4), "left 02:00:00:00:01:2a wlan0");
}

TEST_F(DaemonClientTest, TellsOfNoOtherMessage) {
    connect();
    const std::string client = clientName();
    for (const auto& message :
         {ipcMessage({}), notification("unknown"), notification("joined", ByteBuffer{1, 2, 3}),
          ipcMessage({{"command", "org.halvane.halvaned.status.client.joined"}}),
          notification("left", kStation, "last")}) {
        daemon_->sendEvent(message, client);
    }
    EXPECT_EQ(events_.wait(1), "left 02:00:00:00:01:2a last");
}

TEST_F(DaemonClientTest, NeedsNoneOfTheEvents) {
    DaemonClient client;
    EXPECT_TRUE(client.subscribe(true));
    daemon_->sendEvent(notification("joined"), daemon_->waitForRequest().sender);
    restartDaemon();
    while (!client.enable("wlan0")) std::this_thread::yield();
}

// Events and completions of one connection, in the order of their messages.
TEST_F(DaemonClientTest, CallsCompletionsBetweenEventsInOrder) {
    connect();
    const std::string client = clientName();
    daemon_->answerBy([&](const ReceivedRequest&) { return PeerAnswer(PeerSilence()); });
    for (int i = 0; i < 20; ++i) {
        client_->enable("wlan0", noting<void>(events_));
        daemon_->waitForRequest(static_cast<std::size_t>(i) + 1);
        daemon_->sendEvent(notification("joined"), client);
        daemon_->answerHeld(ipcMessage({{"status", i + 1}}));
    }
    for (std::size_t i = 0; i < 20; ++i) {
        EXPECT_EQ(events_.wait(2 * i + 1), "joined 02:00:00:00:01:2a wlan0");
        EXPECT_EQ(events_.wait(2 * i + 2), "status " + std::to_string(i + 1));
    }
}

TEST_F(DaemonClientTest, AnswersBlockingRequestsInEventsAndCompletions) {
    Arrivals<std::string> outcomes;
    DaemonClient client({.state = [&](DaemonState) { outcomes.add("state"); }});
    DaemonClient other(
        {.state = [&](DaemonState) { outcomes.add(outcomeOf(client.enable("a"))); }});
    EXPECT_THAT((std::vector{outcomes.wait(0), outcomes.wait(1)}),
                ::testing::UnorderedElementsAre("state", "done"));
    client.enable("wlan0", [&](DaemonResult<void>) {
        outcomes.add(outcomeOf(client.disable("wlan0")));
        client.stop("wlan0", noting<void>(outcomes));
    });
    EXPECT_EQ(outcomes.wait(2), "done");
    EXPECT_EQ(outcomes.wait(3), "done");
}

TEST_F(DaemonClientTest, LogsNothing) {
    const XPCLog log("verbose");
    DaemonClient client;
    EXPECT_TRUE(client.enable("wlan0"));
    EXPECT_EQ(XPCLog("verbose").take(), "");
}

// --- Several threads ---

TEST_F(DaemonClientTest, GivesEachThreadItsOwnAnswer) {
    daemon_->answerBy([](const ReceivedRequest& request) {
        const auto* role = request.find("role");
        const auto* text = role != nullptr ? role->value.as<std::string>() : nullptr;
        return PeerAnswer(ipcMessage({{"status", text != nullptr ? std::stoi(*text) : -1}}));
    });
    std::vector<std::future<int>> threads;
    for (int i = 0; i < 8; ++i) {
        threads.push_back(inBackground([&, i] {
            int wrong = 0;
            for (int j = 1; j <= 25; ++j) {
                const int status = i * 100 + j;
                const auto done = client_->setRole("wlan0", std::to_string(status), 1h);
                if (outcomeOf(done) != "status " + std::to_string(status)) ++wrong;
            }
            return wrong;
        }));
    }
    for (auto& thread : threads) EXPECT_EQ(thread.get(), 0);
}

}  // namespace
