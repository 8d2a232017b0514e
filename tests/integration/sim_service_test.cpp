// The simulated daemon as its clients meet it on a bus.
#include <cstdint>
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <pugixml.hpp>
#include <set>
#include <stdexcept>
#include <string>
#include <systemd/sd-bus.h>
#include <variant>
#include <vector>

#include "tests/support/bus_caller.h"
#include "tests/support/sim_process.h"

using halvane::testing::BusCaller;
using halvane::testing::command;
using halvane::testing::SimProcess;
using halvane::testing::WireData;
using halvane::testing::WireMessage;
using halvane::testing::WireReply;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

constexpr const char kName[] = "org.halvane.halvaned";

WireMessage subscribe(bool wants) {
    return {{"command", "subscribe"}, {"notifyAP", wants}};
}

WireData dataOf(const std::string& text) {
    return {text.begin(), text.end()};
}

WireMessage withConfig(const std::string& name, const char* ssid) {
    return {{"command", name},
            {"interface", "wlan1"},
            {"bssconfig", dataOf(std::string("<plist version=\"1.0\"><dict><key>SSID</key><data>") +
                                 ssid + "</data></dict></plist>")}};
}

// The list that a reply holds.
pugi::xml_node listIn(const WireReply& reply, const std::string& key,
                      pugi::xml_document& document) {
    EXPECT_EQ(reply.status(), 0) << key;
    EXPECT_EQ(reply.message.size(), 2u) << key;
    EXPECT_TRUE(document.load_string(reply.text(key).c_str())) << key;
    return document.child("plist").child("array");
}

std::size_t countIn(const WireReply& reply, const std::string& key) {
    pugi::xml_document document;
    const auto items = listIn(reply, key, document).children("dict");
    return static_cast<std::size_t>(std::distance(items.begin(), items.end()));
}

class SimService : public ::testing::Test {
  protected:
    SimProcess sim_;
    BusCaller caller_{sim_.address()};

    std::int64_t statusOf(const WireMessage& message) {
        const WireReply reply = caller_.request(message);
        EXPECT_EQ(reply.error, "");
        EXPECT_EQ(reply.message.size(), 1u);
        return reply.status();
    }
};

TEST_F(SimService, AnswersEveryCommand) {
    EXPECT_EQ(countIn(caller_.request(command("queryDeviceList")), "devices"), 2u);
    EXPECT_EQ(countIn(caller_.request(command("queryInterfaceList")), "interfaces"), 2u);
    EXPECT_EQ(countIn(caller_.request(command("queryChannelList", "wlan0")), "channels"), 11u);
    EXPECT_EQ(countIn(caller_.request(command("clientList")), "clients"), 0u);
    EXPECT_EQ(statusOf(withConfig("configAdd", "bWluZQ==")), 0);
    EXPECT_EQ(countIn(caller_.request(command("queryBSSConfigList")), "configs"), 2u);
    EXPECT_EQ(countIn(caller_.request(command("queryBSSConfigList", "wlan1")), "configs"), 1u);
    EXPECT_EQ(statusOf({{"command", "role"}, {"interface", "wlan1"}, {"role", "AP"}}), 0);
    EXPECT_EQ(statusOf(command("bssStart", "wlan1")), 0);
    EXPECT_EQ(countIn(caller_.request(command("clientList")), "clients"), 1u);
    EXPECT_EQ(statusOf(command("bssStop", "wlan1")), 0);
    EXPECT_EQ(statusOf(withConfig("configRemove", "bWluZQ==")), 0);
    EXPECT_EQ(countIn(caller_.request(command("queryBSSConfigList")), "configs"), 1u);
    EXPECT_EQ(statusOf(command("disable", "wlan1")), 0);
    EXPECT_EQ(statusOf(command("enable", "wlan1")), 0);
    EXPECT_EQ(statusOf({{"command", "logging"}, {"WiFiWPS", "?WiFiWPS:level=info"}}), 0);
    const WireReply logging = caller_.request(command("queryLogging"));
    EXPECT_THAT(std::get<std::string>(logging.message.at("params")),
                HasSubstr("\nWiFiWPS: ?WiFiWPS:level=info\n"));
    EXPECT_EQ(statusOf(subscribe(true)), 0);
}

TEST_F(SimService, AnswersWithAStatusWhatItCannotDo) {
    EXPECT_EQ(statusOf(command("enable", "wlan7")), 3);
    EXPECT_EQ(statusOf(command("dance")), 1);
    EXPECT_EQ(statusOf({}), 2);
    EXPECT_EQ(statusOf({{"command", true}}), 2);
    EXPECT_EQ(statusOf(command("bssStart", "wlan1")), 7);
    EXPECT_EQ(statusOf(withConfig("configAdd", "")), 4);
}

