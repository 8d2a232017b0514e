// Configuration text and network configurations: words, digits, numbers and addresses read as naive
// code reads them, and a failure leaves what its contract states.
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "halvane/base/byte_buffer.h"
#include "halvane/base/error.h"
#include "halvane/base/utf8_internal.h"
#include "halvane/model/bss_config.h"
#include "halvane/model/bss_option_words.h"
#include "halvane/model/config_parser.h"
#include "halvane/model/config_parser_internal.h"
#include "halvane/model/daemon_service.h"
#include "halvane/model/passphrase_hash_internal.h"
#include "halvane/platform/os/hmac_sha1_internal.h"

#include "fuzz/byte_source.h"
#include "fuzz/require.h"

using namespace halvane;

namespace {

// Returns the outcome. Checks that there is an error if and only if the call failed.
template <typename Operation>
bool succeeds(Operation operation) {
    std::optional<Error> error = Error{"before", 1};
    const bool result = static_cast<bool>(operation(&error));
    REQUIRE(result || (error && error->domain == kDaemonErrorDomain && error->code < 0));
    return result;
}

std::string lowered(std::string text) {
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
    return text;
}

// Whether every piece is one of the words. A comma at the end adds no piece.
bool areWords(const std::string& text, std::span<const std::string_view> words) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t stop = std::min(text.find(',', at), text.size());
        const std::string piece = lowered(text.substr(at, stop - at));
        const auto isPiece = [&](std::string_view word) {
            return lowered(std::string(word)) == piece;
        };
        if (std::ranges::none_of(words, isPiece)) return false;
        at = stop + 1;
    }
    return true;
}

void checkWords(const std::string& text) {
    using Setter = bool (HalvaneBSSConfig::*)(std::string_view, std::optional<Error>*);
    struct Group {
        Setter set;
        std::span<const std::string_view> words;
    };
    using Config = HalvaneBSSConfig;
    const Group groups[] = {
        {&Config::setAuthenticationWithOptionString_error, kBSSAuthenticationWords},
        {&Config::setSecurityWithOptionString_error, kBSSSecurityWords},
        {&Config::setUnicastCipherWithOptionString_error, kBSSUnicastCipherWords},
        {&Config::setMulticastCipherWithOptionString_error, kBSSMulticastCipherWords},
        {&Config::setKeyManagementWithOptionString_error, kBSSKeyManagementWords},
        {&Config::setPHYModeWithOptionString_error, kBSSPHYModeWords},
        {&Config::setWPSConfigurationMethodsString_error, kBSSWPSMethodWords},
    };
    auto config = HalvaneBSSConfig::init();
    for (const Group& group : groups) {
        const auto before = config;
        const bool isSet = succeeds([&](auto* error) { return (config.*group.set)(text, error); });
        REQUIRE(isSet == areWords(text, group.words));
        REQUIRE(isSet || config == before);
    }
    REQUIRE(config.wifiSecurity() <= kHalvaneSecurityWPS && !config.description().empty());
    REQUIRE(!config.setCountry_error(text));
}

void checkNames(const std::string& text) {
    auto config = HalvaneBSSConfig::init();
    const bool isText = isUtf8(text);
    const std::size_t units = utf16Length(text);
    const bool isSSID = succeeds([&](auto* error) { return config.setSSID_error(text, error); });
    REQUIRE(isSSID == (isText && units <= 32));
    if (isSSID) REQUIRE(config.ssid() == ByteBuffer::fromText(text));
    const bool isPassphrase =
        succeeds([&](auto* error) { return config.setWirelessPassphrase_error(text, error); });
    REQUIRE(isPassphrase == (isText && units <= 63));
    const bool isHex =
        succeeds([&](auto* error) { return config.setSSIDFromHexString_error(text, error); });
    REQUIRE(isHex == config.ssid().has_value() && (!isHex || config.ssid()->size() <= 32));
    const bool isHexPassphrase = succeeds(
        [&](auto* error) { return config.setWirelessPassphraseFromHexString_error(text, error); });
    REQUIRE(isHexPassphrase == config.passphrase().has_value());
    config.setWpsDeviceName(text);
    REQUIRE(HalvaneBSSConfig::initWithSkeletonRepresentation(config.skeletonRepresentation()) ==
            config);
}

void checkConversions(const std::string& text, std::size_t capacity) {
    const std::string cText = text.c_str();
    std::optional<Error> error;
    REQUIRE(ConfigParser::convertToBool(text, &error).has_value() ==
            (lowered(text) == "yes" || lowered(text) == "no"));
    const auto data = ConfigParser::convertToDataFromHex(text);
    REQUIRE(!data || data->size() <= cText.size() / 2);
    const auto part = ConfigParser::dataFromHexWithin(text, capacity, nullptr);
    REQUIRE(!part || part->size() <= capacity);
    if (data && part) REQUIRE(data->slice(0, part->size()) == *part);
    const auto integer = ConfigParser::convertToInteger(text, &error);
    errno = 0;
    char* end = nullptr;
    const long long expected = std::strtoll(cText.c_str(), &end, 10);
    REQUIRE(integer.has_value() == (end != cText.c_str() && errno == 0));
    REQUIRE(!integer || *integer == expected);
    const auto address = ConfigParser::convertToBSSID(text, &error);
    REQUIRE(!address || address->size() == 6);
}

// Derives with few iterations, and compares with F, written as its definition says.
void checkKeys(std::span<const std::uint8_t> passphrase, std::span<const std::uint8_t> ssid) {
    const ByteBuffer block = HalvaneBSSConfig::F_withSSID_withIterations_withCount(
        ByteBuffer(passphrase), ByteBuffer(ssid), 3, 1);
    SHA1Digest digest{};
    derivePassphraseBlock(passphrase, ssid, 3, 1, digest);
    REQUIRE(block == ByteBuffer(std::span<const std::uint8_t>(digest)));
    // An invalid passphrase costs no iteration.
    if (passphrase.size() >= 8 && passphrase.size() <= 63) return;
    const auto key =
        HalvaneBSSConfig::wpaPasswordHash_withSSID_error(ByteBuffer(passphrase), ByteBuffer(ssid));
    REQUIRE(!key);
}

// The iterations of a key take long, so only one input in many runs them.
void checkWholeKey(fuzzing::ByteSource source) {
    if (source.integer<std::uint16_t>() != 0x4B21) return;
    auto config = HalvaneBSSConfig::init();
    const bool isSet = config.setSSID_error(source.text(32)) &&
                       config.setWirelessPassphrase_error(source.text(63)) &&
                       config.setSecurityWithOptionString_error("WPA2") &&
                       config.setKeyManagementWithOptionString_error("PSK");
    if (!isSet) return;
    config.generateKeyMaterial();
    REQUIRE(!config.keyMaterial() || config.keyMaterial()->size() == 32);
    REQUIRE(config.keyMaterial() ==
            HalvaneBSSConfig::wpaPasswordHash_withSSID_error(config.passphrase(), config.ssid()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::ByteSource source(data, size);
    checkWholeKey(source);
    const std::size_t capacity = source.byte();
    const auto ssid = source.bytes(40);
    const std::string text = source.restText();
    checkWords(text);
    checkNames(text);
    checkConversions(text, capacity);
    checkKeys(source.rest(), ssid);
    return 0;
}
