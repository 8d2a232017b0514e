// Numbers, addresses and bytes read from foreign text.
//
// A caller that reads one number after the other from a long text passes the rest of the text to
// each call. Such a walk is linear only if a call looks at no more text than it reads.
#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "halvane/base/byte_buffer.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/config_parser.h"
#include "halvane/utils/cli.h"
#include "halvane/utils/convert.h"
#include "halvane/utils/scan/scanf.h"
#include "halvane/utils/text/integer.h"

#include "bench/foreign_bytes.h"
#include "bench/growth.h"

namespace bench {

namespace {

// Reads one item at `text` and returns its end, or `text` if there is none.
using ReadOne = const char* (*)(const char* text);

// A NUL-terminated text of n items, `item` each, read one after the other.
void addWalk(const char* row, std::size_t most, std::string_view item, ReadOne readOne) {
    struct Input {
        std::string text;
        std::size_t count;
    };
    addGrowth(
        row, most,
        [item](std::size_t n) {
            return Input{repeated(item, n), n};
        },
        [readOne](const Input& input) {
            const char* text = input.text.c_str();
            for (std::size_t i = 0; i < input.count; ++i) {
                const char* const end = readOne(text);
                if (end == text) return false;
                text = end + (*end == ' ' || *end == ',' ? 1 : 0);
            }
            return *text == '\0';
        });
}

// One item of n characters.
template <typename Read>
void addOne(const char* row, std::string_view head, char digit, std::string_view tail, Read read) {
    addGrowth(
        row, 262144,
        [head, digit, tail](std::size_t n) {
            return std::string(head) + std::string(n, digit) + std::string(tail);
        },
        [read](const std::string& text) {
            benchmark::DoNotOptimize(read(text.c_str()));
            return true;
        });
}

void addIntegerWalks() {
    constexpr std::size_t kMost = 16384;
    addWalk("strtoi by end", kMost, "12345 ", [](const char* text) {
        const char* end = text;
        strtoi(text, SIZE_MAX, &end, 10);
        return end;
    });
    addWalk("StringToInteger64 by end", kMost, "12345 ", [](const char* text) {
        const char* end = text;
        StringToInteger64(text, INT64_MIN, INT64_MAX, 10, &end, nullptr);
        return end;
    });
    addWalk("BCDTextToInt by end", kMost, "12345 ", [](const char* text) {
        const char* end = text;
        BCDTextToInt(text, SIZE_MAX, &end);
        return end;
    });
    addWalk("TextToInt32, one after the other", kMost, "12345 ", [](const char* text) {
        return TextToInt32(text, SIZE_MAX, 10) == 12345 ? text + 5 : text;
    });
    addWalk("SNScanF, one after the other", kMost, "12345 ", [](const char* text) {
        std::int32_t number = 0;
        std::int32_t count = 0;
        SNScanF(text, SIZE_MAX, "%d%n", &number, &count);
        return text + count;
    });
    addWalk("SNScanF of words, one after the other", kMost, "abcde ", [](const char* text) {
        std::array<char, 32> word{};
        std::int32_t count = 0;
        SNScanF(text, SIZE_MAX, "%31s%n", word.data(), &count);
        return text + count;
    });
    addWalk("TextToNumVersion, one after the other", kMost, "1.2.3b4 ", [](const char* text) {
        return TextToNumVersion(text, SIZE_MAX) != 0 ? text + 7 : text;
    });
    addWalk("TextToSourceVersion, one after the other", kMost, "10.2.3 ", [](const char* text) {
        return TextToSourceVersion(text, SIZE_MAX) != 0 ? text + 6 : text;
    });
    addWalk("TextToFourCharCode, one after the other", kMost, "abcd,", [](const char* text) {
        return TextToFourCharCode(text, SIZE_MAX) != 0 ? text + 4 : text;
    });
}

void addAddressWalks() {
    constexpr std::size_t kMost = 16384;
    addWalk("ParseIPv4Address by end", kMost, "192.0.2.1 ", [](const char* text) {
        std::array<std::uint8_t, kIPv4AddressSize> address{};
        const char* end = text;
        ParseIPv4Address(text, address.data(), &end);
        return end;
    });
    addWalk("StringToIPv4Address by end", kMost, "192.0.2.1:80/24 ", [](const char* text) {
        std::uint32_t address = 0;
        int port = 0;
        std::uint32_t mask = 0;
        const char* end = text;
        StringToIPv4Address(text, 0, &address, &port, &mask, nullptr, &end);
        return end;
    });
    addWalk("StringToIPv6Address by end", kMost, "[2001:db8::7]:80 ", [](const char* text) {
        std::array<std::uint8_t, kIPv6AddressSize> address{};
        std::uint32_t scope = 0;
        int prefix = 0;
        int port = 0;
        const char* end = text;
        StringToIPv6Address(text, 0, address.data(), &scope, &prefix, &port, &end);
        return end;
    });
    addWalk("StringToIPv6Address by end, with scopes", 4096, "fe80::1%5 ", [](const char* text) {
        std::array<std::uint8_t, kIPv6AddressSize> address{};
        std::uint32_t scope = 0;
        const char* end = text;
        StringToIPv6Address(text, 0, address.data(), &scope, nullptr, nullptr, &end);
        return end;
    });
    addWalk("TextToHardwareAddress, one after the other", kMost, "02:1a:2b:3c:4d:5e ",
            [](const char* text) {
                std::array<std::uint8_t, kMACAddressSize> address{};
                return TextToHardwareAddress(text, SIZE_MAX, address.size(), address.data()) == 0
                           ? text + 17
                           : text;
            });
    addWalk("TextToHardwareAddressScalar, likewise", kMost, "02:1a:2b:3c:4d:5e ",
            [](const char* text) {
                return TextToHardwareAddressScalar(text, SIZE_MAX, 6) != 0 ? text + 17 : text;
            });
    addWalk("HexToData by end", kMost, "0xa1b2c3 ", [](const char* text) {
        std::array<std::uint8_t, 8> bytes{};
        const char* end = text;
        HexToData(text, SIZE_MAX, 0, bytes.data(), bytes.size(), nullptr, nullptr, &end);
        return end;
    });
    addWalk("HexToDataCopy by end", kMost, "0xa1b2c3 ", [](const char* text) {
        std::uint8_t* bytes = nullptr;
        const char* end = text;
        if (HexToDataCopy(text, SIZE_MAX, 0, &bytes, nullptr, &end) == 0) std::free(bytes);
        return end;
    });
}

void addLongNumbers() {
    addOne("strtoi of many digits", "", '9', "",
           [](const char* text) { return strtoi(text, SIZE_MAX, nullptr, 10); });
    addOne("strtoi of white space", "", ' ', "7",
           [](const char* text) { return strtoi(text, SIZE_MAX, nullptr, 0); });
    addOne("TextToInt32 of many digits", "", '9', "",
           [](const char* text) { return TextToInt32(text, SIZE_MAX, 10); });
    addOne("BCDTextToInt of many zeros", "", '0', "7",
           [](const char* text) { return BCDTextToInt(text, SIZE_MAX, nullptr); });
    addOne("SNScanF of many digits", "", '9', "", [](const char* text) {
        std::int64_t number = 0;
        return SNScanF(text, SIZE_MAX, "%lld", &number);
    });
    addOne("SNScanF of a set", "", 'a', "", [](const char* text) {
        const char* place = nullptr;
        std::size_t length = 0;
        return SNScanF(text, SIZE_MAX, "%&[a-z]", &place, &length);
    });
    addOne("StringToIPv4Address of zeros", "192.0.2.", '0', "1", [](const char* text) {
        return StringToIPv4Address(text, 0, nullptr, nullptr, nullptr, nullptr, nullptr);
    });
    addOne("StringToIPv6Address of a long scope", "fe80::1%", 'x', "", [](const char* text) {
        std::array<std::uint8_t, kIPv6AddressSize> address{};
        std::uint32_t scope = 0;
        return StringToIPv6Address(text, 0, address.data(), &scope, nullptr, nullptr, nullptr);
    });
    addOne("TextToHardwareAddress of separators", "", ':', "02:1a:2b:3c:4d:5e",
           [](const char* text) { return TextToHardwareAddress(text, SIZE_MAX, 6, nullptr); });
    addOne("TextToNumVersion of zeros", "1.", '0', "2",
           [](const char* text) { return TextToNumVersion(text, SIZE_MAX); });
    addOne("StringToUUID", "", 'a', "", [](const char* text) {
        std::array<std::uint8_t, kUUIDSize> uuid{};
        return StringToUUID(text, SIZE_MAX, false, uuid.data());
    });
}

template <typename Read>
void addHexText(const char* row, std::string_view piece, Read read) {
    addGrowth(
        row, 262144, [piece](std::size_t n) { return repeated(piece, n / piece.size()); },
        [read](const std::string& text) { return read(text); });
}

void addHexRows() {
    addHexText("HexToData", "a7", [](const std::string& text) {
        std::size_t total = 0;
        HexToData(text.c_str(), SIZE_MAX, 0, nullptr, 0, nullptr, &total, nullptr);
        return total == text.size() / 2;
    });
    addHexText("HexToDataCopy with separators", "a7 :", [](const std::string& text) {
        std::uint8_t* bytes = nullptr;
        std::size_t size = 0;
        const auto flags = kHexToDataFlagSkipSpace | kHexToDataFlagSkipSeparators;
        HexToDataCopy(text.c_str(), SIZE_MAX, static_cast<std::uint32_t>(flags), &bytes, &size,
                      nullptr);
        std::free(bytes);
        return size == text.size() / 4;
    });
    addHexText("HexTextToDataCopy", "a7:", [](const std::string& text) {
        std::uint8_t* bytes = nullptr;
        std::size_t size = 0;
        HexTextToDataCopy(text.c_str(), SIZE_MAX, &bytes, &size);
        std::free(bytes);
        return size == text.size() / 3;
    });
    addHexText("ByteBuffer::fromHex", "a7:", [](const std::string& text) {
        const auto bytes = halvane::ByteBuffer::fromHex(text + "00");
        return bytes && !bytes->empty();
    });
    addHexText("BitListString_Parse", "7,", [](const std::string& text) {
        std::uint32_t bits = 0;
        return BitListString_Parse((text + "3").c_str(), SIZE_MAX, &bits) == 0 && bits != 0;
    });
}

void addConfigurationRows() {
    namespace parser = halvane::ConfigParser;
    addHexText("configuration: hexadecimal text", "a7", [](const std::string& text) {
        return parser::convertToDataFromHex(text).has_value();
    });
    addHexText("configuration: words", "wpa2,", [](const std::string& text) {
        constexpr std::array<std::string_view, 2> kWords = {"WPA", "WPA2"};
        return parser::convertParamStringToArray_error(text, kWords).has_value();
    });
    addHexText("configuration: option words", "WPA2,", [](const std::string& text) {
        auto config = halvane::HalvaneBSSConfig::init();
        return config.setSecurityWithOptionString_error(text);
    });
    addHexText("configuration: integer", "9",
               [](const std::string& text) { return parser::convertToInteger("7 " + text) == 7; });
    addHexText("configuration: address", " ", [](const std::string& text) {
        return parser::convertToBSSID(text + "02:1a:2b:3c:4d:5e").has_value();
    });
    addHexText("configuration: SSID too long", "a", [](const std::string& text) {
        return !halvane::HalvaneBSSConfig::init().setSSID_error(text);
    });
    addHexText("configuration: passphrase in hexadecimal", "a7", [](const std::string& text) {
        return halvane::HalvaneBSSConfig::init().setWirelessPassphraseFromHexString_error(text);
    });
}

}  // namespace

void addNumberRows() {
    addIntegerWalks();
    addAddressWalks();
    addLongNumbers();
    addHexRows();
    addConfigurationRows();
}

}  // namespace bench
