// Questions about the security of a BSS configuration.
//
// Free functions without state; any thread may call them.
#ifndef TOOLS_HALVANE_CONFIG_CONFIGURED_SECURITY_H
#define TOOLS_HALVANE_CONFIG_CONFIGURED_SECURITY_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/model/bss_config.h"
#include "halvane/model/bss_limits.h"
#include "halvane/model/management_frame_protection.h"

namespace halvane::tool {

inline bool isWPA(const HalvaneBSSConfig& c) {
    return c.allowSecurityWPA() || c.allowSecurityWPA2();
}
inline bool encrypts(const HalvaneBSSConfig& c) {
    return isWPA(c) || c.allowSecurityWEP();
}
inline bool allowsSAE(const HalvaneBSSConfig& c) {
    return c.allowKeyManagementSAE().value_or(false);
}
inline bool hasKeyManagement(const HalvaneBSSConfig& c) {
    return c.allowKeyManagementPSK() || c.allowKeyManagement8021X() || allowsSAE(c);
}

// Whether stations take a passphrase of WPA, WPA2 or WPA3.
inline bool isPersonal(const HalvaneBSSConfig& c) {
    return isWPA(c) && (c.allowKeyManagementPSK() || allowsSAE(c));
}

inline bool hasUnicastCipher(const HalvaneBSSConfig& c) {
    return c.allowUnicastCipherTKIP() || c.allowUnicastCipherCCMP() ||
           c.allowUnicastCipherUseGroup();
}
inline bool hasWEPCipher(const HalvaneBSSConfig& c) {
    return c.allowMulticastCipherWEP40() || c.allowMulticastCipherWEP104();
}
inline int multicastCipherCount(const HalvaneBSSConfig& c) {
    return int{c.allowMulticastCipherWEP40()} + int{c.allowMulticastCipherWEP104()} +
           int{c.allowMulticastCipherTKIP()} + int{c.allowMulticastCipherCCMP()};
}
inline bool hasMulticastCipher(const HalvaneBSSConfig& c) {
    return multicastCipherCount(c) > 0;
}
inline bool allowsTKIP(const HalvaneBSSConfig& c) {
    return c.allowUnicastCipherTKIP() || c.allowMulticastCipherTKIP();
}

inline bool requiresProtection(const HalvaneBSSConfig& c) {
    return c.managementFrameProtection() == kHalvaneManagementFrameProtectionRequired;
}
inline bool protectsFrames(const HalvaneBSSConfig& c) {
    return requiresProtection(c) ||
           c.managementFrameProtection() == kHalvaneManagementFrameProtectionCapable;
}

inline bool hidesSSID(const HalvaneBSSConfig& c) {
    return c.hiddenSSID().value_or(false);
}
inline bool isolatesStations(const HalvaneBSSConfig& c) {
    return c.stationIsolation().value_or(false);
}

// IEEE 802.11-2020, J.4.1: a passphrase has the characters 32 to 126.
inline bool isPrintable(std::span<const std::uint8_t> octets) {
    return std::ranges::all_of(octets, [](std::uint8_t o) { return o >= 0x20 && o <= 0x7E; });
}
inline bool isHexDigit(std::uint8_t o) {
    return (o >= '0' && o <= '9') || (o >= 'a' && o <= 'f') || (o >= 'A' && o <= 'F');
}
inline bool isHexadecimalKey(std::span<const std::uint8_t> octets) {
    return octets.size() == 2 * kBSSKeySize && std::ranges::all_of(octets, isHexDigit);
}

// Whether an allowed cipher of WEP takes a key of that many octets (IEEE 802.11-2020, 12.3.2.2).
inline bool isWEPKeySize(const HalvaneBSSConfig& c, std::size_t size) {
    return (size == 5 && c.allowMulticastCipherWEP40()) ||
           (size == 13 && c.allowMulticastCipherWEP104());
}

}  // namespace halvane::tool

#endif
