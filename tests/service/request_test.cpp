// How requests are read: by command, with every key missing or of a wrong type.
#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/mac_address.h"
#include "halvane/base/property_list_value.h"
#include "halvane/model/daemon_protocol.h"
#include "halvane/service/request_internal.h"

namespace halvane {

namespace {

using Entries = std::initializer_list<PropertyListDictionary::Entry>;

IPCMessage message(Entries entries) {
    PropertyListDictionary dictionary;
    for (const auto& [key, value] : entries) dictionary.set(key, value);
    return IPCMessage(std::move(dictionary));
}

Result<DecodedRequest, DaemonStatus> decode(const IPCMessage& request) {
    const auto command = commandIn(request);
    if (!command) return Unexpected(command.error());
    return decoded(**command, request);
}

DaemonStatus statusOf(Entries entries) {
    const auto request = decode(message(entries));
    return request ? DaemonStatus::Done : request.error();
}

ByteBuffer configuration(const char* content) {
    return ByteBuffer::fromText(std::string("<plist version=\"1.0\">") + content + "</plist>");
}

TEST(Request, NeedsACommandThatIsKnown) {
    EXPECT_EQ(statusOf({}), DaemonStatus::BadRequest);
    EXPECT_EQ(statusOf({{"Command", "enable"}}), DaemonStatus::BadRequest);
    EXPECT_EQ(statusOf({{"command", 7}}), DaemonStatus::BadRequest);
    EXPECT_EQ(statusOf({{"command", ""}}), DaemonStatus::UnknownCommand);
    EXPECT_EQ(statusOf({{"command", "dance"}}), DaemonStatus::UnknownCommand);
    EXPECT_EQ(statusOf({{"command", "Enable"}}), DaemonStatus::UnknownCommand);
    EXPECT_EQ(statusOf({{"command", "enable "}}), DaemonStatus::UnknownCommand);
    EXPECT_EQ(statusOf({{"command", std::string("enable\0", 7)}}), DaemonStatus::UnknownCommand);
}

struct Row {
    const char* command;
    std::vector<const char*> required;  // keys
    std::vector<const char*> optional = {};
};

// As docs/protocol.md lists them.
const std::vector<Row> kRows = {
    {"queryDeviceList", {}},
    {"queryInterfaceList", {}},
    {"queryChannelList", {"interface"}},
    {"queryBSSConfigList", {}, {"interface"}},
    {"clientList", {}},
    {"configAdd", {"interface", "bssconfig"}},
    {"configRemove", {"interface", "bssconfig"}},
    {"enable", {"interface"}},
    {"disable", {"interface"}},
    {"role", {"interface", "role"}},
    {"bssStart", {"interface"}},
    {"bssStop", {"interface"}},
    {"kick", {"interface", "MAC"}},
    {"logging",
     {},
     {"WiFi", "WiFiBPF", "WiFiEAPOL", "WiFiIE", "WiFiIO80211", "WiFiJoin", "WiFiScan", "WiFiWPS",
      "WiFiXPC"}},
    {"queryLogging", {}},
    {"subscribe", {"notifyAP"}},
};

// A value as the key should have it.
PropertyListValue goodValue(const std::string& key) {
    if (key == "bssconfig") return configuration("<dict/>");
    if (key == "notifyAP") return true;
    if (key == "MAC") return ByteBuffer{2, 0, 0, 0, 1, 1};
    return "text";
}

IPCMessage wholeRequest(const Row& row) {
    IPCMessage request = message({{"command", row.command}, {"unknown", 7}});
    for (const char* key : row.required) request.entries().set(key, goodValue(key));
    for (const char* key : row.optional) request.entries().set(key, goodValue(key));
    return request;
}

void expectRefused(const Row& row, const char* key, const PropertyListValue& wrong) {
    IPCMessage request = wholeRequest(row);
    request.entries().set(key, wrong);
    const auto result = decode(request);
    ASSERT_FALSE(result) << row.command << ' ' << key;
    EXPECT_EQ(result.error(), DaemonStatus::BadRequest) << row.command << ' ' << key;
}

TEST(Request, IsReadForEveryCommand) {
    for (const Row& row : kRows) {
        const auto request = decode(wholeRequest(row));
        ASSERT_TRUE(request) << row.command;
        EXPECT_EQ(request->command, commandFor(row.command)->command);
    }
}

TEST(Request, NeedsEachRequiredKey) {
    for (const Row& row : kRows) {
        for (const char* key : row.required) {
            IPCMessage request = wholeRequest(row);
            request.entries().erase(key);
            const auto result = decode(request);
            ASSERT_FALSE(result) << row.command << " without " << key;
            EXPECT_EQ(result.error(), DaemonStatus::BadRequest) << row.command << ' ' << key;
        }
        for (const char* key : row.optional) {
            IPCMessage request = wholeRequest(row);
            request.entries().erase(key);
            EXPECT_TRUE(decode(request)) << row.command << " without " << key;
        }
    }
}

TEST(Request, NeedsTheRightTypeOfEachKey) {
    const std::vector<PropertyListValue> others = {0,
                                                   1,
                                                   2.5,
                                                   true,
                                                   "text",
                                                   ByteBuffer::fromText("text"),
                                                   PropertyListArray(),
                                                   PropertyListDictionary()};
    for (const Row& row : kRows) {
        auto keys = row.required;
        keys.insert(keys.end(), row.optional.begin(), row.optional.end());
        for (const char* key : keys) {
            for (const PropertyListValue& other : others) {
                if (other.variant().index() == goodValue(key).variant().index()) continue;
                expectRefused(row, key, other);
            }
        }
    }
}

TEST(Request, HoldsItsValues) {
    auto request = decode(message({{"command", "role"}, {"interface", "wlan0"}, {"role", "AP"}}));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->interface, "wlan0");
    EXPECT_EQ(request->role, "AP");

