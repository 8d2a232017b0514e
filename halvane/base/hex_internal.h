// Lower-case hexadecimal digits of octets.
#ifndef HALVANE_BASE_HEX_INTERNAL_H
#define HALVANE_BASE_HEX_INTERNAL_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "halvane/base/ascii_internal.h"

namespace halvane {

// Octets, or digits of them, that are treated together.
using HexBlock = std::uint8_t __attribute__((vector_size(16)));

inline HexBlock hexDigitsOf(const HexBlock& values) {
    constexpr std::uint8_t kGap = 'a' - '9' - 1;
    const auto isLetter = reinterpret_cast<HexBlock>(values > 9);
    return values + '0' + (isLetter & kGap);
}

// Writes the digits of 8 or 16 octets.
template <std::size_t count>
void putHexBlock(char* at, const std::uint8_t* octets) {
    static_assert(count == 8 || count == sizeof(HexBlock));
    HexBlock block{};
    std::memcpy(&block, octets, count);
    const HexBlock high = hexDigitsOf(block >> 4);
    const HexBlock low = hexDigitsOf(block & 0x0F);
    const HexBlock first =
        __builtin_shufflevector(high, low, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
    std::memcpy(at, &first, sizeof(first));
    if constexpr (count == sizeof(HexBlock)) {
        const HexBlock second = __builtin_shufflevector(high, low, 8, 24, 9, 25, 10, 26, 11, 27, 12,
                                                        28, 13, 29, 14, 30, 15, 31);
        std::memcpy(at + sizeof(first), &second, sizeof(second));
    }
}

// The last block overlaps the one before. REQUIRES: there are as many octets as a block has.
template <std::size_t count>
void putHexBlocks(char* at, std::span<const std::uint8_t> octets) {
    const std::size_t last = octets.size() - count;
    for (std::size_t i = 0; i < last; i += count) putHexBlock<count>(at + 2 * i, &octets[i]);
    putHexBlock<count>(at + 2 * last, &octets[last]);
}

// Writes two digits for each octet, and no terminator.
inline void putHexDigits(char* at, std::span<const std::uint8_t> octets) {
    if (octets.size() >= 16) return putHexBlocks<16>(at, octets);
    if (octets.size() >= 8) return putHexBlocks<8>(at, octets);
    for (const std::uint8_t octet : octets) {
        *at++ = kLowerHexDigits[octet >> 4];
        *at++ = kLowerHexDigits[octet & 0x0F];
    }
}

}  // namespace halvane

#endif
