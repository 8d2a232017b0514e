// Property lists and replies.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>
#include <utility>

#include "halvane/daemon/xpc_client.h"
#include "halvane/platform/bus/message_reader_internal.h"
#include "halvane/platform/bus/service_event.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "bench/element_input.h"
#include "bench/foreign_bytes.h"
#include "bench/hostile_reply.h"
#include "bench/memory_table.h"
#include "tests/support/loose_bus_message.h"

using halvane::HalvaneXPCClient;

namespace bench {

namespace {

constexpr std::size_t kInput = 1 << 20;

void measureXml(MemoryTable& table, std::string_view row, std::string_view head,
                std::string_view piece, std::string_view tail) {
    table.measure(
        "property list: " + std::string(row), kInput,
        [&](std::size_t size) {
            auto xml = enclosed("<plist>" + std::string(head), piece, size / piece.size(),
                                std::string(tail) + "</plist>");
            return Sized{xml, xml.size()};
        },
        [](const std::string& xml) { return halvane::propertyListFromXml(xml); });
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

// Keys with as few letters as make them distinct.
std::string shortKey(std::size_t index) {
    std::string key;
    for (; key.empty() || index > 0; index /= 26) key += static_cast<char>('a' + index % 26);
    return key;
}

void measureKeys(MemoryTable& table) {
    table.measure(
        "property list: short keys of one dictionary", kInput,
        [](std::size_t size) {
            std::string xml = "<plist><dict>";
            for (std::size_t i = 0; xml.size() < size; ++i) {
                xml += "<key>" + shortKey(i) + "</key><true/>";
            }
            xml += "</dict></plist>";
            return Sized{xml, xml.size()};
        },
        [](const std::string& xml) { return halvane::propertyListFromXml(xml); });
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

// A list that repeats `item`.
template <typename Parse>
void measureReply(MemoryTable& table, const char* key, std::string_view row, std::string_view item,
                  Parse parse) {
    table.measure(
        "reply, " + std::string(key) + ": " + std::string(row), kInput,
        [&](std::size_t size) {
            const std::string xml = listXml(repeated(item, size / item.size()));
            return Sized{replyOf(key, xml), xml.size()};
        },
        parse);
}

void measureLists(MemoryTable& table, std::string_view item) {
    using halvane::ServiceReply;
    measureReply(table, "clients", item, item, [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryClientListResponse_error(reply);
    });
    measureReply(table, "devices", item, item, [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryDeviceListResponse_error(reply);
    });
    measureReply(table, "interfaces", item, item, [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryInterfaceListResponse_error(reply);
    });
    measureReply(table, "channels", item, item, [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryChannelListResponse_error(reply);
    });
    measureReply(table, "configs", item, item, [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryBSSConfigListResponse_error(reply);
    });
}

std::string base64Of(const Bytes& bytes) {
    constexpr const char* kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        std::size_t group = 0;
        for (std::size_t j = 0; j < 3; ++j) group = group << 8 | (j < count ? bytes[i + j] : 0);
        for (std::size_t j = 0; j < 4; ++j) {
            text += j <= count ? kDigits[group >> (18 - 6 * j) & 63] : '=';
        }
    }
    return text;
}

// A client of one element.
std::string clientOf(const Bytes& element) {
    return "<dict><key>IEs</key><array><data>" + base64Of(element) + "</data></array></dict>";
}

// A client with one element that is as long as the reply, and longer than any frame can hold.
void measureLongElement(MemoryTable& table, const std::string& row, const Bytes& head,
                        const Bytes& piece) {
    table.measure(
        "reply, clients: one long element of " + row, kInput,
        [&](std::size_t size) {
            Bytes element = head;
            while (element.size() * 4 / 3 < size) append(element, piece);
            const std::string xml = listXml(clientOf(element));
            return Sized{replyOf("clients", xml), xml.size()};
        },
        [](const halvane::ServiceReply& reply) {
            return HalvaneXPCClient::queryClientListResponse_error(reply);
        });
}

void measureElementsOfClients(MemoryTable& table) {
    const auto measure = [&](std::string_view row, const Bytes& element) {
        measureReply(table, "clients", row, clientOf(element),
                     [](const halvane::ServiceReply& reply) {
                         return HalvaneXPCClient::queryClientListResponse_error(reply);
                     });
    };
    measure("device types", deviceTypesOfWPS());
    measure("scattered device types", scatteredDeviceTypesOfWPS());
    measure("channel triplets", countryOf({1, 13, 20}));
    measure("regulatory triplets", countryOf({201, 1, 0}));
    measure("PMKIDs", identifiersOfRSN());
    measure("HT", elementsOfHT());
    const Bytes headOfWPS = {221, 255, 0x00, 0x50, 0xF2, 4};
    measureLongElement(table, "device types", headOfWPS, attributeOfDeviceTypes(16));
    measureLongElement(table, "scattered device types", headOfWPS, attributeOfDeviceTypes(1));
    measureLongElement(table, "rates", {50, 255}, {12});
    measureLongElement(table, "channel triplets", {7, 255, 'D', 'E', ' '}, {1, 13, 20});
    measureLongElement(table, "regulatory triplets", {7, 255, 'D', 'E', ' '}, {201, 1, 0});
    // 32768 elements, if the reply has room.
    measureLongElement(table, "PMKIDs", {48,  255, 1, 0, 0, 15, 172, 4, 1, 0, 0,    15,
                                         172, 4,   1, 0, 0, 15, 172, 2, 0, 0, 0x00, 0x80},
                       Bytes(16, 1));
}

void measureRecords(MemoryTable& table) {
    using halvane::ServiceReply;
    const auto clients = [](const ServiceReply& reply) {
        return HalvaneXPCClient::queryClientListResponse_error(reply);
    };
    const auto list = [](const char* key, std::string_view item) {
        return "<dict><key>" + std::string(key) + "</key><array>" + repeated(item, 1000) +
               "</array></dict>";
    };
    measureReply(table, "clients", "addresses alone",
                 "<dict><key>MAC</key><data>AgAAAAAB</data></dict>", clients);
    measureReply(table, "clients", "signals alone",
                 "<dict><key>RSSI</key><integer>1</integer></dict>", clients);
    measureReply(table, "clients", "rate elements", list("IEs", "<data>AQEM</data>"), clients);
    measureReply(table, "clients", "empty elements", list("IEs", "<data/>"), clients);
    measureReply(table, "interfaces", "empty channels", list("Channels", "<dict/>"),
                 [](const ServiceReply& reply) {
                     return HalvaneXPCClient::queryInterfaceListResponse_error(reply);
                 });
}

// A D-Bus message whose only entry is an array of `signature`. `put` appends its items.
template <typename Put>
void measureMessage(MemoryTable& table, std::string_view row, const char* signature,
                    std::size_t itemSize, Put put) {
    using Loose = std::unique_ptr<halvane::testing::LooseBusMessage>;
    const std::string array = "a" + std::string(signature);
    table.measure(
        "message, array of " + std::string(row), kInput,
        [&](std::size_t size) {
            auto loose = std::make_unique<halvane::testing::LooseBusMessage>();
            sd_bus_message* const message = loose->get();
            sd_bus_message_open_container(message, 'a', "{sv}");
            sd_bus_message_open_container(message, 'e', "sv");
            sd_bus_message_append(message, "s", "key");
            sd_bus_message_open_container(message, 'v', array.c_str());
            sd_bus_message_open_container(message, 'a', signature);
            for (std::size_t i = 0; i < size / itemSize; ++i) put(message);
            for (int i = 0; i < 4; ++i) sd_bus_message_close_container(message);
            loose->sealed();
            return Sized<Loose>{std::move(loose), size};
        },
        [](const Loose& loose) { return halvane::readBusMessage(loose->get()); });
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
    measureElementsOfClients(table);
    measureMessages(table);
}

}  // namespace bench
