// The modulation and coding schemes of EHT for each number of streams, in the form of a station
// that uses 20 MHz alone (IEEE 802.11be-2024, 9.4.2.313.4). EHT Operation holds the same form.
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_EHT_MCS_NSS_SET_H
#define HALVANE_AIR_EHT_MCS_NSS_SET_H

#include <cstddef>
#include <cstdint>

#include "halvane/air/bit_octets.h"

namespace halvane::air {

// A pair of fields for each of the groups 0-7, 8-9, 10-11 and 12-13.
struct EhtMcsNssSet {
    enum class Group : std::uint8_t { Mcs0To7 = 0, Mcs8To9 = 1, Mcs10To11 = 2, Mcs12To13 = 3 };

    BitOctets<4> fields{};

    // The largest number of streams with the MCS of the group; 0 if it is not supported.
    constexpr int rxStreams(Group group) const { return streamsAt(8 * numberOf(group)); }
    constexpr int txStreams(Group group) const { return streamsAt(8 * numberOf(group) + 4); }

    friend constexpr bool operator==(const EhtMcsNssSet&, const EhtMcsNssSet&) = default;

  private:
    static constexpr std::size_t numberOf(Group group) { return static_cast<std::size_t>(group); }
    constexpr int streamsAt(std::size_t bit) const { return static_cast<int>(fields.bits(bit, 4)); }
};

}  // namespace halvane::air

#endif