TEST_F(SimService, TellsItsListsAsTheProtocolHasThem) {
    pugi::xml_document document;
    const auto interface =
        listIn(caller_.request(command("queryInterfaceList")), "interfaces", document)
            .child("dict");
    std::vector<std::string> keys;
    for (const auto key : interface.children("key")) keys.emplace_back(key.child_value());
    EXPECT_THAT(keys,
                ElementsAre("MAC", "InterfaceName", "Role", "Subsystem", "Device", "Channels"));
    std::vector<std::string> texts;
    for (const auto text : interface.children("string")) texts.emplace_back(text.child_value());
    EXPECT_THAT(texts, ElementsAre("wlan0", "AP", "nl80211"));
}

TEST_F(SimService, TellsSubscribersWhatHappensInOrder) {
    EXPECT_EQ(statusOf(subscribe(true)), 0);
    EXPECT_EQ(statusOf(command("bssStart", "wlan0")), 0);
    EXPECT_THAT(caller_.nextEvents(4),
                ElementsAre("joined wlan0 020000000101", "authorized wlan0 020000000101",
                            "joined wlan0 020000000102", "authorized wlan0 020000000102"));
    caller_.control("join wlan0 02:00:00:00:09:09");
    caller_.control("authorize wlan0 02:00:00:00:09:09");
    caller_.control("kick wlan0 02:00:00:00:09:09");
    caller_.control("leave wlan0 02:00:00:00:01:01");
    EXPECT_THAT(caller_.eventsSoFar(),
                ElementsAre("joined wlan0 020000000909", "authorized wlan0 020000000909",
                            "kicked wlan0 020000000909", "left wlan0 020000000101"));
    EXPECT_EQ(statusOf(command("bssStop", "wlan0")), 0);
    EXPECT_THAT(caller_.nextEvents(1), ElementsAre("left wlan0 020000000102"));
    EXPECT_EQ(countIn(caller_.request(command("clientList")), "clients"), 3u);
}

TEST_F(SimService, TellsSubscribersOfAStationThatAClientSendsAway) {
    EXPECT_EQ(statusOf(command("bssStart", "wlan0")), 0);
    EXPECT_EQ(statusOf(subscribe(true)), 0);
    WireMessage kick = command("kick", "wlan0");
    EXPECT_EQ(statusOf(kick), 2);
    kick["MAC"] = WireData{2, 0, 0, 0, 1, 2};
    EXPECT_EQ(statusOf(kick), 0);
    EXPECT_THAT(caller_.nextEvents(1), ElementsAre("kicked wlan0 020000000102"));
    EXPECT_EQ(statusOf(kick), 10);
}

TEST_F(SimService, AnswersARequestBeforeItTellsWhatCameOfIt) {
    statusOf(subscribe(true));
    const auto reply = caller_.requestLater(command("bssStart", "wlan0"));
    EXPECT_EQ(caller_.nextEvent().summary(), "joined wlan0 020000000101");
    EXPECT_EQ(reply->sender, caller_.ownerOf(kName));
}

TEST_F(SimService, NotifiesFromTheOwnerOfItsName) {
    statusOf(subscribe(true));
    caller_.control("start wlan0");
    EXPECT_EQ(caller_.nextEvent().sender, caller_.ownerOf(kName));
}

TEST_F(SimService, NotifiesThoseAloneWhoWantIt) {
    BusCaller other(sim_.address()), third(sim_.address());
    statusOf(subscribe(true));
    third.request(subscribe(true));
    third.request(subscribe(false));
    caller_.control("start wlan0");
    caller_.control("stop wlan0");
    EXPECT_EQ(caller_.eventsSoFar().size(), 6u);
    for (BusCaller* unwilling : {&other, &third}) {
        unwilling->request(command("clientList"));
        EXPECT_THAT(unwilling->eventsSoFar(), IsEmpty());
    }
}

TEST_F(SimService, NotifiesEverySubscriberOnce) {
    BusCaller other(sim_.address());
    for (int i = 0; i < 2; ++i) {
        statusOf(subscribe(true));
        other.request(subscribe(true));
    }
    caller_.control("start wlan0");
    EXPECT_EQ(caller_.eventsSoFar().size(), 4u);
    EXPECT_EQ(other.nextEvents(4).size(), 4u);
    EXPECT_THAT(other.eventsSoFar(), IsEmpty());
}

