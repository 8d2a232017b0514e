#include "halvane/model/bss_config.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <new>
#include <span>
#include <utility>

#include "halvane/base/memory_allows_internal.h"
#include "halvane/base/status.h"
#include "halvane/base/utf8_internal.h"
#include "halvane/model/bss_config_table_internal.h"
#include "halvane/model/config_parser.h"
#include "halvane/model/daemon_service.h"
#include "halvane/model/fallible_internal.h"
#include "halvane/model/passphrase_hash_internal.h"
#include "halvane/platform/os/hmac_sha1_internal.h"
#include "halvane/platform/os/secret_internal.h"

namespace halvane {

namespace {

using Octets = std::optional<ByteBuffer>;

bool fail(std::optional<Error>* error, HalvaneStatus status) {
    storeError(error, status);
    return false;
}

// An SSID is not secret, but is set too rarely to deserve separate code.
Octets secretOctets(std::span<const std::uint8_t> bytes) {
    return ifMemoryAllows([bytes] { return secretBuffer(bytes); });
}

// Returns whether the text has at most `limit` characters.
bool isWithin(std::string_view text, std::size_t limit, std::optional<Error>* error) {
    return utf16Length(text) <= limit || fail(error, kStatusUnsupported);
}

// Sets `field` to the octets of a text.
bool setText(Octets& field, std::string_view text, std::optional<Error>* error) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    Octets octets;  // made first, since the text may be the old octets
    if (isUtf8(text)) octets = secretOctets({bytes, text.size()});
    field = std::move(octets);
    if (!field) return fail(error, kStatusNoMemory);
    clearError(error);
    return true;
}

// Sets `field` to at most `limit` octets of hexadecimal text.
bool setHex(Octets& field, std::string_view digits, std::size_t limit,
            std::optional<Error>* error) {
    std::optional<Error> failure;
    field = ConfigParser::convertToDataFromHex(digits, &failure);
    if (!field) {
        if (error != nullptr) *error = failure.value_or(daemonError(kStatusNoMemory));
        return false;
    }
    if (field->size() > limit) {
        field.reset();
        return fail(error, kStatusUnsupported);
    }
    clearError(error);
    return true;
}

bool isPrintable(std::uint8_t byte) {
    return std::isprint(byte) != 0;
}

}  // namespace

HalvaneBSSConfig HalvaneBSSConfig::init() {
    HalvaneBSSConfig configuration;
    Fields& fields = configuration.fields_.change();
#define HALVANE_BSS_DEFAULT(getter, setter, key, value) fields.getter = value;
#define HALVANE_BSS_ABSENT(...)
    HALVANE_BSS_CONFIG_FIELDS(HALVANE_BSS_ABSENT, HALVANE_BSS_DEFAULT, HALVANE_BSS_DEFAULT,
                              HALVANE_BSS_ABSENT)
#undef HALVANE_BSS_DEFAULT
#undef HALVANE_BSS_ABSENT
    return configuration;
}

HalvaneSecurityKind HalvaneBSSConfig::wifiSecurity() const {
    if (allowSecurityWPS()) return kHalvaneSecurityWPS;
    if (allowSecurityWPA2() || allowSecurityWPA()) {
        return allowKeyManagement8021X() ? kHalvaneSecurityWPA8021X : kHalvaneSecurityWPAPSK;
    }
    if (allowSecurityWEP()) {
        return allowKeyManagement8021X() ? kHalvaneSecurityWEP8021X : kHalvaneSecurityWEP;
    }
    return allowSecurityOpen() ? kHalvaneSecurityOpen : kHalvaneSecurityNone;
}

HalvaneBSSConfig::Fields* HalvaneBSSConfig::fieldsToSet(std::optional<Error>* error) {
    try {
        return &fields_.change();
    } catch (const std::bad_alloc&) {
        fail(error, kStatusNoMemory);
        return nullptr;
    }
}

