// Addresses and other identifiers in text: the results agree with the C library or with naive code,
// and written text reads back the same.
#include <algorithm>
#include <arpa/inet.h>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <netinet/in.h>
#include <span>
#include <string>
#include <sys/socket.h>
#include <vector>

#include "halvane/base/hex_digits.h"
#include "halvane/base/status.h"
#include "halvane/utils/convert.h"
#include "halvane/utils/text/dns_name.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"

namespace {

void checkIPv4(const std::string& text, std::uint32_t flags) {
    std::uint8_t bytes[kIPv4AddressSize];
    const char* end = nullptr;
    const bool isTaken = ParseIPv4Address(text.c_str(), bytes, &end) == kStatusOK;
    in_addr expected{};
    // The C library accepts no leading zeros.
    if (::inet_pton(AF_INET, text.c_str(), &expected) == 1) {
        REQUIRE(isTaken && *end == '\0' && std::memcmp(bytes, &expected, 4) == 0);
    }
    std::uint32_t address = 0, mask = 0, router = 0;
    int port = 0;
    const auto status =
        StringToIPv4Address(text.c_str(), flags, &address, &port, &mask, &router, &end);
    REQUIRE(isTaken || status != kStatusOK);
    if (status != kStatusOK) return;
    REQUIRE(address == (std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
                        std::uint32_t{bytes[2]} << 8 | bytes[3]));
    REQUIRE(port >= 0 && port <= kIPPortMax);
    REQUIRE(router == 0 || router == ((address & mask) | 1));
    char written[kIPv4AddressTextSize];
    std::uint32_t again = 0;
    int portAgain = 0;
    IPv4AddressToCString(address, port, written);
    REQUIRE(StringToIPv4Address(written, 0, &again, &portAgain, nullptr, nullptr, &end) ==
            kStatusOK);
    REQUIRE(again == address && portAgain == port && *end == '\0');
}

void checkIPv6(const std::string& text, std::uint32_t flags) {
    std::uint8_t bytes[kIPv6AddressSize] = {};
    std::uint32_t scope = 0;
    int prefix = 0, port = 0;
    const char* end = nullptr;
    const auto status =
        StringToIPv6Address(text.c_str(), flags, bytes, &scope, &prefix, &port, &end);
    in6_addr expected{};
    if (::inet_pton(AF_INET6, text.c_str(), &expected) == 1) {
        REQUIRE(status == kStatusOK && *end == '\0');
        REQUIRE(std::memcmp(bytes, &expected, sizeof(bytes)) == 0);
    }
    if (status != kStatusOK) return;
    REQUIRE(prefix >= 0 && prefix <= kIPv6PrefixMax && port >= 0 && port <= kIPPortMax);
    char written[kIPv6AddressTextSize];
    std::uint8_t again[kIPv6AddressSize] = {};
    std::uint32_t scopeAgain = 0;
    int portAgain = 0;
    IPv6AddressToCString(bytes, scope, port, written);
    REQUIRE(StringToIPv6Address(written, 0, again, &scopeAgain, nullptr, &portAgain, &end) ==
            kStatusOK);
    REQUIRE(std::memcmp(again, bytes, sizeof(bytes)) == 0 && *end == '\0');
    REQUIRE(scopeAgain == scope && portAgain == port);
}

void checkHardwareAddress(const std::string& text, std::size_t count) {
    std::vector<std::uint8_t> bytes(count);
    const auto status = TextToHardwareAddress(text.data(), text.size(), count, bytes.data());
    REQUIRE(TextToHardwareAddress(text.data(), text.size(), count, nullptr) == status);
    std::vector<char> written(HALVANE_HARDWARE_ADDRESS_TEXT_SIZE(count));
    HardwareAddressToCString(bytes.data(), static_cast<int>(count), written.data());
    std::vector<std::uint8_t> again(count);
    REQUIRE(TextToHardwareAddress(written.data(), SIZE_MAX, count, again.data()) == kStatusOK);
    REQUIRE(again == bytes);
    std::uint64_t scalar = 0;
    for (const std::uint8_t byte : bytes) scalar = scalar << 8 | byte;
    const bool isScalar = status == kStatusOK && (count == 6 || count == 8);
    REQUIRE(TextToHardwareAddressScalar(text.data(), text.size(), count) ==
            (isScalar ? scalar : 0));
}

void checkUUID(const std::string& text, std::span<const std::uint8_t> bytes) {
    std::uint8_t uuid[kUUIDSize] = {};
    StringToUUID(text.data(), text.size(), false, uuid);
    for (std::size_t i = 0; i < std::min(bytes.size(), sizeof(uuid)); ++i) uuid[i] ^= bytes[i];
    for (const bool isLittle : {false, true}) {
        char written[kUUIDTextSize];
        std::uint8_t again[kUUIDSize] = {};
        UUIDtoCString(uuid, isLittle, written);
        REQUIRE(StringToUUID(written, SIZE_MAX, isLittle, again) == kStatusOK);
        REQUIRE(std::memcmp(again, uuid, sizeof(uuid)) == 0);
        REQUIRE(StringToUUID(written, SIZE_MAX, !isLittle, again) == kStatusOK);
        EndianSwapUUIDMove(again, again);
        REQUIRE(std::memcmp(again, uuid, sizeof(uuid)) == 0);
    }
}

// Pairs of digits, after white space and one prefix, without any flag.
std::vector<std::uint8_t> naiveHex(const std::string& text) {
    std::size_t at = 0;
    while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at])) != 0) ++at;
    if (text.size() - at >= 2 && text[at] == '0' && (text[at + 1] | 32) == 'x') at += 2;
    std::vector<std::uint8_t> bytes;
    for (; at < text.size() && std::isxdigit(static_cast<unsigned char>(text[at])); at += 2) {
        std::string pair = text.substr(at, 2);
        if (pair.size() < 2 || std::isxdigit(static_cast<unsigned char>(pair[1])) == 0) {
            bytes.push_back(
                static_cast<std::uint8_t>(std::stoul(pair.substr(0, 1), nullptr, 16) << 4));
            break;
        }
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(pair, nullptr, 16)));
    }
    return bytes;
}

