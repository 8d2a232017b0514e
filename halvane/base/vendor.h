// The maker's own identifiers in vendor-specific elements.
//
// The OUIs are locally administered ones, so that they meet no registered maker.
#ifndef HALVANE_BASE_VENDOR_H
#define HALVANE_BASE_VENDOR_H

#include <array>
#include <cstdint>
#include <string_view>

#include "halvane/base/oui.h"

namespace halvane {

inline constexpr OUI kVendorOUI = {0x0A, 0x7E, 0x55};
inline constexpr OUI kVendorGeneralOUI = {0x0A, 0x7E, 0x56};
inline constexpr std::array<std::uint8_t, 4> kVendorSMI = {0x0A, 0x7E, 0x55, 0x01};
inline constexpr std::string_view kVendorCompanyName = "Tessic";

// What the octet after kVendorOUI says.
inline constexpr std::uint8_t kVendorTypeDWDS = 1;
inline constexpr std::uint8_t kVendorTypeEasyConnect = 3;
inline constexpr std::uint8_t kVendorTypeP2P = 5;

}  // namespace halvane

#endif