bool HalvaneBSSConfig::setSSID_error(std::string_view ssid, std::optional<Error>* error) {
    if (!isWithin(ssid, kBSSMaxSSIDSize, error)) return false;
    Fields* fields = fieldsToSet(error);
    return fields != nullptr && setText(fields->ssid, ssid, error);
}

bool HalvaneBSSConfig::setWirelessPassphrase_error(std::string_view passphrase,
                                                   std::optional<Error>* error) {
    if (!isWithin(passphrase, kBSSMaxPassphraseSize, error)) return false;
    Fields* fields = fieldsToSet(error);
    return fields != nullptr && setText(fields->passphrase, passphrase, error);
}

bool HalvaneBSSConfig::setSSIDFromHexString_error(std::string_view digits,
                                                  std::optional<Error>* error) {
    Fields* fields = fieldsToSet(error);
    return fields != nullptr && setHex(fields->ssid, digits, kBSSMaxSSIDSize, error);
}

bool HalvaneBSSConfig::setWirelessPassphraseFromHexString_error(std::string_view digits,
                                                                std::optional<Error>* error) {
    Fields* fields = fieldsToSet(error);
    return fields != nullptr && setHex(fields->passphrase, digits, SIZE_MAX, error);
}

void HalvaneBSSConfig::setSSID(const Ssid& ssid) {
    ByteBuffer octets = ssid.buffer();
    fields_.change().ssid = std::move(octets);
}

void HalvaneBSSConfig::setPassphrase(std::span<const std::uint8_t> passphrase) {
    ByteBuffer octets = secretBuffer(passphrase);
    fields_.change().passphrase = std::move(octets);
}

void HalvaneBSSConfig::setKeyMaterial(std::span<const std::uint8_t, kBSSKeySize> key) {
    ByteBuffer octets = secretBuffer(key);
    fields_.change().keyMaterial = std::move(octets);
}

bool HalvaneBSSConfig::setCountry_error(std::string_view /*country*/,
                                        std::optional<Error>* /*error*/) {
    return false;
}

void HalvaneBSSConfig::generateKeyMaterial() {
    if (wifiSecurity() != kHalvaneSecurityWPAPSK) return;
    fields_.change().keyMaterial = wpaPasswordHash_withSSID_error(passphrase(), ssid());
}

std::optional<ByteBuffer> HalvaneBSSConfig::wpaPasswordHash_withSSID_error(
    const std::optional<ByteBuffer>& passphrase, const std::optional<ByteBuffer>& ssid,
    std::optional<Error>* error) {
    const auto refuse = [error](HalvaneStatus status) {
        storeError(error, status);
        return std::optional<ByteBuffer>();
    };
    if (!ssid || ssid->empty() || ssid->size() > kBSSMaxSSIDSize) return refuse(kStatusUnsupported);
    const std::size_t size = passphrase ? passphrase->size() : 0;
    if (size == kBSSKeySize) return std::nullopt;
    if (size < kBSSMinPassphraseSize || size > kBSSMaxPassphraseSize) {
        return refuse(kStatusUnsupported);
    }
    if (!std::ranges::all_of(passphrase->bytes(), isPrintable)) return refuse(kStatusUnsupported);

    Secret<WPAKey> key;
    deriveWPAKey(passphrase->bytes(), ssid->bytes(), *key);
    auto result = secretOctets(*key);
    return result ? result : refuse(kStatusNoMemory);
}

ByteBuffer HalvaneBSSConfig::F_withSSID_withIterations_withCount(const ByteBuffer& passphrase,
                                                                 const ByteBuffer& ssid,
                                                                 std::uint32_t iterations,
                                                                 std::uint32_t count) {
    Secret<SHA1Digest> block;
    derivePassphraseBlock(passphrase.bytes(), ssid.bytes(), iterations, count, *block);
    return secretBuffer(*block);
}

}  // namespace halvane
