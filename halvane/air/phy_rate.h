// The data rates of HT, VHT, HE and EHT (IEEE 802.11-2020, 19.5 and 21.5; 802.11ax, 27.5;
// 802.11be, 36.5).
//
// Constant tables and pure functions. Any thread may call them.
#ifndef HALVANE_AIR_PHY_RATE_H
#define HALVANE_AIR_PHY_RATE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "halvane/base/cxx20.h"
#include "halvane/base/export.h"

namespace halvane::air {

// The PHY that a rate is of: Wi-Fi 4 to 7.
enum class Phy : std::uint8_t { Ht, Vht, He, Eht };

// "HT", "VHT", "HE", "EHT".
HALVANE_EXPORT std::string_view phyName(Phy phy);

// What a rate is computed from. `mcs` counts from 0 for each number of streams: MCS 15 of HT is
// MCS 7 with two streams.
struct PhyRateInputs {
    Phy phy = Phy::Ht;
    int width = 20;  // MHz; 160 also for 80+80
    int streams = 1;
    int mcs = 0;
    bool isShortGuard = true;  // HT and VHT: 0.4 us, not 0.8 us. HE and EHT: always 0.8 us

    friend constexpr bool operator==(const PhyRateInputs&, const PhyRateInputs&) = default;
};

// rate = data subcarriers * bits per subcarrier * coding rate * streams / symbol time.
struct PhyRate {
    PhyRateInputs inputs{};
    int dataSubcarriers = 0;
    int codedBits = 0;  // per subcarrier and stream
    int codingNumerator = 0;
    int codingDenominator = 0;
    int symbolNanoseconds = 0;      // with the guard interval
    std::uint32_t hundredKbit = 0;  // the rate in units of 0.1 Mbit/s, rounded as the standard does

    double mbps() const { return hundredKbit / 10.0; }

    // "980 subcarriers x 10 bits x 5/6 x 2 streams / 13.6 us = 1201.0 Mbit/s".
    HALVANE_EXPORT std::string formula() const;

    friend constexpr bool operator==(const PhyRate&, const PhyRate&) = default;
};

// Absent for a width, an MCS or a number of streams that the PHY does not have, and for the few
// combinations that VHT excludes.
HALVANE_EXPORT std::optional<PhyRate> phyRate(const PhyRateInputs& inputs);

// The rate of the highest MCS up to `inputs.mcs` that the PHY has for the other inputs.
HALVANE_EXPORT std::optional<PhyRate> highestPhyRate(PhyRateInputs inputs);

}  // namespace halvane::air

#endif
