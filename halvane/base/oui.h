// Organisationally unique identifiers of the elements, three octets each.
#ifndef HALVANE_BASE_OUI_H
#define HALVANE_BASE_OUI_H

#include <array>
#include <cstdint>

#include "halvane/base/cxx20.h"

namespace halvane {

// An Organizationally Unique Identifier, as it stands in a frame.
using OUI = std::array<std::uint8_t, 3>;

// The octets as one number, the first the most significant. Numbers compare faster than octets.
constexpr std::uint32_t ouiNumber(const OUI& oui) {
    return std::uint32_t{oui[0]} << 16 | std::uint32_t{oui[1]} << 8 | oui[2];
}

// IEEE 802.11-2020, table 9-149: cipher and AKM suites of the RSN element.
inline constexpr OUI kRSNOUI = {0x00, 0x0F, 0xAC};

// The vendor OUI under which WPA (type 1) and Wi-Fi Protected Setup (type 4) are defined.
inline constexpr OUI kWPAOUI = {0x00, 0x50, 0xF2};
inline constexpr std::uint8_t kWPAType = 1;
inline constexpr std::uint8_t kWPSType = 4;

// The Wi-Fi Alliance.
inline constexpr OUI kWfaOUI = {0x50, 0x6F, 0x9A};

}  // namespace halvane

#endif
