// The manufacturer's own identifiers in vendor-specific elements.
//
// The OUIs are locally administered, so that they collide with no registered manufacturer.
#ifndef HALVANE_BASE_VENDOR_H
#define HALVANE_BASE_VENDOR_H

#include <array>
#include <cstdint>
#include <string_view>

#include "halvane/base/oui.h"

namespace halvane {

// The OUIs under which the maker's elements are, its enterprise number as elements hold it, and its
// name in descriptions:
inline constexpr OUI kVendorOUI = {0x0A, 0x7E, 0x55};
inline constexpr OUI kVendorGeneralOUI = {0x0A, 0x7E, 0x56};
inline constexpr std::array<std::uint8_t, 4> kVendorSMI = {0x0A, 0x7E, 0x55, 0x01};
inline constexpr std::string_view kVendorCompanyName = "Tessic";

// The type octet that follows kVendorOUI.
inline constexpr std::uint8_t kVendorTypeDWDS = 1;
inline constexpr std::uint8_t kVendorTypeEasyConnect = 3;
inline constexpr std::uint8_t kVendorTypeP2P = 5;

}  // namespace halvane

#endif
