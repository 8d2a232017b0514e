// The elements that the library knows: IEEE 802.11-2020, table 9-92.
#ifndef HALVANE_BASE_ELEMENT_ID_H
#define HALVANE_BASE_ELEMENT_ID_H

#include <cstddef>
#include <cstdint>

#include "halvane/base/cxx20.h"

namespace halvane {

// An element's header is its ID and its length, one octet each.
inline constexpr std::size_t kElementHeaderSize = 2;

// The element IDs that HalvaneMAC decodes (IEEE 802.11-2020, table 9-92):
inline constexpr std::uint8_t kElementIDSSID = 0;
inline constexpr std::uint8_t kElementIDSupportedRates = 1;
inline constexpr std::uint8_t kElementIDDSParameterSet = 3;
inline constexpr std::uint8_t kElementIDCountry = 7;
inline constexpr std::uint8_t kElementIDHTCapabilities = 45;
inline constexpr std::uint8_t kElementIDRSN = 48;
inline constexpr std::uint8_t kElementIDExtendedSupportedRates = 50;
inline constexpr std::uint8_t kElementIDHTOperation = 61;
inline constexpr std::uint8_t kElementIDVendorSpecific = 221;

}  // namespace halvane

#endif
