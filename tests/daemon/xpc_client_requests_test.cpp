// What requests send over the bus, and what they return.
#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <iterator>
#include <thread>
#include <tuple>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/property_list_value.h"
#include "halvane/daemon/xpc_client_delegate.h"
#include "halvane/daemon/xpc_link_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/daemon_service.h"
#include "halvane/model/device.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "tests/daemon/xpc_client_test_support.h"
#include "tests/support/scoped_environment.h"
#include "tests/support/thread_names.h"

namespace {

using namespace halvane;
using namespace halvane::testing;

using XPCClientRequests = XPCClientTest;

// A request, and what the daemon receives: its keys with their types on the wire, and the values.
struct RequestRow {
    std::function<void(HalvaneXPCClient&)> act;
    const char* keysAndTypes;
    std::vector<std::string> texts;
};

const RequestRow kRequests[] = {
    {[](auto& client) { client.queryDeviceList(); }, "command:s", {"queryDeviceList"}},
    {[](auto& client) { client.queryInterfaceList(); }, "command:s", {"queryInterfaceList"}},
    {[](auto& client) { client.queryChannelList_error("wlan0"); },
     "command:s interface:s",
     {"queryChannelList", "wlan0"}},
    {[](auto& client) { client.queryChannelList_error(""); },
     "command:s interface:s",
     {"queryChannelList", ""}},
    {[](auto& client) { client.queryBSSConfigList_error("wlan1"); },
     "command:s interface:s",
     {"queryBSSConfigList", "wlan1"}},
    {[](auto& client) { client.queryBSSConfigList_error(std::nullopt); },
     "command:s",
     {"queryBSSConfigList"}},
    {[](auto& client) { client.queryClientList_error("wlan0"); }, "command:s", {"clientList"}},
    {[](auto& client) { client.queryClientList_error(std::nullopt); }, "command:s", {"clientList"}},
    {[](auto& client) { client.enableInterface_error("wlan0"); },
     "command:s interface:s",
     {"enable", "wlan0"}},
    {[](auto& client) { client.disableInterface_error("wlan0"); },
     "command:s interface:s",
     {"disable", "wlan0"}},
    {[](auto& client) { client.changeInterfaceRole_role_error("wlan0", "AP"); },
     "command:s interface:s role:s",
     {"role", "wlan0", "AP"}},
    {[](auto& client) { client.bssStart_error("wlan0"); },
     "command:s interface:s",
     {"bssStart", "wlan0"}},
    {[](auto& client) { client.bssStop_error("wl\xC3\xA4n"); },
     "command:s interface:s",
     {"bssStop", "wl\xC3\xA4n"}},
    {[](auto& client) { client.queryLogging(); }, "command:s", {"queryLogging"}},
};

std::vector<std::string> textsOf(const ReceivedRequest& request) {
    std::vector<std::string> texts;
    for (const auto& entry : request.entries) {
        const auto* text = entry.value.as<std::string>();
        texts.push_back(text != nullptr ? *text : "(no text)");
    }
    return texts;
}

TEST_F(XPCClientRequests, SendTheirKeysInOrder) {
    for (const RequestRow& row : kRequests) {
        const auto request = requestOf([&] { row.act(*client_); });
        EXPECT_EQ(request.keysAndTypes(), row.keysAndTypes) << row.texts[0];
        EXPECT_EQ(textsOf(request), row.texts);
    }
}

TEST_F(XPCClientRequests, CallTheMethodOfTheDaemonsObject) {
    const auto request = requestOf([&] { client_->queryDeviceList(); });
    EXPECT_EQ(request.path, "/org/halvane/halvaned");
    EXPECT_EQ(request.interface, "org.halvane.halvaned");
    EXPECT_EQ(request.member, "Request");
    EXPECT_EQ(request.signature, "a{sv}");
}

TEST_F(XPCClientRequests, AreNotMadeByCreation) {
    client_->queryLogging();
    client_->setDelegate(stations_.delegate());
    EXPECT_EQ(daemon_->requests().size(), 1u);
}

// What both requests with a configuration send.
void expectConfig(const ReceivedRequest& request, const char* command,
                  const HalvaneBSSConfig& config) {
    ASSERT_EQ(request.keysAndTypes(), "command:s interface:s bssconfig:ay");
    EXPECT_EQ(request.command(), command);
    EXPECT_EQ(request.entries[1].value, PropertyListValue("wlan0"));
    const auto* data = request.entries[2].value.as<ByteBuffer>();
    ASSERT_NE(data, nullptr);
    const auto bytes = data->bytes();
    const std::string text(bytes.begin(), bytes.end());
    EXPECT_TRUE(text.starts_with("<?xml version=\"1.0\"")) << text;
    EXPECT_EQ(propertyListFromXml(text), PropertyListValue(config.skeletonRepresentation()));
}

TEST_F(XPCClientRequests, SendAConfigurationAsData) {
    const auto config = configNamed("tea & <cake>");
    expectConfig(requestOf([&] { client_->bssConfigAdd_forInterface_error(config, "wlan0"); }),
                 "configAdd", config);
    expectConfig(requestOf([&] { client_->bssConfigRemove_forInterface_error(config, "wlan0"); }),
                 "configRemove", config);
}

TEST_F(XPCClientRequests, SendTheSubscriptionAsABoolean) {
    for (const bool value : {false, true, true, false, false}) {
        const auto request = requestOf([&] { client_->setSubscribeAP(value); });
        EXPECT_EQ(client_->subscribeAP(), value);
        ASSERT_EQ(request.keysAndTypes(), "command:s notifyAP:b");
        EXPECT_EQ(request.command(), "subscribe");
        EXPECT_EQ(request.entries[1].value, PropertyListValue(value));
    }
}

TEST_F(XPCClientRequests, RegisterForNotificationsWithTheFlagAsItIs) {
    const auto flagSent = [this] {
        const auto request = requestOf([&] { client_->registerNotifications(); });
        EXPECT_EQ(request.keysAndTypes(), "command:s notifyAP:b");
        return request.entries.at(1).value;
    };
    EXPECT_EQ(flagSent(), PropertyListValue(false));
    client_->setSubscribeAP(true);
    EXPECT_EQ(flagSent(), PropertyListValue(true));
}

TEST_F(XPCClientRequests, RegisterWhateverTheDaemonAnswers) {
    for (const PeerAnswer& answer :
         {PeerAnswer(ipcMessage({{"status", 5}})), PeerAnswer(PeerError{"org.example.No", "no"})}) {
        daemon_->answer(answer);
        client_->setSubscribeAP(true);
        EXPECT_TRUE(client_->subscribeAP());
    }
}

// --- Lists ---

template <typename List>
class XPCClientLists : public XPCClientTest {};

TYPED_TEST_SUITE(XPCClientLists, HALVANE_TEST_LISTS);

TYPED_TEST(XPCClientLists, ComeFromTheReply) {
    this->daemon_->answer(listReply<TypeParam>());
    std::optional<Error> error = daemonError(77);
    EXPECT_EQ(TypeParam::query(*this->client_, &error), TypeParam::records());
    EXPECT_EQ(error, std::nullopt) << "a success clears what was there";
    EXPECT_EQ(TypeParam::query(*this->client_, nullptr), TypeParam::records());
    EXPECT_EQ(this->daemon_->requests()[0].command(), TypeParam::kCommand);
}

TYPED_TEST(XPCClientLists, AreEmptyWithTheDaemonsStatus) {
    this->daemon_->answer(ipcMessage({{"status", 5}, {TypeParam::kKey, dataOf<TypeParam>()}}));
    std::optional<Error> error;
    EXPECT_TRUE(TypeParam::query(*this->client_, &error).empty());
    EXPECT_EQ(error, (Error{"org.halvane.halvaned.ErrorDomain", 5}));
    EXPECT_TRUE(TypeParam::query(*this->client_, nullptr).empty());
}

TYPED_TEST(XPCClientLists, AreEmptyWithoutAnErrorWhereTheReplyHoldsNone) {
    std::optional<Error> error = daemonError(77);
    EXPECT_TRUE(TypeParam::query(*this->client_, &error).empty());
    EXPECT_EQ(error, std::nullopt);
}

TYPED_TEST(XPCClientLists, FailWhereTheDaemonGoesAway) {
    this->daemon_->answer(PeerLeaves());
    std::optional<Error> error;
    EXPECT_TRUE(TypeParam::query(*this->client_, &error).empty());
    EXPECT_EQ(error, kNoReply);
    EXPECT_TRUE(TypeParam::query(*this->client_, nullptr).empty());
}

TYPED_TEST(XPCClientLists, FailWhereTheReplyIsAnError) {
    this->daemon_->answer(PeerError{"org.example.Error.Busy", "later"});
    std::optional<Error> error;
    EXPECT_TRUE(TypeParam::query(*this->client_, &error).empty());
    EXPECT_EQ(error, kNoReply);
}

// --- Actions ---

using Action = bool (*)(HalvaneXPCClient& client, std::optional<Error>* error);

const Action kActions[] = {
    [](auto& client, auto* error) {
        return client.bssConfigAdd_forInterface_error(configNamed("a"), "wlan0", error);
    },
    [](auto& client, auto* error) {
        return client.bssConfigRemove_forInterface_error(configNamed("a"), "wlan0", error);
    },
    [](auto& client, auto* error) { return client.enableInterface_error("wlan0", error); },
    [](auto& client, auto* error) { return client.disableInterface_error("wlan0", error); },
    [](auto& client, auto* error) {
        return client.changeInterfaceRole_role_error("wlan0", "AP", error);
    },
    [](auto& client, auto* error) { return client.bssStart_error("wlan0", error); },
    [](auto& client, auto* error) { return client.bssStop_error("wlan0", error); },
};

TEST_F(XPCClientRequests, ActionsAreTrueWhateverTheDaemonAnswers) {
    const PeerAnswer answers[] = {ipcMessage({{"status", 0}}), ipcMessage({{"status", 1}}),
                                  IPCMessage(), PeerError{"org.example.Error.Busy", "later"},
                                  PeerLeaves()};
    for (const PeerAnswer& answer : answers) {
        daemon_->answer(answer);
        for (const Action& action : kActions) {
            std::optional<Error> error = daemonError(77);
            EXPECT_TRUE(action(*client_, &error));
            EXPECT_EQ(error, daemonError(77)) << "never touched";
            EXPECT_TRUE(action(*client_, nullptr));
        }
    }
}

TEST_F(XPCClientRequests, ActionsWaitForTheReply) {
    daemon_->answer(PeerSilence());
    Arrivals<std::string> order;
    auto action = inBackground([&] {
        client_->enableInterface_error("wlan0");
        order.add("returned");
    });
    daemon_->waitForRequest();
    daemon_->countConnections();  // time enough for a caller that does not wait
    order.add("answered");
    daemon_->answerHeld(ipcMessage({{"status", 0}}));
    action.get();
    EXPECT_EQ(order.all(), (std::vector<std::string>{"answered", "returned"}));
}

TEST_F(XPCClientRequests, DoNotSendAConfigurationWithoutAnXMLForm) {
    const auto config = configNamed("\xFF");
    EXPECT_TRUE(client_->bssConfigAdd_forInterface_error(config, "wlan0"));
    EXPECT_TRUE(client_->bssConfigRemove_forInterface_error(config, "wlan0"));
    EXPECT_EQ(daemon_->requests().size(), 0u);
}

TEST_F(XPCClientRequests, FailForTextsThatCannotBeSent) {
    for (const std::string& name : {std::string("\xFF"), std::string("a\0b", 3)}) {
        std::optional<Error> error;
        EXPECT_TRUE(client_->queryChannelList_error(name, &error).empty());
        EXPECT_EQ(error, kNoReply);
        EXPECT_TRUE(client_->bssStart_error(name));
    }
    EXPECT_EQ(daemon_->requests().size(), 0u);
    std::optional<Error> error = daemonError(77);
    client_->queryChannelList_error("wlan0", &error);
    EXPECT_EQ(error, std::nullopt);
}

// --- Logging ---

constexpr const char* kCategories[] = {"WiFi",     "WiFiBPF",  "WiFiEAPOL", "WiFiIE", "WiFiIO80211",
                                       "WiFiJoin", "WiFiScan", "WiFiWPS",   "WiFiXPC"};

class XPCClientLogging : public XPCClientTest {
  protected:
    using Texts = std::array<std::optional<std::string>, std::size(kCategories)>;

