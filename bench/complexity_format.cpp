// Formatted output of foreign bytes and texts.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>

#include "halvane/base/property_list_value.h"
#include "halvane/platform/bus/ipc_message.h"
#include "halvane/utils/printf.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"

using halvane::IPCMessage;
using halvane::PropertyListArray;
using halvane::PropertyListDictionary;
using halvane::PropertyListValue;

namespace bench {

namespace {

// Bytes and a size, as "%{...}" requires.
void addExtension(const char* row, const char* format, Bytes (*make)(std::size_t)) {
    addGrowth(row, 65536, make, [format](const Bytes& bytes) {
        return SNPrintF(nullptr, 0, format, bytes.data(), bytes.size()) > 0;
    });
}

// A terminated text.
void addText(const char* row, const char* format, std::string (*make)(std::size_t)) {
    addGrowth(row, 262144, make, [format](const std::string& text) {
        return SNPrintF(nullptr, 0, format, text.c_str()) > 0;
    });
}

void addHex(const char* row, const char* format) {
    addGrowth(
        row, 262144, [](std::size_t n) { return Bytes(n, 0xA7); },
        [format](const Bytes& bytes) {
            const int size = static_cast<int>(bytes.size());
            return SNPrintF(nullptr, 0, format, bytes.data(), size, size) > 0;
        });
}

void addValue(const char* row, PropertyListValue (*make)(std::size_t)) {
    addGrowth(row, 16384, make, [](const PropertyListValue& value) {
        return SNPrintF(nullptr, 0, "%@", &value) > 0;
    });
}

void addElementFormatRows() {
    addExtension("%{ie}: rates", "%{ie}", [](std::size_t n) { return repeated({1, 1, 12}, n); });
    addExtension("%{ie}: names", "%{ie}", [](std::size_t n) {
        return repeated({0, 3, 'a', 0xE2, 0x82}, n);
    });
    addExtension("%{ie}: vendor", "%{ie}", [](std::size_t n) {
        return repeated({221, 6, 0x00, 0x50, 0xF2, 1, 1, 0}, n);
    });
    addExtension("%{ie}: WPS attributes", "%{ie}", [](std::size_t n) {
        Bytes bytes;
        for (std::size_t i = 0; i < n / 16 + 1; ++i) {
            append(bytes, {221, 4 + 5 * 16, 0x00, 0x50, 0xF2, 4});
            for (int k = 0; k < 16; ++k) append(bytes, {0x10, 0x4A, 0, 1, 0x10});
        }
        return bytes;
    });
    addExtension("%{txt}", "%{txt}", [](std::size_t n) { return repeated({3, 'a', '=', 'b'}, n); });
    addExtension("%{txt}: comma lists", "%{txt}", [](std::size_t n) {
        return repeated({11, 'w', 'a', 'M', 'A', '=', 'a', ',', 'b', ',', 'c', ','}, n);
    });
    addExtension("%{txt}: empty strings", "%{txt}", [](std::size_t n) { return Bytes(n, 0); });
    addExtension("%{text}: lines", "%{text}", [](std::size_t n) {
        return repeated({'a', '\n'}, n);
    });
    addExtension("%{text}: one line", "%{text}", [](std::size_t n) { return Bytes(n, 'a'); });
    addExtension("%{text}: blank lines", "%{text}", [](std::size_t n) { return Bytes(n, '\n'); });
}

void addTextFormatRows() {
    addText("%s", "%s", [](std::size_t n) { return std::string(n, 'a'); });
    addText("%s in UTF-8", "%s", [](std::size_t n) { return repeated("\xE2\x82\xAC", n / 3); });
    addText("%s in quotes", "%'s", [](std::size_t n) { return std::string(n, '\a'); });
    addText("DNS name", "%##s", [](std::size_t n) { return repeated("\3abc", n / 4); });
    addText("DNS name to escape", "%##s", [](std::size_t n) { return repeated("\3.\\\1", n / 4); });
    addText("function signature", "%###s",
            [](std::size_t n) { return enclosed("void ", "n::", n / 3, "f(int)"); });
    addText("function signature: brackets", "%###s",
            [](std::size_t n) { return enclosed("void ", "<(", n / 2, "f(int)"); });
    addText("function signature: words", "%###s",
            [](std::size_t n) { return enclosed("void ", "a ", n / 2, "f(int)"); });
    addGrowth(
        "%S", 262144, [](std::size_t n) { return std::u16string(n, u'a'); },
        [](const std::u16string& text) { return SNPrintF(nullptr, 0, "%S", text.c_str()) > 0; });
    addHex("%H", "%H");
    addHex("%.1H", "%.1H");
    addHex("%.3H", "%.3H");
}

void addValueFormatRows() {
    addValue("%@: array", [](std::size_t n) {
        return PropertyListValue(PropertyListArray(n, PropertyListValue("text")));
    });
    addValue("%@: dictionary", [](std::size_t n) {
        PropertyListDictionary dictionary;
        for (std::size_t i = 0; i < n; ++i) dictionary.set("key" + std::to_string(i), 7);
        return PropertyListValue(std::move(dictionary));
    });
    addValue("%@: text of lines", [](std::size_t n) {
        return PropertyListValue(PropertyListArray{repeated("a\n", n)});
    });
    addValue("%@: nested", [](std::size_t n) {
        PropertyListArray array;
        for (std::size_t i = 0; i < n / 256 + 1; ++i) {
            PropertyListValue value;
            for (int level = 0; level < 200; ++level) value = PropertyListArray{value};
            array.push_back(std::move(value));
        }
        return PropertyListValue(std::move(array));
    });
    addGrowth(
        "%{xpc}", 16384,
        [](std::size_t n) {
            IPCMessage message;
            for (std::size_t i = 0; i < n; ++i) {
                message.entries().set("key" + std::to_string(i), PropertyListArray{1, "text"});
            }
            return message;
        },
        [](const IPCMessage& message) { return SNPrintF(nullptr, 0, "%{xpc}", &message) > 0; });
}

void addBufferRows() {
    addGrowth(
        "AppendPrintF in a loop", 16384, [](std::size_t n) { return n; },
        [](std::size_t n) {
            char* text = nullptr;
            for (std::size_t i = 0; i < n; ++i) {
                if (AppendPrintF(&text, "%zu, ", i) < 0) return false;
            }
            std::free(text);
            return true;
        });
    addGrowth(
        "ASPrintF", 262144, [](std::size_t n) { return std::string(n, 'a'); },
        [](const std::string& text) {
            char* copy = nullptr;
            if (ASPrintF(&copy, "%s", text.c_str()) < 0) return false;
            std::free(copy);
            return true;
        });
    addGrowth(
        "SNPrintF_Add in a loop", 16384, [](std::size_t n) { return std::string(8 * n, '\0'); },
        [](std::string& buffer) {
            char* cursor = buffer.data();
            char* const end = cursor + buffer.size();
            for (std::size_t i = 0; i < buffer.size() / 8; ++i) {
                if (SNPrintF_Add(&cursor, end, "%zu,", i) != 0) return false;
            }
            return true;
        });
    addGrowth(
        "SNPrintF, cut in the text", 262144,
        [](std::size_t n) { return repeated("\xE2\x82\xAC", n / 3); },
        [](const std::string& text) {
            std::string buffer(text.size() / 2, '\0');
            return SNPrintF(buffer.data(), buffer.size(), "%s", text.c_str()) > 0;
        });
}

}  // namespace

void addFormatRows() {
    addElementFormatRows();
    addTextFormatRows();
    addValueFormatRows();
    addBufferRows();
}

}  // namespace bench
