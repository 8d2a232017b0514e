// The replies and the faults of the simulated daemon, without a bus.
#include "tools/halvaned-sim/simulation.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/number.h"
#include "halvane/base/property_list_value.h"
#include "halvane/base/skeleton_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/client.h"
#include "halvane/model/daemon_status.h"
#include "halvane/model/device.h"
#include "halvane/model/interface.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"
#include "halvane/regulatory/channel.h"

#include "tests/sim/answers.h"
#include "tools/halvaned-sim/default_world.h"
#include "tools/halvaned-sim/notification.h"

namespace halvane::sim {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Entries = std::initializer_list<PropertyListDictionary::Entry>;

PropertyListDictionary dictionary(Entries entries) {
    PropertyListDictionary result;
    for (const auto& [key, value] : entries) result.set(key, value);
    return result;
}

ByteBuffer xml(const PropertyListValue& value) {
    return ByteBuffer::fromText(xmlPropertyList(value).value_or("no XML"));
}

template <typename Record>
std::vector<Record> recordsIn(const PropertyListDictionary& reply, const char* key) {
    const ByteBuffer data = skeleton::dataFor(reply, key);
    const std::string text(data.bytes().begin(), data.bytes().end());
    const auto list = propertyListFromXml(text);
    const auto* array = list ? list->as<PropertyListArray>() : nullptr;
    EXPECT_NE(array, nullptr) << text;
    return array != nullptr ? skeleton::recordsOf<Record>(*array) : std::vector<Record>();
}

class SimulationTest : public ::testing::Test {
  protected:
    Simulation simulation_{defaultWorld(), {}, {}, {}};