    bool set(const Texts& texts, std::optional<Error>* error = nullptr) {
        return std::apply(
            [&](const auto&... text) {
                return client_
                    ->setLogging_inBPF_inEAPOL_inIE_inIO80211_inJoin_inScan_inWPS_inXPC_error(
                        text..., error);
            },
            texts);
    }
};

TEST_F(XPCClientLogging, SendsOneStringForEachCategory) {
    for (std::size_t i = 0; i < std::size(kCategories); ++i) {
        Texts texts;
        texts[i] = "level=info";
        const auto request = requestOf([&] { set(texts); });
        EXPECT_EQ(request.keysAndTypes(), std::string("command:s ") + kCategories[i] + ":s");
        EXPECT_EQ(textsOf(request), (std::vector<std::string>{"logging", "level=info"}));
    }
}

TEST_F(XPCClientLogging, SendsAllCategoriesInOrder) {
    Texts texts;
    std::string keys = "command:s";
    std::vector<std::string> sent = {"logging"};
    for (std::size_t i = 0; i < std::size(kCategories); ++i) {
        sent.push_back(std::string("?") + kCategories[i] + ":level=" + std::to_string(i));
        texts[i] = sent.back();
        keys += std::string(" ") + kCategories[i] + ":s";
    }
    const auto request = requestOf([&] { set(texts); });
    EXPECT_EQ(request.keysAndTypes(), keys);
    EXPECT_EQ(textsOf(request), sent);
}

TEST_F(XPCClientLogging, SendsTheCommandWithoutAnyCategory) {
    bool isTaken = false;
    const auto request = requestOf([&] { isTaken = set({}); });
    EXPECT_TRUE(isTaken);
    EXPECT_EQ(request.keysAndTypes(), "command:s");
    EXPECT_EQ(request.command(), "logging");
    daemon_->answer(ipcMessage({{"status", 9}}));
    EXPECT_FALSE(set({}));
}

TEST_F(XPCClientLogging, SendsAnEmptyStringThatIsGiven) {
    const auto request = requestOf([&] { set({""}); });
    EXPECT_EQ(request.keysAndTypes(), "command:s WiFi:s");
}

TEST_F(XPCClientLogging, AnswersTheDaemonsStatus) {
    std::optional<Error> error = daemonError(77);
    EXPECT_TRUE(set({"level=info"}, &error));
    EXPECT_EQ(error, daemonError(77)) << "touched without an error";
    daemon_->answer(ipcMessage({{"status", 3}}));
    EXPECT_FALSE(set({"level=info"}, &error));
    EXPECT_EQ(error, (Error{"org.halvane.halvaned.ErrorDomain", 3}));
    EXPECT_FALSE(set({"level=info"}));
}

TEST_F(XPCClientLogging, IsFalseWithoutAnErrorWhereThereIsNoReply) {
    for (const PeerAnswer& answer : {PeerAnswer(PeerError{"org.example.No", ""}),
                                     PeerAnswer(PeerLeaves()), PeerAnswer(PeerLeaves())}) {
        daemon_->answer(answer);
        std::optional<Error> error = daemonError(77);
        EXPECT_FALSE(set({"level=info"}, &error));
        EXPECT_EQ(error, daemonError(77)) << "touched without an error";
    }
}

TEST_F(XPCClientLogging, TellsTheDaemonsSettings) {
    daemon_->answer(ipcMessage({{"status", 5}, {"params", "WiFi: info\n"}}));
    std::optional<Error> error = daemonError(77);
    EXPECT_EQ(client_->queryLogging(&error), "WiFi: info\n");
    EXPECT_EQ(error, daemonError(77)) << "never touched";
}

TEST_F(XPCClientLogging, TellsNothingWithoutParams) {
    EXPECT_EQ(client_->queryLogging(), std::nullopt);
    daemon_->answer(ipcMessage({{"params", 5}}));
    EXPECT_EQ(client_->queryLogging(), std::nullopt);
    daemon_->answer(PeerLeaves());
    EXPECT_EQ(client_->queryLogging(), std::nullopt);
}

// --- Threads ---

TEST_F(XPCClientRequests, ComeFromAnyThreadInTurn) {
    daemon_->answer(listReply<DeviceList>());
    for (int i = 0; i < 8; ++i) {
        inBackground([&] { EXPECT_EQ(client_->queryDeviceList(), DeviceList::records()); }).get();
    }
}

TEST_F(XPCClientRequests, ComeFromADelegateCall) {
    daemon_->answer(listReply<DeviceList>());
    std::promise<std::vector<HalvaneDevice>> devices;
    client_->setDelegate(std::make_shared<HalvaneXPCClientDelegate>(
        HalvaneXPCClientDelegate{.clientJoined_forInterface = [&](const auto&, const auto&) {
            devices.set_value(client_->queryDeviceList());
        }}));
    daemon_->sendEvent(notification("joined"), clientName());
    EXPECT_EQ(devices.get_future().get(), DeviceList::records());
}

// Callers take turns; ones that do not may get each other's turn, and nothing worse.
TEST_F(XPCClientRequests, AtOnceDoNoHarm) {
    constexpr int kThreads = 4;
    constexpr int kRequestsEach = 50;
    daemon_->answerBy([](const ReceivedRequest& request) -> PeerAnswer {
        if (request.command() == "queryLogging") return ipcMessage({{"params", "text"}});
        return listReply<DeviceList>();
    });
    std::vector<std::future<void>> callers;
    for (int i = 0; i < kThreads; ++i) {
        callers.push_back(inBackground([this] {
            for (int j = 0; j < kRequestsEach; ++j) {
                const auto devices = client_->queryDeviceList();
                EXPECT_TRUE(devices.empty() || devices == DeviceList::records());
                EXPECT_EQ(client_->queryLogging().value_or("text"), "text");
            }
        }));
    }
    for (auto& caller : callers) caller.get();
    EXPECT_EQ(daemon_->requests().size(), 2u * kThreads * kRequestsEach);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(client_->queryDeviceList(), DeviceList::records()) << "in turn again";
        EXPECT_EQ(client_->queryLogging(), "text");
    }
}

TEST_F(XPCClientRequests, AreHandledOnQueuesThatBearTheServicesName) {
    std::promise<std::string> name;
    client_->setDelegate(std::make_shared<HalvaneXPCClientDelegate>(
        HalvaneXPCClientDelegate{.clientLeft_forInterface = [&](const auto&, const auto&) {
            name.set_value(currentThreadName());
        }}));
    daemon_->sendEvent(notification("left"), clientName());
    EXPECT_EQ(name.get_future().get(), "onnection.queue") << "the end, of 15 bytes";
    EXPECT_EQ(threadNames().count("ned.reply.queue"), 1u);
    EXPECT_STREQ(kXPCConnectionQueueLabel, "org.halvane.halvaned.connection.queue");
    EXPECT_STREQ(kXPCReplyQueueLabel, "org.halvane.halvaned.reply.queue");
}

}  // namespace