    request = decode(message(
        {{"command", "kick"}, {"interface", "wlan0"}, {"MAC", ByteBuffer{2, 0, 0, 0, 1, 7}}}));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->interface, "wlan0");
    EXPECT_EQ(request->station, MacAddress({2, 0, 0, 0, 1, 7}));

    request = decode(message({{"command", "queryBSSConfigList"}}));
    ASSERT_TRUE(request);
    EXPECT_FALSE(request->interface);

    request = decode(message({{"command", "subscribe"}, {"notifyAP", true}}));
    ASSERT_TRUE(request);
    EXPECT_TRUE(request->wantsNotifications);

    request = decode(message({{"command", "logging"}, {"WiFiXPC", "x"}, {"WiFi", ""}}));
    ASSERT_TRUE(request);
    DaemonLogControls expected;
    expected[0] = "";
    expected[8] = "x";
    EXPECT_EQ(request->controls, expected);

    request = decode(message(
        {{"command", "configAdd"},
         {"interface", "wlan0"},
         {"bssconfig", configuration("<dict><key>SSID</key><data>bWluZQ==</data></dict>")}}));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->configuration.value().ssid(), ByteBuffer::fromText("mine"));
}

TEST(Request, NeedsAnAddressOfSixOctets) {
    for (std::size_t size = 0; size < 20; ++size) {
        const ByteBuffer address(std::vector<std::uint8_t>(size, 2));
        EXPECT_EQ(statusOf({{"command", "kick"}, {"interface", "wlan0"}, {"MAC", address}}),
                  size == MacAddress::kSize ? DaemonStatus::Done : DaemonStatus::BadRequest)
            << size;
    }
}

TEST(Request, NeedsAConfigurationThatIsADictionary) {
    const auto statusWith = [](const ByteBuffer& data) {
        return statusOf({{"command", "configAdd"}, {"interface", "wlan0"}, {"bssconfig", data}});
    };
    EXPECT_EQ(statusWith(configuration("<dict/>")), DaemonStatus::Done);
    EXPECT_EQ(statusWith(configuration("<array/>")), DaemonStatus::BadConfiguration);
    EXPECT_EQ(statusWith(configuration("<dict>")), DaemonStatus::BadConfiguration);
    EXPECT_EQ(statusWith(ByteBuffer()), DaemonStatus::BadConfiguration);
    EXPECT_EQ(statusWith(ByteBuffer::fromText("bplist00")), DaemonStatus::BadConfiguration);
    std::string deep;
    for (int i = 0; i < 300; ++i) deep += "<array>";
    EXPECT_EQ(statusWith(configuration(deep.c_str())), DaemonStatus::BadConfiguration);
    // U+0001, which XML 1.1 has and XML 1.0 has not.
    EXPECT_EQ(statusWith(ByteBuffer::fromText(
                  "<?xml version=\"1.1\"?><plist version=\"1.0\"><dict><key>country</key>"
                  "<string>&#1;</string></dict></plist>")),
              DaemonStatus::BadConfiguration);
}

TEST(Request, KnowsListsAndWhatABackendDoes) {
    int lists = 0, others = 0;
    for (const Row& row : kRows) {
        const DaemonCommand command = commandFor(row.command)->command;
        if (isList(command)) ++lists;
        if (!isForBackend(command)) ++others;
    }
    EXPECT_EQ(lists, 5);
    EXPECT_EQ(others, 3);
    EXPECT_EQ(commandFor("event"), nullptr);
}

}  // namespace

}  // namespace halvane