    Answer ask(Entries request) {
        return answer(simulation_, ":1.5", IPCMessage(dictionary(request)));
    }
    PropertyListDictionary replyTo(Entries request) { return ask(request).reply.entries(); }
    std::int64_t statusOf(Entries request) {
        const auto reply = replyTo(request);
        EXPECT_EQ(reply.size(), 1u);
        return skeleton::numberFor(reply, "status").value_or(-1).int64();
    }
};

TEST_F(SimulationTest, AnswersEveryList) {
    const World& world = simulation_.world;
    const auto devices = replyTo({{"command", "queryDeviceList"}});
    EXPECT_EQ(skeleton::numberFor(devices, "status"), Number(0));
    EXPECT_EQ(recordsIn<HalvaneDevice>(devices, "devices"), world.devices());
    EXPECT_EQ(
        recordsIn<HalvaneInterface>(replyTo({{"command", "queryInterfaceList"}}), "interfaces"),
        (std::vector{world.interfaces()[0].record, world.interfaces()[1].record}));
    EXPECT_EQ(recordsIn<HalvaneChannel>(
                  replyTo({{"command", "queryChannelList"}, {"interface", "wlan1"}}), "channels"),
              world.interfaces()[1].record.availableChannels());
    EXPECT_THAT(recordsIn<HalvaneClient>(replyTo({{"command", "clientList"}}), "clients"),
                IsEmpty());
    EXPECT_EQ(statusOf({{"command", "bssStart"}, {"interface", "wlan0"}}), 0);
    EXPECT_EQ(recordsIn<HalvaneClient>(replyTo({{"command", "clientList"}}), "clients"),
              world.clients());
}

// A station from a control line takes at most this many bytes, whatever its numbers are.
TEST_F(SimulationTest, ListsANewcomerInSoManyBytes) {
    auto skeleton = HalvaneClient::initWithMAC({2, 0, 0, 0, 9, 9}).skeletonRepresentation();
    for (const char* key : {"LastUpdated", "FirstUpdated", "createTime", "joinTime", "leftTime"}) {
        skeleton.set(key, UINT64_MAX);
    }
    skeleton.set("Channel", INT64_MIN);
    skeleton.set("Capabilities", UINT16_MAX);
    skeleton.set("deauthReason", UINT16_MAX);
    const auto sizeOfList = [&](std::size_t count) {
        return xml(PropertyListArray(count, skeleton)).size();
    };
    EXPECT_LE(sizeOfList(2) - sizeOfList(1), kLargestNewcomer);
}

TEST_F(SimulationTest, ListsAsManyStationsAsThereMayBe) {
    World& world = simulation_.world;
    world.startBSS("wlan0");
    EXPECT_EQ(world.burst("wlan0", kMaximumStations - 2), DaemonStatus::Done);
    const IPCMessage reply = ask({{"command", "clientList"}}).reply;
    EXPECT_EQ(recordsIn<HalvaneClient>(reply.entries(), "clients").size(), kMaximumStations);
    EXPECT_EQ(checkBusMessage(reply, kLargestReply).refusal, "");
}

TEST_F(SimulationTest, ListsConfigurationsOfOneInterfaceOrOfAll) {
    auto config = HalvaneBSSConfig::init();
    config.setSSID_error("another");
    simulation_.world.addConfig("wlan1", config);
    const auto& wlan0 = simulation_.world.interfaces()[0].configs;
    EXPECT_EQ(recordsIn<HalvaneBSSConfig>(replyTo({{"command", "queryBSSConfigList"}}), "configs"),
              (std::vector{*wlan0.begin(), config}));
    EXPECT_EQ(recordsIn<HalvaneBSSConfig>(
                  replyTo({{"command", "queryBSSConfigList"}, {"interface", "wlan1"}}), "configs"),
              std::vector{config});
    EXPECT_EQ(statusOf({{"command", "queryBSSConfigList"}, {"interface", "wlan7"}}), 3);
    EXPECT_EQ(statusOf({{"command", "queryBSSConfigList"}, {"interface", 7}}), 2);
}

TEST_F(SimulationTest, AddsAndRemovesConfigurations) {
    auto config = HalvaneBSSConfig::init();
    config.setSSID_error("mine");
    const ByteBuffer data = xml(config.skeletonRepresentation());
    EXPECT_EQ(statusOf({{"command", "configAdd"}, {"interface", "wlan1"}, {"bssconfig", data}}), 0);
    EXPECT_THAT(simulation_.world.interfaces()[1].configs, ElementsAre(config));
    EXPECT_EQ(statusOf({{"command", "configRemove"}, {"interface", "wlan1"}, {"bssconfig", data}}),
              0);
    EXPECT_THAT(simulation_.world.interfaces()[1].configs, IsEmpty());
    EXPECT_EQ(statusOf({{"command", "configRemove"}, {"interface", "wlan1"}, {"bssconfig", data}}),
              5);
    EXPECT_EQ(statusOf({{"command", "configAdd"}, {"interface", "wlan1"}}), 2);
    EXPECT_EQ(statusOf({{"command", "configAdd"}, {"bssconfig", data}}), 2);
    EXPECT_EQ(statusOf({{"command", "configAdd"}, {"interface", "wlan1"}, {"bssconfig", "x"}}), 2);
    EXPECT_EQ(statusOf({{"command", "configAdd"},
                        {"interface", "wlan1"},
                        {"bssconfig", ByteBuffer::fromText("x")}}),
              4);
    EXPECT_EQ(statusOf({{"command", "configAdd"},
                        {"interface", "wlan1"},
                        {"bssconfig", xml(PropertyListArray())}}),
              4);
}

TEST_F(SimulationTest, CarriesOutEveryAction) {
    const SimulatedInterface& wlan0 = simulation_.world.interfaces()[0];
    EXPECT_EQ(statusOf({{"command", "disable"}, {"interface", "wlan0"}}), 0);
    EXPECT_FALSE(wlan0.isEnabled);
    EXPECT_EQ(statusOf({{"command", "bssStart"}, {"interface", "wlan0"}}), 6);
    EXPECT_EQ(statusOf({{"command", "enable"}, {"interface", "wlan0"}}), 0);
    EXPECT_TRUE(wlan0.isEnabled);
    EXPECT_EQ(statusOf({{"command", "bssStart"}, {"interface", "wlan0"}}), 0);
    EXPECT_TRUE(wlan0.hostedSSID);
    EXPECT_EQ(statusOf({{"command", "bssStop"}, {"interface", "wlan0"}}), 0);
    EXPECT_FALSE(wlan0.hostedSSID);
    EXPECT_EQ(statusOf({{"command", "role"}, {"interface", "wlan0"}, {"role", "STA"}}), 0);
    EXPECT_EQ(wlan0.record.ifRole(), "STA");
    EXPECT_EQ(statusOf({{"command", "role"}, {"interface", "wlan0"}}), 2);
    EXPECT_EQ(statusOf({{"command", "role"}, {"role", "AP"}}), 2);
}

TEST_F(SimulationTest, SendsAStationAway) {
    const ByteBuffer station{2, 0, 0, 0, 1, 2};
    const auto kick = [&](const char* interface, const ByteBuffer& address) {
        return statusOf({{"command", "kick"}, {"interface", interface}, {"MAC", address}});
    };
    EXPECT_EQ(kick("wlan7", station), 3);
    EXPECT_EQ(kick("wlan0", station), 9);
    EXPECT_EQ(statusOf({{"command", "bssStart"}, {"interface", "wlan0"}}), 0);
    EXPECT_EQ(kick("wlan0", {2, 0, 0, 0, 9, 9}), 10);
    EXPECT_EQ(kick("wlan0", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}), 10);
    EXPECT_EQ(kick("wlan0", {2, 0, 0, 0, 1}), 2);
    EXPECT_EQ(simulation_.world.associatedStations("wlan0"), 2u);

