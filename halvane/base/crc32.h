// CRC-32 by the polynomial of the 802.11 frame check sequence (IEEE 802.11-2020, 9.2.4.8).
//
// A free function without state; any thread may call it.
#ifndef HALVANE_BASE_CRC32_H
#define HALVANE_BASE_CRC32_H

#include <cstdint>
#include <span>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane {

// The sum of the octets.
HALVANE_EXPORT std::uint32_t crc32(std::span<const std::uint8_t> octets) noexcept;

}  // namespace halvane

#endif
