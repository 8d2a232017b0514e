// An octet of Supported Rates or Extended Supported Rates: a rate or a BSS membership selector
// (IEEE 802.11-2020, 9.4.2.3 and 9.4.2.12).
//
// A plain value. Threads: as for an integer.
#ifndef HALVANE_AIR_RATE_OCTET_H
#define HALVANE_AIR_RATE_OCTET_H

#include <cstdint>
#include <optional>

#include "halvane/base/cxx20.h"

namespace halvane::air {

// What a station supports that joins the BSS (9.4.2.3, 802.11ax and 802.11be).
enum class BssMembershipSelector : std::uint8_t {
    EhtPhy = 121,
    HePhy = 122,
    SaeHashToElementOnly = 123,
    Epd = 124,
    Glk = 125,
    VhtPhy = 126,
    HtPhy = 127,
};

struct RateOctet {
    std::uint8_t octet = 0;

    // Whether every station of the BSS supports it. A selector has this bit too.
    constexpr bool isBasic() const { return (octet & 0x80) != 0; }

    // Absent for a rate.
    constexpr std::optional<BssMembershipSelector> selector() const {
        const int value = octet & 0x7F;
        if (!isBasic() || value < static_cast<int>(BssMembershipSelector::EhtPhy))
            return std::nullopt;
        return static_cast<BssMembershipSelector>(value);
    }

    // In units of 500 kb/s; absent for a selector.
    constexpr std::optional<int> rate() const {
        if (selector()) return std::nullopt;
        return octet & 0x7F;
    }

    friend constexpr bool operator==(const RateOctet&, const RateOctet&) = default;
};

}  // namespace halvane::air

#endif