    EXPECT_EQ(kick("wlan0", station), 0);
    EXPECT_EQ(simulation_.world.associatedStations("wlan0"), 1u);
    EXPECT_EQ(simulation_.world.clients()[1].deauthReason(), 1u);
    EXPECT_EQ(kick("wlan0", station), 10);
}

TEST_F(SimulationTest, CarriesHiddenSSIDAndIsolationThrough) {
    auto config = HalvaneBSSConfig::init();
    config.setSSID_error("mine");
    config.setHiddenSSID(true);
    config.setStationIsolation(false);
    const ByteBuffer data = xml(config.skeletonRepresentation());
    EXPECT_EQ(statusOf({{"command", "configAdd"}, {"interface", "wlan1"}, {"bssconfig", data}}), 0);
    const auto reply = replyTo({{"command", "queryBSSConfigList"}, {"interface", "wlan1"}});
    EXPECT_EQ(recordsIn<HalvaneBSSConfig>(reply, "configs"), std::vector{config});
}

TEST_F(SimulationTest, AnswersWithAStatusWhatItCannotDo) {
    EXPECT_EQ(statusOf({}), 2);
    EXPECT_EQ(statusOf({{"command", 7}}), 2);
    EXPECT_EQ(statusOf({{"command", "Enable"}}), 1);
    for (const char* command : {"queryChannelList", "enable", "disable", "bssStart", "bssStop"}) {
        EXPECT_EQ(statusOf({{"command", command}, {"interface", "wlan7"}}), 3) << command;
        EXPECT_EQ(statusOf({{"command", command}}), 2) << command;
        EXPECT_EQ(statusOf({{"command", command}, {"interface", true}}), 2) << command;
    }
}

TEST_F(SimulationTest, KeepsLoggingSettings) {
    EXPECT_EQ(statusOf({{"command", "logging"}, {"WiFiWPS", "?WiFiWPS:level=info"}}), 0);
    EXPECT_EQ(statusOf({{"command", "logging"}, {"WiFi", "?WiFi:level=all"}, {"WiFiXPC", 7}}), 2);
    const auto reply = replyTo({{"command", "queryLogging"}});
    EXPECT_EQ(reply.size(), 1u);
    const std::string params = skeleton::textFor(reply, "params").value();
    EXPECT_EQ(std::count(params.begin(), params.end(), '\n'), 9);
    EXPECT_THAT(params, HasSubstr("WiFiWPS: ?WiFiWPS:level=info\n"));
    EXPECT_THAT(params, HasSubstr("WiFi: ?WiFi:output=file;path=/var/log/halvaned.log\n"));
    EXPECT_EQ(statusOf({{"command", "logging"}}), 0);
}

TEST_F(SimulationTest, TellsLoggingSettingsALineEach) {
    EXPECT_EQ(statusOf({{"command", "logging"}, {"WiFiWPS", "a\nWiFi: \xC3\xA9\\\x7F"}}), 0);
    const std::string params =
        skeleton::textFor(replyTo({{"command", "queryLogging"}}), "params").value();
    EXPECT_EQ(std::count(params.begin(), params.end(), '\n'), 9);
    EXPECT_THAT(params, HasSubstr("\nWiFiWPS: a\\x0AWiFi: \xC3\xA9\\\\x7F\n"));
}

TEST_F(SimulationTest, KnowsWhoSubscribedLastAndHow) {
    const Entries on = {{"command", "subscribe"}, {"notifyAP", true}};
    EXPECT_EQ(statusOf(on), 0);
    EXPECT_EQ(statusOf(on), 0);
    answer(simulation_, ":1.3", IPCMessage(dictionary(on)));
    EXPECT_THAT(simulation_.subscribers.names(), ElementsAre(":1.5", ":1.3"));
    EXPECT_EQ(statusOf({{"command", "subscribe"}, {"notifyAP", false}}), 0);
    EXPECT_THAT(simulation_.subscribers.names(), ElementsAre(":1.3"));
    EXPECT_EQ(statusOf({{"command", "subscribe"}, {"notifyAP", 1}}), 2);
    EXPECT_EQ(statusOf({{"command", "subscribe"}}), 2);
}

