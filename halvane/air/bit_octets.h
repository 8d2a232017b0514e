// A field of several octets whose bits are numbered as the standard numbers them: bit 0 is the
// least significant bit of the first octet (IEEE 802.11-2020, 9.2.2).
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_BIT_OCTETS_H
#define HALVANE_AIR_BIT_OCTETS_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "halvane/base/cxx20.h"

namespace halvane::air {

// Octets that somebody else owns.
using Octets = std::span<const std::uint8_t>;

// Returns `count` bits from bit `first` on. Bits past the end of `octets` read as 0.
// REQUIRES: count <= 32.
constexpr std::uint32_t bitsOf(Octets octets, std::size_t first, std::size_t count) {
    std::uint64_t value = 0;
    const std::size_t from = first / 8;
    for (std::size_t i = 0; i < 5 && from + i < octets.size(); ++i) {
        value |= std::uint64_t{octets[from + i]} << (8 * i);
    }
    return static_cast<std::uint32_t>(value >> (first % 8) & ((std::uint64_t{1} << count) - 1));
}

template <std::size_t Size>
struct BitOctets {
    std::array<std::uint8_t, Size> octets{};

    constexpr std::uint32_t bits(std::size_t first, std::size_t count) const {
        return bitsOf(octets, first, count);
    }
    constexpr bool bit(std::size_t index) const { return bits(index, 1) != 0; }

    // Bits past the end are not set.
    constexpr void setBits(std::size_t first, std::size_t count, std::uint32_t value) {
        for (std::size_t i = 0; i < count && (first + i) / 8 < Size; ++i) {
            const auto mask = static_cast<std::uint8_t>(1u << ((first + i) % 8));
            auto& octet = octets[(first + i) / 8];
            octet = static_cast<std::uint8_t>(value >> i & 1 ? octet | mask : octet & ~mask);
        }
    }
    constexpr void setBit(std::size_t index, bool value) { setBits(index, 1, value ? 1 : 0); }

    friend constexpr bool operator==(const BitOctets&, const BitOctets&) = default;
};

}  // namespace halvane::air

#endif
