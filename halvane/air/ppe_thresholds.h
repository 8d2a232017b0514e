// PPE Thresholds (802.11ax-2021, 9.4.2.248.5; 802.11be-2024, 9.4.2.313.5): from which constellation
// on a station needs more time after a packet.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_PPE_THRESHOLDS_H
#define HALVANE_AIR_PPE_THRESHOLDS_H

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "halvane/air/bit_octets.h"
#include "halvane/base/inline_list.h"

namespace halvane::air {

// The widths of the two fields at the start are those of the number of streams and of the bitmap
// of the resource units.
template <std::size_t StreamBits, std::size_t RuBits>
struct PpeThresholds {
    static constexpr std::size_t kHeaderBits = StreamBits + RuBits;
    static constexpr std::size_t kMaxSize =
        (kHeaderBits + (std::size_t{1} << StreamBits) * RuBits * 6 + 7) / 8;

    // The thresholds of one resource unit for one number of streams: 0 BPSK, 1 QPSK, 2 16-QAM,
    // 3 64-QAM, 4 256-QAM, 5 1024-QAM, 6 4096-QAM (of EHT), 7 none.
    struct Pair {
        int longer = 7;  // PPET16 of HE, PPETmax of EHT
        int ppet8 = 7;

        friend constexpr bool operator==(const Pair&, const Pair&) = default;
    };

    InlineList<std::uint8_t, kMaxSize> octets{};  // the whole field, padding included

    int streams() const { return static_cast<int>(bits(0, StreamBits)) + 1; }
    // Resource units by index: 0 for 242 tones, 1 for 484, 2 for 996, 3 for 2x996, 4 for 4x996.
    bool hasResourceUnit(std::size_t index) const {
        return index < RuBits && bits(StreamBits + index, 1) != 0;
    }
    // Absent for a resource unit without thresholds. REQUIRES: 1 <= streams.
    std::optional<Pair> thresholds(int streams, std::size_t resourceUnit) const {
        if (streams > this->streams() || !hasResourceUnit(resourceUnit)) return std::nullopt;
        const std::size_t first = firstBitOf(streams, resourceUnit);
        return Pair{static_cast<int>(bits(first, 3)), static_cast<int>(bits(first + 3, 3))};
    }

    // The first bit of the two thresholds of a resource unit that has them.
    std::size_t firstBitOf(int streams, std::size_t resourceUnit) const {
        const auto mask = bits(StreamBits, RuBits);
        const auto below = mask & ((1u << resourceUnit) - 1);
        const auto units = static_cast<std::size_t>(std::popcount(mask));
        const auto before = static_cast<std::size_t>(streams - 1) * units +
                            static_cast<std::size_t>(std::popcount(below));
        return kHeaderBits + 6 * before;
    }

    // The octets that the field at the start of `octets` has.
    static std::size_t sizeIn(Octets octets) {
        const std::size_t pairs =
            (std::size_t{bitsOf(octets, 0, StreamBits)} + 1) *
            static_cast<std::size_t>(std::popcount(bitsOf(octets, StreamBits, RuBits)));
        return (kHeaderBits + 6 * pairs + 7) / 8;
    }

    friend bool operator==(const PpeThresholds&, const PpeThresholds&) = default;

  private:
    std::uint32_t bits(std::size_t first, std::size_t count) const {
        return bitsOf({octets.data(), octets.size()}, first, count);
    }
};

// The thresholds of HE Capabilities.
using HePpeThresholds = PpeThresholds<3, 4>;
// The thresholds of EHT Capabilities.
using EhtPpeThresholds = PpeThresholds<4, 5>;

}  // namespace halvane::air

#endif