TEST_F(SimService, ForgetsASubscriberThatLeavesTheBus) {
    statusOf(subscribe(true));
    auto other = std::make_unique<BusCaller>(sim_.address());
    other->request(subscribe(true));
    const std::string name = other->name();
    EXPECT_THAT(caller_.control("show"),
                HasSubstr("subscribers: " + caller_.name() + ' ' + name + '\n'));
    other.reset();
    caller_.waitUntilGone(name);
    // The bus has told the daemon's connection that the name is gone. The reply shows that the
    // daemon has read this.
    caller_.request(command("clientList"));
    EXPECT_THAT(caller_.control("show"), HasSubstr("subscribers: " + caller_.name() + '\n'));
}

TEST_F(SimService, LosesNothingOfABurst) {
    statusOf(subscribe(true));
    caller_.control("start wlan0");
    caller_.nextEvents(4);
    caller_.control("burst wlan0 10000");
    const auto events = caller_.nextEvents(10000);
    for (std::size_t i = 0; i < events.size(); ++i) {
        char expected[64];
        std::snprintf(expected, sizeof expected, "joined wlan0 02b000%06zx", i);
        ASSERT_EQ(events[i], expected);
    }
    EXPECT_EQ(countIn(caller_.request(command("clientList")), "clients"), 10002u);
}

TEST_F(SimService, AnswersWithAStatusWhereTheListIsLongerThanABusTakes) {
    const std::string role(7 << 20, '&');  // five bytes each in XML
    EXPECT_EQ(statusOf({{"command", "role"}, {"interface", "wlan0"}, {"role", role}}), 0);
    EXPECT_EQ(statusOf(command("queryInterfaceList")), 12);
}

// The methods and signals of an interface, with their arguments.
std::set<std::string> membersOf(const pugi::xml_document& document) {
    std::set<std::string> members;
    const auto interface =
        document.child("node").find_child_by_attribute("interface", "name", kName);
    for (const auto member : interface.children()) {
        std::string text = std::string(member.name()) + ' ' + member.attribute("name").value();
        for (const auto argument : member.children("arg")) {
            for (const char* key : {"name", "type", "direction"}) {
                text += ' ' + std::string(argument.attribute(key).value());
            }
        }
        members.insert(text);
    }
    return members;
}

TEST_F(SimService, IsIntrospectedAsItsDescriptionSays) {
    pugi::xml_document told, described;
    ASSERT_TRUE(told.load_string(caller_
                                     .call(kName, "/org/halvane/halvaned",
                                           "org.freedesktop.DBus.Introspectable", "Introspect")
                                     .c_str()));
    ASSERT_TRUE(described.load_file(HALVANE_DATA "/org.halvane.halvaned.xml"));
    EXPECT_EQ(membersOf(told), membersOf(described));
    EXPECT_EQ(membersOf(described).size(), 2u);
}

TEST_F(SimService, RefusesWhatIsNoDictionary) {
    EXPECT_THROW(caller_.call(kName, "/org/halvane/halvaned", kName, "Request", "text"),
                 std::runtime_error);
    EXPECT_EQ(statusOf(command("enable", "wlan0")), 0);
}

TEST_F(SimService, RefusesLinesThatItCannotFollow) {
    try {
        caller_.control("join wlan0 02:00:00:00:09:09");
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "the interface hosts no BSS");
    }
}

TEST_F(SimService, AnswersTheStatusItWasToldTo) {
    caller_.control("status enable -6700");
    EXPECT_EQ(statusOf(command("enable", "wlan0")), -6700);
    EXPECT_EQ(statusOf(command("disable", "wlan0")), 0);
    caller_.control("normal");
    EXPECT_EQ(statusOf(command("enable", "wlan0")), 0);
}

TEST_F(SimService, AnswersAnErrorWhereItWasToldTo) {
    caller_.control("error clientList");
    EXPECT_EQ(caller_.request(command("clientList")).error, "org.halvane.halvaned.Error.Failed");
}

TEST_F(SimService, NeverAnswersWhereItWasToldTo) {
    caller_.control("silent bssStart");
    const auto silent = caller_.requestLater(command("bssStart", "wlan0"));
    EXPECT_EQ(statusOf(command("enable", "wlan0")), 0);
    EXPECT_EQ(silent->sender, "");
    caller_.control("restart");
    caller_.waitFor(*silent);
    EXPECT_EQ(silent->error, "org.freedesktop.DBus.Error.NoReply");
}

