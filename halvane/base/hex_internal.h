// Lower-case hexadecimal digits, two at a time.
#ifndef HALVANE_BASE_HEX_INTERNAL_H
#define HALVANE_BASE_HEX_INTERNAL_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "halvane/base/ascii_internal.h"

namespace halvane {

// "00" to "ff".
inline constexpr auto kLowerHexPairs = [] {
    std::array<char, 512> pairs{};
    for (std::size_t i = 0; i < 256; ++i) {
        pairs[2 * i] = kLowerHexDigits[i >> 4];
        pairs[2 * i + 1] = kLowerHexDigits[i & 0x0F];
    }
    return pairs;
}();

// Writes two digits for each octet, and no terminator.
inline void putHexPairs(char* at, std::span<const std::uint8_t> octets) {
    for (const std::uint8_t octet : octets) {
        std::memcpy(at, kLowerHexPairs.data() + std::size_t{2} * octet, 2);
        at += 2;
    }
}

}  // namespace halvane

#endif