void checkHex(const std::string& text, std::uint32_t flags, std::size_t capacity) {
    std::uint8_t* data = nullptr;
    std::size_t size = 0, written = 0, total = 0;
    const char* end = nullptr;
    REQUIRE(HexToDataCopy(text.data(), text.size(), flags, &data, &size, &end) == kStatusOK);
    REQUIRE(end >= text.data() && end <= text.data() + text.size());
    if (flags == 0) REQUIRE(std::vector<std::uint8_t>(data, data + size) == naiveHex(text));
    std::vector<std::uint8_t> part(capacity, 0xA5);
    REQUIRE(HexToData(text.data(), text.size(), flags, part.data(), capacity, &written, &total,
                      nullptr) == kStatusOK);
    REQUIRE(total == size && written == std::min(size, capacity));
    REQUIRE(std::equal(part.begin(), part.begin() + static_cast<std::ptrdiff_t>(written), data));
    std::vector<char> digits(HALVANE_HEX_TEXT_SIZE(size));
    DataToHexCStringEx(data, size, digits.data(), kHexDigitsUppercase);
    std::uint8_t* again = nullptr;
    std::size_t againSize = 0;
    REQUIRE(HexTextToDataCopy(digits.data(), SIZE_MAX, &again, &againSize) == kStatusOK);
    REQUIRE(againSize == size && (size == 0 || std::memcmp(again, data, size) == 0));
    std::free(again);
    std::free(data);
    REQUIRE(HexTextToData(text.data(), text.size(), part.data(), capacity, &size) != kStatusOK ||
            size <= capacity);
}

void checkLabel(const std::string& text) {
    char label[kDNSLabelBufferSize];
    ConvertUTF8StringToRFC1034LabelString(text.c_str(), label);
    const std::string made = label;
    REQUIRE(made.size() < sizeof(label));
    for (const char c : made) {
        REQUIRE((c >= '0' && c <= '9') || ((c | 32) >= 'a' && (c | 32) <= 'z') || c == '-');
    }
    if (!made.empty()) REQUIRE(ValidDNSName(label) == kStatusOK);
    // A name without escapes: each label has 1 to 63 characters, and the whole at most 254.
    const std::string name = text.c_str();
    if (name.find('\\') != std::string::npos) return void(ValidDNSName(text.c_str()));
    bool isValid = !name.empty() && name.size() <= 254;
    for (std::size_t at = 0; at < name.size();) {
        const std::size_t stop = std::min(name.find('.', at), name.size());
        isValid = isValid && stop > at && stop - at <= 63;
        at = stop + 1;
    }
    REQUIRE((ValidDNSName(name.c_str()) == kStatusOK) == isValid);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    halvane::fuzzing::ByteSource source(data, size);
    const std::uint32_t flags = source.byte();
    const std::size_t count = source.below(20);
    const std::string text = source.restText();
    checkIPv4(text, flags & 3);
    checkIPv6(text, flags & 7);
    checkHardwareAddress(text, count);
    checkUUID(text, source.rest());
    checkHex(text, flags & 15, count);
    checkLabel(text);
    return 0;
}
