// Property lists and replies.
#include <cstdint>
#include <string>
#include <string_view>

#include "halvane/daemon/xpc_client.h"
#include "halvane/platform/bus_message_reader_internal.h"
#include "halvane/platform/xml_property_list_reader.h"

#include "bench/foreign_bytes.h"
#include "bench/hostile_reply.h"
#include "bench/memory_table.h"
#include "tests/support/loose_bus_message.h"

using halvane::HalvaneXPCClient;

namespace bench {

namespace {

constexpr std::size_t kInput = 1 << 20;

// As many pieces as make a text of kInput bytes.
std::string filled(std::string_view head, std::string_view piece, std::string_view tail) {
    return enclosed(head, piece, kInput / piece.size(), tail);
}

void measureXml(MemoryTable& table, std::string_view row, std::string_view head,
                std::string_view piece, std::string_view tail) {
    const std::string name = "property list: " + std::string(row);
    if (!table.has(name)) return;
    const std::string xml =
        filled("<plist>" + std::string(head), piece, std::string(tail) + "</plist>");
    table.measure(name, xml.size(), [&] { return halvane::propertyListFromXml(xml); });
}

void measureItems(MemoryTable& table) {
    constexpr std::string_view kItems[] = {"<dict/>",
                                           "<true/>",
                                           "<array/>",
                                           "<string/>",
                                           "<data/>",
                                           "<string>a</string>",
                                           "<integer>1</integer>",
                                           "<real>1</real>",
                                           "<data>AA==</data>",
                                           "<date>2026-11-21T07:00:00Z</date>",
                                           "<array><true/></array>",
                                           "<dict><key/><true/></dict>"};
    for (const std::string_view item : kItems) {
        measureXml(table, item, "<array>", item, "</array>");
    }
    const std::string deep = repeated("<array>", 250) + repeated("</array>", 250);
    measureXml(table, "arrays 250 deep", "<array>", deep, "</array>");
    const std::string deepKeys =
        repeated("<dict><key/>", 250) + "<true/>" + repeated("</dict>", 250);
    measureXml(table, "dictionaries 250 deep", "<array>", deepKeys, "</array>");
}

void measureKeys(MemoryTable& table) {
    const std::string name = "property list: short keys of one dictionary";
    if (!table.has(name)) return;
    std::string xml = "<plist><dict>";
    for (std::size_t i = 0; xml.size() < kInput; ++i) {
        std::string key;
        for (std::size_t rest = i; key.empty() || rest > 0; rest /= 26) {
            key += static_cast<char>('a' + rest % 26);
        }
        xml += "<key>" + key + "</key><true/>";
    }
    xml += "</dict></plist>";
    table.measure(name, xml.size(), [&] { return halvane::propertyListFromXml(xml); });
}

void measureMarkup(MemoryTable& table) {
    measureXml(table, "one string", "<string>", "a", "</string>");
    measureXml(table, "entities", "<string>", "&lt;", "</string>");
    measureXml(table, "CDATA sections", "<string>", "<![CDATA[]]>", "</string>");
    measureXml(table, "comments", "", "<!---->", "<true/>");
    measureXml(table, "comments in a string", "<string>", "a<!---->", "</string>");
    measureXml(table, "processing instructions", "", "<?a?>", "<true/>");
    measureXml(table, "one data", "<data>", "AAAA", "</data>");
    measureXml(table, "line ends", "<string>", "\r\n", "</string>");
    measureXml(table, "attributes, refused", "<true ", "a='' ", "/>");
    measureXml(table, "unknown names, refused", "<array>", "<a/>", "</array>");
    measureXml(table, "too deep, refused", "", "<array>", "");
    measureXml(table, "texts between values, refused", "<array>", "a<a/>", "</array>");
}

template <typename Parse>
void measureReply(MemoryTable& table, const char* key, std::string_view item, Parse parse) {
    const std::string name = "reply, " + std::string(key) + ": " + std::string(item);
    if (!table.has(name)) return;
    const std::string xml = listXml(repeated(item, kInput / item.size()));
    const auto reply = replyOf(key, xml);
    table.measure(name, xml.size(), [&] { return parse(reply); });
}

void measureLists(MemoryTable& table, std::string_view item) {
    using halvane::ServiceReply;
    measureReply(table, "clients", item, [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryClientListResponse_error(reply);
    });
    measureReply(table, "devices", item, [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryDeviceListResponse_error(reply);
    });
    measureReply(table, "interfaces", item, [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryInterfaceListResponse_error(reply);
    });
    measureReply(table, "channels", item, [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryChannelListResponse_error(reply);
    });
    measureReply(table, "configs", item, [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryBSSConfigListResponse_error(reply);
    });
}

void measureRecords(MemoryTable& table) {
    using halvane::ServiceReply;
    const auto clients = [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryClientListResponse_error(reply);
    };
    measureReply(table, "clients", "<dict><key>MAC</key><data>AgAAAAAB</data></dict>", clients);
    measureReply(table, "clients", "<dict><key>RSSI</key><integer>1</integer></dict>", clients);
    measureReply(
        table, "clients",
        "<dict><key>IEs</key><array>" + repeated("<data>AQEM</data>", 1000) + "</array></dict>",
        clients);
    measureReply(table, "clients",
                 "<dict><key>IEs</key><array>" + repeated("<data/>", 1000) + "</array></dict>",
                 clients);
    measureReply(table, "interfaces",
                 "<dict><key>Channels</key><array>" + repeated("<dict/>", 1000) + "</array></dict>",
                 [](const ServiceReply& reply) {
                     return HalvaneXPCClient::queryInterfaceListResponse_error(reply);
                 });
}

// A message of D-Bus whose one entry is an array of `signature`, filled with what `put` appends.
template <typename Put>
void measureMessage(MemoryTable& table, std::string_view row, const char* signature,
                    std::size_t itemSize, Put put) {
    const std::string name = "message, array of " + std::string(row);
    if (!table.has(name)) return;
    const halvane::testing::LooseBusMessage loose;
    sd_bus_message* const message = loose.get();
    sd_bus_message_open_container(message, 'a', "{sv}");
    sd_bus_message_open_container(message, 'e', "sv");
    sd_bus_message_append(message, "s", "key");
    sd_bus_message_open_container(message, 'v', ("a" + std::string(signature)).c_str());
    sd_bus_message_open_container(message, 'a', signature);
    const std::size_t count = kInput / itemSize;
    for (std::size_t i = 0; i < count; ++i) put(message);
    for (int i = 0; i < 4; ++i) sd_bus_message_close_container(message);
    sd_bus_message* const sealed = loose.sealed();
    table.measure(name, count * itemSize, [&] { return halvane::readBusMessage(sealed); });
}

void measureMessages(MemoryTable& table) {
    measureMessage(table, "booleans", "b", 4,
                   [](auto* message) { sd_bus_message_append(message, "b", 1); });
    measureMessage(table, "16-bit integers", "n", 2,
                   [](auto* message) { sd_bus_message_append(message, "n", 1); });
    measureMessage(table, "64-bit integers", "x", 8,
                   [](auto* message) { sd_bus_message_append(message, "x", std::int64_t{1}); });
    measureMessage(table, "bytes", "y", 1,
                   [](auto* message) { sd_bus_message_append(message, "y", 1); });
    measureMessage(table, "empty texts", "s", 8,
                   [](auto* message) { sd_bus_message_append(message, "s", ""); });
    measureMessage(table, "empty data", "ay", 4,
                   [](auto* message) { sd_bus_message_append(message, "ay", 0); });
    measureMessage(table, "empty dictionaries", "a{sv}", 8,
                   [](auto* message) { sd_bus_message_append(message, "a{sv}", 0); });
    measureMessage(table, "variants of a byte", "v", 4,
                   [](auto* message) { sd_bus_message_append(message, "v", "y", 1); });
    measureMessage(table, "variants of a boolean", "v", 8,
                   [](auto* message) { sd_bus_message_append(message, "v", "b", 1); });
    measureMessage(table, "variants of an empty array", "v", 8,
                   [](auto* message) { sd_bus_message_append(message, "v", "av", 0); });
}

}  // namespace

void measurePropertyLists(MemoryTable& table) {
    measureItems(table);
    measureKeys(table);
    measureMarkup(table);
}

void measureReplies(MemoryTable& table) {
    measureLists(table, "<dict/>");
    measureLists(table, "<true/>");
    measureRecords(table);
    measureMessages(table);
}

}  // namespace bench
