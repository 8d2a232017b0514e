// The highest MCS for each number of spatial streams (IEEE 802.11-2020, 9.4.2.157.3, and 802.11ax
// for HE): eight fields of two bits.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_MCS_MAP_H
#define HALVANE_AIR_MCS_MAP_H

#include <array>
#include <cstddef>
#include <optional>

#include "halvane/air/bit_octets.h"

namespace halvane::air {

// The parameters are the MCS that the values 0, 1 and 2 of a field mean. 3 means that the number of
// streams is not supported.
template <int First, int Second, int Third>
struct McsMap {
    static constexpr int kMaxStreams = 8;
    static constexpr std::array<int, 3> kHighestMcs = {First, Second, Third};

    BitOctets<2> fields{{0xFF, 0xFF}};

    // Absent if `streams` (1 to 8) are not supported.
    constexpr std::optional<int> highestMcs(int streams) const {
        const auto field = fields.bits(2 * static_cast<std::size_t>(streams - 1), 2);
        if (field == 3) return std::nullopt;
        return kHighestMcs[field];
    }

    // The largest number of streams that has an MCS; 0 for none.
    constexpr int streams() const {
        int count = kMaxStreams;
        while (count > 0 && !highestMcs(count)) --count;
        return count;
    }

    friend constexpr bool operator==(const McsMap&, const McsMap&) = default;
};

// The map of VHT: up to MCS 7, 8 or 9.
using VhtMcsMap = McsMap<7, 8, 9>;
// The map of HE: up to MCS 7, 9 or 11.
using HeMcsMap = McsMap<7, 9, 11>;

}  // namespace halvane::air

#endif
