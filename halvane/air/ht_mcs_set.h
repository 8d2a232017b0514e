// The modulation and coding schemes of HT (IEEE 802.11-2020, 9.4.2.55.4): 16 octets that HT
// Capabilities and HT Operation hold.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_HT_MCS_SET_H
#define HALVANE_AIR_HT_MCS_SET_H

#include <cstddef>
#include <optional>

#include "halvane/air/bit_octets.h"

namespace halvane::air {

struct HtMcsSet {
    static constexpr int kMaxStreams = 4;

    BitOctets<16> fields{};

    // Whether the MCS (0 to 76) can be received.
    constexpr bool supports(int mcs) const {
        return mcs >= 0 && mcs <= 76 && fields.bit(static_cast<std::size_t>(mcs));
    }

    // The largest number of streams that one of the MCS 0 to 31 has, which use the same modulation
    // in all streams; 0 for none. MCS 32 is a duplicate of one stream and counts for nothing.
    constexpr int streams() const {
        int count = kMaxStreams;
        while (count > 0 && fields.bits(8 * static_cast<std::size_t>(count - 1), 8) == 0) --count;
        return count;
    }

    // The highest rate that can be received, in Mb/s; absent if it is not told.
    constexpr std::optional<int> highestRate() const {
        const auto rate = static_cast<int>(fields.bits(80, 10));
        return rate == 0 ? std::nullopt : std::optional<int>(rate);
    }

    // The streams that can be sent. Absent if they are not told, or are those of the MCS above.
    constexpr std::optional<int> transmitStreams() const {
        if (!isTransmitSetDefined() || !isTransmitSetDifferent()) return std::nullopt;
        return static_cast<int>(fields.bits(98, 2)) + 1;
    }

    constexpr bool isTransmitSetDefined() const { return fields.bit(96); }
    // From the set that can be received.
    constexpr bool isTransmitSetDifferent() const { return fields.bit(97); }
    constexpr bool isUnequalModulationSent() const { return fields.bit(100); }

    friend constexpr bool operator==(const HtMcsSet&, const HtMcsSet&) = default;
};

}  // namespace halvane::air

#endif