TEST_F(SimulationTest, SendsNotificationsOfThreeKeys) {
    const Notification notification{Happening::Left, "wlan0", {2, 0, 0, 0, 0, 1}};
    EXPECT_EQ(eventFor(simulation_, notification)->entries(),
              dictionary({{"command", "org.halvane.halvaned.status.client.left"},
                          {"BSDName", "wlan0"},
                          {"MAC", ByteBuffer{2, 0, 0, 0, 0, 1}}}));
    for (const char* word : {"authorized", "joined", "kicked", "left"}) {
        const Notification other{happeningFor(word).value(), "", {}};
        EXPECT_EQ(skeleton::textFor(other.message().entries(), "command"),
                  std::string("org.halvane.halvaned.status.client.") + word);
    }
    EXPECT_FALSE(happeningFor("lost"));
}

TEST_F(SimulationTest, DoesNothingInsteadOfAnswering) {
    simulation_.faults.set("disable", {Fault::Status, -6700});
    EXPECT_EQ(statusOf({{"command", "disable"}, {"interface", "wlan0"}}), -6700);
    simulation_.faults.set("disable", {Fault::Silent});
    EXPECT_EQ(ask({{"command", "disable"}, {"interface", "wlan0"}}).kind, Answer::Kind::Silence);
    simulation_.faults.set("disable", {Fault::Error});
    EXPECT_EQ(ask({{"command", "disable"}, {"interface", "wlan0"}}).kind, Answer::Kind::Error);
    simulation_.faults.set("disable", {Fault::Gone});
    EXPECT_EQ(ask({{"command", "disable"}, {"interface", "wlan0"}}).kind, Answer::Kind::Gone);
    EXPECT_TRUE(simulation_.world.interfaces()[0].isEnabled);
    simulation_.faults.clear("disable");
    EXPECT_EQ(statusOf({{"command", "disable"}, {"interface", "wlan0"}}), 0);
    EXPECT_FALSE(simulation_.world.interfaces()[0].isEnabled);
}

TEST_F(SimulationTest, SpoilsWhatItAnswers) {
    simulation_.faults.set("queryDeviceList", {Fault::Garbled});
    const ByteBuffer garbled =
        skeleton::dataFor(replyTo({{"command", "queryDeviceList"}}), "devices");
    EXPECT_FALSE(garbled.empty());
    EXPECT_FALSE(propertyListFromXml(std::string(garbled.bytes().begin(), garbled.bytes().end())));
    simulation_.faults.set("queryDeviceList", {Fault::Missing});
    EXPECT_EQ(replyTo({{"command", "queryDeviceList"}}), dictionary({{"status", 0}}));
    simulation_.faults.set("queryDeviceList", {Fault::Mistyped});
    const auto mistyped = replyTo({{"command", "queryDeviceList"}});
    EXPECT_EQ(skeleton::textFor(mistyped, "status"), "text");
    EXPECT_TRUE(skeleton::textFor(mistyped, "devices"));
    for (const char* command : {"enable", "queryLogging"}) {
        simulation_.faults.set(command, {Fault::Missing});
        EXPECT_EQ(replyTo({{"command", command}, {"interface", "wlan0"}}).size(), 0u) << command;
    }
    simulation_.faults.set("queryLogging", {Fault::Mistyped});
    EXPECT_EQ(replyTo({{"command", "queryLogging"}}), dictionary({{"params", 0}}));
}

TEST_F(SimulationTest, SpoilsNotifications) {
    const Notification notification{Happening::Left, "wlan0", {2, 0, 0, 0, 0, 1}};
    const char* const name = "org.halvane.halvaned.status.client.left";
    simulation_.faults.set("event", {Fault::Missing});
    EXPECT_EQ(eventFor(simulation_, notification)->entries(), dictionary({{"command", name}}));
    simulation_.faults.set("event", {Fault::Mistyped});
    EXPECT_EQ(eventFor(simulation_, notification)->entries(),
              dictionary({{"command", name}, {"BSDName", 0}, {"MAC", "020000000001"}}));
    simulation_.faults.set("event", {Fault::Silent});
    EXPECT_FALSE(eventFor(simulation_, notification));
    simulation_.faults.clear();
    EXPECT_EQ(eventFor(simulation_, notification)->entries().size(), 3u);
}

}  // namespace

}  // namespace halvane::sim