TEST_F(SimService, LeavesTheBusInsteadOfAnswering) {
    const std::string before = caller_.ownerOf(kName);
    statusOf(subscribe(true));
    caller_.control("gone clientList");
    EXPECT_EQ(caller_.request(command("clientList")).error, "org.freedesktop.DBus.Error.NoReply");
    caller_.control("normal");  // the reply comes when the daemon is back
    EXPECT_NE(caller_.ownerOf(kName), before);
    EXPECT_THAT(caller_.control("show"), HasSubstr("subscribers:\n"));
    EXPECT_EQ(countIn(caller_.request(command("clientList")), "clients"), 0u);
}

TEST_F(SimService, RestartsAsAnotherConnectionThatKnowsNoSubscriber) {
    const std::string before = caller_.ownerOf(kName);
    statusOf(subscribe(true));
    caller_.control("start wlan0");
    EXPECT_EQ(caller_.eventsSoFar().size(), 4u);
    caller_.control("restart");
    caller_.waitUntilGone(before);
    caller_.control("stop wlan0");
    EXPECT_THAT(caller_.eventsSoFar(), IsEmpty());
    EXPECT_EQ(countIn(caller_.request(command("clientList")), "clients"), 2u);
}

TEST_F(SimService, GivesUpItsNameAndTakesItAgain) {
    const std::string before = caller_.ownerOf(kName);
    caller_.control("drop");
    EXPECT_EQ(caller_.ownerOf(kName), "");
    EXPECT_THROW(caller_.control("drop"), std::runtime_error);
    EXPECT_EQ(caller_.request(command("clientList")).error,
              "org.freedesktop.DBus.Error.ServiceUnknown");
    caller_.control("take");
    caller_.control("take");
    EXPECT_EQ(caller_.ownerOf(kName), before);
}

TEST_F(SimService, ComesBackWithoutANameThatIsTaken) {
    caller_.control("drop");
    ASSERT_GE(::sd_bus_request_name(caller_.bus(), kName, 0), 0);
    try {
        caller_.control("restart");
        ADD_FAILURE() << "the name is taken";
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("is there already"));
    }
    ASSERT_GE(::sd_bus_release_name(caller_.bus(), kName), 0);
    caller_.control("take");
    EXPECT_EQ(statusOf(command("enable", "wlan0")), 0);
}

TEST_F(SimService, RefusesALineWhoseAnswerIsTooLarge) {
    for (const char* interface : {"wlan0", "wlan1"}) {
        WireMessage role = command("role", interface);
        role["role"] = std::string(20 << 20, 'r');
        EXPECT_EQ(statusOf(role), 0);
    }
    EXPECT_THROW(caller_.control("show"), std::runtime_error);
    EXPECT_NE(caller_.control("help"), "");
}

TEST_F(SimService, SpoilsItsAnswers) {
    caller_.control("garbled queryDeviceList");
    pugi::xml_document document;
    EXPECT_FALSE(
        document.load_string(caller_.request(command("queryDeviceList")).text("devices").c_str()));
    caller_.control("missing queryDeviceList");
    EXPECT_EQ(caller_.request(command("queryDeviceList")).message,
              (WireMessage{{"status", std::int64_t{0}}}));
    caller_.control("mistyped queryDeviceList");
    const WireReply mistyped = caller_.request(command("queryDeviceList"));
    EXPECT_TRUE(std::holds_alternative<std::string>(mistyped.message.at("status")));
    EXPECT_TRUE(std::holds_alternative<std::string>(mistyped.message.at("devices")));
    caller_.control("missing enable");
    EXPECT_THAT(caller_.request(command("enable", "wlan0")).message, IsEmpty());
}

TEST_F(SimService, SpoilsItsNotifications) {
    statusOf(subscribe(true));
    caller_.control("silent event");
    caller_.control("start wlan0");
    caller_.control("missing event");
    caller_.control("leave wlan0 02:00:00:00:01:01");
    caller_.control("mistyped event");
    caller_.control("leave wlan0 02:00:00:00:01:02");
    const std::string left = "org.halvane.halvaned.status.client.left";
    EXPECT_EQ(caller_.nextEvent().message, (WireMessage{{"command", left}}));
    EXPECT_EQ(
        caller_.nextEvent().message,
        (WireMessage{{"command", left}, {"BSDName", std::int64_t{0}}, {"MAC", "020000000102"}}));
}

TEST_F(SimService, SpoofsNotificationsFromAnotherConnection) {
    statusOf(subscribe(true));
    caller_.control("spoof kicked wlan7 02:00:00:00:09:09");
    const auto event = caller_.nextEvent();
    EXPECT_EQ(event.summary(), "kicked wlan7 020000000909");
    EXPECT_THAT(event.sender, StartsWith(":"));
    EXPECT_NE(event.sender, caller_.ownerOf(kName));
}

}  // namespace
