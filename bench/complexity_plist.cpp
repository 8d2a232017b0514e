// Property lists: as XML, as values, and as messages of D-Bus.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <systemd/sd-bus.h>
#include <utility>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/property_list_value.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/platform/bus/message_check_internal.h"
#include "halvane/platform/bus/message_reader_internal.h"
#include "halvane/platform/bus/message_writer_internal.h"
#include "halvane/platform/plist/xml_property_list.h"
#include "halvane/platform/plist/xml_property_list_reader.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"
#include "tests/support/loose_bus_message.h"

using halvane::ByteBuffer;
using halvane::IPCMessage;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;

namespace bench {

namespace {

constexpr std::size_t kItems = 65536;

std::string keyOf(std::size_t index) {
    return "key" + std::to_string(index);
}

// The XML of n pieces between `head` and `tail`.
void addXml(const char* row, std::string_view head, std::string_view piece, std::string_view tail,
            bool isRefused = false) {
    addGrowth(
        row, kItems,
        [head, piece, tail](std::size_t n) {
            return enclosed("<plist>" + std::string(head), piece, n,
                            std::string(tail) + "</plist>");
        },
        [isRefused](const std::string& xml) {
            return halvane::propertyListFromXml(xml).has_value() != isRefused;
        });
}

std::string dictionaryXml(std::size_t count, bool areReversed) {
    std::string xml = "<plist><dict>";
    for (std::size_t i = 0; i < count; ++i) {
        xml += "<key>" + keyOf(areReversed ? count - i : i) + "</key><true/>";
    }
    return xml + "</dict></plist>";
}

void addItemRows() {
    addXml("XML: empty dictionaries", "<array>", "<dict/>", "</array>");
    addXml("XML: booleans", "<array>", "<true/>", "</array>");
    addXml("XML: integers", "<array>", "<integer>1234567</integer>", "</array>");
    addXml("XML: reals", "<array>", "<real>1.5e-7</real>", "</array>");
    addXml("XML: dates", "<array>", "<date>2026-11-21T07:00:00Z</date>", "</array>");
    addXml("XML: strings", "<array>", "<string>text</string>", "</array>");
    addXml("XML: data", "<array>", "<data>AAEC</data>", "</array>");
    addXml("XML: nested arrays", "<array>", "<array><array><array/></array></array>", "</array>");
    addGrowth(
        "XML: keys, ascending", kItems, [](std::size_t n) { return dictionaryXml(n, false); },
        [](const std::string& xml) { return halvane::propertyListFromXml(xml).has_value(); });
    addGrowth(
        "XML: keys, descending", kItems, [](std::size_t n) { return dictionaryXml(n, true); },
        [](const std::string& xml) { return halvane::propertyListFromXml(xml).has_value(); });
    addXml("XML: too deep, open", "", "<array>", "", true);
    addXml("XML: too deep, in dictionaries", "", "<dict><key>a</key>", "", true);
    addXml("XML: end tags", "", "</array>", "", true);
}

void addLongTextRows() {
    addXml("XML: one string", "<string>", "a", "</string>");
    addXml("XML: entities", "<string>", "&amp;", "</string>");
    addXml("XML: character references", "<string>", "&#65;", "</string>");
    addXml("XML: a reference without end", "<string>&", "a", "</string>", true);
    addXml("XML: ampersands", "<string>", "&", "</string>", true);
    addXml("XML: brackets", "<string>", "]]", "</string>");
    addXml("XML: CDATA sections", "<string>", "<![CDATA[a]]>", "</string>");
    addXml("XML: CDATA sections without end", "<string>", "<![CDATA[a", "</string>", true);
    addXml("XML: line ends", "<string>", "\r\n", "</string>");
    addXml("XML: an error behind line ends", "<string>", "\r\n", "&bad;</string>", true);
    addXml("XML: one data", "<data>", "AAAA", "</data>");
    addXml("XML: one data in lines", "<data>", "AAAA\n\t", "</data>");
    addXml("XML: many digits", "<integer>", "0", "7</integer>");
    addXml("XML: many digits of a real", "<real>1.", "3", "</real>");
    addXml("XML: white space", "", " \n", "<true/>");
}

void addMarkupRows() {
    addXml("XML: comments", "", "<!--a-->", "<true/>");
    addXml("XML: comments in a string", "<string>", "a<!--b-->", "</string>");
    addXml("XML: comments without end", "", "<!-- ", "<true/>", true);
    addXml("XML: hyphens in a comment", "<!--", "- ", "--><true/>");
    addXml("XML: processing instructions", "", "<?a b?>", "<true/>");
    addXml("XML: processing instructions without end", "", "<?a ", "<true/>", true);
    addXml("XML: attributes", "<true ", "a='b' ", "/>", true);
    addXml("XML: a long attribute", "<true a='", "b", "'/>", true);
    addXml("XML: a long name", "<", "a", "/>", true);
    addXml("XML: angle brackets", "", "<", "", true);
    addGrowth(
        "XML: a DOCTYPE of entities", kItems,
        [](std::size_t n) {
            return enclosed("<!DOCTYPE plist [", "<!ENTITY a 'b'>", n, "]><plist><true/></plist>");
        },
        [](const std::string& xml) { return halvane::propertyListFromXml(xml).has_value(); });
    addGrowth(
        "XML: DOCTYPE lines", kItems, [](std::size_t n) { return repeated("<!DOCTYPE a>", n); },
        [](const std::string& xml) { return !halvane::propertyListFromXml(xml); });
    addGrowth(
        "XML: no markup", kItems, [](std::size_t n) { return std::string(n, 'a'); },
        [](const std::string& xml) { return !halvane::propertyListFromXml(xml); });
}

void addWriting(const char* row, PropertyListValue (*make)(std::size_t)) {
    addGrowth(row, kItems, make, [](const PropertyListValue& value) {
        return halvane::xmlPropertyList(value).has_value();
    });
}

PropertyListDictionary dictionaryOf(std::size_t count) {
    PropertyListDictionary dictionary;
    for (std::size_t i = 0; i < count; ++i) dictionary.set(keyOf(i), true);
    return dictionary;
}

void addWritingRows() {
    addWriting("to XML: array", [](std::size_t n) {
        return PropertyListValue(PropertyListArray(n, PropertyListValue(7)));
    });
    addWriting("to XML: dictionary",
               [](std::size_t n) { return PropertyListValue(dictionaryOf(n)); });
    addWriting("to XML: string to escape",
               [](std::size_t n) { return PropertyListValue(std::string(n, '<')); });
    addWriting("to XML: data", [](std::size_t n) {
        return PropertyListValue(ByteBuffer::fromText(std::string(n, 'a')));
    });
    addWriting("to XML: nested", [](std::size_t n) {
        PropertyListArray array;
        for (std::size_t i = 0; i < n / 256 + 1; ++i) {
            PropertyListValue value = 7;
            for (int level = 0; level < 200; ++level) value = PropertyListArray{value};
            array.push_back(std::move(value));
        }
        return PropertyListValue(std::move(array));
    });
}

void addDictionaryRows() {
    const auto sizes = [](std::size_t n) { return n; };
    addGrowth("dictionary: set", kItems, sizes,
              [](std::size_t n) { return dictionaryOf(n).size() == n; });
    addGrowth("dictionary: find", kItems, dictionaryOf, [](const PropertyListDictionary& all) {
        std::size_t found = 0;
        for (std::size_t i = 0; i < all.size(); ++i) found += all.find(keyOf(i)) != nullptr ? 1 : 0;
        return found == all.size();
    });
    addGrowth("dictionary: erase all, first to last", 4096, dictionaryOf,
              [](const PropertyListDictionary& all) {
                  auto rest = all;
                  for (std::size_t i = 0; i < all.size(); ++i) rest.erase(keyOf(i));
                  return rest.empty();
              });
    addGrowth("dictionary: erase all, last to first", 4096, dictionaryOf,
              [](const PropertyListDictionary& all) {
                  auto rest = all;
                  for (std::size_t i = all.size(); i > 0; --i) rest.erase(keyOf(i - 1));
                  return rest.empty();
              });
    addGrowth("dictionary: erase and set again", 4096, dictionaryOf,
              [](const PropertyListDictionary& all) {
                  auto rest = all;
                  for (std::size_t i = 0; i < all.size(); ++i) {
                      rest.erase(keyOf(i));
                      rest.set(keyOf(i), false);
                  }
                  return rest.size() == all.size();
              });
    addGrowth("dictionary: copy", kItems, dictionaryOf, [](const PropertyListDictionary& all) {
        return PropertyListDictionary(all).size() == all.size();
    });
    addGrowth(
        "dictionary: equality", kItems,
        [](std::size_t n) { return std::pair(dictionaryOf(n), dictionaryOf(n)); },
        [](const auto& both) { return both.first == both.second; });
    addGrowth("nested values: built and destroyed", kItems, sizes, [](std::size_t n) {
        PropertyListValue value;
        for (std::size_t i = 0; i < n; ++i) {
            PropertyListArray array;
            array.push_back(std::move(value));
            value = PropertyListValue(std::move(array));
        }
        return !value.isNull();
    });
}

// Reads and writes a D-Bus message that holds the value of `make(n)`.
void addMessage(const char* readingRow, const char* writingRow,
                PropertyListDictionary (*make)(std::size_t)) {
    addGrowth(
        readingRow, kItems,
        [make](std::size_t n) {
            auto message = std::make_unique<halvane::testing::LooseBusMessage>();
            halvane::writeBusMessage(message->get(), IPCMessage(make(n)));
            message->sealed();
            return message;
        },
        [](const auto& message) {
            sd_bus_message_rewind(message->get(), 1);
            return halvane::readBusMessage(message->get()).has_value();
        });
    addGrowth(
        writingRow, kItems, [make](std::size_t n) { return IPCMessage(make(n)); },
        [](const IPCMessage& content) {
            const halvane::testing::LooseBusMessage message;
            return halvane::checkBusMessage(content, SIZE_MAX).refusal.empty() &&
                   halvane::writeBusMessage(message.get(), content) >= 0;
        });
}

void addMessageRows() {
    addMessage("from D-Bus: keys", "to D-Bus: keys", dictionaryOf);
    addMessage("from D-Bus: array", "to D-Bus: array", [](std::size_t n) {
        PropertyListDictionary entries;
        entries.set("list", PropertyListArray(n, PropertyListValue("text")));
        return entries;
    });
    addMessage("from D-Bus: one text", "to D-Bus: one text", [](std::size_t n) {
        PropertyListDictionary entries;
        entries.set("text", std::string(n, 'a'));
        return entries;
    });
}

}  // namespace

void addPropertyListRows() {
    addItemRows();
    addLongTextRows();
    addMarkupRows();
    addWritingRows();
    addDictionaryRows();
    addMessageRows();
}

}  // namespace bench
